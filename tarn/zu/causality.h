#pragma once

namespace kiva {

class Module;

/// Judges dependence cycles by what the module does, started in the first instant. The equations of
/// a cycle are solved from "nothing is known"; if every member settles in all states of the
/// registers, or in all that can be reached, each is replaced by its solution, and no cycle is
/// left. Else the equations stay as they were, and the report of the cycle tells how such an
/// instant is reached. Inputs are One or Zero. What passes a bound in size counts as not settled.
///
/// Where a solution does not hold in all states, a wire of the module tells in which not; whoever
/// runs the module has it among its own signals, and is judged by it, too. A caller that starts a
/// module in such a state ends the process with a report.
void settle_cycles(Module* module);

}  // namespace kiva
