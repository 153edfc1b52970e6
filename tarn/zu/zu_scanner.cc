// The scanner reads its whole text at once: the generated one would scan a long token again at each
// refill.

#include "tarn/zu/zu_scanner.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "base/read_all.h"
#include "parse_zu.hh"

namespace kiva {

zu_scanner::zu_scanner(std::istream* in, const std::string* file)
    : zuFlexLexer(in, nullptr), text_(read_all(*in)) {
  span_.file = file;
  const size_t room = text_.size() + 2;
  yy_switch_to_buffer(yy_create_buffer(in, static_cast<int>(std::min<size_t>(room, INT_MAX / 2))));
}

std::string_view zu_scanner::token() const {
  if (at_end_) return {};
  return {YYText(), static_cast<size_t>(YYLeng())};
}

int zu_scanner::LexerInput(char* buffer, int size) {
  const size_t length = std::min(static_cast<size_t>(size), text_.size() - served_);
  std::memcpy(buffer, text_.data() + served_, length);
  served_ += length;
  return static_cast<int>(length);
}

void zu_scanner::consumed() {
  span_.first_line = span_.last_line = next_line_;
  span_.first_column = span_.last_column = next_column_;
  for (const char c : token()) {
    span_.last_line = next_line_;
    span_.last_column = next_column_;
    if (c == '\n') {
      ++next_line_;
      next_column_ = 1;
    } else {
      ++next_column_;
    }
  }
}

}  // namespace kiva
