#pragma once

#include <span>
#include <string>
#include <vector>

#include "engine/simulation.h"

namespace kiva {

/// Where a signal of a running module shows: one of its four lists, and the row there.
struct SignalPlace {
  enum List { input, output, local, register_ } list;
  size_t row;
};
/// Every signal of a module that a person can name; a name that stands in several lists is the
/// first of inputs, outputs, locals, registers.
class SignalNames {
 public:
  explicit SignalNames(const Simulation& simulation) : simulation_(&simulation) {}
  /// False where no signal bears the name.
  [[nodiscard]] bool find(const std::string& name, SignalPlace& place) const;
  /// The same among those that a trace shows: all but inputs.
  [[nodiscard]] bool find_traced(const std::string& name, SignalPlace& place) const;
  const std::string& name(SignalPlace place) const;
  const std::vector<std::string>& names(SignalPlace::List list) const;
  /// "; did you mean "y"?" with the name nearest to this, empty where none is near.
  std::string hint(const std::string& name) const;

 private:
  [[nodiscard]] bool find_in(std::span<const SignalPlace::List> lists, const std::string& name,
                             SignalPlace& place) const;
  const Simulation* simulation_;
};
/// The state shown for it, an input's as it was chosen for the instant.
SignalState shown_state(const SimulationState& state, SignalPlace place);
/// The value text of an input or output, "--" for none and for all others.
const std::string& shown_value(const SimulationState& state, SignalPlace place);

}  // namespace kiva
