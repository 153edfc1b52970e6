// Tables of a function over chosen variables.

#include "bdd/bddpp.h"

namespace kiva {

bdd bddpp_manager::Minterm(int m, int n, const bdd* vars) {
  if (m < 0) return Bdd_zero();
  bdd product = Bdd_one();
  for (int i = 0; i < n; ++i, m >>= 1)
    product = Bdd_and(product, (m & 1) != 0 ? vars[i] : Bdd_not(vars[i]));
  return product;
}

void bddpp_manager::Truth_table(const bdd& f, int n, const bdd* vars, char* out) {
  for (int m = 0; m < 1 << n; ++m) {
    const bdd residue = Bdd_reduce(f, Minterm(m, n, vars));
    out[m] = Bdd_is_one_tautologic(residue) ? '1' : Bdd_is_zero_tautologic(residue) ? '0' : '?';
  }
}

void bddpp_manager::Bdd_truth_table(const bdd& f, int n, const bdd* vars, bdd* out) {
  for (int m = 0; m < 1 << n; ++m) out[m] = Bdd_reduce(f, Minterm(m, n, vars));
}

}  // namespace kiva
