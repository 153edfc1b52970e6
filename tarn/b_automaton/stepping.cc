// One instant: by literals, by a cube that decides everything, and by a cube that leaves inputs
// free.
//
// The last enumerates conditions. Each open condition has a copy of the wood that agrees with the
// automaton there: the generalised cofactor, by the whole condition, keeps a function from being
// constant unless it is constant within the condition. So an open equation splits its condition in
// two that both hold somewhere, and the enumeration ends.

#include <deque>
#include <iostream>

#include "tarn/b_automaton/b_automaton.h"

namespace kiva {

namespace {

const std::list<int> kept = {1};  // outputs and next state

/// Why the equation has no value; `result` holds what is known when its turn has come.
std::string why_unknown(const Bddexpressionwood& wood, const Bddexpression& e, const int* result) {
  std::string reason;
  for (long read : e.set_of_var_dependances()) {
    if (result[read] != 2) continue;
    const Bddexpression* other = wood.exp_by_index(read);
    if (other != nullptr && other->getEarlyDate() >= e.getEarlyDate())
      reason += "ERROR IN SORTING EQUATIONS ... ";
    const std::string name = wood.Name_var_by_index(read);
    reason += " the variable " + e.my_bddname() + " left member of equation " + e.my_name() +
              "  depends on " + name + " because the variable " + name + " not defined\n";
  }
  return reason.empty() || e.getAbstraction() != 0 ? "\n\n and I don't know how to evaluate it!\n"
                                                   : reason;
}

}  // namespace

int b_automaton::evaluation_etat_suivant(const int* literals, int verbose, int* result) const {
  bddpp_manager* manager = manager_associe();
  std::copy(literals, literals + manager->Nb_bdd_vars(), result);
  int complete = 1;
  std::string text;
  for (long index : wood_->earliest_sort()) {
    const Bddexpression& e = *wood_->exp_by_index(index);
    result[index] =
        e.getAbstraction() != 0 ? 2 : manager->Bdd_eval_for_literal(e.my_bdd_exp(), result);
    if (result[index] != 2) continue;
    complete = 0;
    if (verbose == 0) continue;
    text += "ERROR IN EVALUATION: \n\n" + e.my_bddname();
    if (e.getAbstraction() == 0) text += "= " + bddtoString(e.my_bdd_exp(), 1);
    text += '\n' + why_unknown(*wood_, e, result);
  }
  std::cerr << text;
  return complete;
}

std::unique_ptr<Bddexpressionwood> b_automaton::shared_copy() const {
  const int common = wood_->get_common_bdd_manager();
  wood_->set_common_bdd_manager(1);
  auto copy = std::make_unique<Bddexpressionwood>(wood_.get());
  wood_->set_common_bdd_manager(common);
  return copy;
}

bdd b_automaton::decided(Bddexpressionwood& wood, long from, long to, int count,
                         const std::string& what) const {
  bddpp_manager* manager = manager_associe();
  bdd product = manager->Bdd_one();
  for (int k = 0; k < count; ++k) {
    const Bddexpression* e = wood.exp_by_index(from + k);
    if (e == nullptr) continue;
    if (!e->my_bdd_exp().initialised() || !manager->Bdd_is_tautology(e->my_bdd_exp())) {
      std::cerr << "no possible evaluation for " << what << k << '\n';
      continue;
    }
    const bdd variable = manager->Bdd_var_by_index(to + k);
    product = manager->Bdd_and(
        product, e->my_bdd_exp() == manager->Bdd_one() ? variable : manager->Bdd_not(variable));
  }
  return product;
}

bdd b_automaton::evaluation_etat_suivant(const bdd& cube, int, bdd* outputs) const {
  const auto copy = shared_copy();
  copy->reduce_expressions(cube, kept);
  *outputs = decided(*copy, output_index(0), output_index(0), nb_outputs(), "output index ");
  return decided(*copy, next_state_index(0), 0, nb_state_vars(), "index ");
}

std::vector<b_automaton::Case> b_automaton::cases(const bdd& cube) const {
  bddpp_manager* manager = manager_associe();
  struct Open {
    std::unique_ptr<Bddexpressionwood> wood;
    bdd condition;
  };
  std::deque<Open> work;
  work.push_back({shared_copy(), manager->Bdd_one()});
  work.back().wood->reduce_expressions(cube, kept);
  std::vector<Case> found;
  while (!work.empty()) {
    Open open = std::move(work.front());
    work.pop_front();
    Bddexpressionwood& wood = *open.wood;
    bdd p = wood.reduce_proposition_by_assertion();
    if (p == manager->Bdd_one()) {
      found.push_back(
          {open.condition, decided(wood, next_state_index(0), 0, nb_state_vars(), "index "),
           decided(wood, output_index(0), output_index(0), nb_outputs(), "output index ")});
      continue;
    }
    // An implicant may lie wholly outside the condition, where the cofactor is free.
    if (manager->Bdds_excl(p, open.condition)) {
      for (long index : wood.latest_sort()) {
        const bdd& f = wood.exp_by_index(index)->my_bdd_exp();
        if (!f.initialised() || manager->Bdd_is_tautology(f)) continue;
        p = manager->Bdd_one_implicant(manager->Bdd_and(f, open.condition));
        break;
      }
    }
    Open other{std::make_unique<Bddexpressionwood>(&wood), {}};
    other.condition = manager->Bdd_and(manager->Bdd_not(p), open.condition);
    open.condition = manager->Bdd_and(p, open.condition);
    for (Open* half : {&open, &other}) {
      half->wood->constrain_expressions(half->condition, kept);
      work.push_back(std::move(*half));
    }
  }
  return found;
}

int b_automaton::evaluation_etats_suivants(const bdd& cube, bdd* conditions, bdd* next_states,
                                           bdd* outputs) const {
  int n = 0;
  for (const Case& one : cases(cube)) {
    conditions[n] = one.condition;
    next_states[n] = one.next_state;
    outputs[n++] = one.outputs;
  }
  return n;
}

}  // namespace kiva
