#pragma once

#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace kiva {

/// A part of a session: source texts that stand in place of files, by path, as they are being
/// written elsewhere.
struct OpenTexts {
  std::map<std::string, std::string> texts;

  /// A stream over the open text, or over the file; bad where there is neither.
  std::unique_ptr<std::istream> open(const std::string& path) const {
    if (const auto at = texts.find(path); at != texts.end())
      return std::make_unique<std::istringstream>(at->second);
    return std::make_unique<std::ifstream>(path, std::ios::binary);
  }
};

}  // namespace kiva
