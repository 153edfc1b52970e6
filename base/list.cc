#include "base/list.h"

namespace kiva {

namespace {

/// The result of a library set algorithm over the two ascending ranges.
template <class Set, class Algorithm>
std::vector<long> combined(const Set& a, const Set& b, Algorithm algorithm) {
  std::vector<long> members;
  algorithm(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(members));
  return members;
}

constexpr auto joined = [](auto... range) { std::set_union(range...); };
constexpr auto shared = [](auto... range) { std::set_intersection(range...); };
constexpr auto without = [](auto... range) { std::set_difference(range...); };

std::set<long> as_set(const std::vector<long>& members) {
  return {members.begin(), members.end()};
}

}  // namespace

std::set<long> set_union(const std::set<long>& a, const std::set<long>& b) {
  return as_set(combined(a, b, joined));
}
std::set<long> set_inter(const std::set<long>& a, const std::set<long>& b) {
  return as_set(combined(a, b, shared));
}
std::set<long> priv(const std::set<long>& a, const std::set<long>& b) {
  return as_set(combined(a, b, without));
}
index_set set_union(const index_set& a, const index_set& b) {
  return index_set::from_unsorted(combined(a, b, joined));
}
index_set set_inter(const index_set& a, const index_set& b) {
  return index_set::from_unsorted(combined(a, b, shared));
}
index_set priv(const index_set& a, const index_set& b) {
  return index_set::from_unsorted(combined(a, b, without));
}

bool internal_inf(long a, long b) {
  return a <= b;
}

}  // namespace kiva
