// The text of one equation in Esterel: a signal is emitted under a condition.

#include <ostream>
#include <unordered_map>

#include "pert_exp/equation_code.h"

namespace kiva {

std::string esterel_condition(const bdd& f, const std::function<std::string(long index)>& name) {
  bddpp_manager* manager = f.manager_ref();
  if (manager->Bdd_is_tautology(f)) return manager->Print_sop_to_ESTEREL_String(f, 0);
  return manager->Print_sop_to_String_named(" or ", " and ", "not ", "", f, name, 0);
}

double esterel_products(const bdd& f) {
  // By node: the paths to one and to zero.
  std::unordered_map<const bdd_node*, std::pair<double, double>> paths;
  const bdd_node* one = f.manager_ref()->Bdd_node_one();
  paths.emplace(one, std::pair(1.0, 0.0));
  const auto count = [&](const bdd_node* node, auto& self) -> std::pair<double, double> {
    if (const auto at = paths.find(node); at != paths.end()) return at->second;
    const auto then_paths = self(node->then_node(), self);
    auto else_paths = self(node->else_node(), self);
    if (node->else_link_type() == -1) std::swap(else_paths.first, else_paths.second);
    const std::pair sum(then_paths.first + else_paths.first, then_paths.second + else_paths.second);
    paths.emplace(node, sum);
    return sum;
  };
  const auto both = count(f.node(), count);
  return f.link_type() == -1 ? both.second : both.first;
}

void put_esterel_emission(std::ostream& out, const std::string& signal,
                          const std::string& condition) {
  out << "  present [" << condition << "] then\n    emit " << signal << "\n  end present\n";
}

void Bddexpression::put_esterel(std::ostream& out) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_esterel_emission(out, my_bddname(),
                       my_bdd_manager()->Print_sop_to_ESTEREL_String(bdd_exp, 0));
}

void Bddexpressionwood::Put_esterel(std::ostream& out) {
  for (long index : earliest_sort()) exp_table[index]->put_esterel(out);
}

}  // namespace kiva
