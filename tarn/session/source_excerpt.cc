#include "tarn/session/source_excerpt.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "base/read_all.h"

namespace kiva {

namespace {

/// The bytes from begin to end as they are, and a mark under those from `from` to `to`.
std::string marked(const std::string& text, size_t begin, size_t end, size_t from, size_t to) {
  std::string line;
  std::string mark;
  for (size_t at = begin; at < std::max(end, from + 1); ++at) {
    const unsigned char c = at < end ? static_cast<unsigned char>(text[at]) : ' ';
    const bool continues = (c & 0xC0) == 0x80;  // inside a character of several bytes
    if (at < end) line += c < ' ' && c != '\t' ? '?' : static_cast<char>(c);
    if (at < from) {
      if (!continues) mark += c == '\t' ? '\t' : ' ';
    } else if (at == from) {
      mark += '^';
    } else if (at < to && !continues) {
      mark += '~';
    }
  }
  return line + '\n' + mark + '\n';
}

}  // namespace

std::string source_excerpt(const std::string& text, const Place& where) {
  if (where.line < 1 || where.column < 1) return "";
  size_t begin = 0;
  for (int line = 1; line < where.line; ++line) begin = text.find('\n', begin) + 1;
  size_t end = std::min(text.find('\n', begin), text.size());

  const size_t from = begin + static_cast<size_t>(where.column) - 1;
  if (from > text.size()) return "";  // the file has changed
  size_t to = where.last_line == where.line ? begin + static_cast<size_t>(where.last_column) : end;
  // A long line is shown around the mark only.
  constexpr size_t before = 60;
  constexpr size_t most = 120;
  if (from - begin > before) begin = from - before;
  end = std::min(end, begin + most);
  to = std::min(to, end);
  return marked(text, begin, end, from, to);
}

std::string source_excerpt(const Place& where) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(where.file, error)) return "";
  std::ifstream in(where.file, std::ios::binary);
  return in ? source_excerpt(read_all(in), where) : "";
}

}  // namespace kiva
