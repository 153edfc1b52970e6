#include "programs/tarn/map_of.h"

#include "programs/tarn/options.h"
#include "programs/told_map.h"
#include "tarn/zu/source_map.h"

namespace kiva::tarn_program {

std::string map_of(Module* module, const std::string& file) {
  if (is_source(file)) return source_map_text(source_map(module), module->getName(), "");
  return programs::told_map(file);
}

std::filesystem::path map_folder(const std::string& file) {
  return is_source(file) ? "" : std::filesystem::path(file).parent_path();
}

}  // namespace kiva::tarn_program
