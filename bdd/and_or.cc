// The operators that recurse on two functions, and what is composed of them.
//
// Of or and and there is one recursion, the or: and(f, g) is not or(not f, not g), and through the
// complement edges both ways make the same nodes in the same order. The recursion splits at the
// upper of the two top variables; the or is symmetric, so the order of operands changes nothing but
// the key under which a result is remembered.

#include <algorithm>
#include <iostream>

#include "base/process_end.h"
#include "bdd/descent.h"
#include "bdd/operand_pair.h"

namespace kiva {

namespace {

/// Operands' codes in an order that does not tell which was first.
std::uint64_t symmetric_key(operand_pair t) {
  const std::uint64_t a = t.f.code(), b = t.g.code();
  return a < b ? a << 32 | b : b << 32 | a;
}

/// Reports an or or and that came out above both operands; cannot happen on correct diagrams.
[[noreturn]] void misplaced_result(bddpp_manager& manager, const char* name, bdd_edge f, bdd_edge g,
                                   bdd_edge result) {
  const bdd_internals diagram(&manager);
  const auto index = [&](bdd_edge e) { return diagram.node(e)->var_index(); };
  std::cerr << "INTERNAL ERROR in " << name << "(): result has an index (" << index(result)
            << ") less than the operands (" << index(f) << ") and (" << index(g) << ")!\n";
  const auto print = [&](const char* title, bdd_edge e) {
    std::cerr << title << (e.complemented() ? "NOT" : "") << '\n';
    bdd_node* node = diagram.node(e);
    manager.Bdd_clear_marks(node);
    manager.Bdd_incremental_id(node, 0);
    manager.Bdd_clear_marks(node);
    manager.Print_bdd_structure_loc(std::cerr, 5, node);
  };
  print("x= ", f);
  print("y=", g);
  print("result=", result);
  end_process();
}

class disjunction {
 public:
  using task = operand_pair;
  static constexpr bool odd = false;

  /// `as_and`: the operands and the result are complements of those of an and.
  disjunction(const bdd_internals& diagram, bool as_and) : d_(diagram), as_and_(as_and) {}

  bool solved(task t, bdd_edge& result) const {
    const bdd_edge one = d_.one();
    if (d_.is_constant(t.f)) {
      result = t.f == one ? one : t.g;
    } else if (d_.is_constant(t.g)) {
      result = t.g == one ? one : t.f;
    } else if (t.f.same_node(t.g)) {
      result = t.f == t.g ? t.f : one;
    } else {
      return false;
    }
    return true;
  }

  std::uint64_t key(task t) const { return symmetric_key(t); }
  void split(task t, task& then_task, task& else_task) const {
    split_pair(d_, t, d_.index(t.f), d_.index(t.g), then_task, else_task);
  }

  bdd_edge join(task t, bdd_edge then_result, bdd_edge else_result) const {
    const int i = d_.index(t.f), j = d_.index(t.g);
    const bdd_edge result = d_.make(d_.var_id(i <= j ? t.f : t.g), then_result, else_result);
    if (then_result == else_result && !d_.is_constant(result) && d_.index(result) < i &&
        d_.index(result) < j) {
      if (as_and_) misplaced_result(*d_.manager(), "Bdd_and", !t.f, !t.g, !result);
      misplaced_result(*d_.manager(), "Bdd_or", t.f, t.g, result);
    }
    return result;
  }

 private:
  const bdd_internals& d_;
  bool as_and_;
};

/// Odd in both operands: one visit serves four pairs.
class difference {
 public:
  using task = operand_pair;
  static constexpr bool odd = true;

  explicit difference(const bdd_internals& diagram) : d_(diagram) {}

  bool solved(task t, bdd_edge& result) const {
    const bdd_edge one = d_.one();
    if (d_.is_constant(t.f)) {
      result = t.g.flipped_if(t.f == one);
    } else if (d_.is_constant(t.g)) {
      result = t.f.flipped_if(t.g == one);
    } else if (t.f.same_node(t.g)) {
      result = one.flipped_if(t.f == t.g);
    } else {
      return false;
    }
    return true;
  }

  std::uint64_t key(task t) const { return symmetric_key(t); }
  void split(task t, task& then_task, task& else_task) const {
    split_pair(d_, t, d_.index(t.f), d_.index(t.g), then_task, else_task);
  }
  bdd_edge join(task t, bdd_edge then_result, bdd_edge else_result) const {
    return d_.make(d_.var_id(d_.index(t.f) <= d_.index(t.g) ? t.f : t.g), then_result, else_result);
  }

