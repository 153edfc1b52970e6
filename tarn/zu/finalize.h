#pragma once

namespace kiva {

class Module;

// Finalisation: a compiled module becomes one that can be run and written.

/// Completes the pairs of all signals, makes inputs True or False, drops what nothing needs, and
/// adds the register pair that raises the set wire in the first instant; `keep_rtl` not 0 keeps
/// the rtl wire's equation. Once for a module: the caller looks at `getFinalised`.
void finalize_module(Module* module, int keep_rtl);
/// Removes wires (unless Compilation::KeepWiresFlag()), registers that never change, unread locals.
void clean_module(Module* module);
void clean_locals(Module* module);
void suppress_useless_registers(Module* module);
/// Spreads constants; the equations of interface, registers and clocks stay.
void propagate_constants(Module* module);
/// Adds the output "OverKnowledgeError": some output is Error in this instant.
void add_over_knowledge_check(Module* module);

}  // namespace kiva
