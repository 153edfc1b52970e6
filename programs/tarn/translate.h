#pragma once

#include <set>
#include <string>
#include <vector>

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

/// In the current session: reads a compiled module, or compiles and finalises those of a source
/// file that are asked for. Empty when something was wrong, which has been told.
std::vector<Module*> load_modules(const std::string& file, Options& options, Messages& messages);
/// Those that no other of the modules runs.
std::vector<Module*> outer_modules(const std::vector<Module*>& modules);

}  // namespace kiva::tarn_program
