// Diagrams as lists of node lines. Numbers and lines follow one order: a node before what is below
// it, its then side before its else side.

#include <ostream>

#include "base/graph_walk.h"
#include "bdd/walk.h"

namespace kiva {

namespace {

void put_line(std::ostream& out, const bdd_node& node, long variable) {
  const auto child_id = [](const bdd_node* child) {
    return child == nullptr ? -3 : child->local_id();
  };
  out << node.local_id() << ": " << variable << ':' << child_id(node.then_node()) << ':'
      << child_id(node.else_node()) << ',' << node.else_link_type();
}

long variable_of(const bdd_node& node, const long* corr) {
  const long index = node.var_index();
  return corr == nullptr || index < 0 ? index : corr[index];
}

/// Numbers the nodes of all functions in one count, and gives it; marks are clear at the end.
template <class Functions>
long number_all(bddpp_manager& m, const Functions& functions) {
  const auto clear_all = [&] {
    node_walk walk(&m);
    for (const bdd& f : functions) {
      walk.from(f.node(), [](bdd_node* node) {
        node->clear_mark();
        return true;
      });
    }
  };
  clear_all();
  long count = 0;
  for (const bdd& f : functions) {
    if (f.node() != nullptr) count = m.Bdd_incremental_id(f.node(), count);
  }
  clear_all();
  return count;
}

template <class Functions>
void put_all(std::ostream& out, const Functions& functions, const long* corr) {
  const auto enters = [](const bdd_node* node) { return node != nullptr && !node->is_marked(); };
  for (const bdd& f : functions)
    walk_from(std::vector<bdd_node*>{f.node()}, enters, [&](bdd_node* node, auto more) {
      put_line(out, *node, variable_of(*node, corr));
      out << '\n';
      node->mark();
      more(node->else_node());
      more(node->then_node());
    });
}

}  // namespace

void Print_bdd_node(std::ostream& out, const bdd_node* node) {
  if (node == nullptr) return;
  put_line(out, *node, node->var_index());
  out << '\n';
}

void bddpp_manager::Print_bdd_node(std::ostream& out, const bdd_node* node) const {
  kiva::Print_bdd_node(out, node);
}

void bddpp_manager::Print_bdd_node(std::ostream& out, const bdd_node* node,
                                   const long* corr) const {
  if (node == nullptr) return;
  put_line(out, *node, variable_of(*node, corr));
  out << '\n';
}

void bddpp_manager::Print_bdd_node_with_adress(std::ostream& out, const bdd_node* node) const {
  if (node == nullptr) return;
  put_line(out, *node, node->var_index());
  out << ' ' << static_cast<const void*>(node) << '\n';
}

void bddpp_manager::Print_bdd_by_nodes_list(std::ostream& out, const bdd& f) {
  const std::list<bdd> one_function{f};
  out << "nombre de noeud trouves: " << number_all(*this, one_function) << '\n';
  put_all(out, one_function, nullptr);
}

void bddpp_manager::Print_bdd_by_nodes_list(std::ostream& out, const bdd& f, const long* corr) {
  const std::list<bdd> one_function{f};
  number_all(*this, one_function);
  put_all(out, one_function, corr);
}

void bddpp_manager::Print_bdds_list_by_nodes_list(std::ostream& out,
                                                  const std::list<bdd>& functions) {
  out << "bdd_vars: " << Nb_bdd_vars() << "\nbdd_nodes: ";
  Print_bdds_list_by_nodes_list(out, functions, nullptr);
}

void bddpp_manager::Print_bdds_list_by_nodes_list(std::ostream& out,
                                                  const std::list<bdd>& functions,
                                                  const long* corr) {
  out << number_all(*this, functions) << '\n';
  put_all(out, functions, corr);
}

}  // namespace kiva
