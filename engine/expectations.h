#pragma once

#include <string>
#include <vector>

#include "engine/stimuli.h"

namespace kiva {

/// A line for each expectation that the state does not meet:
/// "expected drink, is absent; present: refund".
std::vector<std::string> unmet(const std::vector<Expectation>& expectations,
                               const SimulationState& state, const Simulation& simulation);

/// What the state shows, as expectations: of the signals that `expectations` names, of all outputs
/// where it names none.
std::string seen(const std::vector<Expectation>& expectations, const SimulationState& state,
                 const Simulation& simulation);

}  // namespace kiva
