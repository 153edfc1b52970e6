// What can be asked of a single node: shape, order and references. None of it makes a node.

#include "bdd/bdd_node.h"

#include "base/graph_walk.h"
#include "bdd/bddpp.h"
#include "bdd/walk.h"

namespace kiva {

g_longlong bdd_node::signature() const {
  if (internal_var_id < 0) return g_longlong(static_cast<long>(internal_var_id));
  // The variable's part has 32 bits before it is widened.
  const auto variable =
      static_cast<std::int32_t>(static_cast<std::uint32_t>(internal_var_id) << 20);
  g_longlong key(static_cast<long>(variable));
  key = key | static_cast<unsigned long>(then_node()->global_id());
  key.lshift(20);
  key = key | static_cast<unsigned long>(else_node()->global_id());
  key.lshift(1);
  return key | (else_link_type() == 1 ? 1ul : 0ul);
}

index_set bdd_node::var_id_dep() const {
  bddpp_manager* manager = my_manager();
  if (manager == nullptr) return {};
  return manager->set_of_id_depend_on(bdd(manager, 1, const_cast<bdd_node*>(this)));
}

bool bdd_node::var_id_dep(long id) const {
  bddpp_manager* manager = my_manager();
  if (manager == nullptr || id < 0 || id >= manager->Nb_bdd_vars()) return false;
  const long wanted = manager->idtoindex(id);
  bool found = false;
  node_walk(manager).from(const_cast<bdd_node*>(this), [&](const bdd_node* node) {
    found = found || node->internal_var_id == id;
    return !found && node->var_index() >= 0 && node->var_index() < wanted;
  });
  return found;
}

bool bdd_node::is_correct() const {
  bddpp_manager* manager = my_manager();
  if (manager == nullptr) return false;
  bool correct = true;
  node_walk(manager).from(const_cast<bdd_node*>(this), [&](const bdd_node* node) {
    if (!correct || node->internal_var_id == -1) return false;
    const auto fits = [&](const bdd_node* child) {
      return child != nullptr && child != node && child->my_manager() == manager &&
             (child->internal_var_id == -1 || child->var_index() > node->var_index());
    };
    correct = node->internal_var_id >= 0 && node->internal_var_id < manager->Nb_bdd_vars() &&
              fits(node->then_node()) && fits(node->else_node());
    return correct;
  });
  return correct;
}

void bdd_node::Lustre_writing_node_used(int* used, bdd_node* one) {
  const auto enters = [](bdd_node* node) {
    if (node == nullptr || node->is_marked()) return false;
    node->mark();
    return true;
  };
  walk_from(std::vector<bdd_node*>{this}, enters, [&](bdd_node* node, auto more) {
    used[node->global_id()] = 1;
    if (node == one) return;
    more(node->else_node());
    more(node->then_node());
  });
}

}  // namespace kiva
