#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiva {

enum class TokenKind { word, name, number, text, sign, comment, wrong };

/// A token of a source text, comments and what begins no token among them.
struct SourceToken {
  TokenKind kind = TokenKind::wrong;
  std::string_view text;  ///< of the text that was scanned, which must outlive it
  size_t begin = 0;       ///< byte offset
  int line = 1;           ///< from 1

  size_t end() const { return begin + text.size(); }
  bool is(std::string_view other) const { return text == other && kind != TokenKind::text; }
};

/// All of them in order. A comment goes to the end of its line, without blanks there; on the last
/// line it needs no newline behind it.
std::vector<SourceToken> source_tokens(const std::string& text);

/// Whether the text is a name that a user may give.
bool is_user_name(const std::string& text);

}  // namespace kiva
