// Substitution, renaming and cutting: each visits the whole diagram and rebuilds it with the
// operator ite, so that the order of variables may change on the way.

#include <iostream>
#include <unordered_map>

#include "bdd/descent.h"

namespace kiva {

namespace {

/// Rebuilds each node as ite(test(node), then, else).
template <class Test>
class rebuild_rule {
 public:
  using task = bdd_edge;
  static constexpr bool odd = false;

  rebuild_rule(const bdd_internals& diagram, Test test) : d_(diagram), test_(test) {}

  bool solved(task f, bdd_edge& result) const {
    result = f;
    return d_.is_constant(f);
  }
  std::uint64_t key(task f) const { return f.code(); }
  void split(task f, task& then_task, task& else_task) const {
    then_task = d_.then_of(f);
    else_task = d_.else_of(f);
  }
  bdd_edge join(task f, bdd_edge then_result, bdd_edge else_result) const {
    return d_.ite(test_(f), then_result, else_result);
  }

 private:
  const bdd_internals& d_;
  Test test_;
};

/// Replaces by one all that tests an index of n or more.
class cut_rule {
 public:
  using task = bdd_edge;
  static constexpr bool odd = false;

  cut_rule(const bdd_internals& diagram, long n) : d_(diagram), n_(n) {}

  bool solved(task f, bdd_edge& result) const {
    if (d_.is_constant(f)) {
      result = f;
    } else if (d_.index(f) >= n_) {
      result = d_.one();
    } else {
      return false;
    }
    return true;
  }
  std::uint64_t key(task f) const { return f.code(); }
  void split(task f, task& then_task, task& else_task) const {
    then_task = d_.then_of(f);
    else_task = d_.else_of(f);
  }
  bdd_edge join(task f, bdd_edge then_result, bdd_edge else_result) const {
    return d_.ite(d_.variable(d_.var_id(f)), then_result, else_result);
  }

 private:
  const bdd_internals& d_;
  long n_;
};

template <class Test>
bdd rebuild(bddpp_manager* manager, const char* operation, const bdd& f, Test test) {
  if (f.node() == nullptr) return f;
  bdd_internals::require_own(manager, operation, {f.node()});
  const bdd_internals diagram(manager);
  rebuild_rule<Test> rule(diagram, test);
  return diagram.handle(
      descent<rebuild_rule<Test>>(rule, diagram.memory()).run(bdd_internals::edge_of(f)));
}

}  // namespace

bdd bddpp_manager::Bdd_compose(const bdd& f, const bdd& v, const bdd& g) {
  if (!Bdd_is_var(v)) {
    std::cerr << "Warning in bddpp_manager::Bdd_compose(): second parametre is not a variable!\n";
    return Bdd_zero();
  }
  const bdd_internals diagram(this);
  const int id = static_cast<int>(v.node()->var_id());
  bdd_internals::require_own(this, "Bdd_compose", {g.node()});
  const bdd_edge value = diagram.edge_of(g);
  return rebuild(this, "Bdd_compose", f, [&](bdd_edge node) {
    const int node_id = diagram.var_id(node);
    return node_id == id ? value : diagram.variable(node_id);
  });
}

bdd bddpp_manager::Bdd_vector_compose(const bdd& f,
                                      const std::vector<std::pair<long, bdd>>& values) {
  const bdd_internals diagram(this);
  std::unordered_map<int, bdd_edge> by_id;
  by_id.reserve(values.size());
  for (const auto& [index, g] : values) {
    bdd_internals::require_own(this, "Bdd_vector_compose", {g.node()});
    by_id[internal_indextoid_table[index]] = diagram.edge_of(g);
  }
  return rebuild(this, "Bdd_vector_compose", f, [&](bdd_edge node) {
    const auto value = by_id.find(diagram.var_id(node));
    return value == by_id.end() ? diagram.variable(diagram.var_id(node)) : value->second;
  });
}

bdd bddpp_manager::Bdd_replace_vars(const bdd& f, const long* map) {
  const bdd_internals diagram(this);
  return rebuild(this, "Bdd_replace_vars", f, [&](bdd_edge node) {
    return diagram.edge_of(Bdd_var_by_index(map[diagram.index(node)]));
  });
}

bdd bddpp_manager::Bdd_keep_first_variables(const bdd& f, long n) {
  if (f.node() == nullptr) return f;
  bdd_internals::require_own(this, "Bdd_keep_first_variables", {f.node()});
  const bdd_internals diagram(this);
  cut_rule rule(diagram, n);
  return diagram.handle(descent<cut_rule>(rule, diagram.memory()).run(bdd_internals::edge_of(f)));
}

}  // namespace kiva
