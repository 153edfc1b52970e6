#pragma once

#include <string>

#include "tarn/session/diagnostic.h"

namespace kiva {

/// What the exception under way says, to be called where it is caught; of the file where it has no
/// place of its own.
[[nodiscard]] Diagnostic fault_under_way(const std::string& file = "");

}  // namespace kiva
