#pragma once

#include <cstdint>
#include <vector>

#include "engine/context.h"

namespace kiva {

/// What the rows of a list show of a context.
class ShownRows {
 public:
  /// By row.
  explicit ShownRows(const std::vector<SignalRails>& rows) {
    for (const SignalRails& rails : rows) add(rails);
  }
  void show(const std::vector<int>& context, std::vector<SignalState>& shown) const;

 private:
  void add(SignalRails rails);
  /// Rows whose rails stand behind each other: status, value, status, value.
  struct Stretch {
    std::uint32_t row, count;
    std::uint32_t status_index;
  };
  std::vector<Stretch> stretches_;
  std::vector<SignalRails> scattered_;  ///< all rows, where stretches would be short
  std::uint32_t rows_ = 0;
  bool apart_ = false;  ///< in some row the value does not stand behind the status
};

}  // namespace kiva
