#pragma once

#include <string>
#include <vector>

#include "tarn/session/diagnostic.h"

namespace kiva {

class Module;

/// What a comment asks of the module in whose text it stands: ";; @WORD TEXT".
struct SourceProperty {
  std::string word;
  std::string text;
  Place where;  ///< of the text
};

/// The lines of a module that was read from source text, from that of its head to that of its end;
/// none where the file cannot be read any more.
std::vector<std::string> source_lines(const Module& module);
/// Where the word stands in a line outside comments, from a byte on; npos for nowhere.
size_t find_word(const std::string& line, const std::string& word, size_t from = 0);

/// Those of a module that was read from source text, in its order; none where the file cannot be
/// read any more.
std::vector<SourceProperty> source_properties(const Module& module);

}  // namespace kiva
