#include "base/lines.h"

#include <istream>
#include <stdexcept>

namespace kiva {

bool next_line(std::istream& in, std::string& line) {
  line.clear();
  char c = 0;
  bool any = false;
  while (in.get(c)) {
    if (c == '\n') return true;
    if (line.size() == longest_line) throw std::runtime_error("the line is longer than 16 MiB");
    line += c;
    any = true;
  }
  if (in.bad()) throw std::runtime_error("cannot be read to its end");
  return any;
}

}  // namespace kiva
