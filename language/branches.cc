// Where statements end, by their tokens. Nested statements are walked in a loop where they only
// follow each other; brackets are passed over whole.

#include "language/branches.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

namespace kiva::language {

namespace {

bool is(const Names& names, size_t token, std::string_view text) {
  return token < names.tokens.size() && names.tokens[token].is(text);
}

size_t behind(size_t token) {
  return token == no_statement ? token : token + 1;
}

/// Behind a name and what stands in brackets of one kind behind it.
size_t behind_name(const Names& names, size_t token, std::string_view open) {
  if (token >= names.tokens.size() || names.tokens[token].kind != TokenKind::name)
    return no_statement;
  return is(names, token + 1, open) ? behind(closing(names, token + 1)) : token + 1;
}

/// Behind a condition that a word introduces.
size_t behind_condition(const Names& names, size_t token, std::string_view word) {
  return is(names, token, word) ? condition_end(names, token + 1) : no_statement;
}

}  // namespace

size_t closing(const Names& names, size_t token) {
  size_t depth = 0;
  for (size_t i = token; i < names.tokens.size(); ++i) {
    const SourceToken& here = names.tokens[i];
    if (here.is("{") || here.is("(") || here.is("[")) ++depth;
    if ((here.is("}") || here.is(")") || here.is("]")) && --depth == 0) return i;
  }
  return no_statement;
}

namespace {

bool among(const std::vector<std::string_view>& words, const SourceToken& token) {
  return std::any_of(words.begin(), words.end(),
                     [&](std::string_view word) { return token.is(word); });
}

bool can_be_operand(const SourceToken& token) {
  return token.is("TT") || token.is("FF") || token.kind == TokenKind::name ||
         token.kind == TokenKind::number || token.kind == TokenKind::text;
}

}  // namespace

size_t condition_end(const Names& names, size_t token) {
  static const std::vector<std::string_view> operators{"and", "&",  "or", "|",  "+", "-",  "*", "/",
                                                       "==",  "!=", "<",  "<=", ">", ">=", "."};
  static const std::vector<std::string_view> prefixes{"not", "~", "abs", "-", "#"};
  bool operand = false;  // right before the token
  for (size_t i = token; i < names.tokens.size(); ++i) {
    const SourceToken& here = names.tokens[i];
    if (here.is("(")) {
      i = closing(names, i);
      if (i == no_statement) return i;
      operand = true;
    } else if (operand) {
      if (!among(operators, here)) return i;
      operand = false;
    } else if (can_be_operand(here)) {
      operand = true;
    } else if (!among(prefixes, here)) {
      return i;
    }
  }
  return names.tokens.size();
}

size_t branch_end(const Names& names, size_t token) {
  return statement_end(names, condition_end(names, token + 1));
}

namespace {

size_t behind_wait(const Names& names, size_t token) {
  const bool counted =
      token + 2 < names.tokens.size() && names.tokens[token + 1].kind == TokenKind::number;
  return condition_end(names, token + (counted ? 2 : 1));
}

size_t behind_branches(const Names& names, size_t token) {
  const size_t first = branch_end(names, token);
  return is(names, first, "else") ? statement_end(names, first + 1) : first;
}

size_t behind_abort(const Names& names, size_t token) {
  return behind_condition(names, behind(closing(names, token + 2)), "when");
}

/// How each statement goes on behind its first word.
const std::map<std::string_view, size_t (*)(const Names&, size_t)>& endings() {
  constexpr auto word = [](const Names&, size_t token) { return token + 1; };
  constexpr auto emission = [](const Names& names, size_t token) {
    return behind_name(names, token + 1, "(");
  };
  static const std::map<std::string_view, size_t (*)(const Names&, size_t)> table{
      {"nothing", word},
      {"halt", word},
      {"pause", word},
      {"emit", emission},
      {"noemit", emission},
      {"sustain",
       [](const Names& names, size_t token) {
         return behind_condition(names, behind_name(names, token + 1, "("), "until");
       }},
      {"wait", behind_wait},
      {"run", [](const Names& names, size_t token) { return behind_name(names, token + 1, "["); }},
      {"{", [](const Names& names, size_t token) { return behind(closing(names, token)); }},
      {"loop", [](const Names& names, size_t token) { return behind(closing(names, token + 1)); }},
      {"repeat",
       [](const Names& names, size_t token) { return behind(closing(names, token + 2)); }},
      {"weak", behind_abort},
      {"strong", behind_abort},
      {"present", behind_branches},
      {"if", behind_branches},
  };
  return table;
}

}  // namespace

size_t statement_end(const Names& names, size_t token) {
  if (token >= names.tokens.size() || names.tokens[token].kind == TokenKind::text)
    return no_statement;
  const auto ending = endings().find(names.tokens[token].text);
  return ending == endings().end() ? no_statement : ending->second(names, token);
}

}  // namespace kiva::language
