#pragma once

#include <vector>

#include "bdd/bddpp.h"

namespace kiva {

/// A product as the codes of its literals, ascending by index: twice the index, and one more where
/// the variable stands without negation.
using literal_list = std::vector<int>;

inline int literal_code(long index, int value) {
  return static_cast<int>(2 * index + (value != 0 ? 1 : 0));
}

/// Of a product that is not zero; one has no literals.
literal_list literals_of(const bddpp_manager& manager, const bdd& cube);
/// The literals of Bdd_satisfy.
literal_list first_product(const bddpp_manager& manager, const bdd& f);
/// Made from the last literal up, one node a literal.
bdd product_of(bddpp_manager& manager, const literal_list& literals);

}  // namespace kiva
