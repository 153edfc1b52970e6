#include "base/json_text.h"

#include <array>
#include <charconv>
#include <nlohmann/json.hpp>

namespace kiva {

void JsonText::put_raw(std::string_view name, std::string_view value) {
  if (any_) text_ += ',';
  if (!open_.empty()) text_ += '\n' + std::string(open_.size(), ' ');
  if (!name.empty()) text_ += quoted(std::string(name)) + ": ";
  text_ += value;
  any_ = true;
}

void JsonText::open(std::string_view name, char bracket) {
  put_raw(name, {&bracket, 1});
  open_ += bracket == '{' ? '}' : ']';
  any_ = false;
}

void JsonText::close() {
  const char bracket = open_.back();
  open_.pop_back();
  if (any_) text_ += '\n' + std::string(open_.size(), ' ');
  text_ += bracket;
  any_ = true;
}

void JsonText::put(std::string_view name, double value) {
  std::array<char, 32> digits{};  // the longest shortest form has 24
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  put_raw(name, std::string_view(digits.data(), static_cast<size_t>(end - digits.data())));
}

void JsonText::put(std::string_view name, const std::vector<std::string>& values) {
  open_array(name);
  for (const std::string& value : values) add(value);
  close();
}

std::string JsonText::quoted(const std::string& text) {
  const std::string dumped =
      nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  // A terminal takes U+007F to U+009F for commands, too.
  std::string safe;
  for (size_t at = 0; at < dumped.size(); ++at) {
    const auto byte = static_cast<unsigned char>(dumped[at]);
    const bool high = byte == 0xC2 && static_cast<unsigned char>(dumped[at + 1]) < 0xA0;
    const unsigned code = high ? static_cast<unsigned char>(dumped[++at]) : byte;
    if (high || code == 0x7F) {
      safe += "\\u00";
      safe += "0123456789abcdef"[code >> 4];
      safe += "0123456789abcdef"[code & 15];
    } else {
      safe += dumped[at];
    }
  }
  return safe;
}

}  // namespace kiva
