#include "tarn/targets/frame/source_notes.h"

#include <algorithm>

namespace kiva {

std::string without_rail(const std::string& variable) {
  for (const char* start : {"_s_", "v_s_"})
    if (variable.starts_with(start)) return variable.substr(std::string(start).size());
  return variable;
}

std::string SourceNotes::key(const std::string& name) {
  std::string key = without_rail(name);
  std::ranges::replace(key, '@', '_');
  return key;
}

const SourceNote* SourceNotes::at(const std::string& variable) const {
  const auto found = of.find(key(variable));
  return found == of.end() ? nullptr : &found->second;
}

}  // namespace kiva
