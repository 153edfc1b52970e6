// The levels of sums of products under their public names. A list stands on the heap and has the
// size of its products; the forms that fill an array copy it there.

#include <algorithm>
#include <iostream>

#include "base/process_end.h"
#include "bdd/covers.h"

namespace kiva {

namespace {

int fill(bdd* out, const std::vector<bdd>& products) {
  std::copy(products.begin(), products.end(), out);
  return static_cast<int>(products.size());
}

}  // namespace

std::vector<bdd> bddpp_manager::Bdd_sop(const bdd& f, int mode) {
  if (f.manager_ref() != this || f.node() == nullptr) {
    std::cerr << "ERROR in bddpp_manager::Bdd_sop():\n   bdd : " << f
              << ", is not allocated or associated with a bad BDD manager...\n";
    end_process();
  }
  if (mode == 2) return prime_cover(*this, f);
  if (mode != 1) return disjoint_cover(*this, f);
  int count;
  std::vector<bdd> products = expanded_cover(*this, f, count);
  products.resize(count);
  return products;
}

int bddpp_manager::Bdd_sop(const bdd& f, bdd* out, int mode) {
  return mode == 1 ? Bdd_sop_1(f, out) : fill(out, Bdd_sop(f, mode));
}

int bddpp_manager::Bdd_sop_0(const bdd& f, bdd* out) {
  return fill(out, disjoint_cover(*this, f));
}

int bddpp_manager::Bdd_sop_1(const bdd& f, bdd* out) {
  int count;
  fill(out, expanded_cover(*this, f, count));
  return count;
}

int bddpp_manager::Bdd_sop_2(const bdd& f, bdd* out) {
  return fill(out, prime_cover(*this, f));
}

int bddpp_manager::Bdd_sop_3(const bdd& f, bdd* out) {
  return Bdd_sop_0(f, out);
}

}  // namespace kiva
