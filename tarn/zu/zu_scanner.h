#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "base/scanner_error.h"
#include "tarn/model/source_span.h"

#ifndef yyFlexLexerOnce
#define yyFlexLexer zuFlexLexer
#include <FlexLexer.h>
#undef yyFlexLexer
#endif

namespace kiva {

/// The generated scanner over a source text that is read whole at once.
class zu_scanner : public zuFlexLexer {
 public:
  /// `file` names the text in spans.
  zu_scanner(std::istream* in, const std::string* file);
  int yylex() override;

  /// The last token, and where it stands. The end of input has no text.
  std::string_view token() const;
  const SourceSpan& span() const { return span_; }
  const std::string& text() const { return text_; }

 protected:
  int LexerInput(char* buffer, int size) override;
  void LexerError(const char* told) override { throw_scanner_error(told); }

 private:
  /// Moves on over the text of one match.
  void consumed();

  std::string text_;
  size_t served_ = 0;
  SourceSpan span_;
  int next_line_ = 1;
  int next_column_ = 1;
  bool at_end_ = false;
};

}  // namespace kiva
