#pragma once

#include <iosfwd>
#include <vector>

namespace kiva {

/// Walks through all permutations of 0 .. degree - 1 in lexicographic order.
class exhaustif_class {
 public:
  /// Starts from the identity.
  explicit exhaustif_class(int n);
  /// Starts from the n entries of `order`.
  exhaustif_class(int n, const int* order);

  /// The next permutation that differs at position i or before, i negative meaning the last
  /// position; 0 when there is none.
  int next(int i = -1);
  /// The first position that the last call of next changed; 0 before.
  int last_number() const { return last_number_; }
  int degree() const { return static_cast<int>(order_.size()); }
  /// Starts again from the identity of n entries.
  void degree(int n);
  const int* order() const { return order_.data(); }
  void order(const int* entries);

  friend bool operator==(const exhaustif_class& a, const exhaustif_class& b) {
    return a.order_ == b.order_;
  }
  /// degree, ",", last number, " (", the entries, ")".
  friend std::ostream& operator<<(std::ostream& out, const exhaustif_class& walk);

 private:
  int last_number_ = 0;
  std::vector<int> order_;
};

}  // namespace kiva
