#pragma once

#include <string>

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

/// Tells on the error stream where in a source text a complaint belongs; nothing for an unknown
/// place.
void tell_place(const SourceSpan& span, const std::string& reason);
/// The place told last, which is forgotten then: programs name it in their own report.
SourceSpan take_told_place();

}  // namespace kiva
