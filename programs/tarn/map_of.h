#pragma once

#include <string>

#include "tarn/model/module.h"

namespace kiva::tarn_program {

/// The map of a module that has just been compiled from `file`, or the one beside a compiled
/// module; "" where there is none.
std::string map_of(Module* module, const std::string& file);

}  // namespace kiva::tarn_program
