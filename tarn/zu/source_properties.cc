#include "tarn/zu/source_properties.h"

#include <algorithm>
#include <cctype>
#include <fstream>

#include "tarn/model/module.h"
#include "tarn/zu/source_lines.h"
#include "tarn/zu/statement.h"

namespace kiva {

namespace {

bool in_word(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

}  // namespace

size_t find_word(const std::string& line, const std::string& word, size_t from) {
  const std::string code = without_comment(line);
  for (size_t at = code.find(word, from); at != std::string::npos; at = code.find(word, at + 1)) {
    const size_t end = at + word.size();
    if ((at == 0 || !in_word(code[at - 1])) && (end == code.size() || !in_word(code[end])))
      return at;
  }
  return std::string::npos;
}

std::vector<std::string> source_lines(const Module& module) {
  std::vector<std::string> lines;
  const SourceSpan& head = module.getSpan();
  if (!head.known()) return lines;
  const Statement* body = module.getStatement();
  const int body_end = body == nullptr ? 0 : body->getSpan().last_line;
  std::ifstream in(*head.file);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (number >= head.first_line) lines.push_back(line);
    if (number >= std::max(head.first_line, body_end) && find_word(line, "end") != line.npos) break;
  }
  return lines;
}

namespace {

std::vector<SourceProperty> properties_in(const std::vector<std::string>& lines,
                                          const std::string& file, int first) {
  std::vector<SourceProperty> found;
  int number = first - 1;
  for (const std::string& line : lines) {
    ++number;
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
    property.where = {file, number, static_cast<int>(text) + 1, number,
                      static_cast<int>(line.size())};
  }
  return found;
}

}  // namespace

std::vector<SourceProperty> source_properties(const Module& module) {
  const SourceSpan& head = module.getSpan();
  if (!head.known()) return {};
  return properties_in(source_lines(module), *head.file, head.first_line);
}

std::vector<SourceProperty> source_properties(const std::string& file) {
  std::vector<std::string> lines;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return properties_in(lines, file, 1);
}

}  // namespace kiva
