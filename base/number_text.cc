// Numbers to text and back. What is no number is 0, as strtol has it; checks say whether the whole
// text is one.

#include "base/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iostream>

namespace kiva {

namespace {

constexpr int not_a_digit = -1;

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return not_a_digit;
}

bool is_decimal_digit(char c) {
  return c >= '0' && c <= '9';
}

/// Takes every character for a decimal digit.
unsigned long long blind_decimal(const std::string& s) {
  const bool negative = !s.empty() && s.front() == '-';
  unsigned long long value = 0;
  for (std::size_t at = negative ? 1 : 0; at < s.size(); ++at)
    value = value * 10 + static_cast<unsigned long long>(s[at] - '0');
  return negative ? 0 - value : value;
}

/// `value` of `bits` bits in two's complement when `negative` holds.
long signed_in_width(unsigned long value, bool negative, std::size_t bits) {
  return static_cast<long>(negative && bits < 64 ? value - (1ul << bits) : value);
}

std::string hex_digits(unsigned long i, int digits) {
  if (digits == 1) return std::string(1, "0123456789abcdef"[i & 15]);
  const int half = digits / 2;
  return hex_digits(i >> 4 * half, half) + hex_digits(i, half);
}

}  // namespace

int Stoi(const std::string& s) {
  return static_cast<int>(blind_decimal(s));
}
long Stol(const std::string& s) {
  return static_cast<long>(blind_decimal(s));
}
long long Stoll(const std::string& s) {
  return static_cast<long long>(blind_decimal(s));
}

double Stod(const std::string& s, char separator) {
  std::string text = s;
  std::replace(text.begin(), text.end(), separator, '.');
  const char* begin = text.data();
  if (*begin == '+') ++begin;
  double value = 0;
  std::from_chars(begin, text.data() + text.size(), value, std::chars_format::fixed);
  return value;
}

unsigned long Stouhex(const std::string& s) {
  unsigned long value = 0;
  for (char c : s) value = value << 4 | static_cast<unsigned long>(std::max(hex_digit(c), 0));
  return value;
}

long Stoshex(const std::string& s) {
  const unsigned long value = Stouhex(s);
  if (s.size() == 8) return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
  return signed_in_width(value, !s.empty() && s.front() >= '8', 4 * s.size());
}

unsigned long Stoubin(const std::string& s) {
  unsigned long value = 0;
  for (char c : s) value = value << 1 | (c == '1' ? 1 : 0);
  return value;
}

long Stosbin(const std::string& s) {
  return signed_in_width(Stoubin(s), !s.empty() && s.front() == '1', s.size());
}

long Stoloruhex(const std::string& prefix, const std::string& s) {
  const std::size_t at = s.find(prefix);
  return at == std::string::npos ? Stol(s) : static_cast<long>(Stouhex(s.substr(at)));
}

long Stohex(const std::string& s, const std::string& suffix) {
  const std::size_t at = s.find(suffix);
  if (at != std::string::npos) return static_cast<long>(Stouhex(s.substr(0, at)));
  const long value = Stol(s);
  std::cerr << "Decimal Conversion " << value << '\n';
  return value;
}

bool checkuint(const std::string& s) {
  return !s.empty() && std::all_of(s.begin(), s.end(), is_decimal_digit);
}

bool checkint(const std::string& s) {
  return checkuint(!s.empty() && s.front() == '-' ? s.substr(1) : s);
}

bool checkhex(const std::string& s) {
  return std::all_of(s.begin(), s.end(), [](char c) { return hex_digit(c) != not_a_digit; });
}

bool checkhexintel(const std::string& s) {
  return s.size() > 1 && s.back() == 'h' && checkhex(s.substr(0, s.size() - 1));
}

bool checkbin(const std::string& s) {
  return std::all_of(s.begin(), s.end(), [](char c) { return c == '0' || c == '1'; });
}

bool beginbynumber(const std::string& s) {
  return !s.empty() && is_decimal_digit(s.front());
}

int checkdouble(const std::string&) {
  std::cerr << "checkdouble() a ecrire\n";
  return 1;
}

std::string ctoS(char c) {
  return std::string(1, c);
}
std::string long2S(long l) {
  return std::to_string(l);
}
std::string unslong2S(unsigned long u) {
  return std::to_string(u);
}

std::string dtoS(double d, int decimals) {
  decimals = std::max(decimals, 0);
  std::string text(static_cast<std::size_t>(decimals) + 330, '\0');
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), d, std::chars_format::fixed, decimals);
  text.resize(static_cast<std::size_t>(end.ptr - text.data()));
  return text;
}

std::string bin8toS(unsigned long i) {
  std::string text;
  for (int bit = 7; bit >= 0; --bit) text += (i >> bit & 1) != 0 ? '1' : '0';
  return text;
}

std::string hex1toS(unsigned long i) {
  return hex_digits(i, 1);
}
std::string hex2toS(unsigned long i) {
  return hex_digits(i, 2);
}
std::string hex4toS(unsigned long i) {
  return hex_digits(i, 4);
}
std::string hex8toS(unsigned long i) {
  return hex_digits(i, 8);
}

std::string unslongbyS(unsigned long u) {
  std::string text;
  do {
    text.insert(text.begin(), static_cast<char>('A' + (u & 7)));
    u >>= 3;
  } while (u != 0);
  return text;
}

char* Stoa(const std::string& s) {
  char* array = new char[s.size() + 1];
  std::memcpy(array, s.c_str(), s.size() + 1);
  return array;
}

}  // namespace kiva
