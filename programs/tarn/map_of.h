#pragma once

#include <filesystem>
#include <string>

#include "tarn/model/module.h"

namespace kiva::tarn_program {

/// The map of a module that has just been compiled from `file`, or the one beside a compiled
/// module; "" where there is none.
std::string map_of(Module* module, const std::string& file);
/// The folder from which that map names its sources; "" for the working one.
std::filesystem::path map_folder(const std::string& file);

}  // namespace kiva::tarn_program
