#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bdd/bddpp.h"
#include "engine/signal_names.h"

namespace kiva {

/// A text that cannot be read as a condition.
struct ConditionError {
  size_t character;  ///< from 1
  std::string reason;
};

/// What a condition is made of.
struct ConditionAtom {
  enum Kind { presence, value, instant, variable } kind = presence;
  SignalPlace place{};
  std::string text;     ///< awaited value, the comparison's operator, or the variable's name
  long number = 0;      ///< that the instant is compared with
  bool before = false;  ///< in the instant before
};

/// The text of a condition as a function over its atoms.
class ConditionText {
 public:
  /// What some conditions may hold beside the rest.
  struct Extras {
    bool before = false;                               ///< NAME', for the instant before
    std::function<bool(const std::string&)> variable;  ///< whether a word names one; may be empty
  };
  /// Throws ConditionError.
  ConditionText(const std::string& text, const SignalNames& names, const Extras& extras);

  const std::vector<ConditionAtom>& atoms() const { return atoms_; }
  /// Variable k, by index, stands for atom k.
  const bdd& function() const { return function_; }
  bddpp_manager& manager() { return manager_; }

 private:
  std::vector<ConditionAtom> atoms_;
  bddpp_manager manager_;
  bdd function_;
};

}  // namespace kiva
