#pragma once

#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"

namespace kiva::tarn_program {

/// Prints what an expression over the signals of a compiled module is in an instant, as a sum of
/// products over inputs, registers and what else nothing computes. False when something was wrong,
/// which has been told.
bool evaluate_expression(Options& options, Messages& messages);

}  // namespace kiva::tarn_program
