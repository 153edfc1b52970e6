#pragma once

#include <filesystem>
#include <string>

#include "tarn/model/module.h"
#include "tarn/targets/frame/source_notes.h"

namespace kiva {

/// Adds what the map of a source text tells of the locals of its module: place, words, and a name
/// after both. The map names its sources from `folder` on, "" for the working one. Throws what
/// nlohmann::json throws for what is no map.
void read_map_notes(const std::string& map_text, const std::filesystem::path& folder,
                    SourceNotes& notes);

/// Names of a module's registers after what they tell of the source, each once; none where the text
/// is empty or no map.
SourceNotes::Names register_names(Module* module, const std::string& map_text);

}  // namespace kiva
