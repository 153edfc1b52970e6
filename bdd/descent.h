#pragma once

#include <vector>

#include "bdd/internals.h"

namespace kiva {

/// The recursion that all rebuilding operators share: a task is solved at once, or it is split into
/// a then and an else task whose results are joined, in this order.
///
/// A call that proves large remembers its results, so that it costs one visit for each different
/// task; as a task met again finds all its nodes made, this changes no result and no number of a
/// node. Below a certain depth the recursion goes on in a stack on the heap.
///
/// A Rule has: task; bool solved(task, bdd_edge&); std::uint64_t key(task);
/// void split(task, task& then, task& else); bdd_edge join(task, then, else);
/// static constexpr bool odd: the complement of a task (an edge, or what has its `regular` and
/// `complemented`) has the complement as result.
template <class Rule>
class descent {
 public:
  using task = typename Rule::task;

  descent(Rule& rule, call_memory& memory) : rule_(rule), lease_(memory) {}

  bdd_edge run(task t) { return reach(t, native_depth); }

 private:
  /// Tasks of a call before it starts to remember them.
  static constexpr int patience = 20;
  static constexpr int native_depth = 2000;

  static task stem(task t) {
    if constexpr (Rule::odd)
      return t.regular();
    else
      return t;
  }
  static bool flips(task t) {
    if constexpr (Rule::odd)
      return t.complemented();
    else
      return false;
  }

  bdd_edge reach(task t, int depth) {
    bdd_edge result;
    if (rule_.solved(t, result)) return result;
    return visit(stem(t), depth).flipped_if(flips(t));
  }

  bdd_edge visit(task t, int depth) {
    bdd_edge result;
    if (recall(t, result)) return result;
    if (depth == 0) return visit_on_heap(t);
    task then_task, else_task;
    rule_.split(t, then_task, else_task);
    const bdd_edge then_result = reach(then_task, depth - 1);
    const bdd_edge else_result = reach(else_task, depth - 1);
    result = rule_.join(t, then_result, else_result);
    remember(t, result);
    return result;
  }

  struct frame {
    task here, else_task;
    bdd_edge then_result;
    bool flips, then_done;
  };

  bdd_edge visit_on_heap(task t) {
    std::vector<frame> stack;
    for (;;) {
      frame down{stem(t), t, bdd_edge(), flips(t), false};
      rule_.split(down.here, t, down.else_task);
      stack.push_back(down);
      bdd_edge result;
      if (!known(t, result)) continue;
      for (;;) {
        frame& top = stack.back();
        if (!top.then_done) {
          top.then_result = result;
          top.then_done = true;
          t = top.else_task;
          if (!known(t, result)) break;
        }
        result = rule_.join(top.here, top.then_result, result);
        remember(top.here, result);
        result = result.flipped_if(top.flips);
        stack.pop_back();
        if (stack.empty()) return result;
      }
    }
  }

  bool known(task t, bdd_edge& result) {
    if (rule_.solved(t, result)) return true;
    if (!recall(stem(t), result)) return false;
    result = result.flipped_if(flips(t));
    return true;
  }

  bool recall(task t, bdd_edge& result) {
    if (lease_.table() == nullptr) {
      if (++tasks_ > patience) lease_.start();
      return false;
    }
    std::uint32_t code;
    if (!lease_.table()->find(rule_.key(t), code)) return false;
    result = bdd_edge::of_code(code);
    return true;
  }
  void remember(task t, bdd_edge result) {
    if (lease_.table() != nullptr) lease_.table()->store(rule_.key(t), result.code());
  }

  Rule& rule_;
  table_lease lease_;
  int tasks_ = 0;
};

}  // namespace kiva
