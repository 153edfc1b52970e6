#pragma once

#include <map>
#include <string>
#include <vector>

namespace kiva {

/// The lines of source files, each file read once; none of one that cannot be read.
class SourceLines {
 public:
  const std::vector<std::string>& of(const std::string& file);

 private:
  std::map<std::string, std::vector<std::string>> lines_;
};

/// What stands on a line before its comment.
std::string without_comment(const std::string& line);

}  // namespace kiva
