#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace kiva {

// Tables of which only the entries that were written to take memory: a branch of a statement has a
// wood as long as the manager has variables, and fills little of it. Entries begin as T{}.

/// In pages, which stand once one of their entries may be written to.
template <class T>
class paged_table {
 public:
  paged_table() = default;
  paged_table(const paged_table& other) : size_(other.size_), pages_(other.pages_.size()) {
    for (size_t i = 0; i < pages_.size(); ++i)
      if (other.pages_[i]) pages_[i] = std::make_unique<Page>(*other.pages_[i]);
  }
  paged_table& operator=(const paged_table& other) {
    paged_table copy(other);
    std::swap(size_, copy.size_);
    pages_.swap(copy.pages_);
    return *this;
  }

  size_t size() const { return size_; }
  /// Never shorter.
  void resize(size_t size) {
    size_ = size;
    pages_.resize((size + page_size - 1) / page_size);
  }
  void clear() {
    size_ = 0;
    pages_.clear();
  }

  const T& operator[](size_t i) const {
    static const T none{};
    const auto& page = pages_[i / page_size];
    return page ? (*page)[i % page_size] : none;
  }
  T& operator[](size_t i) {
    auto& page = pages_[i / page_size];
    if (!page) page = std::make_unique<Page>();
    return (*page)[i % page_size];
  }
  /// The entry and those around it are T{} again.
  void drop_page_of(size_t i) { pages_[i / page_size].reset(); }
  /// Has the last entry stand at `i`, and those from there on one later.
  void rotate_last_to(size_t i) {
    for (size_t at = size_ - 1; at > i; --at) std::swap((*this)[at], (*this)[at - 1]);
  }

 private:
  static constexpr size_t page_size = 64;
  using Page = std::array<T, page_size>;

  size_t size_ = 0;
  std::vector<std::unique_ptr<Page>> pages_;
};

/// In one piece, of memory that the system gives where it is first written to.
template <class T>
class zeroed_table {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  size_t size() const { return size_; }
  T* data() { return entries_.get(); }
  T* begin() { return entries_.get(); }
  T* end() { return entries_.get() + size_; }
  const T* begin() const { return entries_.get(); }
  const T* end() const { return entries_.get() + size_; }
  T& operator[](size_t i) { return entries_.get()[i]; }
  const T& operator[](size_t i) const { return entries_.get()[i]; }

  /// The entries stay where they are until the capacity grows. std::bad_alloc.
  void reserve(size_t capacity) {
    if (capacity <= capacity_) return;
    Memory larger(static_cast<T*>(std::calloc(capacity, sizeof(T))));
    if (!larger) throw std::bad_alloc();
    for (size_t i = 0; i < size_; ++i)
      if (entries_.get()[i] != T{}) larger.get()[i] = entries_.get()[i];
    entries_ = std::move(larger);
    capacity_ = capacity;
  }
  /// Never shorter.
  void resize(size_t size) {
    if (size > capacity_) reserve(std::max(size, 2 * capacity_));
    size_ = size;
  }
  void clear() {
    entries_.reset();
    size_ = capacity_ = 0;
  }

 private:
  struct Free {
    void operator()(T* entries) const { std::free(entries); }
  };
  using Memory = std::unique_ptr<T, Free>;

  Memory entries_;
  size_t size_ = 0, capacity_ = 0;
};

}  // namespace kiva
