#pragma once

#include <string>

#include "programs/tarn/messages.h"

namespace kiva::tarn_program {

/// Decides whether two compiled modules give the same outputs in every reachable instant. Says so,
/// or prints stimuli at the end of which an output differs; gives the exit status.
int compare_modules(const std::string& first, const std::string& second, Messages& messages);

}  // namespace kiva::tarn_program
