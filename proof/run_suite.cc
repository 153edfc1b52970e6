#include "proof/run_suite.h"

#include <algorithm>

namespace kiva::proof {

namespace {

bool holds_all(const std::set<size_t>& all, const std::set<size_t>& some) {
  return std::ranges::includes(all, some);
}

}  // namespace

void RunSuite::add(GoalRun run) {
  if (!holds_all(reached(), run.reached)) runs_.push_back(std::move(run));
}

std::set<size_t> RunSuite::reached() const {
  std::set<size_t> all;
  for (const GoalRun& run : runs_) all.insert(run.reached.begin(), run.reached.end());
  return all;
}

size_t RunSuite::instants() const {
  size_t sum = 0;
  for (const GoalRun& run : runs_) sum += run.inputs.size();
  return sum;
}

std::set<size_t> RunSuite::needed_of(const std::set<size_t>& runs) const {
  std::set<size_t> needed, others;
  for (size_t k = 0; k < runs_.size(); ++k)
    (runs.contains(k) ? needed : others).insert(runs_[k].reached.begin(), runs_[k].reached.end());
  for (size_t goal : others) needed.erase(goal);
  return needed;
}

void RunSuite::reduce(const Stop& stop) {
  thin_out();
  shorten(stop);
  join(stop);
  shorten(stop);
}

/// Runs that reach most of what is left first, until nothing is left.
void RunSuite::thin_out() {
  std::vector<GoalRun> kept;
  std::set<size_t> left = reached();
  while (!left.empty()) {
    // More goals, then fewer instants.
    const auto gain = [&](const GoalRun& run) {
      const auto goals =
          std::ranges::count_if(run.reached, [&](size_t goal) { return left.contains(goal); });
      return std::pair(goals, -static_cast<long>(run.inputs.size()));
    };
    const auto best = std::ranges::max_element(runs_, {}, gain);
    for (size_t goal : best->reached) left.erase(goal);
    kept.push_back(*best);
  }
  runs_ = std::move(kept);
}

void RunSuite::join(const Stop& stop) {
  for (size_t first = 0; first < runs_.size(); ++first)
    for (size_t second = 0; second < runs_.size() && !stop(); ++second) {
      if (first == second) continue;
      Run both = runs_[first].inputs;
      both.insert(both.end(), runs_[second].inputs.begin(), runs_[second].inputs.end());
      stop.count(goals_.steps(both.size()));
      GoalRun joined = goals_.seen(std::move(both));
      if (!holds_all(joined.reached, needed_of({first, second}))) continue;
      runs_[first] = std::move(joined);
      runs_.erase(runs_.begin() + static_cast<std::ptrdiff_t>(second));
      first = static_cast<size_t>(-1);  // from the beginning
      break;
    }
}

bool RunSuite::take(GoalRun& run, Run other, const std::set<size_t>& needed) const {
  GoalRun seen = goals_.seen(std::move(other));
  if (!holds_all(seen.reached, needed)) return false;
  run = std::move(seen);
  return true;
}

/// Pieces of half the length go, then of a quarter, down to single instants; then inputs.
void RunSuite::shorten(const Stop& stop) {
  for (size_t k = 0; k < runs_.size(); ++k) {
    const std::set<size_t> needed = needed_of({k});
    GoalRun& run = runs_[k];
    for (size_t size = run.inputs.size(); size > 0; size /= 2)
      for (size_t from = 0; from < run.inputs.size() && !stop();) {
        Run without = run.inputs;
        const auto begin = without.begin() + static_cast<std::ptrdiff_t>(from);
        without.erase(
            begin, begin + static_cast<std::ptrdiff_t>(std::min(size, run.inputs.size() - from)));
        stop.count(goals_.steps(run.inputs.size()));
        if (!take(run, std::move(without), needed)) from += size;
      }
    for (size_t instant = 0; instant < run.inputs.size(); ++instant)
      for (size_t input = 0; instant < run.inputs.size() && input < run.inputs[instant].size();
           ++input) {
        if (!run.inputs[instant][input] || stop()) continue;
        Run without = run.inputs;
        without[instant][input] = false;
        stop.count(goals_.steps(run.inputs.size()));
        take(run, std::move(without), needed);
      }
  }
  std::erase_if(runs_, [](const GoalRun& run) { return run.inputs.empty(); });
}

}  // namespace kiva::proof
