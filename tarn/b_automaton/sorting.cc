// The order of evaluation, and the loops that stand in its way.

#include <iostream>

#include "pert_exp/undated.h"
#include "tarn/b_automaton/b_automaton.h"

namespace kiva {

std::list<long> b_automaton::sort() {
  forget_dates(*wood_);
  levels_ = static_cast<int>(wood_->compute_dates());
  return wood_->loop_detection();
}

int b_automaton::make_sortable(int verbose, int dump, std::ostream& stream) {
  if (verbose != 0) std::cerr << "call make_sortable process \n";
  index_set candidates;
  for (int k = 0; k < nb_inputs(); ++k) candidates.insert(input_index(k));
  forget_dates(*wood_);
  int ok = 0;
  for (long index : wood_->loop_breaking(candidates, ok))
    names_.locals.push_back(nom_associe(index));
  if (verbose != 0) std::cerr << "   terminated ...\n";
  if (dump != 0) stream << "sorted and expanded wood:\n" << *wood_ << '\n';
  return ok;
}

void b_automaton::keep_outputs_registers_equations() {
  wood_->update_bdd_vars();
  const auto keep = [&](long index) {
    if (Bddexpression* e = wood_->Exp_table()[index]) e->setUserType(1);
  };
  for (int k = 0; k < nb_state_vars(); ++k) keep(next_state_index(k));
  for (int k = 0; k < nb_outputs(); ++k) keep(output_index(k));
}

std::list<std::string> b_automaton::identify_undef_variables() const {
  std::list<std::string> names;
  for (long index = 0; index < manager_associe()->Nb_bdd_vars(); ++index)
    if (wood_->exp_by_bdd(wood_->Bdd_var_by_index(index)) == nullptr)
      names.push_back(nom_associe(index));
  return names;
}

}  // namespace kiva
