#pragma once

#include <cstdint>
#include <string_view>

namespace kiva {

/// The state of a signal in one instant.
enum class SignalState : std::uint8_t { one, zero, top, bottom, unknown };

/// What a state is called and how it looks. One table, read by every panel and every trace.
struct StateLook {
  std::string_view label;    ///< as a person reads it: "One"
  std::string_view word;     ///< as traces and stimuli write it: "one"
  std::string_view colour;   ///< the word of the colour classes: "bleu"
  std::uint32_t background;  ///< of a painted row, 0xRRGGBB
};

const StateLook& look_of(SignalState state);

/// The state of a pair of context entries; unknown unless both are 0 or 1.
inline SignalState state_of(int status, int value) {
  if ((static_cast<unsigned>(status) | static_cast<unsigned>(value)) > 1u)
    return SignalState::unknown;
  constexpr SignalState states[2][2] = {{SignalState::bottom, SignalState::zero},
                                        {SignalState::one, SignalState::top}};
  return states[status][value];
}

/// The pair of a state; (0, 0) for unknown, which a choice never is.
struct [[nodiscard]] StatePair {
  int status;
  int value;
};
StatePair pair_of(SignalState state);

}  // namespace kiva
