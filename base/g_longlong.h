#pragma once

#include <compare>
#include <cstdint>
#include <iosfwd>

namespace kiva {

/// A 64-bit integer held as two 32-bit words, which is also its printed form.
class g_longlong {
 public:
  g_longlong() = default;
  g_longlong(long high, unsigned long low)
      : internal_high(static_cast<std::int32_t>(high)),
        internal_low(static_cast<std::uint32_t>(low)) {}
  /// Sign-extends.
  explicit g_longlong(long value)
      : internal_high(static_cast<std::int32_t>(static_cast<std::int64_t>(value) >> 32)),
        internal_low(static_cast<std::uint32_t>(value)) {}
  g_longlong& operator=(int value) { return *this = g_longlong(static_cast<long>(value)); }

  long high() const { return internal_high; }
  unsigned long low() const { return internal_low; }

  /// Shift both words in place, for n from 1 to 31; rshift is arithmetic.
  void lshift(int n);
  void rshift(int n);

  friend bool operator==(const g_longlong& a, const g_longlong& b) = default;
  /// The signed high word first, then the unsigned low word.
  friend auto operator<=>(const g_longlong& a, const g_longlong& b) = default;
  /// Into the low word only.
  friend g_longlong operator|(g_longlong a, unsigned long bits) {
    a.internal_low |= static_cast<std::uint32_t>(bits);
    return a;
  }
  friend g_longlong operator<<(g_longlong a, long n) {
    a.lshift(static_cast<int>(n));
    return a;
  }
  /// high, " *2E32 + ", low.
  friend std::ostream& operator<<(std::ostream& out, const g_longlong& a);

 private:
  std::int32_t internal_high = 0;
  std::uint32_t internal_low = 0;
};

}  // namespace kiva
