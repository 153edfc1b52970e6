#pragma once

#include "programs/tarn/options.h"
#include "tarn/model/module.h"

namespace kiva::tarn_program {

/// Writes the bench of `--bench` for a module whose text stands there already, and says on the
/// error stream how to run it. False when something was wrong, which has been told.
bool write_bench(Module* module, const Options& options);

}  // namespace kiva::tarn_program
