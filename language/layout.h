#pragma once

#include <string>

namespace kiva::language {

/// A source text laid out anew, or why it is not.
struct LaidOut {
  std::string text;
  std::string reason;  ///< "" for success
  size_t at = 0;       ///< byte offset of its cause
};

/// Lays a source text out. Its tokens and comments stay, and so do its line breaks, but where a
/// line grows too long or a part of a module begins; blanks, indentation and empty lines are set.
/// Doing it again changes nothing. A text with characters of no token, or with brackets that do not
/// match, is refused.
LaidOut lay_out(const std::string& text);

}  // namespace kiva::language
