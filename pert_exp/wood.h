#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <list>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/index_set.h"
#include "bdd/bddpp.h"
#include "pert_exp/equation.h"
#include "pert_exp/sparse_table.h"

namespace kiva {

/// The equations of one module over one manager. All indices are variable indices of that manager;
/// all iteration is by ascending index. The wood owns the equations that it has learnt; one that is
/// replaced by another of its variable is not deleted, and is its maker's again. What bears the
/// mark `classic` no program calls.
class Bddexpressionwood {
 public:
  /// Over a manager of its own.
  Bddexpressionwood();
  /// Over a manager that somebody else owns.
  explicit Bddexpressionwood(bddpp_manager* manager);
  /// A copy with copies of all equations; shares the manager if `other` does, else makes a manager
  /// with the same variables. A null `other` gives an empty shell without manager.
  explicit Bddexpressionwood(const Bddexpressionwood* other);
  Bddexpressionwood(const Bddexpressionwood& other) : Bddexpressionwood(&other) {}
  Bddexpressionwood& operator=(const Bddexpressionwood& other);
  ~Bddexpressionwood();

  /// Not 0: the manager is shared and outlives the wood.
  int get_common_bdd_manager() const { return common_bdd_manager; }
  void set_common_bdd_manager(int common) { common_bdd_manager = common; }
  bddpp_manager* my_bdd_manager() const { return man; }

  // Variables; the tables follow.
  bdd New_var_last(const std::string& name);
  /// Index of the variable of that name, made last if there is none.
  long Index_new_var_last(const std::string& name);
  bdd New_var_before_by_bdd(const bdd& var, const std::string& name);  // classic
  bdd New_var_before_by_index(long index, const std::string& name);
  bdd New_var_after_by_bdd(const bdd& var, const std::string& name);  // classic
  bdd New_var_after_by_index(long index, const std::string& name);
  /// Brings the tables to the manager's number of variables.
  void update_bdd_vars();
  /// The same after one variable was inserted at `new_index`.
  void update_bdd_vars(long new_index);

  // Equations.
  /// Reports and leaves the wood alone when e is null or its left member is no variable here.
  void learn_expression(Bddexpression* e);
  /// Enters each index of `extra` (may be null) as a reader of e.
  void learn_abstract_expression(Bddexpression* e, const index_set* extra);
  /// Learns a copy of each equation of `other`, by variable name; an equation that stood here for
  /// such a variable is deleted.
  void integrate_wood(Bddexpressionwood* other);  // classic
  /// Deletes the equation unless its variable is still read.
  void forget_expression_by_bddid(long index);
  /// The same, but leaves the readers' sets and the late date alone.
  void absolute_forget_expression_by_bddid(long index);
  void add_amont_dependance(long var_index, long user_index);  // classic
  void sup_amont_dependance(long var_index, long user_index);  // classic
  /// The indices of the equations that read the variable.
  const index_set& set_of_amont_dependances(long index) const;
  void append_not_expression(long index);

  void update_nb_level(long level) { nb_level = level; }
  /// One above the largest date known; 0 when undated.
  long Nb_level() const { return nb_level; }
  long Nb_bdd_vars() const { return nb_var_bdd; }
  long Nb_max_bdd_vars() const { return nb_max_var_bdd; }  // classic
  /// Number of equations.
  long exp_number() const { return static_cast<long>(Set_of_exp().size()); }
  /// By index; null where a variable has no equation.
  Bddexpression** Exp_table() { return exp_table.data(); }
  /// Changes with the next equation learnt or forgotten.
  const index_set& Set_of_exp() const;
  index_set Set_of_index_used_variables() const;
  /// From here on the wood, which is empty, notes which entries of its tables are in use, so that
  /// dating and emptying it cost what it holds, not what its manager has.
  void note_entries_in_use() { notes_entries_ = true; }
  bool notes_entries_in_use() const { return notes_entries_; }
  /// Deletes all equations with their dates. Only for a wood that notes its entries.
  void empty();
  void setLateDate(const bdd& var, long date);
  long getLateDate(const bdd& var) const;
  long getLateDate(long index) const;

