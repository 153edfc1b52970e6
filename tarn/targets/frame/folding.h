#pragma once

#include <map>
#include <unordered_map>

#include "bdd/bddpp.h"

namespace kiva {

/// Folds what a series of definitions, each behind what it reads, says twice: constants, copies,
/// complements, and functions that an earlier variable has or is the complement of.
class Folding {
 public:
  explicit Folding(bddpp_manager& manager) : manager_(manager) {}

  /// The definition of the variable at `index` over what is not folded away. What it turns out to
  /// be is folded from here on.
  bdd define(long index, const bdd& f);
  /// The variable at `index` is a constant, or another variable or its complement.
  void assume(long index, const bdd& same) { known_.emplace(index, same); }
  /// What stands for the variable at `index`.
  bdd variable(long index) const;

 private:
  bdd folded(const bdd& f);

  bddpp_manager& manager_;
  std::unordered_map<long, bdd> known_;  ///< by index: a constant, or another variable
  std::map<const bdd_node*, std::pair<int, bdd>> first_;  ///< polarity in, and variable of it
  std::unordered_map<const bdd_node*, bdd> done_;  ///< of nodes whose variables are all settled
};

}  // namespace kiva
