#pragma once

#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"

namespace kiva::tarn_program {

/// Proves the properties of the command line, or of the comments of a source file, and prints
/// stimuli where one fails or what was to be reached is; gives the exit status.
int prove_properties(Options& options, Messages& messages);

}  // namespace kiva::tarn_program
