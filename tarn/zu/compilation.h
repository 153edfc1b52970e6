#pragma once

namespace kiva {

class Module;

// A module from its statement tree to dated equations.

/// Makes the environment, compiles the body, dates the equations; gives `reincarnate`.
bool compile_module(Module* module);
/// Makes the three wires, and the first occurrence of each output and local.
void create_compile_env(Module* module);
/// Dates the equations of locals and outputs. A dependence cycle ends the process; by the rule
/// `causality` only one that does not settle (causality.h).
void sort_code(Module* module);

}  // namespace kiva
