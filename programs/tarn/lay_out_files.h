#pragma once

#include "programs/tarn/options.h"

namespace kiva::tarn_program {

/// Lays each file out in its place, standard input to standard output; names those that it changes
/// or, where that is all that is asked for, would change. Gives the exit status.
int lay_out_files(const Options& options);

}  // namespace kiva::tarn_program
