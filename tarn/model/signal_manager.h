#pragma once

#include <iosfwd>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/name_numbers.h"
#include "pert_exp/Bddexpression.h"
#include "tarn/model/by_wood.h"

namespace kiva {

class Module;
class Signal;

/// Ids of the two variables of one occurrence.
struct BddIds {
  long status_index;
  long value_index;
};
using BddIdsWood = by_wood<BddIds>;

/// One occurrence of a signal: its current name, and the indices of its variables "_s_" and "_v_"
/// plus that name in each wood in which the occurrence exists.
class SignalRef {
 public:
  // Each makes the two variables, status first, last in the wood's order unless they exist, and
  // enters the reference in the module's SignalManager.
  SignalRef(const std::string& name, Module* module, Bddexpressionwood* wood, bool valued = false);
  SignalRef(const std::string& original, const std::string& internal, Module* module,
            Bddexpressionwood* wood, bool valued = false);
  SignalRef(const std::string& original, const std::string& internal, const std::string& current,
            int occurrence, Module* module, Bddexpressionwood* wood, bool valued = false);

  /// Index of the variable of that name, made last if there is none.
  static long computeId(const std::string& name, Bddexpressionwood* wood);

  /// IllegalOperationException when the reference has indices for the wood already.
  void addBddIds(long status_index, long value_index, Bddexpressionwood* wood);
  /// IllegalOperationException for a wood without indices.
  long getBddStatusId(Bddexpressionwood* wood) const;
  long getBddValueId(Bddexpressionwood* wood) const;
  void setBddStatusId(long index, Bddexpressionwood* wood);
  void setBddValueId(long index, Bddexpressionwood* wood);
  bool isDefinedWood(const Bddexpressionwood* wood) const;
  void removeWood(const Bddexpressionwood* wood);

  const std::string& getOriginalName() const { return original_name; }
  const std::string& getInternalName() const { return internal_name; }
  const std::string& getCurrentName() const { return current_name; }
  int getCurrentOccurrence() const { return current_occurrence; }
  /// "pure" until a type is set.
  const std::string& getType() const { return type; }
  bool isPre() const { return is_pre; }
  bool isValued() const { return is_valued; }
  const BddIdsWood& getBddIdsWood() const { return bdd_ids_wood; }
  void setIsPre(bool pre) { is_pre = pre; }
  void setIsValued(bool valued) { is_valued = valued; }
  void setType(const std::string& text) { type = text; }

  void print(std::ostream& out) const;

 private:
  std::string original_name;
  std::string internal_name;
  std::string current_name;
  int current_occurrence = 0;
  std::string type = "pure";
  BddIdsWood bdd_ids_wood;
  bool is_pre = false;
  bool is_valued = false;
};

/// All references of a module, by current name and by variable index in each wood.
class SignalManager {
 public:
  SignalManager() = default;
  SignalManager(const SignalManager&) = delete;
  SignalManager& operator=(const SignalManager&) = delete;

  /// HashTableAddException for a current name already there.
  void addSignalRef(SignalRef* ref);
  /// IllegalOperationException when an index is taken.
  void addSignalRefIdTable(long status_index, long value_index, SignalRef* ref,
                           Bddexpressionwood* wood);
  void extendSignalRef(long status_index, long value_index, SignalRef* ref,
                       Bddexpressionwood* wood);

  /// Null when there is none.
  SignalRef* getSignalRefByName(const std::string& current_name) const;
  SignalRef* getSignalRefById(long index, const Bddexpressionwood* wood) const;
  SignalRef* getSignalRefByOccurrence(const Signal* signal, int occurrence) const;
  /// The references with the signal's internal name that are defined in the wood, in name order.
  std::list<SignalRef*> getAllSignalRef(const Signal* signal, const Bddexpressionwood* wood) const;
  /// The first of those with the greatest occurrence number; null when there is none.
  SignalRef* getCurrentOccurrence(const Signal* signal, const Bddexpressionwood* wood) const;
  /// The first of those; null when there is none.
  SignalRef* firstSignalRef(const Signal* signal, const Bddexpressionwood* wood) const;

  /// The first of `name`, `name`_bis, `name`_bis_bis, ... that is no reference's current name.
  std::string freeName(const std::string& name);

  /// The references defined in the wood, in order of arrival.
  const std::vector<SignalRef*>& definedIn(const Bddexpressionwood* wood) const;

  /// Gives every reference defined in `from` the same indices in `to`.
  void duplicate(Bddexpressionwood* from, Bddexpressionwood* to);
  /// Takes the wood, over a manager of its module's, out of all references.
  void forgetWood(const Bddexpressionwood* wood);
  /// Takes the wood out of all references and tables, then destroys it.
  void deleteWood(Bddexpressionwood* wood);

  void printSignalTableByName(std::ostream& out) const;
  void printSignalTableById(std::ostream& out) const;

 private:
  /// Entries by variable index; null where an index has no reference.
  using SignalRefTable = std::vector<SignalRef*>;
  const SignalRefTable* tableOf(const Bddexpressionwood* wood) const;

  /// Calls `see` for each reference with that internal name, in name order, until it says false.
  template <class See>
  void walk_signal(const std::string& internal_name, See see) const;

  /// By current name, which never changes: the place of each reference in the table.
  name_numbers signalref_names;
  std::vector<SignalRef*> signalref_table;
  /// The further occurrences by internal name, each list in name order. Most signals have none, and
  /// occurrence 0 bears the internal name itself, before all others.
  std::unordered_map<std::string_view, std::vector<SignalRef*>> further_occurrences;
  /// By variable index. Woods over one manager have the same indices, so they share a table; which
  /// references are defined in a wood, the references know.
  std::unordered_map<const bddpp_manager*, SignalRefTable> signalref_id_table;
  /// The references that each wood defines, in order of arrival.
  std::map<const Bddexpressionwood*, std::vector<SignalRef*>> signalrefs_of_wood;
  /// By name: the free name that was given last, before which all were taken.
  std::unordered_map<std::string, std::string> last_free_name;
};

std::ostream& operator<<(std::ostream& out, const SignalRef& ref);

}  // namespace kiva
