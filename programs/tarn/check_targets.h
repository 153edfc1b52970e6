#pragma once

#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"

namespace kiva::tarn_program {

/// Runs the benches of all targets whose tools are there over the modules with random stimuli, and
/// prints a row for each. Exit status: 0 when all of them agree, `different` when one does not.
int check_targets(Options& options, Messages& messages);

}  // namespace kiva::tarn_program
