#include "language/text.h"

#include <algorithm>

namespace kiva::language {

namespace {

bool continues(char byte) {
  return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

/// Units of UTF-16 of the character that begins with the byte.
size_t units(char byte) {
  return static_cast<unsigned char>(byte) >= 0xf0 ? 2 : 1;
}

}  // namespace

Text::Text(std::string text)
    : text_(std::move(text)), lines_{0}, ascii_(std::all_of(text_.begin(), text_.end(), [](char c) {
        return (c & 0x80) == 0;
      })) {
  for (size_t at = 0; at < text_.size(); ++at)
    if (text_[at] == '\n') lines_.push_back(at + 1);
}

size_t Text::line_end(size_t offset) const {
  return std::min(text_.find('\n', offset), text_.size());
}

size_t Text::offset(const Position& position) const {
  if (position.line >= lines_.size()) return text_.size();
  size_t at = lines_[position.line];
  const size_t end = line_end(at);
  if (ascii_) return std::min(at + position.column, end);
  size_t column = 0;
  while (at < end && column + units(text_[at]) <= position.column) {
    column += units(text_[at++]);
    while (at < end && continues(text_[at])) ++at;
  }
  return at;
}

Position Text::position(size_t offset) const {
  offset = std::min(offset, text_.size());
  const auto line = std::upper_bound(lines_.begin(), lines_.end(), offset) - lines_.begin() - 1;
  Position position{static_cast<size_t>(line), 0};
  if (ascii_) return {position.line, offset - lines_[position.line]};
  for (size_t at = lines_[position.line]; at < offset; ++at)
    if (!continues(text_[at])) position.column += units(text_[at]);
  return position;
}

size_t Text::offset(int line, int column) const {
  if (line < 1) return 0;
  if (static_cast<size_t>(line) > lines_.size()) return text_.size();
  const size_t begin = lines_[static_cast<size_t>(line) - 1];
  return std::min(begin + static_cast<size_t>(std::max(column, 1)) - 1, line_end(begin));
}

Text Text::replaced(const Position& from, const Position& to, const std::string& other) const {
  const size_t begin = offset(from);
  const size_t end = std::max(begin, offset(to));
  return Text(text_.substr(0, begin) + other + text_.substr(end));
}

}  // namespace kiva::language
