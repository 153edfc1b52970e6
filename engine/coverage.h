#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "engine/coverage_goals.h"
#include "engine/signal_names.h"

namespace kiva {

/// How often a signal was seen.
struct SeenSignal {
  long present = 0;
  long not_present = 0;
};
using SeenSignals = std::map<std::string, SeenSignal>;  ///< by "LIST NAME"
/// How often each was reached: by kind (`CoverageGoal`), then by its name and place.
using ReachedGoals = std::map<std::string, std::map<std::string, long>>;
/// Tables for a person.
void print_seen(std::ostream& out, const SeenSignals& seen);
void print_reached(std::ostream& out, const ReachedGoals& reached, bool has_map);

/// What runs have shown of a module: which signals were present and which were not, the register
/// states reached and the steps between them.
class Coverage {
 public:
  explicit Coverage(const Simulation& simulation);
  Coverage(const Coverage&) = delete;
  Coverage& operator=(const Coverage&) = delete;
  /// Counts statements, states and transitions, too, by the module's map; why it cannot, empty if
  /// it can. Before anything is noted or merged.
  std::string map(const std::string& map_text);

  /// Counts an instant; `before` is the state from which it was run.
  void note(const SimulationState& before, const SimulationState& after);

  /// A table for a person.
  void print(std::ostream& out) const;
  /// JSON, to be merged by a later run of the same module.
  std::string text() const;
  /// Adds what `text` gave; why it cannot be used, empty if it could.
  [[nodiscard]] std::string merge(const std::string& text);

 private:
  void watch();

  const Simulation* simulation_;
  SignalNames names_;
  struct Watched {
    SignalPlace place;
    SeenSignal* seen;
  };
  std::vector<Watched> watched_;
  std::vector<long*> times_reached_;  ///< by goal

  std::vector<CoverageGoal> goals_;
  bool has_map_ = false;
  ReachedGoals reached_;
  SeenSignals seen_;
  std::set<std::string> compilers_;  ///< of these: not told of, where a map says so
  std::set<std::string> states_;     ///< letters of the registers
  std::set<std::pair<std::string, std::string>> steps_;
  long instants_ = 0;
};

}  // namespace kiva
