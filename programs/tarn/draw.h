#pragma once

#include <string>

#include "programs/tarn/options.h"
#include "tarn/model/module.h"

namespace kiva::tarn_program {

/// Draws the automata of a module, or its registers where it has none, or the states that it
/// reaches: MODULE.dot, MODULE.svg; with a number behind the name where there are several. `file`
/// is what the module came from. False when something was wrong, which has been told.
bool draw(Module* module, const std::string& file, const Options& options);

}  // namespace kiva::tarn_program
