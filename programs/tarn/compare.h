#pragma once

#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"

namespace kiva::tarn_program {

/// Decides whether two compiled modules give the same outputs in every reachable instant. Says so,
/// or prints stimuli at the end of which an output differs; gives the exit status.
int compare_modules(Options& options, Messages& messages);

}  // namespace kiva::tarn_program
