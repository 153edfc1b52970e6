// The first level: one satisfying product after the other is taken out of the function, so that
// products are disjoint. Only as many are held as there are, up to the limit.

#include <iostream>

#include "base/process_end.h"
#include "bdd/covers.h"

namespace kiva {

std::vector<bdd> disjoint_cover(bddpp_manager& m, const bdd& f) {
  if (m.Bdd_is_one_tautologic(f)) return {f};
  std::vector<bdd> products;
  for (bdd rest = f; !m.Bdd_is_zero_tautologic(rest);) {
    if (products.size() >= static_cast<std::size_t>(Max_number_of_terms())) {
      std::cerr << "ERREUR: number of products exceeds limit of " << Max_number_of_terms()
                << "\nprocess aborted !\n";
      end_process();
    }
    products.push_back(m.Bdd_satisfy(rest));
    rest = m.Bdd_and(rest, m.Bdd_not(products.back()));
  }
  return products;
}

}  // namespace kiva
