#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiva::language {

/// A place as editors count: line and column from 0, the column in units of UTF-16.
struct Position {
  size_t line = 0;
  size_t column = 0;
};

/// A text whose places are known both ways. What is beyond a line or the text is its end.
class Text {
 public:
  explicit Text(std::string text = "");

  const std::string& all() const { return text_; }
  /// Byte offset of a position, which is never inside of a character.
  size_t offset(const Position& position) const;
  Position position(size_t offset) const;
  /// Byte offset of a line and a column in bytes, both from 1.
  size_t offset(int line, int column) const;
  /// Offset behind the last character of the line that holds the offset.
  size_t line_end(size_t offset) const;

  /// The text with another in the place of what stands from one position to the other.
  Text replaced(const Position& from, const Position& to, const std::string& other) const;

 private:
  std::string text_;
  std::vector<size_t> lines_;  ///< offsets of their first bytes
  bool ascii_;                 ///< a column is a byte
};

}  // namespace kiva::language
