#pragma once

#include <cstdint>
#include <vector>

#include "engine/simulation.h"

namespace kiva {

/// A local or register that is to be One, or not to be.
struct ShownBit {
  enum List : std::uint8_t { local, register_, missing } list;  ///< `missing` is never One
  size_t row;
  bool wanted;
  bool before = false;  ///< in the state from which the instant was run

  friend bool operator==(const ShownBit&, const ShownBit&) = default;
};
using ShownCube = std::vector<ShownBit>;    ///< all of them
using ShownCover = std::vector<ShownCube>;  ///< any of them

/// Whether the instant that `after` shows is one of the cover's; `before` may be unknown, null, and
/// then nothing holds that asks for it.
inline bool holds(const ShownCover& cover, const SimulationState& after,
                  const SimulationState* before) {
  const auto bit_holds = [&](const ShownBit& bit) {
    const SimulationState* state = bit.before ? before : &after;
    if (state == nullptr) return false;
    if (bit.list == ShownBit::missing) return !bit.wanted;
    const auto& shown = bit.list == ShownBit::local ? state->shown_locals : state->shown_registers;
    return bit.row < shown.size() && (shown[bit.row] == SignalState::one) == bit.wanted;
  };
  for (const ShownCube& cube : cover) {
    bool all = true;
    for (const ShownBit& bit : cube) all = all && bit_holds(bit);
    if (all) return true;
  }
  return false;
}

}  // namespace kiva
