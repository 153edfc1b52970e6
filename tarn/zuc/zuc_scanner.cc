#include "tarn/zuc/zuc_scanner.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <ostream>

#include "base/read_all.h"
#include "parse_zuc.hh"
#include "tarn/zuc/zuc_parser.h"

namespace kiva {

zuc_scanner::zuc_scanner(std::istream* in, std::ostream* out)
    : zucFlexLexer(in, out), out_(out), text_(read_all(*in)) {
  const size_t last = text_.rfind('\n');
  after_last_newline_ = last == std::string::npos ? 0 : last + 1;
  const size_t room = text_.size() + 2;
  yy_switch_to_buffer(yy_create_buffer(in, static_cast<int>(std::min<size_t>(room, INT_MAX / 2))));
}

int zuc_scanner::LexerInput(char* buffer, int size) {
  const size_t length = std::min(static_cast<size_t>(size), text_.size() - served_);
  std::memcpy(buffer, text_.data() + served_, length);
  served_ += length;
  return static_cast<int>(length);
}

void zuc_scanner::LexerOutput(const char* text, int length) {
  if (pzuc_parser() != nullptr) pzuc_parser()->flush_trace();
  if (out_ != nullptr) out_->write(text, length);
}

}  // namespace kiva

int zuclex(ZUCSTYPE*) {
  return kiva::pzuc_parser()->plexer->yylex();
}
