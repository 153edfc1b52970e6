#pragma once

#include <string>

namespace kiva {

class Bddexpressionwood;
class Module;
class Signal;

/// While a module compiles, the value of a whole signal is the and over its occurrences: a silent
/// one holds it at zero. Once no more come, what one of them says of its absence counts whatever
/// the others say, so that Zero shows, and Top beside an emission: by the rule `values`, the value
/// becomes their or. `suffix` is that of an instance of the module whose equations the wood holds,
/// or "". An and of anything else stays.
void join_values(const Signal* signal, Module* module, Bddexpressionwood* wood,
                 const std::string& suffix = "");

}  // namespace kiva
