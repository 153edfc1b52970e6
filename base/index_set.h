#pragma once

#include <algorithm>
#include <initializer_list>
#include <set>
#include <vector>

namespace kiva {

/// A set of indices, kept as an ascending vector: small sets cost one allocation, and entries that
/// arrive in ascending order cost no search. Answers like `std::set<long>`.
class index_set {
 public:
  using value_type = long;
  using const_iterator = std::vector<long>::const_iterator;
  using iterator = const_iterator;

  index_set() = default;
  index_set(std::initializer_list<long> members) {
    for (long member : members) insert(member);
  }
  explicit index_set(const std::set<long>& members) : members_(members.begin(), members.end()) {}

  /// Takes over `members`, in any order, repeats included.
  static index_set from_unsorted(std::vector<long> members) {
    std::sort(members.begin(), members.end());
    members.erase(std::unique(members.begin(), members.end()), members.end());
    index_set set;
    set.members_ = std::move(members);
    return set;
  }

  /// True when `member` was not there before.
  bool insert(long member) {
    if (members_.empty() || members_.back() < member) {
      members_.push_back(member);
      return true;
    }
    auto at = std::lower_bound(members_.begin(), members_.end(), member);
    if (*at == member) return false;
    members_.insert(at, member);
    return true;
  }
  /// True when `member` was there.
  bool erase(long member) {
    auto at = std::lower_bound(members_.begin(), members_.end(), member);
    if (at == members_.end() || *at != member) return false;
    members_.erase(at);
    return true;
  }
  template <class Goes>
  void erase_if(Goes goes) {
    std::erase_if(members_, goes);
  }
  bool contains(long member) const {
    return std::binary_search(members_.begin(), members_.end(), member);
  }
  size_t count(long member) const { return contains(member) ? 1 : 0; }
  void clear() { members_.clear(); }

  bool empty() const { return members_.empty(); }
  size_t size() const { return members_.size(); }
  const_iterator begin() const { return members_.begin(); }
  const_iterator end() const { return members_.end(); }
  long front() const { return members_.front(); }
  long back() const { return members_.back(); }

  std::set<long> to_set() const { return {members_.begin(), members_.end()}; }

  friend bool operator==(const index_set& a, const index_set& b) = default;

 private:
  std::vector<long> members_;
};

}  // namespace kiva
