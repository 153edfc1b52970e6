// Between cubes and literal arrays, and the search for one satisfying cube.

#include <algorithm>
#include <iostream>

#include "base/process_end.h"
#include "bdd/internals.h"
#include "bdd/literal_list.h"

namespace kiva {

namespace {

/// Calls take(index, value) along the first way to one, the then side first; 0 when there is none,
/// which only zero lacks.
template <class Take>
int for_each_choice(int link, const bdd_node* node, const bdd_node* one, Take take) {
  if (node == nullptr) {
    std::cerr << "ERROR: call bddpp_manager::Bdd_OneSat() with null reference\n";
    end_process();
  }
  // A node that is not the constant can be satisfied with either link: only a branch that is the
  // constant can fail, and the search never has to come back further.
  while (node != one) {
    const bool to_else = node->then_node() == one && link != 1;
    take(node->var_index(), to_else ? 0 : 1);
    if (to_else) link *= node->else_link_type();
    node = to_else ? node->else_node() : node->then_node();
  }
  return link == 1 ? 1 : 0;
}

}  // namespace

void bddpp_manager::for_each_literal(int link, const bdd_node* node,
                                     const std::function<void(long index, int value)>& take) const {
  const bdd_node* one = internal_bdd_node_one;
  while (node != one) {
    if (node->then_node() == one && node->else_node() == one) {
      take(node->var_index(), link == 1 ? 1 : 0);
      return;
    }
    const bool to_else = node->then_node() == one;
    take(node->var_index(), to_else ? 0 : 1);
    if (to_else) link *= node->else_link_type();
    node = to_else ? node->else_node() : node->then_node();
  }
}

void bddpp_manager::Bdd_node_to_literals(int link, bdd_node* node, int* literals) {
  std::fill_n(literals, internal_bdd_vars, 2);
  if (node == nullptr) {
    std::cerr << "Warning: bddpp_manager::Bdd_node_to_literals() call with a NULL bdd node !\n";
    return;
  }
  if (node == internal_bdd_node_one && link == 1) {
    std::cerr << "ERROR in  bddpp_manager::Bdd_node_to_literals() :\n"
                 "constant 1 is not a literal ...\n";
    end_process();
  }
  for_each_literal(link, node, [&](long index, int value) { literals[index] = value; });
}

void bddpp_manager::Bdd_to_literals(const bdd& f, int* literals) {
  Bdd_node_to_literals(f.link_type(), f.node(), literals);
}

bdd bddpp_manager::Literals_to_bdd(const int* literals) {
  // The product in ascending order makes half the square of its length in nodes. A long one is
  // built from its last literal up, which gives the same function for one node a literal.
  constexpr long long_product = 1024;
  const long bound = internal_bdd_vars - std::count_if(literals, literals + internal_bdd_vars,
                                                       [](int l) { return l != 0 && l != 1; });
  bdd product = Bdd_one();
  const auto multiply = [&](long index) {
    if (literals[index] != 0 && literals[index] != 1) return;
    const bdd variable = Bdd_var_by_index(index);
    product = Bdd_and(product, literals[index] == 1 ? variable : Bdd_not(variable));
  };
  if (bound <= long_product) {
    for (long index = 0; index < internal_bdd_vars; ++index) multiply(index);
  } else {
    for (long index = internal_bdd_vars; index-- > 0;) multiply(index);
  }
  return product;
}

int bddpp_manager::Bdd_OneSat(bdd_node* node, int link, int* literals) {
  return for_each_choice(link, node, internal_bdd_node_one,
                         [&](long index, int value) { literals[index] = value; });
}

bdd bddpp_manager::Bdd_satisfy(const bdd& f) {
  return product_of(*this, first_product(*this, f));
}

literal_list first_product(const bddpp_manager& manager, const bdd& f) {
  literal_list literals;
  for_each_choice(f.link_type(), f.node(), manager.Bdd_node_one(),
                  [&](long index, int value) { literals.push_back(literal_code(index, value)); });
  return literals;
}

literal_list literals_of(const bddpp_manager& manager, const bdd& cube) {
  literal_list literals;
  manager.for_each_literal(cube.link_type(), cube.node(), [&](long index, int value) {
    literals.push_back(literal_code(index, value));
  });
  return literals;
}

bdd product_of(bddpp_manager& manager, const literal_list& literals) {
  bdd product = manager.Bdd_one();
  for (auto code = literals.rbegin(); code != literals.rend(); ++code) {
    const bdd variable = manager.Bdd_var_by_index(*code / 2);
    product = manager.Bdd_and(*code % 2 != 0 ? variable : manager.Bdd_not(variable), product);
  }
  return product;
}

bdd bddpp_manager::Bdd_eval(const bdd& f, const int* literals) {
  return Bdd_reduce(f, Literals_to_bdd(literals));
}

}  // namespace kiva
