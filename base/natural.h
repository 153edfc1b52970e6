#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kiva {

/// A whole number from 0 on, of any size.
class Natural {
 public:
  Natural() = default;
  Natural(std::uint64_t value) : words_{value} {}  // NOLINT: as numbers convert

  Natural& operator+=(const Natural& other);
  /// Times 2^bits.
  Natural& operator<<=(unsigned bits);
  std::string decimal() const;

 private:
  std::vector<std::uint64_t> words_;  ///< the lowest first
};

}  // namespace kiva
