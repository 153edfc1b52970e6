// The two orders by date. A counting sort, unless a file's dates lie too far apart to count.

#include <algorithm>
#include <vector>

#include "pert_exp/wood.h"

namespace kiva {

namespace {

struct Dated {
  long date;
  long index;
};

/// The indices by ascending date; entries of one date stay in the order given.
std::list<long> by_date(const std::vector<Dated>& entries) {
  if (entries.empty()) return {};
  const auto [least, largest] =
      std::minmax_element(entries.begin(), entries.end(),
                          [](const Dated& a, const Dated& b) { return a.date < b.date; });
  const auto offset = [first = least->date](const Dated& entry) {
    return static_cast<unsigned long>(entry.date) - static_cast<unsigned long>(first);
  };
  std::vector<long> sorted(entries.size());
  if (offset(*largest) <= 4 * entries.size() + 64) {
    std::vector<size_t> place(offset(*largest) + 2, 0);
    for (const Dated& entry : entries) ++place[offset(entry) + 1];
    for (size_t date = 1; date < place.size(); ++date) place[date] += place[date - 1];
    for (const Dated& entry : entries) sorted[place[offset(entry)]++] = entry.index;
  } else {
    std::vector<Dated> copy = entries;
    std::stable_sort(copy.begin(), copy.end(),
                     [](const Dated& a, const Dated& b) { return a.date < b.date; });
    std::transform(copy.begin(), copy.end(), sorted.begin(),
                   [](const Dated& entry) { return entry.index; });
  }
  return {sorted.begin(), sorted.end()};
}

}  // namespace

std::list<long> Bddexpressionwood::earliest_sort() const {
  std::vector<Dated> entries;
  for (long index = 0; index < nb_var_bdd; ++index) {
    if (exp_table[index] != nullptr) entries.push_back({exp_table[index]->earliest_date, index});
  }
  return by_date(entries);
}

std::list<long> Bddexpressionwood::latest_sort() const {
  std::vector<Dated> entries;
  // The complement turns the order round without the overflow of a negation.
  for (long index = 0; index < nb_var_bdd; ++index) {
    if (exp_table[index] != nullptr) entries.push_back({~latest_date_table[index], index});
  }
  return by_date(entries);
}

}  // namespace kiva
