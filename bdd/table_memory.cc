// Memory for the tables that every operation walks over at random: aligned to cache lines, on large
// pages where the system has them.

#include "bdd/table_memory.h"

#include <sys/mman.h>

#include <new>

namespace kiva {

namespace {

constexpr std::size_t cache_line = 64;
constexpr std::size_t large_page = std::size_t{1} << 21;

std::align_val_t alignment_of(std::size_t bytes) {
  return std::align_val_t{bytes >= large_page ? large_page : cache_line};
}

}  // namespace

void* allocate_table_memory(std::size_t bytes, bool large_pages) {
  void* memory = ::operator new(bytes, alignment_of(bytes));
#ifdef MADV_HUGEPAGE
  if (large_pages && bytes >= large_page) madvise(memory, bytes, MADV_HUGEPAGE);  // only advice
#endif
  return memory;
}

void free_table_memory(void* memory, std::size_t bytes) {
  ::operator delete(memory, alignment_of(bytes));
}

}  // namespace kiva
