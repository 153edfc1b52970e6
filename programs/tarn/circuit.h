#pragma once

#include "base/aiger_text.h"
#include "programs/tarn/options.h"
#include "tarn/model/module.h"

namespace kiva::tarn_program {

/// Makes of the circuit of a module one that has bad states as well: where properties of the
/// command line and of the source's comments fail, or what is to be reached is, while all that is
/// assumed has held. Circuits without properties stay as they are. What is wrong with a property of
/// the command line is thrown as IllegalOperationException, of the source is told.
void add_properties(aig::Circuit& circuit, Module* module, const Options& options);

}  // namespace kiva::tarn_program
