#pragma once

#include <vector>

#include "bdd/internals.h"

namespace kiva {

/// Visits the nodes of diagrams, each once, through stamps on the nodes: marks stay as they are.
/// Two walks over one manager must not interleave.
class node_walk {
 public:
  explicit node_walk(bddpp_manager* manager) : stamp_(bdd_internals(manager).new_stamp()) {}

  /// Calls visit(node) for each node from `root` down that this walk has not seen, parents first;
  /// visit tells whether to go on below the node.
  template <class Visit>
  void from(bdd_node* root, Visit visit) {
    std::vector<bdd_node*> open;
    for (bdd_node* node = root;;) {
      if (node != nullptr && node->visit_stamp != stamp_) {
        node->visit_stamp = stamp_;
        if (visit(node)) {
          bdd_node* other = node->else_node();
          if (other != nullptr && other->visit_stamp != stamp_) open.push_back(other);
          node = node->then_node();
          continue;
        }
      }
      if (open.empty()) return;
      node = open.back();
      open.pop_back();
    }
  }
  std::uint32_t stamp() const { return stamp_; }

 private:
  std::uint32_t stamp_;
};

}  // namespace kiva
