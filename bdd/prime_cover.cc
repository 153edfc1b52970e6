// The third level, and the split of the prime implicants on which it stands. A prime is essential
// when the or of all other primes, before and behind it, is not the function. The cover starts with
// the essential primes; then come others that are disjoint from what is covered, then others that
// cover something new. What is covered only grows, so a prime that met it once will meet it always,
// and each of the two searches is one pass over the primes.

#include <algorithm>

#include "bdd/covers.h"
#include "bdd/internals.h"

namespace kiva {

void bddpp_manager::Bdd_essential_implicants(const bdd& f, std::vector<bdd>& essential,
                                             std::vector<bdd>& other) {
  essential.clear();
  other.clear();
  const std::vector<bdd> primes = Bdd_prime_implicants(f);
  const std::vector<bdd> behind = ors_from_behind(*this, primes);
  bdd before = Bdd_zero();
  for (std::size_t i = 0; i < primes.size(); ++i) {
    (Bdd_or(before, behind[i + 1]) == f ? other : essential).push_back(primes[i]);
    before = Bdd_or(before, primes[i]);
  }
}

void bddpp_manager::Bdd_essential_implicants(const bdd& f, int* nb_essential, bdd* essential,
                                             int* nb_other, bdd* other) {
  std::vector<bdd> essentials, others;
  Bdd_essential_implicants(f, essentials, others);
  std::copy(essentials.begin(), essentials.end(), essential);
  std::copy(others.begin(), others.end(), other);
  *nb_essential = static_cast<int>(essentials.size());
  *nb_other = static_cast<int>(others.size());
}

std::vector<bdd> prime_cover(bddpp_manager& m, const bdd& f) {
  std::vector<bdd> cover, others;
  m.Bdd_essential_implicants(f, cover, others);
  bdd covered = m.Bdd_zero();
  for (const bdd& prime : cover) covered = m.Bdd_or(covered, prime);
  for (const bool only_disjoint : {true, false}) {
    for (const bdd& prime : others) {
      if (covered == f) return cover;
      if (only_disjoint && !m.Bdds_excl(covered, prime)) continue;
      const bdd more = m.Bdd_or(covered, prime);
      if (more == covered) continue;
      covered = more;
      cover.push_back(prime);
    }
  }
  return cover;
}

}  // namespace kiva
