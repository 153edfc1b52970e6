#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kiva {

/// What one operator's call has already computed: 64-bit keys to 32-bit values. The memory outlives
/// the call, the contents never do: each call has a stamp, and an entry of another stamp is empty.
///
/// A call starts with a table for as many results as the last one had, within what fits the nearer
/// caches, and lets it grow.
class call_table {
 public:
  /// Forgets everything.
  void begin() {
    next_stamp();
    set_size(std::clamp(static_cast<int>(std::bit_width(used_)) + 1, least_bits, most_first_bits));
    used_ = 0;
  }

  bool find(std::uint64_t key, std::uint32_t& value) const {
    for (std::size_t at = place(key);; at = (at + 1) & mask_) {
      const entry& e = entries_[at];
      if (e.stamp != stamp_) return false;
      if (e.key == key) {
        value = e.value;
        return true;
      }
    }
  }
  /// The key must be absent.
  void store(std::uint64_t key, std::uint32_t value) {
    if (2 * used_ > mask_) grow();
    put(key, value);
    ++used_;
  }

 private:
  static constexpr int least_bits = 10, most_first_bits = 15;
  struct entry {
    std::uint64_t key;
    std::uint32_t value;
    std::uint32_t stamp;
  };

  std::size_t place(std::uint64_t key) const { return key * 0x9E3779B97F4A7C15u >> shift_; }
  void put(std::uint64_t key, std::uint32_t value) {
    std::size_t at = place(key);
    while (entries_[at].stamp == stamp_) at = (at + 1) & mask_;
    entries_[at] = {key, value, stamp_};
  }
  void set_size(int bits) {
    shift_ = 64 - bits;
    mask_ = (std::size_t{1} << bits) - 1;
    if (entries_.size() <= mask_) entries_.resize(mask_ + 1, entry{0, 0, 0});
  }
  void next_stamp();
  void grow();

  std::vector<entry> entries_;
  std::size_t mask_ = 0;
  std::size_t used_ = 0;
  int shift_ = 64;
  std::uint32_t stamp_ = 0;
};

}  // namespace kiva
