#pragma once

#include <string>

#include "tarn/model/module.h"

namespace kiva::tarn_program {

/// Reads a compiled module as it is, or a netlist; null when it cannot be read, which has been
/// told.
Module* read_module(const std::string& file);

}  // namespace kiva::tarn_program
