// Ranges, and what is answered of a whole document.

#include <algorithm>
#include <map>

#include "base/translation.h"
#include "language/answers.h"
#include "language/folder.h"
#include "language/layout.h"

namespace kiva::language {

using nlohmann::json;

Position position_in(const json& position) {
  // Whatever number stands there: beyond the end is the end.
  const auto number = [&](const char* name) {
    const double value = position.at(name).get<double>();
    return value > 0 ? static_cast<size_t>(std::min(value, 1e9)) : 0;
  };
  return {number("line"), number("character")};
}

json json_of(const Position& position) {
  return {{"line", position.line}, {"character", position.column}};
}

json range_of(const Document& document, size_t begin, size_t end) {
  return {{"start", json_of(document.text.position(begin))},
          {"end", json_of(document.text.position(end))}};
}

json range_of(const Document& document, const SourceToken& token) {
  return range_of(document, token.begin, token.end());
}

json range_of(const Document& document, const Occurrence& occurrence) {
  return range_of(document, document.names.tokens[occurrence.token]);
}

// Symbols.

namespace {

// The protocol's numbers.
constexpr int module_symbol = 2, variable_symbol = 13, event_symbol = 24, member_symbol = 22,
              method_symbol = 6, constant_symbol = 14;

json symbol_json(const Document& document, const Occurrence& occurrence, int kind,
                 const std::string& detail) {
  const json range = range_of(document, occurrence);
  return {{"name", document.names.name_of(occurrence)},
          {"kind", kind},
          {"detail", detail},
          {"range", range},
          {"selectionRange", range}};
}

json member_json(const Document& document, const Outline& module, const Occurrence& occurrence) {
  if (occurrence.role == Role::state_declaration)
    return symbol_json(document, occurrence, member_symbol, "state");
  if (occurrence.role != Role::declaration) return {};
  const Declared* signal = module.find(document.text_of(occurrence));
  if (signal == nullptr) return {};
  const std::string detail =
      word_of(signal->kind) + (signal->type.empty() ? "" : ": " + signal->type);
  return symbol_json(document, occurrence,
                     is_outside(signal->kind) ? event_symbol : variable_symbol, detail);
}

json data_json(const Document& document, const Occurrence& occurrence) {
  if (occurrence.role == Role::method)
    return symbol_json(document, occurrence, method_symbol, "method");
  if (occurrence.role == Role::constant)
    return symbol_json(document, occurrence, constant_symbol, "constant");
  return {};
}

}  // namespace

json symbols(const Document& document) {
  json all = json::array();
  std::vector<json> members(document.names.modules.size(), json::array());
  for (const Occurrence& occurrence : document.names.occurrences) {
    const bool inside = occurrence.module < members.size();
    const json symbol =
        inside ? member_json(document, document.names.modules[occurrence.module], occurrence)
               : data_json(document, occurrence);
    if (!symbol.is_null()) (inside ? members[occurrence.module] : all).push_back(symbol);
  }
  for (size_t n = 0; n < members.size(); ++n) {
    const Outline& module = document.names.modules[n];
    const std::vector<SourceToken>& tokens = document.names.tokens;
    all.push_back(
        {{"name", module.name},
         {"kind", module_symbol},
         {"range", range_of(document, tokens[module.head].begin, tokens[module.last].end())},
         {"selectionRange", range_of(document, tokens[module.head + 1])},
         {"children", members[n]}});
  }
  return all;
}

// Folding.

json folding(const Document& document) {
  json all = json::array();
  const auto add = [&](size_t first_line, size_t last_line, const char* kind) {
    if (last_line <= first_line) return;
    all.push_back({{"startLine", first_line}, {"endLine", last_line}});
    if (*kind != '\0') all.back()["kind"] = kind;
  };
  const auto line_of = [](const SourceToken& token) { return static_cast<size_t>(token.line) - 1; };
  std::vector<const SourceToken*> open;
  for (const SourceToken& token : document.names.tokens) {
    if (token.is("{") || token.is("data:")) open.push_back(&token);
    if (!(token.is("}") || token.is("end data")) || open.empty()) continue;
    add(line_of(*open.back()), line_of(token) - (line_of(token) > 0 ? 1 : 0), "");
    open.pop_back();
  }
  for (const Outline& module : document.names.modules)
    add(line_of(document.names.tokens[module.head]), line_of(document.names.tokens[module.last]),
        "");
  const std::vector<SourceToken>& comments = document.names.comments;
  for (size_t first = 0, last = 0; first < comments.size(); first = last) {
    for (last = first + 1; last < comments.size(); ++last)
      if (comments[last].line != comments[last - 1].line + 1) break;
    add(line_of(comments[first]), line_of(comments[last - 1]), "comment");
  }
  return all;
}

// Semantic tokens.

namespace {

const std::vector<const char*>& token_types() {
  static const std::vector<const char*> types{"keyword",   "number", "string",     "comment",
                                              "operator",  "type",   "method",     "variable",
                                              "namespace", "event",  "enumMember", "parameter"};
  return types;
}

size_t type_number(std::string_view name) {
  const auto& types = token_types();
  return static_cast<size_t>(std::find(types.begin(), types.end(), name) - types.begin());
}

const char* type_of_name(const Document& document, const Occurrence& occurrence) {
  switch (occurrence.role) {
    case Role::module:
    case Role::called:
    case Role::placed:
      return "namespace";
    case Role::state_declaration:
    case Role::state:
      return "enumMember";
    case Role::type:
      return "type";
    case Role::method:
      return "method";
    case Role::constant:
    case Role::formal:
      return "parameter";
    default:
      break;
  }
  const Declared* signal =
      occurrence.module < document.names.modules.size()
          ? document.names.modules[occurrence.module].find(document.text_of(occurrence))
          : nullptr;
  const bool local =
      signal == nullptr || signal->kind == SignalKind::local || signal->kind == SignalKind::reg;
  return local ? "variable" : "event";
}

const char* type_of_token(const SourceToken& token) {
  switch (token.kind) {
    case TokenKind::word:
      return "keyword";
    case TokenKind::number:
      return "number";
    case TokenKind::text:
      return "string";
    case TokenKind::comment:
      return "comment";
    case TokenKind::sign:
      return std::string_view(";,:(){}[].").find(token.text) == std::string_view::npos ? "operator"
                                                                                       : nullptr;
    default:
      return nullptr;
  }
}

struct Lit {
  const SourceToken* token;
  size_t type;
  int modifiers;  ///< 1: declaration, 2: modification
};

/// In the order of the text.
std::vector<Lit> lit_tokens(const Document& document) {
  std::map<size_t, Lit> lit;
  const auto add = [&](const SourceToken& token) {
    if (const char* type = type_of_token(token)) lit[token.begin] = {&token, type_number(type), 0};
  };
  for (const SourceToken& token : document.names.tokens) add(token);
  for (const SourceToken& token : document.names.comments) add(token);
  for (const Occurrence& occurrence : document.names.occurrences) {
    const Role role = occurrence.role;
    const bool declares =
        role == Role::declaration || role == Role::module || role == Role::state_declaration;
    const SourceToken& token = document.names.tokens[occurrence.token];
    lit[token.begin] = {&token, type_number(type_of_name(document, occurrence)),
                        declares                ? 1
                        : role == Role::writing ? 2
                                                : 0};
  }
  std::vector<Lit> all;
  for (const auto& [begin, one] : lit) all.push_back(one);
  return all;
}

}  // namespace

json semantic_legend() {
  return {{"tokenTypes", token_types()}, {"tokenModifiers", {"declaration", "modification"}}};
}

json semantic_tokens(const Document& document) {
  json data = json::array();
  Position last;
  for (const Lit& lit : lit_tokens(document)) {
    const Position begin = document.text.position(lit.token->begin);
    // A token ends with its line there.
    const size_t end_offset = std::min(lit.token->end(), document.text.line_end(lit.token->begin));
    const size_t length = document.text.position(end_offset).column - begin.column;
    const size_t column = begin.column - (begin.line == last.line ? last.column : 0);
    for (const size_t number :
         {begin.line - last.line, column, length, lit.type, static_cast<size_t>(lit.modifiers)})
      data.push_back(number);
    last = begin;
  }
  return {{"data", data}};
}

// Layout.

json formatting(const Document& document) {
  const LaidOut result = lay_out(document.text.all());
  if (!result.reason.empty()) {
    const Position at = document.text.position(result.at);
    throw Refused{"line " + std::to_string(at.line + 1) + ": " + result.reason};
  }
  if (result.text == document.text.all()) return json::array();
  return json::array(
      {{{"range", range_of(document, 0, document.text.all().size())}, {"newText", result.text}}});
}

// Diagnostics.

namespace {

json range_at(const Document& document, const Place& where) {
  const size_t begin = document.text.offset(where.line, where.column);
  const size_t end = where.last_line == 0
                         ? document.text.line_end(begin)
                         : document.text.offset(where.last_line, where.last_column + 1);
  return range_of(document, begin, std::max(begin, end));
}

/// Of a place in another file, of which only lines and columns are known.
json bare_range(const Place& where) {
  const Position at{static_cast<size_t>(std::max(where.line, 1)) - 1,
                    static_cast<size_t>(std::max(where.column, 1)) - 1};
  return {{"start", json_of(at)}, {"end", json_of(at)}};
}

}  // namespace

json diagnostics(const Document& document, const std::vector<Diagnostic>& found) {
  json all = json::array();
  for (const Diagnostic& diagnostic : found) {
    const bool here = diagnostic.where.file == document.path;
    const bool error = diagnostic.severity == Severity::error;
    if (!here && !error) continue;  // others' doubts are shown with them
    std::string message = translated(diagnostic.sentence);
    if (!here) message = diagnostic.where.text() + ": " + message;
    json related = json::array();
    for (const Diagnostic::Note& note : diagnostic.notes) {
      const bool in_it = note.where.file == document.path;
      if (!note.where.known()) {
        message += "\n" + translated(note.sentence);
        continue;
      }
      related.push_back(
          {{"location",
            {{"uri", in_it ? document.uri : uri_of(note.where.file)},
             {"range", in_it ? range_at(document, note.where) : bare_range(note.where)}}},
           {"message", translated(note.sentence)}});
    }
    all.push_back(
        {{"range", here ? range_at(document, diagnostic.where) : range_of(document, 0, 0)},
         {"severity", error                                      ? 1
                      : diagnostic.severity == Severity::warning ? 2
                                                                 : 3},
         {"source", "tarn"},
         {"message", message}});
    if (!diagnostic.name.empty()) all.back()["code"] = diagnostic.name;
    if (!related.empty()) all.back()["relatedInformation"] = related;
  }
  return all;
}

}  // namespace kiva::language
