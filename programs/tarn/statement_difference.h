#pragma once

#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"
#include "proof/machine.h"

namespace kiva::tarn_program {

/// Where two compilations of one source file first part along a run: comment lines that tell the
/// instant and each statement that does something else in it. Compiles the file twice more.
std::string first_difference(const std::string& file, const Options (&sides)[2],
                             const std::string (&names)[2], Messages& messages,
                             const proof::Run& run);

}  // namespace kiva::tarn_program
