#include "programs/tarn/notes.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "engine/map_notes.h"
#include "programs/command_pages.h"
#include "programs/tarn/circuit.h"
#include "programs/tarn/document.h"
#include "programs/tarn/map_of.h"
#include "tarn/zu/source_map.h"

namespace kiva::tarn_program {

SourceNotes source_notes(Module* module, const std::string& file, const Options& options) {
  SourceNotes notes;
  notes.made = "tarn " + programs::version() + options.words;
  notes.from = std::filesystem::path(file).filename().string() + ", FNV-1a " + file_hash(file);
  if (!options.classic) try {
      if (const std::string map = map_of(module, file); !map.empty())
        read_map_notes(map, map_folder(file), notes);
    } catch (const nlohmann::json::exception&) {  // whoever wants the map will say that it is none
      notes.of.clear();
    }
  const bool fits_bench = options.bench == nullptr || !options.bench->with_properties;
  if (fits_bench && module->getFinalised() != 0)
    notes.with_properties = [module, &options](aig::Circuit& circuit) {
      add_properties(circuit, module, options);
    };
  notes.document = [module, file](const SourceNotes::Names& names) {
    return document_notes(module, file, names);
  };
  return notes;
}

}  // namespace kiva::tarn_program
