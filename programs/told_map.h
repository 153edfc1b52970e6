#pragma once

#include <string>

namespace kiva::programs {

/// The text of the map beside a compiled module, empty where there is none to use. One that
/// belongs to another text of the module is told on the error stream, once a process.
std::string told_map(const std::string& module_file);

}  // namespace kiva::programs
