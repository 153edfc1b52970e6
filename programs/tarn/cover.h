#pragma once

#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"

namespace kiva::tarn_program {

/// Writes runs that reach, between them, every statement, state and transition that can be reached,
/// as stimuli with what the outputs are then (MODULE-1.stimuli, ...), and tells what no run
/// reaches. Gives the exit status: 3 where it was not found out of everything in time.
int cover_module(Options& options, Messages& messages);

}  // namespace kiva::tarn_program
