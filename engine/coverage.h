#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "engine/diagram.h"
#include "engine/lit_source.h"
#include "engine/signal_names.h"

namespace kiva {

/// What runs have shown of a module: which signals were present and which were not, the register
/// states reached and the steps between them.
class Coverage {
 public:
  explicit Coverage(const Simulation& simulation);
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
  struct Seen {
    long present = 0;
    long not_present = 0;
  };
  const Simulation* simulation_;
  SignalNames names_;
  void note_source(const SimulationState& before, const SimulationState& after);
  void print_source(std::ostream& out) const;

  std::optional<LitSource> source_;
  std::vector<Diagram> automata_;
  std::vector<DiagramLights> lights_;
  /// How often each was reached: by kind, then by its name and place.
  std::map<std::string, std::map<std::string, long>> reached_;
  std::map<std::string, Seen> seen_;  ///< by "LIST NAME"
  std::set<std::string> compilers_;   ///< of these: not told of, where a map says so
  std::set<std::string> states_;      ///< letters of the registers
  std::set<std::pair<std::string, std::string>> steps_;
  long instants_ = 0;
};

}  // namespace kiva
