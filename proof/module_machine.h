#pragma once

#include <map>
#include <memory>

#include "engine/context.h"
#include "engine/signal_names.h"
#include "engine/simulation.h"
#include "proof/machine.h"

namespace kiva::proof {

/// A module that cannot be taken as a machine.
struct MachineError {
  std::string reason;
};

/// The runs of a module as a machine: what `Simulation` does from a load on when each input is One
/// or Zero in each instant. Latches are the rails of registers, and the set wire; inputs are those
/// that show in a row, in their order, then the reset wire, where that may be raised.
class ModuleMachine {
 public:
  /// Throws MachineError where an instant asks for data.
  ModuleMachine(const Simulation& simulation, bool with_reset);

  Machine machine;
  bool with_reset() const { return with_reset_; }
  /// Whether the signal shows as One in the instant.
  Literal is_one(SignalPlace place) { return is(place, SignalState::one); }
  /// The same of another state; never unknown.
  Literal is(SignalPlace place, SignalState state);
  /// Whether it showed as One in the instant before: in the first, as the load leaves it.
  Literal was_one(SignalPlace place);
  /// Whether the signal's status is 0: it shows as Zero or Bottom.
  Literal is_not_present(SignalPlace place) { return negated(rails(place).status); }
  /// A rail, or another variable of the module as its file names it; false for no such variable.
  bool find_variable(const std::string& name, Literal& literal) const;
  /// Empty where all that `bad` of the machine, made from this one, depends on is computed before
  /// it is read; else why it is not.
  std::string undefined(const Machine& made) const;

 private:
  Literal of(long index) const { return entries_[static_cast<size_t>(index)]; }
  struct Rails {
    Literal status, value;
  };
  Rails rails(SignalPlace place);
  void choose();
  void compute();
  void move();

  Module* module_;
  const Simulation& simulation_;
  bool with_reset_;
  std::vector<Literal> entries_;            ///< of the context, by variable index
  std::map<std::uint32_t, long> unknowns_;  ///< nodes of entries that nothing has written, by index
  std::vector<Literal> input_ones_;         ///< by row
  std::vector<SignalRails> next_;           ///< of registers, by row
};

}  // namespace kiva::proof
