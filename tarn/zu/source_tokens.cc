#include "tarn/zu/source_tokens.h"

#include <algorithm>
#include <sstream>

#include "parse_zu.hh"
#include "tarn/zu/zu_scanner.h"

namespace kiva {

namespace {

TokenKind kind_of(int token, std::string_view text) {
  switch (token) {
    case ID:
      return TokenKind::name;
    case INT:
    case REAL:
      return TokenKind::number;
    case STRING:
      return TokenKind::text;
    default:
      break;
  }
  constexpr std::string_view known = ";,:(){}[]=/+-*#.";
  if (text.size() == 1 && token == static_cast<unsigned char>(text[0]))
    return known.find(text[0]) == std::string_view::npos ? TokenKind::wrong : TokenKind::sign;
  if (token == ZUUNDEF) return TokenKind::wrong;
  const auto letter = [](char c) { return (c | 32) >= 'a' && (c | 32) <= 'z'; };
  return letter(text.front()) ? TokenKind::word : TokenKind::sign;
}

/// Enters the comments that stand between two tokens.
void add_comments(std::string_view text, size_t from, size_t to, int line,
                  std::vector<SourceToken>& tokens) {
  while (from < to) {
    if (text[from] == '\n') ++line;
    if (text[from] != ';') {
      ++from;
      continue;
    }
    const size_t stop = std::min(text.find('\n', from), to);
    std::string_view comment = text.substr(from, stop - from);
    const size_t last = comment.find_last_not_of(" \t\r");
    tokens.push_back({TokenKind::comment, comment.substr(0, last + 1), from, line});
    from = stop;
  }
}

}  // namespace

std::vector<SourceToken> source_tokens(const std::string& text) {
  std::vector<size_t> lines{0};
  for (size_t at = 0; at < text.size(); ++at)
    if (text[at] == '\n') lines.push_back(at + 1);
  std::istringstream in(text.ends_with('\n') ? text : text + '\n');
  const std::string file;
  zu_scanner scanner(&in, &file);
  std::vector<SourceToken> tokens;
  size_t behind = 0;
  int line = 1;
  for (int token = scanner.yylex(); token != 0; token = scanner.yylex()) {
    const SourceSpan& span = scanner.span();
    const size_t begin = lines[static_cast<size_t>(span.first_line) - 1] +
                         static_cast<size_t>(span.first_column) - 1;
    add_comments(text, behind, begin, line, tokens);
    const std::string_view its = std::string_view(text).substr(begin, scanner.token().size());
    tokens.push_back({kind_of(token, its), its, begin, span.first_line});
    behind = begin + its.size();
    line = span.last_line;
  }
  add_comments(text, behind, text.size(), line, tokens);
  return tokens;
}

bool is_user_name(const std::string& text) {
  const std::vector<SourceToken> tokens = source_tokens(text);
  return tokens.size() == 1 && tokens.front().kind == TokenKind::name &&
         tokens.front().text == text;
}

}  // namespace kiva
