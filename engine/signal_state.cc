#include "engine/signal_state.h"

namespace kiva {

const StateLook& look_of(SignalState state) {
  static constexpr StateLook looks[] = {
      {"One", "one", "bleu", 0x0000ff},          {"Zero", "zero", "jaune", 0xffff00},
      {"Top", "top", "vert", 0x00ff00},          {"Bottom", "bottom", "noir", 0xffffff},
      {"unknown", "unknown", "rouge", 0xff0000},
  };
  return looks[static_cast<int>(state)];
}

StatePair pair_of(SignalState state) {
  switch (state) {
    case SignalState::one:
      return {1, 0};
    case SignalState::zero:
      return {0, 1};
    case SignalState::top:
      return {1, 1};
    case SignalState::bottom:
    case SignalState::unknown:
      break;
  }
  return {0, 0};
}

}  // namespace kiva
