#pragma once

#include <string>
#include <unordered_map>

#include "tarn/model/module.h"
#include "tarn/targets/frame/source_notes.h"

namespace kiva::tarn_program {

/// What a document tells of a module that has been compiled from `file`, or read from it and has a
/// map beside it: what comments of the source say, its properties, and pictures of its automata;
/// of a module without any, of its states if they are few, under the names of registers that a
/// document has.
DocumentNotes document_notes(Module* module, const std::string& file,
                             const SourceNotes::Names& names);

}  // namespace kiva::tarn_program
