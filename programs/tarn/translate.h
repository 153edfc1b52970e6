#pragma once

#include <set>
#include <string>

#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"

namespace kiva::tarn_program {

/// Sets the current session's switches as the options say.
void choose(Options& options);

/// In a session of its own: compiles a source file, or reads a compiled module, and writes what is
/// asked for. Enters the names of the modules in `met`. False when something was wrong, which has
/// been told.
bool translate(const std::string& file, Options& options, Messages& messages,
               std::set<std::string>& met);

}  // namespace kiva::tarn_program
