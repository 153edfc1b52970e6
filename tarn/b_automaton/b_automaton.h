#pragma once

#include <iosfwd>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "tarn/b_automaton/b_autom_dec.h"

namespace kiva {

/// A wire of a composition: an output of one automaton to an input of another, all by position.
struct b_automaton_connector {
  int source_automaton = -1;
  int source_output = -1;
  int destination_automaton = -1;
  int destination_input = -1;
};

/// source, " --> ", destination.
std::ostream& operator<<(std::ostream& out, const b_automaton_connector& connector);

/// A boolean Mealy machine: a wood whose variables are, by index, s state variables, their s next
/// state variables, i inputs, o outputs, and locals. The equation of index s + k gives the new
/// value of state k; outputs and locals have equations, state and inputs have none.
///
/// Positions (int) count within a kind from 0, idents and indices (long) are variable indices of
/// the wood; literal arrays have one entry for each variable: 0, 1, or 2 for unknown.
class b_automaton {
 public:
  /// Takes over the names and the wood of the declaration. `init` has one entry for each state
  /// variable: 0, 1 or 2.
  b_automaton(b_autom_dec* declaration, const int* init, const bdd& assertion,
              const bdd& invariant);
  /// The parallel composition of n automata (composition.cc). Ends the process after a report on a
  /// bad connector, or when two names meet.
  b_automaton(int n, b_automaton* const* automata, const std::string* instance_names,
              int nb_connectors, const b_automaton_connector* connectors);
  b_automaton(const b_automaton&) = delete;
  b_automaton& operator=(const b_automaton&) = delete;

  // Names and numbers. "?" and a message for a position out of range; -1 for an unknown name.
  int nb_state_vars() const { return static_cast<int>(names_.state.size()); }
  int nb_inputs() const { return static_cast<int>(names_.inputs.size()); }
  int nb_outputs() const { return static_cast<int>(names_.outputs.size()); }
  int nb_locals() const { return static_cast<int>(names_.locals.size()); }
  std::string nom_state_var(int k) const;
  std::string nom_next_state_var(int k) const;
  std::string nom_input(int k) const;
  std::string nom_output(int k) const;
  std::string nom_local(int k) const;
  int num_input(const std::string& name) const;
  int num_output(const std::string& name) const;
  int num_local(const std::string& name) const;
  void change_nom_input(int k, const std::string& name);
  void change_nom_output(int k, const std::string& name);
  std::list<std::string> state_vars_list() const;
  std::list<std::string> next_state_vars_list() const;
  std::list<std::string> inputs_list() const;
  std::list<std::string> outputs_list() const;
  std::list<std::string> locals_list() const;
  // Where a kind begins among the indices.
  long next_state_index(int k) const { return nb_state_vars() + k; }
  long input_index(int k) const { return 2 * nb_state_vars() + k; }
  long output_index(int k) const { return input_index(nb_inputs()) + k; }
  long local_index(int k) const { return output_index(nb_outputs()) + k; }

  // Variables and equations.
  bddpp_manager* manager_associe() const { return wood_->my_bdd_manager(); }
  Bddexpressionwood* wood_associee() const { return wood_.get(); }
  /// -1 for an unknown name.
  long ident_associe(const std::string& name) const;
  long ident_associe(const bdd& variable) const;
  bdd bdd_ident_associe(const std::string& name) const;
  std::string nom_ident_associe(const bdd& variable) const;
  std::string nom_associe(long ident) const;
  /// The function of the variable; a default-built handle, with the wood's message, for none.
  bdd bdd_exp_ident_associe(const std::string& name) const;
  /// The n-th equation by index, from 0.
  Bddexpression* equ_def(int n) const { return wood_->exp(n); }
  int nb_equ_def() const { return static_cast<int>(wood_->exp_number()); }
  const bdd& assertion() const { return assertion_; }
  const bdd& invariant() const { return invariant_; }
  /// Value of compute_dates() at the last sort(); 0 before.
  int levels() const { return levels_; }
  /// 2 out of range, after a warning.
  int valeur_initiale_state_var(int k) const;
  /// The initial values, and 2 for all else.
  void etat_init(int* literals) const;
  /// The product of the state variables, negated where the initial value is not 1.
  bdd bdd_etat_init() const;
  /// Negates the function of an output.
  void reverse_output(int k);
  /// A function as a sum of products, of the cover level `mode`.
  void putbdd(const bdd& f, std::ostream& out, int mode) const;
  std::string bddtoString(const bdd& f, int mode) const;
  /// Only says that it is to be seen again.
  void export_awaited_inputs() const;

  // Order of evaluation (sorting.cc).
  /// Dates the equations afresh; the members of cycles, empty when they can be sorted.
  std::list<long> sort();
  /// Breaks cycles by cases on inputs; new variables become locals. Not 0 when none remains.
  int make_sortable(int verbose, int dump, std::ostream& stream);
  /// Protects the equations of outputs and next state in transformations: user type 1.
  void keep_outputs_registers_equations();
  /// The names of the variables without equation.
  std::list<std::string> identify_undef_variables() const;
  /// A copy of a function of this automaton in another manager; `table` gives the new index of each
  /// variable.
  bdd bdd_isomorphe(bddpp_manager* manager, const bdd& f, const int* table) const;

