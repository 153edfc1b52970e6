#include "tarn/zu/source_properties.h"

#include <algorithm>
#include <fstream>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"

namespace kiva {
namespace {

bool is_comment(const std::string& line) {
  const size_t at = line.find_first_not_of(" \t");
  return at != std::string::npos && line.compare(at, 2, ";;") == 0;
}

/// The index of the line with which a module's text begins: comments right above its head are its.
size_t first_line(const Module& module, const std::vector<std::string>& lines) {
  size_t head = module.getSpan().first_line - 1;
  while (head > 0 && is_comment(lines[head - 1])) --head;
  return head;
}

}  // namespace

std::vector<SourceProperty> source_properties(const Module& module) {
  std::vector<SourceProperty> found;
  const SourceSpan& span = module.getSpan();
  if (!span.known()) return found;
  std::ifstream in(*span.file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  // The file may have been changed since.
  lines.resize(std::max<size_t>(lines.size(), span.last_line));
  size_t end = lines.size();
  for (const Module* other : Compilation::ModTable()->in_order()) {
    const SourceSpan& after = other->getSpan();
    if (!after.known() || *after.file != *span.file || after.first_line <= span.first_line)
      continue;
    if (static_cast<size_t>(after.first_line) <= lines.size())
      end = std::min(end, first_line(*other, lines));
  }
  for (size_t index = first_line(module, lines); index < end; ++index) {
    const std::string& line = lines[index];
    const size_t comment = line.find(";;");
    if (comment == std::string::npos) continue;
    const size_t at = line.find_first_not_of(" \t", comment + 2);
    if (at == std::string::npos || line[at] != '@') continue;
    const size_t word_end = std::min(line.find_first_of(" \t\r", at), line.size());
    const size_t text = line.find_first_not_of(" \t\r", word_end);
    if (text == std::string::npos) continue;
    SourceProperty& property = found.emplace_back();
    property.word = line.substr(at + 1, word_end - at - 1);
    property.text = line.substr(text, line.find_last_not_of(" \t\r") + 1 - text);
    const int number = static_cast<int>(index) + 1;
    property.where = {*span.file, number, static_cast<int>(text) + 1, number,
                      static_cast<int>(line.size())};
  }
  return found;
}

}  // namespace kiva
