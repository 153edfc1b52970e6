#pragma once

#include "base/aig.h"

namespace kiva::proof {

using namespace aig;

}  // namespace kiva::proof
