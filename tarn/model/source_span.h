#pragma once

#include <string>

#include "tarn/session/diagnostic.h"

namespace kiva {

/// Where a piece of source text stands. Lines and columns count from 1, columns in bytes; the last
/// column is that of the last byte.
struct SourceSpan {
  const std::string* file = nullptr;  ///< lives as long as the session; null when nothing is known
  int first_line = 0;
  int first_column = 0;
  int last_line = 0;
  int last_column = 0;

  bool known() const { return file != nullptr; }
  /// "FILE:LINE:COLUMN" of the first byte; "" when nothing is known.
  std::string text() const {
    if (!known()) return "";
    return *file + ':' + std::to_string(first_line) + ':' + std::to_string(first_column);
  }
};

/// The place that a span stands for, unknown for an unknown one.
Place place_of(const SourceSpan& span);

/// Tells on the error stream where in a source text a complaint belongs, and notes it as the
/// session's place told last; nothing for an unknown place.
void tell_place(const SourceSpan& span, const std::string& reason);
/// Ends the work by a message and the place that it is about; `sentence` says the same in a line.
[[noreturn]] void end_at(const SourceSpan& span, const std::string& told,
                         const std::string& sentence);

}  // namespace kiva