  // Look-ups. Each reports what it does not find, and gives null, "" or -1.
  Bddexpression* exp_by_index(long index) const;
  Bddexpression* exp_by_bddname(const std::string& name) const;
  Bddexpression* exp_by_bdd(const bdd& f) const;
  /// The first equation, by index, of that name.
  Bddexpression* exp_by_name(const std::string& name) const;
  /// The n-th equation, from 0.
  Bddexpression* exp(int n) const;
  long Index_exp_by_name(const std::string& name) const;
  long Index_exp_by_bdd(const bdd& f) const;
  long Index_exp_by_bddname(const std::string& name) const;
  std::string Bddname_exp_by_index(long index) const;
  std::string Name_exp_by_index(long index) const;
  std::string Bddname_exp_by_bdd(const bdd& f) const;
  std::string Name_exp_by_bdd(const bdd& f) const;

  // Dates (dates.cc).
  /// Dates the whole wood if it has no dates; gives the number of levels.
  long compute_dates();
  /// Propagates from the listed indices only.
  long compute_dates(const std::list<long>& indices);
  void early_propagation(long index, long date);  // classic
  void late_propagation(long index, long date);   // classic
  /// The members of cycles, ascending; empty on an acyclic wood.
  std::list<long> loop_detection();
  /// All indices with an equation, by early date, then by index: an order of evaluation.
  std::list<long> earliest_sort() const;
  /// All indices with an equation, by falling late date, then by index.
  std::list<long> latest_sort() const;
  /// `known` and all transitive readers of the variable.
  index_set down_dependances(long index, long depth, const index_set& known) const;
  /// `known` and all that the variable's equation reads, transitively.
  index_set up_dependances(long index, long depth, const index_set& known) const;
  /// Weight of the heaviest chain of readers, or of dependences, from `weight` on; warns of a
  /// cycle. `up_` ends the process on a variable that depends on itself. A depth of 0 or 1 cuts no
  /// chain of an acyclic wood.
  long down_critical_path(long index, long depth, long weight);
  long up_critical_path(long index, long depth, long weight);
  void stat(std::ostream& out);
  void stat_early_dep(std::ostream& out, long index);  // classic
  void internal_stat_early_dep(std::ostream& out, long index, int indent, std::list<long>* seen);
  /// The node table and the equations of a compiled module. `map` gives the number of each variable
  /// by index, -1 for none: its equation is not written. `debug` adds comments.
  void Put_zuc(std::ostream& os, long* map, int debug);
  // Texts of the equations in the order of earliest_sort (document_code.cc).
  void Put_basic_doc(std::ostream& out);
  // Classic: texts of one target language each, whose bodies stand with the language
  // (tarn/targets/languages).
  void Put_c(std::ostream& out, const std::string& array, const std::list<std::string>& outputs);
  void Put_c(std::ostream& out, const std::string& array, const std::list<std::string>& outputs,
             const std::string& prefix, const std::string& suffix);
  void Put_blif(std::ostream& out, const std::string& prefix);
  /// Only the equations of variables that are marked 1, by index.
  void Put_blif(std::ostream& out, const std::string& prefix, const int* marks);
  /// The process and the equations in VHDL. Inputs and outputs are names of variables; `resets` and
  /// `updates` are assignments to registers, without ";".
  void Put_vhdl(std::ostream& out, const std::string& array, const std::list<std::string>& inputs,
                const std::list<std::string>& outputs, const std::list<std::string>& resets,
                const std::list<std::string>& updates);
  void Put_systemc(std::ostream& out);
  void Put_lustre(std::ostream& out, const std::string& array);
  void Put_lustre_arrayless(std::ostream& out, const std::string& array);
  void Put_esterel(std::ostream& out);
  void Put_doc(std::ostream& out, const std::string& prefix);
  void Put_latex(std::ostream& out);
  void Put_csharp(std::ostream& out, const std::string& array);
  void Put_wren(std::ostream& out, const std::string& array);
  /// Names in `outputs` are calls; `two_sided` tells of each variable index whether it has a call
  /// for false as well.
  void Put_ino_grafcet(std::ostream& out, const std::string& array,
                       const std::list<std::string>& outputs, const std::string& prefix,
                       const int* two_sided);  // classic
  /// Reports each variable whose stored readers differ from those computed.
  void coherence_dependances_check(std::ostream& out) const;  // classic
  void delete_prefixe_names(const std::string& prefix);       // classic

