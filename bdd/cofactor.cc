// Cofactors and quantifiers.

#include <algorithm>
#include <iostream>

#include "base/process_end.h"
#include "bdd/descent.h"

namespace kiva {

namespace {

/// Takes the branch that the literals name, and rebuilds above the nodes whose variable they leave
/// open. Below the last literal nothing changes.
class cofactor_rule {
 public:
  using task = bdd_edge;
  static constexpr bool odd = true;

  cofactor_rule(const bdd_internals& diagram, const int* literals, int last_index)
      : d_(diagram), literals_(literals), last_index_(last_index) {}

  bool solved(task f, bdd_edge& result) const {
    result = f;
    return d_.is_constant(f) || d_.index(f) > last_index_;
  }
  std::uint64_t key(task f) const { return f.code(); }
  void split(task f, task& then_task, task& else_task) const {
    const int literal = literals_[d_.index(f)];
    then_task = literal == 2 || literal == 1 ? d_.then_of(f) : d_.else_of(f);
    else_task = literal == 2 ? d_.else_of(f) : d_.one();
  }
  bdd_edge join(task f, bdd_edge then_result, bdd_edge else_result) const {
    if (literals_[d_.index(f)] != 2) return then_result;
    return d_.make(d_.var_id(f), then_result, else_result);
  }

 private:
  const bdd_internals& d_;
  const int* literals_;
  int last_index_;
};

}  // namespace

bdd bddpp_manager::Bdd_then(const bdd& f) {
  if (f.node() == nullptr) return bdd();
  if (f.node() == internal_bdd_node_one) return Bdd_one();
  return bdd(this, f.link_type(), f.node()->then_node());
}

bdd bddpp_manager::Bdd_else(const bdd& f) {
  if (f.node() == nullptr) return bdd();
  if (f.node() == internal_bdd_node_one) return Bdd_one();
  return bdd(this, f.link_type() * f.node()->else_link_type(), f.node()->else_node());
}

bdd bddpp_manager::Bdd_if(const bdd& f) {
  const long index = Bdd_if_index(f);
  if (index < 0 || index >= internal_bdd_vars) {
    std::cerr << "\ncalling bddpp_manager::Bdd_if() with bdd index= " << index
              << " :out of range!\n";
    return Bdd_zero();
  }
  return Bdd_var_by_index(index);
}

bdd bddpp_manager::Bdd_cube_reduce(const bdd& f, const bdd& cube) {
  for (const auto& [argument, name] : {std::pair{&f, "bdd"}, std::pair{&cube, "assertion"}}) {
    if (argument->node() != nullptr) continue;
    std::cerr << "Error in Bdd_cube_reduce(): " << name << " has a Null pointer!\n";
    end_process();
  }
  bdd_internals::require_own(this, "Bdd_cube_reduce", {f.node(), cube.node()});
  if (f.node() == internal_bdd_node_one || cube.node() == internal_bdd_node_one) return f;

  const bdd_internals diagram(this);
  std::vector<int>& literals = diagram.memory().literals;
  literals.resize(internal_bdd_vars, 2);
  std::vector<long> bound;
  for_each_literal(cube.link_type(), cube.node(), [&](long index, int value) {
    literals[index] = value;
    bound.push_back(index);
  });
  cofactor_rule rule(diagram, literals.data(), static_cast<int>(bound.back()));
  const bdd_edge result =
      descent<cofactor_rule>(rule, diagram.memory()).run(bdd_internals::edge_of(f));
  for (long index : bound) literals[index] = 2;
  return diagram.handle(result);
}

bdd bddpp_manager::Bdd_exist(const bdd& f, const bdd& v) {
  if (!(Bdd_is_var(v) || Bdd_is_negvar(v)) || !Bdd_depends_on(f, v)) return f;
  const bdd where_v = Bdd_cube_reduce(f, v);
  return Bdd_or(where_v, Bdd_cube_reduce(f, Bdd_not(v)));
}

bdd bddpp_manager::Bdd_forall(const bdd& f, const bdd& v) {
  if (!(Bdd_is_var(v) || Bdd_is_negvar(v)) || !Bdd_depends_on(f, v)) return f;
  const bdd where_v = Bdd_cube_reduce(f, v);
  return Bdd_and(where_v, Bdd_cube_reduce(f, Bdd_not(v)));
}

bdd bddpp_manager::Bdd_reduce(const bdd& f, const bdd& c) {
  if (!exists_common_variables(f, c)) return f;
  if (Bdd_is_cube(c)) return Bdd_cube_reduce(f, c);
  bdd result = Bdd_one();
  for (bdd rest = c; !Bdd_is_zero_tautologic(rest);) {
    const bdd cube = Bdd_satisfy(rest);
    if (!Bdd_is_cube(cube)) {
      std::cerr << "ERREUR sur !!!\n";
      Print_bdd_structure(std::cerr, cube);
      end_process();
    }
    result = Bdd_and(result, Bdd_cube_reduce(f, cube));
    rest = Bdd_and(rest, Bdd_not(cube));
  }
  return result;
}

bdd bddpp_manager::Bdd_simplify(const bdd& f, const bdd& g) {
  if (Bdd_is_tautology(f)) return f;
  bdd result = f;
  for (long id : set_of_id_depend_on(f)) {
    const bdd wider = Bdd_exist(result, Bdd_var_by_id(id));
    if (Bdds_excl(wider, g)) result = wider;
  }
  return result;
}

bdd bddpp_manager::Bdd_simplify2(const bdd& f, const bdd& g) {
  if (Bdd_is_tautology(f)) return f;
  bdd result = f;
  const long top_index = Bdd_if_index(f);
  for (long id : set_of_id_depend_on(f)) {
    if (id >= top_index) break;
    const bdd wider = Bdd_exist(result, Bdd_var_by_index(id));
    if (Bdds_excl(wider, g)) result = wider;
  }
  return result;
}

}  // namespace kiva
