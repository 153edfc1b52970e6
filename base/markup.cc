#include "base/markup.h"

#include <algorithm>
#include <map>

namespace kiva {

namespace {

bool continues_character(const std::string& text, size_t byte) {
  return byte < text.size() && (static_cast<unsigned char>(text[byte]) & 0xc0) == 0x80;
}

std::string replaced(const std::string& plain, const std::map<char, const char*>& texts) {
  std::string all;
  for (char c : plain) {
    const auto at = texts.find(c);
    if (at == texts.end())
      all += c;
    else
      all += at->second;
  }
  return all;
}

/// What stands for a character beyond ASCII.
std::string latex_character(const std::string& character) {
  static const std::map<std::string, const char*> others{
      {"\u00a0", "~"},        {"\u00ab", "$\\ll$"},
      {"\u00bb", "$\\gg$"},   {"\u00b0", "$^\\circ$"},
      {"\u00b1", "$\\pm$"},   {"\u00b7", "$\\cdot$"},
      {"\u00d0", "D"},        {"\u00d7", "$\\times$"},
      {"\u00de", "Th"},       {"\u00f0", "d"},
      {"\u00f7", "$\\div$"},  {"\u00fe", "th"},
      {"\u2013", "--"},       {"\u2014", "---"},
      {"\u2018", "`"},        {"\u2019", "'"},
      {"\u201c", "``"},       {"\u201d", "''"},
      {"\u2026", "\\dots{}"}, {"\u2192", "$\\to$"},
      {"\u2190", "$\\gets$"}, {"\u21d2", "$\\Rightarrow$"},
      {"\u2264", "$\\le$"},   {"\u2265", "$\\ge$"},
      {"\u2260", "$\\ne$"}};
  if (const auto at = others.find(character); at != others.end()) return at->second;
  const bool latin = character.size() == 2 && character[0] == '\xc3';
  return latin ? character : "?";
}

}  // namespace

std::string xml_text(const std::string& plain) {
  return replaced(plain, {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}});
}

std::vector<std::string> breakable_pieces(const std::string& plain) {
  constexpr size_t long_word = 14, piece = 10;
  std::vector<std::string> pieces{""};
  size_t in_word = 0, word_end = 0;
  for (size_t at = 0; at < plain.size(); ++at) {
    if (at >= word_end) {
      word_end = std::min(plain.find(' ', at), plain.size() - 1) + 1;
      in_word = word_end - at;
    }
    pieces.back() += plain[at];
    const bool whole = at + 1 < word_end && !continues_character(plain, at + 1);
    if (in_word > long_word && whole && (plain[at] == '_' || pieces.back().size() >= piece) &&
        word_end - at > 3)
      pieces.emplace_back();
  }
  return pieces;
}

std::string latex_text(const std::string& plain) {
  static const std::map<char, const char*> signs{
      {'_', "\\_"}, {'#', "\\#"}, {'$', "\\$"}, {'%', "\\%"},
      {'&', "\\&"}, {'{', "\\{"}, {'}', "\\}"}, {'\\', "\\textbackslash{}"},
      {'<', "$<$"}, {'>', "$>$"}, {'|', "$|$"}, {'~', "\\textasciitilde{}"},
      {'"', "''"},  {'-', "-{}"}, {'\t', " "},  {'^', "\\textasciicircum{}"},
      {'\r', ""}};
  std::string all;
  for (size_t at = 0; at < plain.size();) {
    size_t end = at + 1;
    while (continues_character(plain, end)) ++end;
    const std::string character = plain.substr(at, end - at);
    const bool ascii = character.size() == 1 && static_cast<unsigned char>(character[0]) < 0x80;
    all += ascii ? replaced(character, signs) : latex_character(character);
    at = end;
  }
  return all;
}

}  // namespace kiva