 private:
  const bdd_internals& d_;
};

bdd_edge disjunction_of(const bdd_internals& diagram, bdd_edge f, bdd_edge g, bool as_and) {
  disjunction rule(diagram, as_and);
  bdd_edge result;
  if (rule.solved({f, g}, result)) return result;
  return descent<disjunction>(rule, diagram.memory()).run({f, g});
}

void check_operands(const bddpp_manager* manager, const char* name, const bdd_node* f,
                    const bdd_node* g) {
  if (f == nullptr || g == nullptr) {
    std::cerr << "ERROR: call bddpp_manager::" << name << "() with null reference\n";
    end_process();
  }
  bdd_internals::require_own(manager, name, {f, g});
}

}  // namespace

bdd_edge bdd_internals::disjoin(bdd_edge f, bdd_edge g) const {
  return disjunction_of(*this, f, g, false);
}

bdd_edge bdd_internals::conjoin(bdd_edge f, bdd_edge g) const {
  return !disjunction_of(*this, !f, !g, true);
}

bdd_node* bddpp_manager::Bdd_or(int f_link, bdd_node* f, int g_link, bdd_node* g, int& link) {
  check_operands(this, "Bdd_or", f, g);
  const bdd_internals diagram(this);
  return diagram.returned(diagram.disjoin(diagram.edge_of(f_link, f), diagram.edge_of(g_link, g)),
                          link);
}

bdd_node* bddpp_manager::Bdd_and(int f_link, bdd_node* f, int g_link, bdd_node* g, int& link) {
  check_operands(this, "Bdd_and", f, g);
  const bdd_internals diagram(this);
  return diagram.returned(diagram.conjoin(diagram.edge_of(f_link, f), diagram.edge_of(g_link, g)),
                          link);
}

bdd bddpp_manager::Bdd_or(const bdd& f, const bdd& g) {
  int link = 1;
  bdd_node* node = Bdd_or(f.link_type(), f.node(), g.link_type(), g.node(), link);
  return bdd(this, link, node);
}

bdd bddpp_manager::Bdd_and(const bdd& f, const bdd& g) {
  int link = 1;
  bdd_node* node = Bdd_and(f.link_type(), f.node(), g.link_type(), g.node(), link);
  return bdd(this, link, node);
}

bdd bddpp_manager::Bdd_nand(const bdd& f, const bdd& g) {
  return Bdd_not(Bdd_and(f, g));
}

bdd bddpp_manager::Bdd_nor(const bdd& f, const bdd& g) {
  return Bdd_not(Bdd_or(f, g));
}

bdd bddpp_manager::Bdd_xor(const bdd& f, const bdd& g) {
  check_operands(this, "Bdd_and", f.node(), Bdd_not(g).node());
  const bdd_internals diagram(this);
  difference rule(diagram);
  int link = 1;
  bdd_node* node = diagram.returned(descent<difference>(rule, diagram.memory())
                                        .run({diagram.edge_of(f.link_type(), f.node()),
                                              diagram.edge_of(g.link_type(), g.node())}),
                                    link);
  return bdd(this, link, node);
}

bdd bddpp_manager::Bdd_xnor(const bdd& f, const bdd& g) {
  return Bdd_not(Bdd_xor(f, g));
}

bdd bddpp_manager::Bdd_implication(const bdd& f, const bdd& g) {
  return Bdd_or(Bdd_not(f), g);
}

int bddpp_manager::Bdd_imply(const bdd& f, const bdd& g) {
  return Bdd_is_one_tautologic(Bdd_implication(f, g));
}

int bddpp_manager::Bdd_equiv(const bdd& f, const bdd& g) {
  return Bdd_is_one_tautologic(Bdd_xnor(f, g));
}

int bddpp_manager::Bdds_excl(const bdd& f, const bdd& g) {
  return Bdd_is_zero_tautologic(Bdd_and(f, g));
}

bdd bddpp_manager::Bdd_ite(const bdd& f, const bdd& g, const bdd& h) {
  const bdd positive = Bdd_and(f, g);
  return Bdd_or(positive, Bdd_and(Bdd_not(f), h));
}

bdd bddpp_manager::Bdd_ite(int link, long index, const bdd& g, const bdd& h) {
  if (index == -1) return Bdd_ite(bdd(this, link, internal_bdd_node_one), g, h);
  if (index < 0 || index >= internal_bdd_vars) {
    std::cerr << "ERROR: abnormal index in bddpp_manager::Bdd_ite()\n";
    return Bdd_ite(bdd(), g, h);
  }
  return Bdd_ite(bdd(this, link, internal_variables_table[indextoid(index)]), g, h);
}

}  // namespace kiva
