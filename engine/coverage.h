#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "engine/signal_names.h"

namespace kiva {

/// What runs have shown of a module: which signals were present and which were not, the register
/// states reached and the steps between them.
class Coverage {
 public:
  explicit Coverage(const Simulation& simulation);

  /// Counts an instant; `before` is the state from which it was run.
  void note(const SimulationState& before, const SimulationState& after);

  /// A table for a person.
  void print(std::ostream& out) const;
  /// JSON, to be merged by a later run of the same module.
  std::string text() const;
  /// Adds what `text` gave; why it cannot be used, empty if it could.
  [[nodiscard]] std::string merge(const std::string& text);

 private:
  struct Seen {
    long present = 0;
    long not_present = 0;
  };
  const Simulation* simulation_;
  SignalNames names_;
  std::map<std::string, Seen> seen_;  ///< by "LIST NAME"
  std::set<std::string> states_;      ///< letters of the registers
  std::set<std::pair<std::string, std::string>> steps_;
  long instants_ = 0;
};

}  // namespace kiva
