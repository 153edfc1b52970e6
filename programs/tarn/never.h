#pragma once

#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"
#include "programs/tarn/proof_watch.h"
#include "proof/property.h"

namespace kiva::tarn_program {

/// Warns of what never happens in any run of a module that has been loaded from `file`, in which
/// all of `assumed` holds: statements, states and transitions that are not reached, signals that
/// are constant, runs behind which no output changes any more; prints how many states are reached.
/// Throws ConditionError and MachineError.
void tell_what_never_happens(Module* module, const std::string& file, const Options& options,
                             const std::vector<std::string>& assumed, const ProofWatch& watch,
                             Messages& messages);

}  // namespace kiva::tarn_program
