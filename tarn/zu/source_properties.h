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

/// Those of a module that was read from source text, from the comments right above its head to
/// those of the next module, in their order; none where the file cannot be read any more.
std::vector<SourceProperty> source_properties(const Module& module);

}  // namespace kiva
