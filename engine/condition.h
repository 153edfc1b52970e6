#pragma once

#include <memory>
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
  const std::string& name(SignalPlace place) const;
  /// "; did you mean "y"?" with the name nearest to this, empty where none is near.
  std::string hint(const std::string& name) const;

 private:
  const std::vector<std::string>& names(SignalPlace::List list) const;
  const Simulation* simulation_;
};
/// The state shown for it, an input's as it was chosen for the instant.
SignalState shown_state(const SimulationState& state, SignalPlace place);
/// The value text of an input or output, "--" for none and for all others.
const std::string& shown_value(const SimulationState& state, SignalPlace place);

/// A text that cannot be read as a condition.
struct ConditionError {
  size_t character;  ///< from 1
  std::string reason;
};

/// What must hold in an instant: the expression text over the signals' presence (One counts, all
/// else does not), `instant` compared with a number (== = != < <= > >=), and NAME=text or
/// NAME="text" for a value.
class Condition {
 public:
  /// Throws ConditionError.
  Condition(const std::string& text, const Simulation& simulation);
  ~Condition();
  Condition(Condition&&) noexcept;
  Condition& operator=(Condition&&) noexcept;

  bool holds(const SimulationState& state) const;
  const std::string& text() const { return text_; }
  /// The signals that it names, in the order of the text.
  std::vector<SignalPlace> signals() const;

 private:
  struct Form;
  std::string text_;
  std::unique_ptr<Form> form_;
};

}  // namespace kiva
