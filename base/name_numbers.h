#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kiva {

/// Numbers names from 0 in order of arrival. A name keeps its number; none ever leaves.
///
/// Readers enter hundreds of thousands of names, and woods are copied: so all texts stand in one
/// block, the table probes linearly, and a copy is three plain blocks of memory.
class name_numbers {
 public:
  struct Entered {
    long number;
    bool is_new;
  };
  /// The number of the name, which is the next one if the name is new.
  Entered enter(std::string_view name);
  /// -1 when the name has no number.
  long find(std::string_view name) const;
  /// The view holds until the next `enter`. 0 <= number < size().
  std::string_view name(long number) const;
  long size() const { return static_cast<long>(ends_.size()); }
  void reserve(size_t names);

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::int32_t number = -1;
  };
  /// The slot that holds the name, or the free one where it would stand.
  size_t slot_of(std::string_view name, std::uint32_t hash) const;
  void rehash(size_t slots);

  std::string texts_;
  std::vector<size_t> ends_;  ///< by number: where the name ends in the texts
  std::vector<Slot> slots_;   ///< a power of two of them, at least a quarter free
};

}  // namespace kiva
