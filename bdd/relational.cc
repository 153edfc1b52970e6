// The two operators that walks over state spaces need: the generalised cofactor (Coudert and Madre,
// 1990: each point outside c takes the value of f at its nearest point inside, where a higher
// variable counts more), and the and of two functions with variables quantified on the way, so that
// the and itself is never built (Burch, Clarke and others, 1990).

#include <climits>
#include <vector>

#include "bdd/descent.h"
#include "bdd/operand_pair.h"

namespace kiva {

namespace {

/// Both operands' cofactors; either may be a constant.
void split_pair(const bdd_internals& d, operand_pair t, operand_pair& then_task,
                operand_pair& else_task) {
  const auto place = [&](bdd_edge e) { return d.is_constant(e) ? INT_MAX : d.index(e); };
  split_pair(d, t, place(t.f), place(t.g), then_task, else_task);
}

/// f within g.
class constrain_rule {
 public:
  using task = operand_pair;
  static constexpr bool odd = false;

  explicit constrain_rule(const bdd_internals& diagram) : d_(diagram) {}

  bool solved(task t, bdd_edge& result) const {
    if (d_.is_constant(t.g) || d_.is_constant(t.f)) {
      result = t.f;
    } else if (t.f.same_node(t.g)) {
      result = t.f == t.g ? d_.one() : !d_.one();
    } else {
      return false;
    }
    return true;
  }
  std::uint64_t key(task t) const {
    return static_cast<std::uint64_t>(t.f.code()) << 32 | t.g.code();
  }
  void split(task t, task& then_task, task& else_task) const {
    split_pair(d_, t, then_task, else_task);
    // Where the condition leaves one side only, both sides are that one.
    if (then_task.g == !d_.one()) then_task = else_task;
    if (else_task.g == !d_.one()) else_task = then_task;
  }
  bdd_edge join(task t, bdd_edge then_result, bdd_edge else_result) const {
    const bool f_first = d_.index(t.f) <= d_.index(t.g);
    return d_.make(d_.var_id(f_first ? t.f : t.g), then_result, else_result);
  }

 private:
  const bdd_internals& d_;
};

/// The and of f and g without the variables of `quantified`.
class and_exist_rule {
 public:
  using task = operand_pair;
  static constexpr bool odd = false;

  and_exist_rule(const bdd_internals& diagram, const std::vector<bool>& quantified, int last_index)
      : d_(diagram), quantified_(quantified), last_index_(last_index) {}

  bool solved(task t, bdd_edge& result) const {
    const bdd_edge one = d_.one(), zero = !one;
    if (t.f == zero || t.g == zero || t.f == !t.g) {
      result = zero;
    } else if (t.f == one && top(t.g) > last_index_) {
      result = t.g;
    } else if ((t.g == one || t.f == t.g) && top(t.f) > last_index_) {
      result = t.f;
    } else {
      return false;
    }
    return true;
  }
  std::uint64_t key(task t) const {
    const std::uint64_t a = t.f.code(), b = t.g.code();
    return a < b ? a << 32 | b : b << 32 | a;
  }
  void split(task t, task& then_task, task& else_task) const {
    split_pair(d_, t, then_task, else_task);
  }
  bdd_edge join(task t, bdd_edge then_result, bdd_edge else_result) const {
    const bdd_edge upper = top(t.f) <= top(t.g) ? t.f : t.g;
    if (quantified_[static_cast<size_t>(d_.index(upper))])
      return d_.disjoin(then_result, else_result);
    return d_.make(d_.var_id(upper), then_result, else_result);
  }

 private:
  int top(bdd_edge f) const { return d_.is_constant(f) ? INT_MAX : d_.index(f); }

  const bdd_internals& d_;
  const std::vector<bool>& quantified_;
  int last_index_;
};

}  // namespace

bdd bddpp_manager::Bdd_constrain(const bdd& f, const bdd& c) {
  bdd_internals::require_own(this, "Bdd_constrain", {f.node(), c.node()});
  const bdd_internals diagram(this);
  constrain_rule rule(diagram);
  return diagram.handle(descent<constrain_rule>(rule, diagram.memory())
                            .run({diagram.edge_of(f), diagram.edge_of(c)}));
}

bdd bddpp_manager::Bdd_and_exist(const bdd& f, const bdd& g, const bdd& variables) {
  bdd_internals::require_own(this, "Bdd_and_exist", {f.node(), g.node(), variables.node()});
  if (variables.node() == internal_bdd_node_one) return Bdd_and(f, g);
  const bdd_internals diagram(this);
  std::vector<bool> quantified(static_cast<size_t>(internal_bdd_vars), false);
  int last_index = -1;
  for_each_literal(variables.link_type(), variables.node(), [&](long index, int) {
    quantified[static_cast<size_t>(index)] = true;
    last_index = static_cast<int>(index);
  });
  and_exist_rule rule(diagram, quantified, last_index);
  return diagram.handle(descent<and_exist_rule>(rule, diagram.memory())
                            .run({diagram.edge_of(f), diagram.edge_of(g)}));
}

}  // namespace kiva
