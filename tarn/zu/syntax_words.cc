#include "tarn/zu/syntax_words.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>

#include "base/nearest_name.h"

namespace kiva {

namespace {

struct Spelled {
  std::string_view symbol;
  std::string_view text;
};

/// Those that are not the symbol in small letters.
constexpr std::array<Spelled, 38> spelled{{
    {"ENDDATA", "end data"},
    {"DATA", "data:"},
    {"METHOD", "Method:"},
    {"TYPE", "Type:"},
    {"CONSTANT", "Constant:"},
    {"INPUT", "Input:"},
    {"OUTPUT", "Output:"},
    {"LOCAL", "Local:"},
    {"RUN_DECL", "Run:"},
    {"REG_DECL", "Register:"},
    {"PARALLEL", "||"},
    {"SEQUENCE", ">>"},
    {"BACKSLASH", "\\"},
    {"MEALY_MACHINE", "Mealy Machine"},
    {"STATE", "state:"},
    {"TRANSITION", "transition:"},
    {"GEOMETRY", "geometry:"},
    {"INIT", "initial->"},
    {"ARROW", "->"},
    {"STRONGARROW", "strong->"},
    {"WEAKARROW", "weak->"},
    {"NORMALTERMARROW", "normalterm->"},
    {"VALUE", "value:"},
    {"EQ_EG", "=="},
    {"EQ_NEG", "!="},
    {"EQ_INF", "<"},
    {"EQ_INFE", "<="},
    {"EQ_SUP", ">"},
    {"EQ_SUPE", ">="},
    {"ASSIGN", ":="},
    {"FF", "FF"},
    {"TT", "TT"},
    {"ID", ""},
    {"INT", ""},
    {"REAL", ""},
    {"STRING", ""},
    {"error", ""},
    {"end of input", ""},
}};

/// Symbols that stand for one thing where all of them can come.
struct Thing {
  const char* words;
  std::vector<std::string> symbols;
};

const std::vector<Thing>& things() {
  static const std::vector<Thing> table{
      {"a statement",
       {"NOTHING", "HALT", "PAUSE", "LOOP", "REPEAT", "WAIT", "EMIT", "NOEMIT", "SUSTAIN", "WEAK",
        "STRONG", "RUN", "PRESENT", "IF", "'{'"}},
      {"a condition", {"ID", "'('", "NOT", "ABS", "'~'", "FF", "TT"}},
      {"a value", {"ID", "INT", "REAL", "STRING", "'('", "'-'", "NOT", "'#'"}},
      {"an expression", {"ID", "INT", "'('", "NOT", "ABS"}},
      {"an operator",
       {"'+'", "'-'", "'*'", "'/'", "AND", "OR", "EQ_EG", "EQ_NEG", "EQ_INF", "EQ_INFE", "EQ_SUP",
        "EQ_SUPE"}},
      {"an operator", {"AND", "OR", "NOR", "XOR", "NAND"}},
      {"a number", {"INT", "REAL"}},
      {"a literal", {"INT", "REAL", "STRING"}},
      {"an arrow", {"ARROW", "STRONGARROW", "WEAKARROW", "NORMALTERMARROW"}},
      {"a name", {"ID"}},
      {"a number", {"INT"}},
      {"a number", {"REAL"}},
      {"a text in quotes", {"STRING"}},
      {"the end of the text", {"end of input"}},
  };
  return table;
}

}  // namespace

std::string spelling(std::string_view symbol) {
  if (symbol.size() == 3 && symbol.front() == '\'') return std::string(1, symbol[1]);
  for (const Spelled& row : spelled)
    if (row.symbol == symbol) return std::string(row.text);
  std::string text(symbol);
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

namespace {

/// Leaves out what could come but is not what is missing, where something else is.
void leave_out_optional(std::set<std::string>& symbols) {
  struct Optional {
    std::vector<std::string> where;  ///< one of these can come
    std::vector<std::string> left_out;
  };
  static const std::vector<Optional> table{
      {{"EMIT"}, {"INPUT", "OUTPUT", "LOCAL", "RUN_DECL", "AUTOMATON", "MEALY_MACHINE"}},
      {{"SEQUENCE"}, {"'('", "'['", "ELSE"}},
      {{"','"}, {"':'"}},
      {{"';'"}, {"'('", "GEOMETRY"}},
      {{"';'", "')'", "']'", "'='", "SEQUENCE", "UNTIL", "','"},
       {"AND", "OR", "NOR", "XOR", "NAND", "'+'", "'-'", "'*'", "'/'", "EQ_EG", "EQ_NEG", "EQ_INF",
        "EQ_INFE", "EQ_SUP", "EQ_SUPE", "'.'"}},
  };
  symbols.erase("error");
  for (const Optional& row : table)
    if (std::any_of(row.where.begin(), row.where.end(),
                    [&](const std::string& symbol) { return symbols.contains(symbol); }))
      for (const std::string& symbol : row.left_out) symbols.erase(symbol);
}

}  // namespace

std::string expectation(const std::vector<std::string>& symbols) {
  std::set<std::string> left(symbols.begin(), symbols.end());
  leave_out_optional(left);
  std::vector<std::string> parts;
  const auto take = [&](const std::string& symbol) {
    if (left.erase(symbol) != 0) parts.push_back('"' + spelling(symbol) + '"');
  };
  for (const char* first : {"SEQUENCE", "PARALLEL", "','", "MODULE"}) take(first);
  for (const Thing& thing : things()) {
    const auto can_come = [&](const std::string& symbol) { return left.contains(symbol); };
    if (!std::all_of(thing.symbols.begin(), thing.symbols.end(), can_come)) continue;
    for (const std::string& symbol : thing.symbols) left.erase(symbol);
    parts.push_back(thing.words);
  }
  for (const std::string& symbol : symbols)  // in the order of the grammar
    if (symbol != "END") take(symbol);
  take("END");
  constexpr size_t most = 5;
  if (parts.empty() || parts.size() > most) return "";
  std::string text = parts.front();
  for (size_t i = 1; i < parts.size(); ++i)
    text += (i + 1 == parts.size() ? " or " : ", ") + parts[i];
  return text;
}

std::string word_meant(std::string_view word, const std::vector<std::string>& symbols) {
  std::vector<std::string> words;
  for (const std::string& symbol : symbols) {
    std::string text = spelling(symbol);
    if (!text.empty() && std::isalpha(static_cast<unsigned char>(text.front())) != 0)
      words.push_back(std::move(text));
  }
  return nearest_name(std::string(word), words);
}

}  // namespace kiva
