// Memory for the tables that every operation walks over at random: aligned to cache lines, on large
// pages where the system has them.
//
// A page that the system gives has to be cleared first, which takes longer than filling it with
// nodes does. So some large blocks of a manager that ends stay for the next one.

#include "bdd/table_memory.h"

#include <sys/mman.h>

#include <mutex>
#include <new>
#include <vector>

namespace kiva {

namespace {

constexpr std::size_t cache_line = 64;
constexpr std::size_t large_page = std::size_t{1} << 21;

std::align_val_t alignment_of(std::size_t bytes) {
  return std::align_val_t{bytes >= large_page ? large_page : cache_line};
}

/// Blocks that nobody has, of all threads.
class kept_blocks {
 public:
  kept_blocks() { blocks_.reserve(most_bytes / large_page); }

  /// Null where none of the size is kept.
  void* take(std::size_t bytes) {
    const std::lock_guard lock(mutex_);
    for (std::size_t i = blocks_.size(); i-- > 0;) {
      if (blocks_[i].bytes != bytes) continue;
      void* memory = blocks_[i].memory;
      blocks_[i] = blocks_.back();
      blocks_.pop_back();
      bytes_ -= bytes;
      return memory;
    }
    return nullptr;
  }
  /// Whether the block is kept.
  bool keep(void* memory, std::size_t bytes) {
    const std::lock_guard lock(mutex_);
    if (bytes_ + bytes > most_bytes) return false;  // so that no list grows here
    blocks_.push_back({memory, bytes});
    bytes_ += bytes;
    return true;
  }

  /// Of the process; it has no end, as threads may outlive the statics.
  static kept_blocks& all() {
    static auto* const blocks = new kept_blocks;
    return *blocks;
  }

 private:
  static constexpr std::size_t most_bytes = 24 * large_page;
  struct block {
    void* memory;
    std::size_t bytes;
  };
  std::mutex mutex_;
  std::vector<block> blocks_;
  std::size_t bytes_ = 0;
};

}  // namespace

void* allocate_table_memory(std::size_t bytes, bool large_pages) {
  if (bytes >= large_page) {
    if (void* kept = kept_blocks::all().take(bytes)) return kept;
  }
  void* memory = ::operator new(bytes, alignment_of(bytes));
#ifdef MADV_HUGEPAGE
  if (large_pages && bytes >= large_page) madvise(memory, bytes, MADV_HUGEPAGE);  // only advice
#endif
  return memory;
}

void free_table_memory(void* memory, std::size_t bytes) {
  if (bytes >= large_page && kept_blocks::all().keep(memory, bytes)) return;
  ::operator delete(memory, alignment_of(bytes));
}

}  // namespace kiva