  // One instant (stepping.cc). The wood must have been sorted.
  /// By literals: evaluates all equations on a copy of the array. 1 when nothing stayed unknown,
  /// else 0, with the reasons on the error stream if `verbose`.
  int evaluation_etat_suivant(const int* literals, int verbose, int* result) const;
  /// By a cube over state and inputs: the product of the next state, in state variables, and that
  /// of the outputs. What the cube does not decide is reported and left out.
  bdd evaluation_etat_suivant(const bdd& cube, int unused, bdd* outputs) const;
  /// All cases that the variables left free by the cube can give; their number n. Entry i of each
  /// array, below n, describes case i: disjoint conditions that cover everything, and the products
  /// as above. The caller makes the arrays long enough.
  int evaluation_etats_suivants(const bdd& cube, bdd* conditions, bdd* next_states,
                                bdd* outputs) const;
  /// The same in lists that grow.
  struct Case {
    bdd condition, next_state, outputs;
  };
  std::vector<Case> cases(const bdd& cube) const;

  // Sensitivity to inputs (sensitivity.cc), traced on the error stream.
  /// Disjoint cubes that cover everything; each, with the cube `state`, decides every equation of
  /// the output's cone. `index` is a variable; its own equation counts as part of the cone if
  /// `with_own`, else only where it reads itself.
  std::list<bdd> sensibilite_entrees(const bdd& state, long index, bool with_own = false) const;
  /// The same over the whole wood; splits by implicants, so that what it gives need be no cubes.
  std::list<bdd> old_sensibilite_entrees(const bdd& state) const;

  // Simplification (cleaning.cc).
  /// Quantify the inputs out of all equations.
  void forget_forall_inputs();
  void forget_exist_inputs();
  /// Drops the equations that no output needs, and reports them; a mark for each variable, 1 for
  /// those needed.
  std::vector<int> useless_clean();

  // Classic: the automaton `name` as a text of one target language each, whose bodies stand with
  // the language (tarn/targets/languages). `mode` selects the type in VHDL_put, and means nothing
  // elsewhere.
  void BAC_put(std::ostream& out) const;
  void BLIF_put(std::ostream& out, int mode, const std::string& name) const;
  /// Only what is marked 1 (useless_clean) of inputs, state and equations.
  void BLIF_restrict_put(std::ostream& out, int mode, const std::string& name,
                         const std::vector<int>& marks) const;
  void C_put(std::ostream& body, std::ostream& header, int mode, const std::string& name) const;
  /// `actions` are outputs that are driven by one call.
  void INO_put_grafcet(std::ostream& out, int mode, const std::string& name,
                       const std::list<std::string>& actions) const;
  void ESTEREL_put(std::ostream& out, int mode, const std::string& name) const;
  void LATEX_put(std::ostream& out, int mode, const std::string& name) const;
  void DOC_put(std::ostream& out, int mode, const std::string& name) const;
  void ZU_put(std::ostream& out, int mode, const std::string& name) const;
  void LUSTRE_put(std::ostream& out, int mode, const std::string& name) const;
  void SYSTEMC_put(std::ostream& body, std::ostream& header, int mode,
                   const std::string& name) const;
  void VHDL_put(std::ostream& out, int mode, const std::string& name) const;
  void CSHARP_put(std::ostream& out, int mode, const std::string& name) const;

 private:
  /// A copy of the wood on its own manager.
  std::unique_ptr<Bddexpressionwood> shared_copy() const;
  /// The product of the variables from `to` on, negated where the equation from `from` on of the
  /// wood is zero; what is no constant is reported as `what`.
  bdd decided(Bddexpressionwood& wood, long from, long to, int count,
              const std::string& what) const;

  automaton_names names_;
  int levels_ = 0;
  std::vector<int> initial_values_;
  std::unique_ptr<Bddexpressionwood> wood_;
  bdd assertion_, invariant_;  // behind the wood: handles go before their manager
};

/// A plain listing.
std::ostream& operator<<(std::ostream& out, const b_automaton& automaton);

/// Composes two automata, each output wired to the other's input of its name; null for a null
/// argument.
std::unique_ptr<b_automaton> merge(b_automaton* a, b_automaton* b);
/// An automaton without state that compares the outputs of two others: its one output "equiv" holds
/// where all outputs that bear a name of both lists agree. The connectors lead from automata 0 and
/// 1 to it as automaton 2; the array is the caller's.
std::unique_ptr<b_automaton> equiv_observer(const std::list<std::string>& outputs1,
                                            const std::list<std::string>& outputs2, int* nb,
                                            b_automaton_connector** connectors);
/// Two automata on common inputs, with the one output "equiv"; null for a null argument.
std::unique_ptr<b_automaton> observateur_equivalence(b_automaton* a, b_automaton* b);

}  // namespace kiva
