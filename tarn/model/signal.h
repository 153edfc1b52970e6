#pragma once

#include <iosfwd>
#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tarn/model/by_wood.h"
#include "tarn/model/expression.h"

namespace kiva {

class SignalManager;
class SignalRef;

/// The number of the current occurrence of a signal in each wood that knows it.
using OccurrenceTable = by_wood<int>;

/// A named signal of a module. It has a status and a value variable for each of its occurrences;
/// occurrence n > 0 is a later stage of the signal within one reaction.
///
/// Where an operation takes a module and a wood, it reads the module's SignalManager; failures are
/// IllegalOperationException with the operation and the internal name.
class Signal : public Expression {
 public:
  // Each creates the reference (and with it the two variables, last in the wood's order) unless the
  // module has one of that internal name, and enters occurrence 0 for the wood.
  Signal(const std::string& name, Module* module, Bddexpressionwood* wood);
  Signal(const std::string& original, const std::string& internal, Module* module,
         Bddexpressionwood* wood);
  // With a reference of that name already there, these enter no occurrence.
  Signal(const std::string& name, Module* module, Bddexpressionwood* wood, bool wire);
  Signal(const std::string& original, const std::string& internal, Module* module,
         Bddexpressionwood* wood, bool wire);
  /// Shares the occurrence table of `other`.
  Signal(const Signal& other) = default;
  /// Copies into module `to`: a reference for each occurrence that `other` has in `from`.
  Signal(const Signal& other, Module* to, Module* from);
  Signal(const Signal& other, Module* to, Bddexpressionwood* wood, Module* from);

  /// The name written in the module.
  const std::string& getOriginalName() const { return original_name; }
  /// The name unique in an including module.
  const std::string& getInternalName() const { return internal_name; }

  bool isLocal() const { return is_local; }
  bool isInput() const { return is_input; }
  bool isOutput() const { return is_output; }
  bool isWire() const { return is_wire; }
  bool isRegister() const { return is_register; }
  bool isClock() const { return is_clock; }
  /// The signal's value comes from a binding.
  bool isValue() const { return is_value; }
  /// A copy of a called module's signal: no statement of the including module names it.
  bool isInstance() const { return is_instance; }
  /// The user declared it: a local, not a signal that the compiler made.
  bool isDeclared() const { return is_declared; }
  void setLocal(bool mark = true) { is_local = mark; }
  void setInput(bool mark = true) { is_input = mark; }
  void setOutput(bool mark = true) { is_output = mark; }
  void setWire(bool mark = true) { is_wire = mark; }
  void setRegister(bool mark = true) { is_register = mark; }
  void setClock(bool mark = true) { is_clock = mark; }
  void setValue(bool mark = true) { is_value = mark; }
  void setInstance(bool mark = true) { is_instance = mark; }
  void setDeclared(bool mark = true) { is_declared = mark; }

  // Occurrences.
  int getCurrentOccurrence(Bddexpressionwood* wood) const;
  void setCurrentOccurrence(Bddexpressionwood* wood, int occurrence);
  void extendCurrentOccurrenceTable(Bddexpressionwood* wood, int occurrence);
  bool hasOccurrence(Bddexpressionwood* wood) const;
  /// Takes the wood, which is about to go, out of the table.
  void forgetWood(const Bddexpressionwood* wood);
  /// Null for a signal that never had an occurrence.
  const OccurrenceTable* getOccurrenceTable() const { return occurrences_.get(); }
  /// Starts the next occurrence of a local or output; other signals come back unchanged.
  Signal* newOccurrence(Bddexpressionwood* wood, Module* module);

  /// Internal name, with "_" and the number unless the current occurrence is 0.
  std::string getName(Module* module, Bddexpressionwood* wood) const;
  std::string getName(Module* module) const;

  // References.
  SignalRef* getSignalRef(SignalManager* manager, Bddexpressionwood* wood) const;
  SignalRef* getSignalRef(Module* module, Bddexpressionwood* wood) const;
  SignalRef* getSignalRef(Module* module) const;
  /// The first reference defined in the wood; ends the process with a report if there is none.
  SignalRef* getCurrentSignalRef(Bddexpressionwood* wood, Module* module) const;

  // Variable indices of the current occurrence, and of occurrence 0.
  long getBddStatusId(Module* module, Bddexpressionwood* wood) const;
  long getBddValueId(Module* module, Bddexpressionwood* wood) const;
  long getInitialBddStatusId(Module* module, Bddexpressionwood* wood) const;
  long getInitialBddValueId(Module* module, Bddexpressionwood* wood) const;
  /// Status and value index of each occurrence from 0 to the current one.
  std::list<long> getAllBddId(Module* module, Bddexpressionwood* wood) const;

  // Variables of the latest occurrence in the wood, and of occurrence 0.
  bdd getBddStatus(Module* module, Bddexpressionwood* wood) override;
  bdd getBddValue(Module* module, Bddexpressionwood* wood) override;
  bdd getInitialBddStatus(Module* module, Bddexpressionwood* wood) override;
  bdd getInitialBddValue(Module* module, Bddexpressionwood* wood) override;
  /// Names of the current variables in the main wood.
  std::string getStatusName(Module* module) const;
  std::string getValueName(Module* module) const;

  // Value type of the current reference.
  void setValueType(const std::string& type, Module* module, Bddexpressionwood* wood);
  void setValueType(const std::string& type, Module* module);
  bool isValued(Module* module, Bddexpressionwood* wood) const;
  bool isValued(Module* module) const;
  std::string getValueType(Module* module) const;

  /// User type of the signal's status and value equation, by its marks.
  int computeStatusType() const;
  int computeValueType() const;

  Expression* duplicate() override;
  void print(std::ostream& out) const override;
  void printSignalOccurrence(std::ostream& out) const;

 private:
  SignalRef& referenceOrThrow(Module* module, Bddexpressionwood* wood, const char* no_occurrence,
                              const char* no_reference) const;

  std::string original_name;
  std::string internal_name;
  bool is_local = false;
  bool is_input = false;
  bool is_output = false;
  bool is_wire = false;
  bool is_register = false;
  bool is_clock = false;
  bool is_value = false;
  bool is_instance = false;
  bool is_declared = false;
  std::shared_ptr<OccurrenceTable> occurrences_;
};

/// "{", the internal name and "}".
std::ostream& operator<<(std::ostream& out, const Signal* signal);

}  // namespace kiva
