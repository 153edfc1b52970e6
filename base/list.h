#pragma once

#include <algorithm>
#include <iterator>
#include <list>
#include <ostream>
#include <set>
#include <vector>

#include "base/index_set.h"

namespace kiva {

// Lists by position; positions count from 1.

template <class T>
[[nodiscard]] bool item_in(const std::list<T>& list, const T& x) {
  return std::find(list.begin(), list.end(), x) != list.end();
}

/// First position of x, 0 if absent.
template <class T>
long item_where(const std::list<T>& list, const T& x) {
  const auto found = std::find(list.begin(), list.end(), x);
  return found == list.end() ? 0 : 1 + static_cast<long>(std::distance(list.begin(), found));
}

namespace list_detail {
/// The end of the list where i is out of range.
template <class List>
auto at(List& list, long i) {
  return i < 1 || i > static_cast<long>(list.size()) ? list.end() : std::next(list.begin(), i - 1);
}
}  // namespace list_detail

/// A default value where i is out of range.
template <class T>
T read_number(const std::list<T>& list, long i) {
  const auto found = list_detail::at(list, i);
  return found == list.end() ? T() : *found;
}

template <class T>
void replace_number(std::list<T>& list, long i, const T& x) {
  const auto found = list_detail::at(list, i);
  if (found != list.end()) *found = x;
}

template <class T>
void sup_number(std::list<T>& list, long i) {
  const auto found = list_detail::at(list, i);
  if (found != list.end()) list.erase(found);
}

/// A new array that the caller owns; null for an empty list.
template <class T>
T* array_convert(const std::list<T>& list) {
  if (list.empty()) return nullptr;
  T* array = new T[list.size()];
  std::copy(list.begin(), list.end(), array);
  return array;
}

/// The elements joined by ", " between brackets.
template <class T>
std::ostream& operator<<(std::ostream& out, const std::list<T>& list) {
  const char* separator = "(";
  for (const T& x : list) {
    out << separator << x;
    separator = ", ";
  }
  return out << (list.empty() ? "()" : ")");
}

// Sets of indices; `priv(a, b)` is a without b.

std::set<long> set_union(const std::set<long>& a, const std::set<long>& b);
std::set<long> set_inter(const std::set<long>& a, const std::set<long>& b);
std::set<long> priv(const std::set<long>& a, const std::set<long>& b);
index_set set_union(const index_set& a, const index_set& b);
index_set set_inter(const index_set& a, const index_set& b);
index_set priv(const index_set& a, const index_set& b);

// Order.

/// The ordering a <= b.
[[nodiscard]] bool internal_inf(long a, long b);

/// Sorts the n entries by `inf`, which says whether one may stand before another; equal entries
/// keep their order.
template <class T, class Ordering>
void sort_all(T* array, long n, Ordering inf) {
  if (n > 1) std::stable_sort(array, array + n, [&](const T& a, const T& b) { return !inf(b, a); });
}

}  // namespace kiva
