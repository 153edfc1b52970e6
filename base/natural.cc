#include "base/natural.h"

#include <algorithm>

namespace kiva {

Natural& Natural::operator+=(const Natural& other) {
  words_.resize(std::max(words_.size(), other.words_.size()) + 1, 0);
  std::uint64_t carry = 0;
  for (size_t k = 0; k < words_.size(); ++k) {
    const std::uint64_t theirs = k < other.words_.size() ? other.words_[k] : 0;
    const std::uint64_t sum = words_[k] + theirs;
    const bool over = sum < theirs;
    words_[k] = sum + carry;
    carry = over || words_[k] < carry ? 1 : 0;
  }
  if (words_.back() == 0) words_.pop_back();
  return *this;
}

Natural& Natural::operator<<=(unsigned bits) {
  const unsigned part = bits % 64;
  if (part != 0) {
    words_.push_back(0);
    for (size_t k = words_.size(); k-- > 0;)
      words_[k] = words_[k] << part | (k > 0 ? words_[k - 1] >> (64 - part) : 0);
    if (words_.back() == 0) words_.pop_back();
  }
  if (!words_.empty()) words_.insert(words_.begin(), bits / 64, 0);
  return *this;
}

std::string Natural::decimal() const {
  constexpr unsigned part = 1'000'000'000;
  std::vector<std::uint32_t> halves;  // the highest first
  for (auto word = words_.rbegin(); word != words_.rend(); ++word)
    halves.insert(halves.end(),
                  {static_cast<std::uint32_t>(*word >> 32), static_cast<std::uint32_t>(*word)});
  std::string text;
  while (std::ranges::any_of(halves, [](std::uint32_t half) { return half != 0; })) {
    std::uint64_t rest = 0;
    for (std::uint32_t& half : halves) {
      rest = rest << 32 | half;
      half = static_cast<std::uint32_t>(rest / part);
      rest %= part;
    }
    const std::string digits = std::to_string(rest);
    text.insert(0, std::string(9 - digits.size(), '0') + digits);
  }
  text.erase(0, text.find_first_not_of('0'));
  return text.empty() ? "0" : text;
}

}  // namespace kiva
