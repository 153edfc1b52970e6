#pragma once

#include <sstream>

namespace kiva {

/// A stream into text. Where memory runs out it throws, and does not end in half a text.
class TextStream : public std::ostringstream {
 public:
  TextStream() { exceptions(badbit); }
};

}  // namespace kiva
