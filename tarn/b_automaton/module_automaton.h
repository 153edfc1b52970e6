#pragma once

#include <memory>
#include <string>

#include "tarn/b_automaton/b_automaton.h"

namespace kiva {

class Module;

/// A finalised module without values as a boolean automaton over the statuses: input x is "i_x",
/// output x is "o_x", and a register of variable x is "s_x". IllegalOperationException where the
/// module is no such module, or reads what nothing computes.
std::unique_ptr<b_automaton> automaton_of(Module* module);

}  // namespace kiva
