#include "base/lines.h"

#include <istream>
#include <stdexcept>
#include <streambuf>

namespace kiva {

bool next_line(std::istream& in, std::string& line) {
  line.clear();
  const std::istream::sentry ready(in, true);
  if (!ready) return false;
  constexpr auto end = std::istream::traits_type::eof();
  std::streambuf& text = *in.rdbuf();
  int c = end;
  try {
    while ((c = text.sbumpc()) != end && c != '\n') {
      if (line.size() == longest_line) break;
      line += std::istream::traits_type::to_char_type(c);
    }
  } catch (const std::ios_base::failure&) {
    throw std::runtime_error("cannot be read to its end");
  }
  if (c == '\n') return true;
  if (c != end) throw std::runtime_error("the line is longer than 16 MiB");
  in.setstate(std::ios_base::eofbit |
              (line.empty() ? std::ios_base::failbit : std::ios_base::eofbit));
  return !line.empty();
}

}  // namespace kiva
