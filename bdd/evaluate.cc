// Three-valued evaluation. Known literals choose a branch; at an unknown one both branches are
// evaluated, and the result is known where they agree.
//
// As long as no unknown literal is met this is one walk down. From the first unknown on each node
// is evaluated once: its value, taken without complement, stays on the node under the stamp of
// this call, and the nodes under way lie in a stack on the heap.

#include <iostream>

#include "base/process_end.h"
#include "bdd/internals.h"

namespace kiva {

namespace {

constexpr int unknown = 2;

int complement_if(bool flip, int value) {
  return flip && value != unknown ? 1 - value : value;
}

}  // namespace

class ternary_evaluation {
 public:
  ternary_evaluation(const bdd_internals& diagram, const int* literals)
      : d_(diagram), literals_(literals), stamp_(diagram.new_stamp()) {}

  int value_of(bdd_edge root) {
    int value = unknown;
    if (known(root, value)) return value;
    open(root);
    for (;;) {
      step& top = open_.back();
      const bdd_node* node = d_.node(top.edge);
      // `value` is missing when the top step has just been opened.
      if (top.state == step::opened) {
        top.state = top.literal == unknown ? step::in_then : step::in_last;
        const bdd_edge here = top.edge.regular();
        const bdd_edge next =
            top.literal == unknown || top.literal == 1 ? d_.then_of(here) : d_.else_of(here);
        if (!known(next, value)) {
          open(next);
          continue;
        }
      }
      if (top.state == step::in_then) {
        top.then_value = value;
        top.state = step::in_else;
        // An unknown then branch decides.
        const bdd_edge next = d_.else_of(top.edge.regular());
        if (value != unknown && !known(next, value)) {
          open(next);
          continue;
        }
      }
      if (top.state == step::in_else && value != top.then_value) value = unknown;
      node->visit_stamp = stamp_;
      node->visit_value = static_cast<std::uint16_t>(value);
      value = complement_if(top.edge.complemented(), value);
      open_.pop_back();
      if (open_.empty()) return value;
    }
  }

 private:
  struct step {
    enum { opened, in_then, in_else, in_last };
    bdd_edge edge;
    int literal, state, then_value;
  };

  void open(bdd_edge f) { open_.push_back({f, literals_[d_.index(f)], step::opened, 0}); }
  bool known(bdd_edge f, int& value) const {
    if (d_.is_constant(f)) {
      value = f.complemented() ? 0 : 1;
    } else if (d_.node(f)->visit_stamp == stamp_) {
      value = complement_if(f.complemented(), d_.node(f)->visit_value);
    } else {
      return false;
    }
    return true;
  }

  const bdd_internals& d_;
  const int* literals_;
  std::uint32_t stamp_;
  std::vector<step> open_;
};

int bddpp_manager::Bdd_eval_for_literal(const bdd& f, const int* literals) {
  const long index = Bdd_if_index(f);
  if (index < -1) {
    std::cerr << "error in bddpp_manager::Bdd_eval(): unknown bdd type ...\n";
    end_process();
  }
  const bdd_internals diagram(this);
  bdd_edge edge = bdd_internals::edge_of(f);
  while (!diagram.is_constant(edge)) {
    const int literal = literals[diagram.index(edge)];
    if (literal == unknown) return ternary_evaluation(diagram, literals).value_of(edge);
    edge = literal == 1 ? diagram.then_of(edge) : diagram.else_of(edge);
  }
  return edge.complemented() ? 0 : 1;
}

}  // namespace kiva
