#pragma once

#include "programs/tarn/options.h"
#include "tarn/model/module.h"
#include "tarn/targets/frame/source_notes.h"

namespace kiva::tarn_program {

/// What the texts of a module say of its source: of one that has just been compiled from `file`, or
/// by the map beside a compiled module.
SourceNotes source_notes(Module* module, const std::string& file, const Options& options);

}  // namespace kiva::tarn_program
