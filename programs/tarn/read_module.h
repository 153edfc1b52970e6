#pragma once

#include <string>

#include "tarn/model/module.h"

namespace kiva::tarn_program {

/// Modules and the vocabulary of data are the process's: each file starts with none of another's.
/// What its runs need of other files is read with it.
void forget_other_files();

/// Reads a compiled module as it is; null when it cannot be read, which has been told.
Module* read_module(const std::string& file);

}  // namespace kiva::tarn_program
