// Nodes live in chunks that never move; lines of slots, probed as a whole, find them by variable
// and children.

#include "bdd/unique_table.h"

#include <bit>
#include <new>
#include <tuple>

#include "bdd/table_memory.h"
#include "bdd/work_guard.h"

namespace kiva {

unique_table::unique_table(bddpp_manager* manager) : manager_(manager) {
  set_line_bits(first_line_bits);
}

unique_table::~unique_table() {
  free_table_memory(lines_, (line_mask_ + 1) * line_size * sizeof *lines_);
  for (bdd_node* chunk : chunks_) free_table_memory(chunk, chunk_size * sizeof(bdd_node));
}

void unique_table::add_chunk() {
  WorkGuard::call();
  if (slots_used_ == max_slots) throw std::bad_alloc();
  chunks_.reserve(chunks_.size() + 1);
  chunks_.push_back(static_cast<bdd_node*>(
      allocate_table_memory(chunk_size * sizeof(bdd_node), !chunks_.empty())));
}

void unique_table::set_line_bits(int bits) {
  line_mask_ = (std::size_t{1} << bits) - 1;
  const std::size_t entries = (line_mask_ + 1) * line_size;
  lines_ = static_cast<std::uint64_t*>(allocate_table_memory(entries * sizeof *lines_, true));
  std::fill_n(lines_, entries, empty);
  most_entries_ = entries / 4 * 3;
  entries_used_ = entries_left_ = 0;
}

void unique_table::grow() {
  std::uint64_t* old = lines_;
  const std::size_t old_lines = line_mask_ + 1;
  // Where suppressed nodes have left much room, the same size does.
  const bool crowded = entries_used_ - entries_left_ > most_entries_ / 2;
  set_line_bits(std::bit_width(old_lines) - (crowded ? 0 : 1));
  for_each([this](bdd_node* node) { enter(key_of(node), node->internal_slot); });
  free_table_memory(old, old_lines * line_size * sizeof *old);
}

bdd_node* unique_table::make_constant() {
  bdd_node* node = make({-1, bdd_edge(), bdd_edge(), 0});
  node->internal_then = node->internal_else = nullptr;
  node->internal_in_table = false;
  return node;
}

bdd_node* unique_table::make_variable(int var_id) {
  const key k = key_of(var_id, bdd_edge(0, false), bdd_edge(0, true));
  bdd_node* node = make(k);
  enter(k, node->internal_slot);
  return node;
}

void unique_table::integrate(bdd_node* node) {
  suppress(node);
  node->internal_in_table = true;
  enter(key_of(node), node->internal_slot);
}

void unique_table::suppress(const bdd_node* node) {
  std::uint64_t* entry = find(key_of(node));
  if (entry == nullptr) return;
  at(static_cast<std::uint32_t>(*entry))->internal_in_table = false;
  *entry = left;
  ++entries_left_;
}

void unique_table::destroy(bdd_node* node) {
  suppress(node);
  if (node->internal_slot == last_made_) last_made_ = no_slot;
  free_.push_back(node);
}

std::vector<bdd_node*> unique_table::listing() const {
  std::vector<bdd_node*> nodes;
  for_each([&](bdd_node* node) { nodes.push_back(node); });
  const auto key = [](const bdd_node* node) {
    return std::tuple(node->internal_var_id, node->internal_then->internal_global_id,
                      node->internal_else->internal_global_id, node->internal_else_link_type);
  };
  std::sort(nodes.begin(), nodes.end(),
            [&](const bdd_node* a, const bdd_node* b) { return key(a) < key(b); });
  return nodes;
}

}  // namespace kiva
