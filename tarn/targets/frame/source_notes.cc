#include "tarn/targets/frame/source_notes.h"

namespace kiva {

std::string without_rail(const std::string& variable) {
  for (const char* start : {"_s_", "v_s_"})
    if (variable.starts_with(start)) return variable.substr(std::string(start).size());
  return variable;
}

const SourceNote* SourceNotes::at(const std::string& variable) const {
  const auto found = of.find(without_rail(variable));
  return found == of.end() ? nullptr : &found->second;
}

}  // namespace kiva
