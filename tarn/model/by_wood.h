#pragma once

#include <utility>
#include <vector>

namespace kiva {

class Bddexpressionwood;

/// A value for each of a few woods, in order of arrival. Nearly all have one: that one stands in
/// place.
template <class Value>
class by_wood {
 public:
  /// Null when the wood has no entry. The pointer holds until the next change.
  Value* find(const Bddexpressionwood* wood) {
    if (wood == first_.first && has_first_) return &first_.second;
    // The latest are asked for most.
    for (auto at = rest_.rbegin(); at != rest_.rend(); ++at)
      if (at->first == wood) return &at->second;
    return nullptr;
  }
  const Value* find(const Bddexpressionwood* wood) const {
    return const_cast<by_wood*>(this)->find(wood);
  }
  /// Enters or replaces.
  void enter(Bddexpressionwood* wood, const Value& value) {
    if (Value* at = find(wood)) {
      *at = value;
    } else if (!has_first_ && rest_.empty()) {
      first_ = {wood, value};
      has_first_ = true;
    } else {
      rest_.emplace_back(wood, value);
    }
  }
  void remove(const Bddexpressionwood* wood) {
    if (has_first_ && first_.first == wood) has_first_ = false;
    std::erase_if(rest_, [wood](const auto& entry) { return entry.first == wood; });
  }
  /// Calls `see(wood, value)` for each entry.
  template <class See>
  void for_each(See see) const {
    if (has_first_) see(first_.first, first_.second);
    for (const auto& [wood, value] : rest_) see(wood, value);
  }

 private:
  std::pair<Bddexpressionwood*, Value> first_{};
  bool has_first_ = false;
  std::vector<std::pair<Bddexpressionwood*, Value>> rest_;
};

}  // namespace kiva
