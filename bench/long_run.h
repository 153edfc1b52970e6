#pragma once

#include <memory>

#include "engine/recording.h"

namespace kiva::bench {

/// A generated module (`generated_module`), read.
std::unique_ptr<Simulation> generated_simulation(long equations, long registers);

/// So many instants with inputs drawn at random, the same in each call.
void run_at_random(Recording& recording, Simulation& simulation, long instants);

}  // namespace kiva::bench
