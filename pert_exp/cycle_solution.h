#pragma once

#include <list>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "bdd/bddpp.h"

namespace kiva {

class Bddexpressionwood;

/// Whether equations depend on each other in one instant, whatever the dates.
bool has_cycle(const Bddexpressionwood& wood);

/// What equations that depend on each other in one instant settle to. Nothing is known at first; a
/// variable is settled One where its function is one whatever those not yet settled are, Zero where
/// it is zero, and so on until nothing is added (S. Malik, Analysis of cyclic combinational
/// circuits, IEEE Trans. CAD 13, 1994). What only justifies itself is never settled. Each strongly
/// connected part is solved by itself, over the variables outside it.
class CycleSolution {
 public:
  /// What the caller knows of the variables, by index.
  struct Hints {
    std::unordered_set<long> ones;  ///< count as One, whatever their equations say
    std::unordered_set<long>
        preferred;  ///< whose equations are rather replaced than those of others
  };

  /// Of the wood as it stands, which nothing here changes before `put`.
  CycleSolution(Bddexpressionwood& wood, Hints hints);

  /// The number of cycles.
  size_t cycles() const { return parts_.size(); }
  /// The variables on cycles.
  std::list<long> members() const;
  /// False where there is no solution to put: an abstract equation stands in a cycle. Asks the
  /// WorkGuard; BoundPassed where more nodes have been visited than `most_visits`.
  [[nodiscard]] bool solve();
  /// Of each cycle, where some member is not settled, over the variables outside that cycle.
  const std::vector<bdd>& unsettled() const { return unsettled_; }
  /// Gives as many members as it takes to leave no cycle the functions to which they settle; the
  /// others then follow by their own. No date is left.
  void put();
  /// Gives the members their functions back.
  void restore();

 private:
  /// Where a variable is known to be One, and where Zero.
  struct Known {
    bdd one, zero;
  };
  class Evaluation;
  static constexpr size_t most_visits = 20'000'000;

  bool solve_part(const std::vector<long>& part);
  bdd solution_of(long index);
  std::vector<long> feedback_of(const std::vector<long>& part) const;

  Bddexpressionwood& wood_;
  bddpp_manager& manager_;
  Hints hints_;
  std::vector<std::vector<long>> parts_;
  std::unordered_map<long, Known> known_;  ///< by variable index, of members
  std::unordered_map<long, bdd> before_;
  std::vector<bdd> unsettled_;
  size_t visits_ = 0;
};

}  // namespace kiva
