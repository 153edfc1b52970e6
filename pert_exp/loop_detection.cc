// The members of cycles. Early dates climb along the readers and late dates along the dependences;
// the two tables can differ by what abstract equations add, so each is searched.

#include <vector>

#include "base/strong_parts.h"
#include "pert_exp/wood_graph.h"

namespace kiva {

std::list<long> Bddexpressionwood::loop_detection() {
  if (nb_level == 0) compute_dates();
  // No chain of an acyclic wood that was dated here has more levels than variables.
  if (nb_level <= nb_var_bdd) return {};
  const Readers readers{*this};
  const Dependences dependences{*this};
  StrongParts early_parts(readers, nb_var_bdd);
  StrongParts late_parts(dependences, nb_var_bdd);
  std::vector<long> members;
  const auto take = [&](std::span<const long> part, bool cycle) {
    if (cycle) members.insert(members.end(), part.begin(), part.end());
  };
  for (long index : Set_of_exp()) {
    early_parts.from(index, take);
    late_parts.from(index, take);
  }
  const index_set ascending = index_set::from_unsorted(std::move(members));
  return {ascending.begin(), ascending.end()};
}

}  // namespace kiva
