// Shape tests: what a handle is, without making a node.

#include "bdd/bddpp.h"

namespace kiva {

int bddpp_manager::Bdd_is_var(const bdd& f) const {
  return f.node() != nullptr && f.link_type() == 1 && f.node()->is_var(internal_bdd_node_one);
}

int bddpp_manager::Bdd_is_negvar(const bdd& f) const {
  return f.node() != nullptr && f.link_type() == -1 && f.node()->is_var(internal_bdd_node_one);
}

int bddpp_manager::Bdd_is_cube(const bdd& f) const {
  // A product has at each node a branch that is zero.
  const bdd_node* node = f.node();
  int link = f.link_type();
  while (node != nullptr && node != internal_bdd_node_one) {
    const int else_link = link * node->else_link_type();
    const auto is_zero = [&](const bdd_node* child, int child_link) {
      return child == internal_bdd_node_one && child_link == -1;
    };
    if (is_zero(node->then_node(), link)) {
      link = else_link;
      node = node->else_node();
    } else if (is_zero(node->else_node(), else_link)) {
      node = node->then_node();
    } else {
      return 0;
    }
  }
  return node != nullptr;
}

int bddpp_manager::Bdd_is_tautology(const bdd& f) const {
  return f.node() == internal_bdd_node_one;
}

int bddpp_manager::Bdd_is_tautology(const bdd& f, int polarity) const {
  return polarity != 0 ? Bdd_is_one_tautologic(f) : Bdd_is_zero_tautologic(f);
}

int bddpp_manager::Bdd_is_one_tautologic(const bdd& f) const {
  return Bdd_is_tautology(f) && f.link_type() == 1;
}

int bddpp_manager::Bdd_is_zero_tautologic(const bdd& f) const {
  return Bdd_is_tautology(f) && f.link_type() == -1;
}

}  // namespace kiva
