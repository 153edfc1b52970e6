#include "tarn/zu/source_properties.h"

#include <fstream>

#include "tarn/model/module.h"

namespace kiva {

std::vector<SourceProperty> source_properties(const Module& module) {
  std::vector<SourceProperty> found;
  const SourceSpan& span = module.getSpan();
  if (!span.known()) return found;
  std::ifstream in(*span.file);
  std::string line;
  for (int number = 1; number <= span.last_line && std::getline(in, line); ++number) {
    if (number < span.first_line) continue;
    const size_t comment = line.find(";;");
    if (comment == std::string::npos) continue;
    const size_t at = line.find_first_not_of(" \t", comment + 2);
    if (at == std::string::npos || line[at] != '@') continue;
    const size_t end = std::min(line.find_first_of(" \t\r", at), line.size());
    const size_t text = line.find_first_not_of(" \t\r", end);
    if (text == std::string::npos) continue;
    SourceProperty& property = found.emplace_back();
    property.word = line.substr(at + 1, end - at - 1);
    property.text = line.substr(text, line.find_last_not_of(" \t\r") + 1 - text);
    property.where = {*span.file, number, static_cast<int>(text) + 1, number,
                      static_cast<int>(line.size())};
  }
  return found;
}

}  // namespace kiva