  // Transformations. `keep` holds user types; an equation of such a type is not removed, and what
  // an abstract equation reads never is. Dates and the number of levels may be stale afterwards.
  /// Puts constant equations into their readers (constants.cc), and removes those that had readers.
  void constants_propagation(const std::list<int>& keep);
  void constants_propagation();
  /// Propagates constants; not 0 when every equation is constant then.
  int global_tautology();
  /// Removes equations by putting their functions into their readers (inlining.cc, wires.cc): all
  /// that have readers and dependences, or those of one variable alone. An equation that reads
  /// itself stays.
  void suppress_locals(const std::list<int>& keep);
  void suppress_locals();
  /// Dates the wood afresh.
  void suppress_wires(const std::list<int>& keep);
  void suppress_wires();
  /// The same for one equation; the second leaves it in place, unread. Both end the process when it
  /// reads itself.
  void suppress_local(long index);
  /// The same where the equation has a few small readers, and they are no larger then than all were
  /// before.
  void suppress_local_that_shrinks(long index);
  void useless_local(long index);  // classic
  /// Removes the equations that neither read nor are read, but for the indices to keep.
  void clean(const index_set& keep);
  void clean(const std::list<long>& keep);
  void clean(const std::set<long>& keep) { clean(index_set(keep)); }
  /// Cofactors of all functions by c (bddpp_manager::Bdd_reduce), then constants (reductions.cc).
  void reduce_expressions(const bdd& c, const std::list<int>& keep);
  void reduce_expressions(const bdd& c);
  /// The same by bddpp_manager::Bdd_constrain, which agrees with each function on any c.
  void constrain_expressions(const bdd& c, const std::list<int>& keep);
  void reduce_expressions_when_var_forgotten_by_exist_op(long index);
  void reduce_expressions_when_var_forgotten_by_forall_op(long index);
  /// A product under which an equation becomes one: of the first in latest_sort() that is not
  /// constant; one if there is none.
  bdd reduce_proposition_by_assertion();
  /// A variable that the earliest equation with readers reads; -1 if there is none.
  long reduce_proposition_by_variable() const;  // classic
  /// Breaks the cycles by cases on variables among `candidates` that no equation computes
  /// (loop_breaking.cc); gives the indices added. `ok` becomes 0 when a cycle remains, else 1.
  index_set loop_breaking(const index_set& candidates, int& ok);
  std::set<long> loop_breaking(const std::set<long>& candidates, int& ok) {
    return loop_breaking(index_set(candidates), ok).to_set();
  }
  /// Takes in copies of all equations of `other` (inclusion.cc); the suffix is appended to every
  /// name. Dates are taken over as they stand.
  void Include_wood_instance(Bddexpressionwood& other, const std::string& suffix);
  /// All readers afresh, from dependences found afresh.
  void internal_global_build_dependances();

