#pragma once

#include "proof/property.h"
#include "proof/prover.h"

namespace kiva::proof {

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

  /// The run as stimuli, a line an instant, the last with what the signals that the last property
  /// named are then. Throws MachineError where the module does not run so.
  std::string shown(const Property& property, const Run& run);

 private:
  Simulation& simulation_;
  ModuleMachine module_;
  std::vector<Literal> assumed_;
  std::vector<SignalPlace> named_;
};

}  // namespace kiva::proof
