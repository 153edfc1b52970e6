#pragma once

#include "proof/goal_runs.h"

namespace kiva::proof {

/// Runs that reach many goals between them, to be made few and short. The goals must outlive it.
class RunSuite {
 public:
  explicit RunSuite(const Goals& goals) : goals_(goals) {}

  /// A run that reaches nothing new is let go.
  void add(GoalRun run);
  /// By one that goes on from it.
  void replace_newest(GoalRun run) { runs_.back() = std::move(run); }
  const std::vector<GoalRun>& runs() const { return runs_; }
  std::set<size_t> reached() const;
  size_t instants() const;

  /// Leaves runs out whose goals others reach, lets one run go on where another ended, and takes
  /// out instants and inputs that are not needed; what is reached between them stays. Best so far
  /// when stopped.
  void reduce(const Stop& stop);

 private:
  void thin_out();
  void join(const Stop& stop);
  void shorten(const Stop& stop);
  /// Whether the other inputs reach what is needed; the run is theirs then.
  bool take(GoalRun& run, Run other, const std::set<size_t>& needed) const;
  /// What no run but the numbered ones reaches.
  std::set<size_t> needed_of(const std::set<size_t>& runs) const;

  const Goals& goals_;
  std::vector<GoalRun> runs_;
};

}  // namespace kiva::proof