  // The manager's operations under their own names.
  long Bdd_if_index(const bdd& f) const { return man->Bdd_if_index(f); }
  int Bdd_is_tautology(const bdd& f, int polarity) const {
    return man->Bdd_is_tautology(f, polarity);
  }
  bdd Bdd_one() { return man->Bdd_one(); }
  bdd Bdd_zero() { return man->Bdd_zero(); }
  bdd Bdd_if(const bdd& f) { return man->Bdd_if(f); }
  bdd Bdd_then(const bdd& f) { return man->Bdd_then(f); }
  bdd Bdd_else(const bdd& f) { return man->Bdd_else(f); }
  bdd Bdd_var_by_name(const std::string& name) { return man->Bdd_var_by_name(name); }
  bdd Bdd_var_by_index(long index) { return man->Bdd_var_by_index(index); }
  long Index_var_by_bdd(const bdd& f) const { return man->Index_var_by_bdd(f); }
  long Index_var_by_name(const std::string& name) const { return man->Index_var_by_name(name); }
  std::string Name_var_by_index(long index) const { return man->Name_var_by_index(index); }
  std::string Name_var_by_bdd(const bdd& f) const { return man->Name_var_by_bdd(f); }
  bdd Bdd_ite(const bdd& f, const bdd& g, const bdd& h) { return man->Bdd_ite(f, g, h); }
  bdd Bdd_and(const bdd& f, const bdd& g) { return man->Bdd_and(f, g); }
  bdd Bdd_nand(const bdd& f, const bdd& g) { return man->Bdd_nand(f, g); }
  bdd Bdd_or(const bdd& f, const bdd& g) { return man->Bdd_or(f, g); }
  bdd Bdd_nor(const bdd& f, const bdd& g) { return man->Bdd_nor(f, g); }
  bdd Bdd_xor(const bdd& f, const bdd& g) { return man->Bdd_xor(f, g); }
  bdd Bdd_xnor(const bdd& f, const bdd& g) { return man->Bdd_xnor(f, g); }
  bdd Bdd_implication(const bdd& f, const bdd& g) { return man->Bdd_implication(f, g); }
  bdd Bdd_not(const bdd& f) { return man->Bdd_not(f); }
  bdd Bdd_eq(const bdd& f, const bdd& g) { return man->Bdd_eq(f, g); }
  int Bdds_excl(const bdd& f, const bdd& g) { return man->Bdds_excl(f, g); }
  bdd Bdd_compose(const bdd& f, const bdd& v, const bdd& g) { return man->Bdd_compose(f, v, g); }
  bdd Bdd_replace_vars(const bdd& f, const long* map) { return man->Bdd_replace_vars(f, map); }
  bdd Bdd_reduce(const bdd& f, const bdd& c) { return man->Bdd_reduce(f, c); }
  bdd Bdd_simplify(const bdd& f, const bdd& g) { return man->Bdd_simplify(f, g); }
  bdd Bdd_simplify2(const bdd& f, const bdd& g) { return man->Bdd_simplify2(f, g); }
  bdd Bdd_simplify3(const bdd& f, const bdd& g, int ignored) {
    return man->Bdd_simplify3(f, g, ignored);
  }
  bdd Bdd_exist(const bdd& f, const bdd& v) { return man->Bdd_exist(f, v); }
  bdd Bdd_forall(const bdd& f, const bdd& v) { return man->Bdd_forall(f, v); }
  void Rename_var(const std::string& new_name, const std::string& old_name) {
    man->Rename_var(new_name, old_name);
  }

 private:
  friend class Bddexpression;
  // Views of the tables as graphs, and the dating that walks them (wood_graph.h, dates.cc).
  struct Readers;
  struct Dependences;
  class Dating;
  /// What the two directions of a dating know of each variable: the longest way onward, and
  /// whether a push waits.
  struct Dating_scratch {
    static constexpr long unseen = -3;
    std::vector<long> early_height, late_height;
    std::vector<char> early_put_off, late_put_off;
  };
  class Wire_suppression;  // wires.cc

