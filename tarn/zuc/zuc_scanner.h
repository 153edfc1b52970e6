#pragma once

#include <iosfwd>
#include <string>

#include "base/scanner_error.h"

#ifndef yyFlexLexerOnce
#define yyFlexLexer zucFlexLexer
#include <FlexLexer.h>
#undef yyFlexLexer
#endif

namespace kiva {

/// The generated scanner over a text that is read whole at once, so that it can tell whether a
/// newline still follows.
class zuc_scanner : public zucFlexLexer {
 public:
  /// Unknown characters go to `out`.
  zuc_scanner(std::istream* in, std::ostream* out);
  int yylex() override;

 protected:
  int LexerInput(char* buffer, int size) override;
  void LexerError(const char* told) override { throw_scanner_error(told); }
  void LexerOutput(const char* text, int length) override;

 private:
  /// Counts characters that tokens have taken.
  void consumed(int characters) { position_ += static_cast<size_t>(characters); }
  bool newline_ahead() const { return position_ < after_last_newline_; }

  std::ostream* out_;
  std::string text_;
  size_t served_ = 0;
  size_t position_ = 0;
  size_t after_last_newline_ = 0;  ///< 0 when the text has no newline
};

}  // namespace kiva
