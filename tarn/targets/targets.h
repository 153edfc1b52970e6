#pragma once

#include <span>

#include "tarn/targets/frame/target.h"

namespace kiva {

/// All target languages.
std::span<const Target> targets();

}  // namespace kiva
