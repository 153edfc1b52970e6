#pragma once

#include <vector>

#include "proof/machine.h"

namespace kiva::proof {

/// Instants of a machine, one behind the other, as one graph.
class Unrolling {
 public:
  /// From the start, or from any state.
  Unrolling(const Machine& machine, bool from_start);

  /// Adds an instant; gives what `bad` is in it.
  Literal add();
  /// How many that takes, as a Stop counts them.
  double steps_to_add() const { return 30.0 * static_cast<double>(cone_.size()); }
  size_t instants() const { return states_.size(); }
  const Aig& aig() const { return aig_; }
  /// The latches as the instant, from 0, finds them.
  const std::vector<Literal>& state(size_t instant) const { return states_[instant]; }
  const std::vector<Literal>& inputs(size_t instant) const { return inputs_[instant]; }

 private:
  const Machine& machine_;
  std::vector<std::uint32_t> cone_;
  Aig aig_;
  std::vector<Literal> image_;
  std::vector<Literal> state_;  ///< of the next instant
  std::vector<std::vector<Literal>> states_, inputs_;
};

}  // namespace kiva::proof
