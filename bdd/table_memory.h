#pragma once

#include <cstddef>

namespace kiva {

/// Memory for nodes and hash entries, aligned to a cache line, its contents undefined. With
/// `large_pages` a large block asks the system for them: a table that is read at random would
/// otherwise pay for the translation of most addresses, and each fresh page of 4 KB for a fault. Up
/// to 48 MB that were given back stay ready for whoever asks for as much.
void* allocate_table_memory(std::size_t bytes, bool large_pages);
void free_table_memory(void* memory, std::size_t bytes);

}  // namespace kiva
