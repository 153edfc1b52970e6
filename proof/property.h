#pragma once

#include <string>
#include <vector>

#include "engine/condition_text.h"
#include "proof/module_machine.h"

namespace kiva::proof {

/// What is asked of all runs of a module.
struct Property {
  enum Kind { never, always, reach, assume } kind;
  std::string text;  ///< the expression
};

/// As options and comments of the source name it.
const char* word(Property::Kind kind);
/// Whether it names one, which `kind` is then.
bool find_kind(const std::string& word, Property::Kind& kind);

/// Enters what the expression says of an instant: a signal stands for being One, NAME' for having
/// been One in the instant before (not in the first), and a variable of the module's file for
/// itself. Adds the signals that it names to `named`. Throws ConditionError.
Literal expression_literal(ModuleMachine& module, const SignalNames& names, const std::string& text,
                           std::vector<SignalPlace>& named);

/// Makes `bad` what must not be: `wrong`, in an instant up to which all of `assumed` has held.
void set_bad(Machine& machine, Literal wrong, const std::vector<Literal>& assumed);

}  // namespace kiva::proof
