// Inputs quantified out of all equations, and equations that no output needs.

#include <iostream>

#include "tarn/b_automaton/b_automaton.h"
#include "tarn/session/session.h"

namespace kiva {

void b_automaton::forget_forall_inputs() {
  for (int k = 0; k < nb_inputs(); ++k)
    wood_->reduce_expressions_when_var_forgotten_by_forall_op(input_index(k));
}

void b_automaton::forget_exist_inputs() {
  for (int k = 0; k < nb_inputs(); ++k)
    wood_->reduce_expressions_when_var_forgotten_by_exist_op(input_index(k));
}

namespace {

/// Marks what the equation of a marked variable reads; not 0 when that is something new.
int internal_use_detection(const Bddexpressionwood& wood, long index, std::vector<int>& marks) {
  const Bddexpression* e = wood.exp_by_index(index);
  if (marks[static_cast<size_t>(index)] == 0 || e == nullptr) return 0;
  int changed = 0;
  for (long read : e->set_of_index_used_variables()) {
    int& mark = marks[static_cast<size_t>(read)];
    if (mark == 0) mark = changed = 1;
  }
  return changed;
}

}  // namespace

std::vector<int> b_automaton::useless_clean() {
  told_text() << "b_automaton::useless_clean() A CONTROLER ...\n";
  const long count = manager_associe()->Nb_bdd_vars();
  wood_->update_bdd_vars();
  std::vector<int> marks(static_cast<size_t>(count), 0);
  for (int k = 0; k < nb_outputs(); ++k) marks[static_cast<size_t>(output_index(k))] = 1;
  // A register that is read needs its next value.
  const auto needs_next = [&] {
    int changed = 0;
    for (int k = 0; k < nb_state_vars(); ++k) {
      int& next = marks[static_cast<size_t>(next_state_index(k))];
      if (marks[static_cast<size_t>(k)] != 0 && next == 0) next = changed = 1;
    }
    return changed;
  };
  for (int changed = 1; changed != 0;) {
    changed = needs_next();
    for (long index = 0; index < count; ++index) {
      if (internal_use_detection(*wood_, index, marks) == 0) continue;
      changed = 1;
      std::cerr << num_output(nom_associe(index)) << '\n';
    }
  }
  told_text() << "useless_clean report:\n";
  int variables = 0, latches = 0;
  for (long index = 0; index < count; ++index) {
    if (marks[static_cast<size_t>(index)] != 0) continue;
    told_text() << " variable: " << nom_associe(index) << '\n';
    const bool is_latch = index >= next_state_index(0) && index < input_index(0);
    ++(is_latch ? latches : variables);
    wood_->absolute_forget_expression_by_bddid(index);
    if (num_output(nom_associe(index)) >= 0) std::cerr << "en particulier ici ...\n";
  }
  told_text() << variables << " useless variables identified ... cancelling\n"
              << latches << " useless latches identified ... cancelling\n";
  return marks;
}

}  // namespace kiva
