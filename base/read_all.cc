#include "base/read_all.h"

namespace kiva {

std::string read_all(std::istream& in) {
  std::string text;
  char block[1 << 16];
  while (in.read(block, sizeof block) || in.gcount() > 0)
    text.append(block, static_cast<size_t>(in.gcount()));
  return text;
}

}  // namespace kiva
