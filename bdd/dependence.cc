// What a function depends on. Supports are found by a walk when they are asked for: stored on the
// nodes they would cost the product of nodes and variables.

#include <algorithm>
#include <iostream>

#include "bdd/walk.h"

namespace kiva {

namespace {

/// Calls take(id) once for each variable of the diagrams from `root` down.
template <class Take>
void for_each_variable(bddpp_manager* manager, bdd_node* root, Take take) {
  std::vector<std::uint32_t>& stamps = bdd_internals(manager).memory().variable_stamps;
  stamps.resize(manager->Nb_bdd_vars(), 0);
  node_walk walk(manager);
  walk.from(root, [&](const bdd_node* node) {
    const long id = node->var_id();
    if (id < 0) return false;
    if (stamps[id] != walk.stamp()) {
      stamps[id] = walk.stamp();
      take(id);
    }
    return true;
  });
}

}  // namespace

int bddpp_manager::Bdd_node_depends_on(bdd_node* n, bdd_node* m) const {
  if (n == nullptr || m == nullptr || n->my_manager() != this || m->my_manager() != this) {
    std::cerr << "Error in bddpp_manager::Bdd_node_depends_on():  bad Bdd manager or bdd(s) not "
                 "initialized!\n";
    return 0;
  }
  if (n->var_id() == m->var_id()) return 1;
  return n->var_id_dep(m->var_id()) ? 1 : 0;
}

int bddpp_manager::Bdd_depends_on(const bdd& f, const bdd& g) const {
  return Bdd_node_depends_on(f.node(), g.node());
}

index_set bddpp_manager::set_of_id_depend_on(const bdd& f) const {
  if (f.manager_ref() != this || f.node() == nullptr) {
    std::cerr << "Warning: call  bddpp_manager::set_of_index_depend_on() with a bad manager\n";
    return {};
  }
  std::vector<long> ids;
  for_each_variable(f.manager_ref(), f.node(), [&](long id) { ids.push_back(id); });
  return index_set::from_unsorted(std::move(ids));
}

index_set bddpp_manager::set_of_index_depend_on(const bdd& f) const {
  std::vector<long> indices;
  for (long id : set_of_id_depend_on(f)) indices.push_back(idtoindex(id));
  return index_set::from_unsorted(std::move(indices));
}

int bddpp_manager::exists_common_variables(const bdd& f, const bdd& g) const {
  const index_set of_f = set_of_id_depend_on(f), of_g = set_of_id_depend_on(g);
  return std::any_of(of_f.begin(), of_f.end(), [&](long id) { return of_g.contains(id); }) ? 1 : 0;
}

void bddpp_manager::Present_variables(const bdd& f, int* present) const {
  std::fill_n(present, internal_bdd_vars, 0);
  for (long index : set_of_index_depend_on(f)) present[index] = 1;
}

int bddpp_manager::Variable_awaited(const bdd& f, long index) {
  if (index < 0 || index >= internal_bdd_vars) return 0;
  return Bdd_depends_on(f, Bdd_var_by_index(index));
}

int bddpp_manager::Variable_true_awaited(const bdd& f, long index) {
  if (!Variable_awaited(f, index)) return 0;
  return Bdd_is_zero_tautologic(Bdd_cube_reduce(f, Bdd_var_by_index(index))) ? 0 : 1;
}

int bddpp_manager::Variable_false_awaited(const bdd& f, long index) {
  if (!Variable_awaited(f, index)) return 0;
  return Bdd_is_zero_tautologic(Bdd_cube_reduce(f, Bdd_not(Bdd_var_by_index(index)))) ? 0 : 1;
}

}  // namespace kiva
