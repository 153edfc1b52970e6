#include "base/g_longlong.h"

#include <ostream>

namespace kiva {

void g_longlong::lshift(int n) {
  const auto word =
      (static_cast<std::uint64_t>(static_cast<std::uint32_t>(internal_high)) << 32 | internal_low)
      << n;
  internal_high = static_cast<std::int32_t>(word >> 32);
  internal_low = static_cast<std::uint32_t>(word);
}

void g_longlong::rshift(int n) {
  const std::int64_t word =
      (static_cast<std::int64_t>(internal_high) * (std::int64_t{1} << 32) + internal_low) >> n;
  internal_high = static_cast<std::int32_t>(word >> 32);
  internal_low = static_cast<std::uint32_t>(word);
}

std::ostream& operator<<(std::ostream& out, const g_longlong& a) {
  return out << a.internal_high << " *2E32 + " << a.internal_low;
}

}  // namespace kiva
