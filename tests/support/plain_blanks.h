#pragma once

#include <string>

namespace kiva::test {

/// No-break spaces, which look like blanks in a test, as blanks.
inline std::string plain_blanks(std::string text) {
  for (size_t at = 0; (at = text.find("\u00a0", at)) != std::string::npos;)
    text.replace(at, 2, " ");
  return text;
}

}  // namespace kiva::test
