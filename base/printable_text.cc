#include "base/printable_text.h"

namespace kiva {

namespace {

/// Length of the UTF-8 character that begins there, by the form of its bytes alone; 0 for none.
size_t character_length(const std::string& text, size_t at) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
  const size_t length = byte(at) < 0xC2 ? 0 : byte(at) < 0xE0 ? 2 : byte(at) < 0xF0 ? 3 : 4;
  if (length == 0 || byte(at) > 0xF4 || at + length > text.size()) return 0;
  for (size_t i = at + 1; i < at + length; ++i)
    if ((byte(i) & 0xC0) != 0x80) return 0;
  // U+0080 to U+009F are control characters, too.
  return byte(at) == 0xC2 && byte(at + 1) < 0xA0 ? 0 : length;
}

}  // namespace

std::string printable(const std::string& text) {
  constexpr const char* digits = "0123456789abcdef";
  std::string shown;
  for (size_t at = 0; at < text.size(); ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte >= ' ' && byte < 0x7F) {
      shown += text[at];
    } else if (const size_t length = character_length(text, at); length > 0) {
      shown.append(text, at, length);
      at += length - 1;
    } else if (byte == '\n' || byte == '\t' || byte == '\r') {
      shown += byte == '\n' ? "\\n" : byte == '\t' ? "\\t" : "\\r";
    } else {
      shown += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
    }
  }
  return shown;
}

}  // namespace kiva
