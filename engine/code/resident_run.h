#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "engine/code/emitter.h"
#include "engine/context.h"

namespace kiva {
class FlatEquations;
}

namespace kiva::code {

/// Instants behind each other as machine code that computes outputs and registers alone, and keeps
/// them in an array of its own. All else that an instant would have left is found by running its
/// pass again, from the entries that `leave` gives.
class ResidentRun {
 public:
  /// The rails by which a module is run.
  struct Frame {
    const ChoiceRails& choices;
    std::span<const RegisterRails> registers;
    std::span<const SignalRails> outputs;
  };
  /// Null where there is no machine code, or where an instant depends on more than choices and
  /// registers. Reads the equations, in whatever thread.
  static std::unique_ptr<ResidentRun> make(const FlatEquations& equations, size_t variables,
                                           const Frame& frame);

  /// Takes the registers that stand before an instant; false, and nothing has been done, where one
  /// is neither One nor Zero.
  bool enter(const int* context);
  /// One instant; false, and nothing has been done, where an input is neither One nor Zero. Inputs
  /// by row.
  bool step(bool set, bool reset, std::span<const SignalState> inputs);
  /// Of the last instant.
  SignalState output(size_t row) const;
  /// Writes the choices and the registers from which the last instant was run.
  void leave(int* context) const;
  /// Whether the context has the registers behind the last instant.
  bool agrees(const int* context) const;

 private:
  ResidentRun() = default;
  class Maker;

  /// Bytes of the array. Registers come first, each by its place in the frame, then what they
  /// become, then the inputs by row, then these.
  std::uint32_t becomes() const { return static_cast<std::uint32_t>(registers_.size()); }
  std::uint32_t inputs() const { return 2 * becomes(); }
  std::uint32_t set() const { return inputs() + static_cast<std::uint32_t>(input_rails_.size()); }
  std::uint32_t reset() const { return set() + 1; }
  std::uint32_t outputs() const { return set() + 2; }

  std::vector<std::uint32_t> registers_;    ///< status index of each one's actual pair
  std::vector<std::uint32_t> input_rails_;  ///< status index
  std::uint32_t set_rail_ = 0, reset_rail_ = 0;
  std::vector<std::uint8_t> slots_;  ///< 0 or 1 each; two for an output, status and value
  bool moved_ = false;               ///< the registers stand in their place already
  std::unique_ptr<Emitter::Program> program_;
};

}  // namespace kiva::code
