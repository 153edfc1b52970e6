#include "pert_exp/unfold.h"

namespace kiva {

bdd unfolded(const Bddexpressionwood& wood, const bdd& f, const std::function<bool(long)>& stops) {
  bddpp_manager* manager = wood.my_bdd_manager();
  const auto equation = [&](long index) -> const Bddexpression* {
    const Bddexpression* e = wood.exp_by_index(index);
    const bool computes =
        e != nullptr && e->getAbstraction() == 0 && e->my_bdd_exp().initialised() && !stops(index);
    return computes ? e : nullptr;
  };
  const index_set roots = manager->set_of_index_depend_on(f);
  const std::unordered_set<long> needed = dependence_cone(
      wood, {roots.begin(), roots.end()}, [&](long index) { return equation(index) == nullptr; });
  std::vector<bdd> functions(static_cast<size_t>(wood.Nb_bdd_vars()));
  const auto expanded = [&](const bdd& g) {
    std::vector<std::pair<long, bdd>> values;
    for (long index : manager->set_of_index_depend_on(g))
      if (functions[static_cast<size_t>(index)].initialised())
        values.emplace_back(index, functions[static_cast<size_t>(index)]);
    return manager->Bdd_vector_compose(g, values);
  };
  for (long index : wood.earliest_sort())
    if (needed.contains(index) && equation(index) != nullptr)
      functions[static_cast<size_t>(index)] = expanded(equation(index)->my_bdd_exp());
  return expanded(f);
}

}  // namespace kiva
