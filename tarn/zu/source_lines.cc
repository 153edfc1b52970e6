#include "tarn/zu/source_lines.h"

#include <fstream>

namespace kiva {

const std::vector<std::string>& SourceLines::of(const std::string& file) {
  const auto [at, first] = lines_.try_emplace(file);
  std::ifstream in;
  if (first) in.open(file);
  for (std::string line; first && std::getline(in, line);) at->second.push_back(line);
  return at->second;
}

std::string without_comment(const std::string& line) {
  return line.substr(0, line.find(";;"));
}

}  // namespace kiva
