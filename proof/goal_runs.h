#pragma once

#include <set>

#include "proof/engine.h"

namespace kiva::proof {

/// A run, and the numbers of the goals that it reaches.
struct GoalRun {
  Run inputs;
  std::set<size_t> reached;
};

/// What runs of a machine reach, of a list of goals.
class Goals {
 public:
  /// Only instants count up to which `allowed` has held. The machine must outlive it.
  Goals(const Machine& machine, std::vector<Literal> goals, Literal allowed = one)
      : machine_(machine), goals_(std::move(goals)), allowed_(allowed) {}

  /// The run up to the last instant that reaches something new, and what it reaches.
  GoalRun seen(Run run) const;
  /// What looking at so many instants takes, as a Stop counts it.
  double steps(size_t instants) const {
    return 2.0 * static_cast<double>(instants * (machine_.aig.size() + goals_.size()));
  }
  /// Random runs, 256 side by side, until more of them reach nothing new: those that do, each for
  /// the goals that none before has reached. The same runs each time.
  std::vector<GoalRun> random_runs(const Stop& stop) const;

 private:
  const Machine& machine_;
  std::vector<Literal> goals_;
  Literal allowed_;
};

}  // namespace kiva::proof
