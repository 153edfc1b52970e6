// Copies across managers. Each walks the source diagram, then before else; what the source shares
// the destination shares through its own unique table.

#include <iostream>

#include "bdd/descent.h"

namespace kiva {

namespace {

/// How a source variable is found in the destination.
enum class naming { same_index, by_index_table, by_index_table_on_handles, by_name };

/// The copy of a source function, as an edge of the destination. On handles the complement is
/// pushed down to the constants and every node comes from the operators; elsewhere the copy is of
/// nodes taken without complement, and a node is made at once where the order of the destination
/// allows it.
template <naming how>
class copy_rule {
 public:
  using task = bdd_edge;
  static constexpr bool odd = how != naming::by_index_table_on_handles;

  copy_rule(bddpp_manager* to, bddpp_manager* from, const long* corr)
      : to_(to), from_(from), corr_(corr) {}

  bool solved(task f, bdd_edge& result) const {
    result = bdd_internals::one().flipped_if(f.complemented());
    return from_.is_constant(f);
  }
  std::uint64_t key(task f) const { return f.code(); }
  void split(task f, task& then_task, task& else_task) const {
    then_task = from_.then_of(f);
    else_task = from_.else_of(f);
    // A variable that the destination lacks takes its place there before those below it.
    if constexpr (how == naming::by_name) variable_of(f);
  }

  bdd_edge join(task f, bdd_edge then_copy, bdd_edge else_copy) const {
    const bdd variable = variable_of(f);
    const bdd_internals destination(to_);
    const bool direct = may_stand_above(variable.node(), destination.node(then_copy)) &&
                        may_stand_above(variable.node(), destination.node(else_copy));
    const bdd_edge copy =
        direct ? destination.make(static_cast<int>(variable.node()->var_id()), then_copy, else_copy)
               : destination.ite(destination.edge_of(variable), then_copy, else_copy);
    if (odd && copy.complemented()) {
      std::cerr << (how == naming::by_name
                        ? "erreur inattendue dans Bdd_isomorphe_by_name() !\n"
                        : "erreur inattendue dans Bdd_isomorphe() avec correspondance!\n");
    }
    return copy;
  }

 private:
  bool may_stand_above(const bdd_node* variable, const bdd_node* child) const {
    if (how == naming::same_index) return true;
    if (how == naming::by_index_table_on_handles || child == to_->Bdd_node_one()) return false;
    return variable->var_id() >= 0 && variable->var_index() < child->var_index() &&
           (how != naming::by_name || variable->var_id() < child->var_id());
  }

  bdd variable_of(bdd_edge f) const {
    if constexpr (how == naming::by_name)
      return to_->New_var_last(from_.manager()->Name_var_by_id(from_.var_id(f)));
    const long index = from_.index(f);
    return to_->Bdd_var_by_index(how == naming::same_index ? index : corr_[index]);
  }

  bddpp_manager* to_;
  bdd_internals from_;
  const long* corr_;
};

template <naming how>
bdd copy(bddpp_manager* to, bddpp_manager* from, const bdd& source, const long* corr) {
  const bdd_edge f = bdd_internals::edge_of(source);
  copy_rule<how> rule(to, from, corr);
  const bdd_edge result = descent<copy_rule<how>>(rule, bdd_internals(to).memory()).run(f);
  return bdd_internals(to).handle(result);
}

/// Whether each variable of f has its like in the destination.
bool all_variables_known(const bddpp_manager* to, const bddpp_manager* from, const bdd& f,
                         const long* corr) {
  for (long index : from->set_of_index_depend_on(f)) {
    const long image = corr == nullptr ? index : corr[index];
    if (image < -1 || image >= to->Nb_bdd_vars()) return false;
  }
  return true;
}

bdd bad_call(bddpp_manager* to) {
  std::cerr << "ERROR: Bad call of Bdd_isomorphe() !\n";
  return to == nullptr ? bdd() : to->Bdd_zero();
}

}  // namespace

bdd Bdd_isomorphe(bddpp_manager* to, bddpp_manager* from, const bdd& f) {
  if (to == nullptr) return bdd();
  if (from == nullptr || f.node() == nullptr) return to->Bdd_one();
  if (f.manager_ref() != from || !all_variables_known(to, from, f, nullptr)) return bad_call(to);
  return copy<naming::same_index>(to, from, f, nullptr);
}

bdd_node* Bdd_isomorphe(bddpp_manager* to, bddpp_manager* from, bdd_node* node, const long* corr) {
  if (to == nullptr) return nullptr;
  if (from == nullptr || node == nullptr) return to->Bdd_node_one();
  if (node->my_manager() != from || !all_variables_known(to, from, bdd(from, 1, node), corr))
    return bad_call(to).node();
  return copy<naming::by_index_table>(to, from, bdd(from, 1, node), corr).node();
}

bdd Bdd_isomorphe(bddpp_manager* to, bddpp_manager* from, const bdd& f, const long* corr) {
  if (to == nullptr || from == nullptr || f.manager_ref() != from || f.node() == nullptr ||
      !all_variables_known(to, from, f, corr))
    return bad_call(to);
  return copy<naming::by_index_table_on_handles>(to, from, f, corr);
}

bdd Bdd_isomorphe_by_name(bddpp_manager* to, bddpp_manager* from, const bdd& f) {
  if (to == nullptr) return bdd();
  if (from == nullptr || f.node() == nullptr) return to->Bdd_one();
  if (f.manager_ref() != from) return bad_call(to);
  return copy<naming::by_name>(to, from, f, nullptr);
}

}  // namespace kiva
