// The second level: each disjoint product is widened literal by literal, in ascending order, while
// it still implies the function. A literal that could not go once cannot go later, so the product
// is prime. Then, from the first on, a product goes that all the others make up for.
//
// Whether the others suffice is asked of two ors: of what is kept before the product, and of the
// original products behind it. That is one or a product, where the or of all others afresh would
// be one for each pair.

#include "bdd/covers.h"
#include "bdd/literal_list.h"

namespace kiva {

namespace {

bdd widened(bddpp_manager& m, const bdd& f, const bdd& product, std::vector<int>& open) {
  // `open` has 2 for each index, on entry and at the end. A product implies f when f is true
  // whatever the variables are that it leaves open.
  const literal_list literals = literals_of(m, product);
  for (int code : literals) open[code / 2] = code % 2;
  literal_list kept;
  for (int code : literals) {
    open[code / 2] = 2;
    if (m.Bdd_eval_for_literal(f, open.data()) == 1) continue;
    open[code / 2] = code % 2;
    kept.push_back(code);
  }
  for (int code : literals) open[code / 2] = 2;
  return product_of(m, kept);
}

}  // namespace

std::vector<bdd> ors_from_behind(bddpp_manager& m, const std::vector<bdd>& products) {
  std::vector<bdd> ors(products.size() + 1, m.Bdd_zero());
  for (std::size_t i = products.size(); i-- > 0;) ors[i] = m.Bdd_or(products[i], ors[i + 1]);
  return ors;
}

std::vector<bdd> expanded_cover(bddpp_manager& m, const bdd& f, int& count) {
  count = 1;
  if (m.Bdd_is_tautology(f)) return {f};
  std::vector<bdd> products = disjoint_cover(m, f);
  std::vector<int> open(m.Nb_bdd_vars(), 2);
  for (bdd& product : products) product = widened(m, f, product, open);

  const std::vector<bdd> behind = ors_from_behind(m, products);
  bdd kept = m.Bdd_zero();
  count = 0;
  for (std::size_t i = 0; i < products.size(); ++i) {
    if (m.Bdd_or(kept, behind[i + 1]) == f) continue;
    kept = m.Bdd_or(kept, products[i]);
    products[count++] = products[i];
  }
  std::fill(products.begin() + count, products.end(), m.Bdd_zero());
  return products;
}

}  // namespace kiva
