#pragma once

#include "tarn/targets/frame/target.h"

namespace kiva {

/// The working form: an SC_MODULE with ports.
void put_systemc_module(const TargetJob& job);

}  // namespace kiva
