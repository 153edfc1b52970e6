#pragma once

#include <set>
#include <string>

#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"

namespace kiva::tarn_program {

/// Sets the library's switches as the options say.
void choose(const Options& options);

/// Compiles a source file, or reads a compiled module, and writes what is asked for. Enters the
/// names of the modules in `met`. False when something was wrong, which has been told.
bool translate(const std::string& file, const Options& options, Messages& messages,
               std::set<std::string>& met);

}  // namespace kiva::tarn_program
