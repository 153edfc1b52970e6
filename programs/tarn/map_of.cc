#include "programs/tarn/map_of.h"

#include <fstream>
#include <iterator>

#include "programs/tarn/options.h"
#include "tarn/zu/source_map.h"

namespace kiva::tarn_program {

std::string map_of(Module* module, const std::string& file) {
  if (is_source(file)) return source_map_text(source_map(module), module->getName(), "");
  std::ifstream in(file + ".map");
  return {std::istreambuf_iterator<char>(in), {}};
}

std::filesystem::path map_folder(const std::string& file) {
  return is_source(file) ? "" : std::filesystem::path(file).parent_path();
}

}  // namespace kiva::tarn_program