  /// Steps common to both ways of learning, `extra` readers of the variable among them. Where it
  /// throws, e is not in the tables.
  void enter_expression(Bddexpression* e, const index_set* extra);
  void enter_as_reader(long user_index, const index_set& deps);
  void add_reader(long index, long reader) {
    index_set& readers = amont_dep_table[index];
    if (notes_entries_ && readers.empty()) entries_in_use_.push_back(index);
    readers.insert(reader);
  }
  void reach_entry(long index);
  /// Ascending; all other entries of the tables are empty.
  const std::vector<long>& entries_in_use() const;
  /// Calls `see(index)` for all variables, ascending; for the entries in use where they are noted.
  template <class See>
  void for_each_entry(See see) const {
    if (notes_entries_) {
      for (long index : entries_in_use()) see(index);
    } else {
      for (long index = 0; index < nb_var_bdd; ++index) see(index);
    }
  }
  void leave_as_reader(long user_index, const index_set& deps);
  /// The slot of `index` if it can be forgotten, else null; reports an index out of range.
  Bddexpression* forgettable(long index) const;
  void delete_expression(long index);
  void note_filled(long index);
  void resize_tables(long nb_vars);
  void copy_from(const Bddexpressionwood& other);
  void clear();
  bool in_tables(long index) const { return index >= 0 && index < nb_var_bdd; }
  /// The equation of a variable, null outside the tables.
  Bddexpression* slot(long index) const { return in_tables(index) ? exp_table[index] : nullptr; }
  /// Without `new_walk` what the walk before has found still holds.
  template <class Graph>
  long heaviest_chain(const Graph& graph, long index, long depth, bool new_walk = true);
  /// Dates each equation as up_critical_path(index, 1, 1) and down_critical_path(index, 1, 0) give
  /// them on an acyclic wood, in one walk each. An edge that closes a cycle adds nothing.
  void date_by_weight();
  /// What an equation reads no more, and what it reads now, ascending.
  struct Dependence_change {
    std::vector<long> lost, gained;
  };
  /// Replaces the function of an equation; who reads what is the caller's to correct.
  Dependence_change exchange_function(Bddexpression& e, const bdd& f);
  /// Replaces the function of an equation, and corrects the readers by what it reads now.
  void change_function(Bddexpression& e, long index, const bdd& f);
  template <class Change>
  void change_functions(Change change);
  bool has_abstract_reader(long index) const;
  /// Puts constants into their readers until nothing changes; gives the equations that are constant
  /// and were read.
  std::vector<long> spread_constants();
  /// Among `open`, the variable without computed equation that the members of `loops` read most; -1
  /// for none.
  long most_read(const std::list<long>& loops, const index_set& open) const;
  /// Puts the function of `index` into its boolean readers, and forgets the readers without
  /// equation.
  void inline_into_readers(long index);
  bool can_be_inlined(long index) const;
  void drop_stale_readers();
  /// Ends the process with a report if the equation of `index` has readers and reads itself.
  void refuse_self_dependence(long index) const;

  int common_bdd_manager = 0;
  bddpp_manager* man = nullptr;
  // The filled slots. A change in the middle only marks the set; Set_of_exp() brings it in step, so
  // that learning or forgetting many in any order stays linear.
  mutable index_set ens_exp;
  mutable bool ens_exp_in_step = true;
  long nb_var_bdd = 0;
  long nb_max_var_bdd = 1;
  zeroed_table<Bddexpression*> exp_table;
  paged_table<index_set> amont_dep_table;
  paged_table<long> latest_date_table;
  long nb_level = 0;
  bool notes_entries_ = false;
  mutable std::vector<long> entries_in_use_;
  mutable std::size_t sorted_entries_ = 0;  ///< so many of them, from the first
  Dating_scratch dating_scratch_;           // where entries are noted: as it was before each dating
  // Scratch of heaviest_chain, kept from call to call so that a short walk costs no clearing.
  std::vector<std::uint64_t> walk_mark;
  std::vector<long> walk_value;
  std::uint64_t walk_number = 0;
};

/// One line a wood, one an equation: its variable, what it reads, its dates.
std::ostream& operator<<(std::ostream& out, const Bddexpressionwood& wood);

/// `roots` and all that they need, transitively: what the equations read. A variable that `ends`
/// accepts (nullptr: none) is a member, but not what its equation reads.
std::unordered_set<long> dependence_cone(const Bddexpressionwood& wood, std::vector<long> roots,
                                         const std::function<bool(long)>& ends = nullptr);

/// The images of the members under `table`.
index_set set_reencoding(const index_set& members, const long* table);

/// Dates the wood.
long PERT(Bddexpressionwood* wood);

}  // namespace kiva
