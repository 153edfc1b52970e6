#pragma once

#include <memory>
#include <string>

#include "engine/condition_text.h"
#include "engine/simulation.h"

namespace kiva {

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

  [[nodiscard]] bool holds(const SimulationState& state) const;
  const std::string& text() const { return text_; }

 private:
  struct Form;
  std::string text_;
  std::unique_ptr<Form> form_;
};

}  // namespace kiva
