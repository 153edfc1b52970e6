#pragma once

#include "proof/property.h"
#include "proof/prover.h"

namespace kiva::proof {

/// A signal, and the literal that says whether it shows as One.
struct NamedLiteral {
  SignalPlace place;
  Literal is_one;
};
/// Runs an instant on the inputs of a machine: those of the simulation's rows, perhaps with the
/// reset wire behind them. Gives its line of stimuli.
std::string run_instant(Simulation& simulation, const std::vector<bool>& inputs);
/// The run as stimuli, a line an instant, the last with what the named signals are then. Loads and
/// moves the simulation, whose rows the first inputs of the machine are, perhaps with the reset
/// wire behind them. Throws MachineError where `bad` is not in the last instant, or the module
/// shows something else then.
std::string shown_run(Simulation& simulation, const Machine& machine,
                      const std::vector<NamedLiteral>& named, const Run& run);

/// A module with what is assumed of its inputs: the machine that properties are asked of, and the
/// simulation that shows the runs. The simulation must outlive it and is moved by `shown`.
class Question {
 public:
  /// Throws MachineError.
  Question(Simulation& simulation, bool with_reset);
  /// From now on only runs count in which the expression holds in every instant. Throws
  /// ConditionError.
  void assume(const std::string& expression);
  /// The machine that is bad where the property fails, or, for `reach`, where it holds. Throws
  /// ConditionError, and MachineError where the expression depends on what nothing computes.
  Machine machine(const Property& property);
  /// The signals that the last property named, in the order of its text.
  const std::vector<SignalPlace>& named() const { return named_; }

  /// The run as stimuli with the signals that the property names (`shown_run`).
  std::string shown(const Property& property, const Run& run);

 private:
  Simulation& simulation_;
  ModuleMachine module_;
  std::vector<Literal> assumed_;
  std::vector<SignalPlace> named_;
};

}  // namespace kiva::proof
