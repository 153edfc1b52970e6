// Nodes live in pages that never move; lines of slots, probed as a whole, find them by variable
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
  for (node_page* page : pages_) free_table_memory(page, node_page::bytes);
}

void unique_table::too_many_nodes() {
  throw std::bad_alloc();
}

void unique_table::add_page() {
  WorkGuard::call();
  if (slots_used_ == max_slots) throw std::bad_alloc();
  pages_.reserve(pages_.size() + 1);
  void* memory = allocate_table_memory(node_page::bytes, !pages_.empty());
  pages_.push_back(new (memory) node_page{manager_, &page_list_, slots_used_});
  page_list_ = pages_.data();
  ++slots_used_;  // the place of what has just been made
}

void unique_table::set_line_bits(int bits) {
  line_mask_ = (std::size_t{1} << bits) - 1;
  const std::size_t entries = (line_mask_ + 1) * line_size;
  lines_ = static_cast<std::uint64_t*>(allocate_table_memory(entries * sizeof *lines_, true));
  std::fill_n(lines_, entries, empty);
  most_entries_ = entries / 4 * 3;
  entries_used_ = entries_left_ = 0;
}

void unique_table::rebuild(int bits) {
  std::uint64_t* old = lines_;
  const std::size_t old_lines = line_mask_ + 1;
  set_line_bits(bits);
  for_each([this](bdd_node* node) { enter(key_of(node), node->slot()); });
  free_table_memory(old, old_lines * line_size * sizeof *old);
}

void unique_table::grow() {
  // Where suppressed nodes have left much room, the same size does.
  const bool crowded = entries_used_ - entries_left_ > most_entries_ / 2;
  rebuild(std::bit_width(line_mask_) + (crowded ? 1 : 0));
}

bdd_node* unique_table::make_constant() {
  bdd_node* node = at(make({-1, bdd_edge(), bdd_edge(), 0}));
  node->internal_in_table = 0;
  return node;
}

bdd_node* unique_table::make_variable(int var_id) {
  const key k = key_of(var_id, bdd_edge(constant_slot, false), bdd_edge(constant_slot, true));
  const std::uint32_t slot = make(k);
  enter(k, slot);
  return at(slot);
}

void unique_table::integrate(bdd_node* node) {
  suppress(node);
  node->internal_in_table = 1;
  enter(key_of(node), node->slot());
}

void unique_table::suppress(const bdd_node* node) {
  std::uint64_t* entry = find(key_of(node));
  if (entry == nullptr) return;
  at(static_cast<std::uint32_t>(*entry))->internal_in_table = 0;
  *entry = left;
  ++entries_left_;
}

void unique_table::destroy(bdd_node* node) {
  suppress(node);
  const std::uint32_t slot = node->slot();
  if (slot == last_made_) last_made_ = no_slot;
  node->internal_var_id = bdd_node::no_manager;
  free_.push_back(slot);
}

long unique_table::sweep(std::uint32_t stamp) {
  std::vector<bdd_node*> dead;
  for_each([&](bdd_node* node) {
    if (node->visit_stamp != stamp) dead.push_back(node);
  });
  for (bdd_node* node : dead) {
    node->then_node()->dec_nbrefs();
    node->else_node()->dec_nbrefs();
  }
  for (bdd_node* node : dead) {
    node->internal_in_table = 0;
    node->internal_var_id = bdd_node::no_manager;
  }
  last_made_ = no_slot;

  // The slots behind the last node are as if they had never been used; the others will be, the
  // first ones first.
  std::uint32_t end = 0;
  const auto is_used = [](const bdd_node* node) {
    return node->internal_var_id != bdd_node::no_manager;
  };
  for_each_made([&](bdd_node* node) {
    if (is_used(node)) end = node->slot() + 1;
  });
  slots_used_ = end;
  while (pages_.back()->first_slot >= end) {
    free_table_memory(pages_.back(), node_page::bytes);
    pages_.pop_back();
  }
  free_.clear();
  for_each_made([&](bdd_node* node) {
    if (!is_used(node)) free_.push_back(node->slot());
  });
  std::reverse(free_.begin(), free_.end());

  int bits = first_line_bits;
  while ((std::size_t{line_size} << bits) / 4 * 3 < 2 * nodes()) ++bits;
  rebuild(std::min(bits, static_cast<int>(std::bit_width(line_mask_))));
  for_each([&]([[maybe_unused]] bdd_node* node) {
    KIVA_CHECK(5, is_used(node->then_node()) && is_used(node->else_node()));
  });
  return static_cast<long>(dead.size());
}

std::vector<bdd_node*> unique_table::listing() const {
  std::vector<bdd_node*> nodes;
  for_each([&](bdd_node* node) { nodes.push_back(node); });
  const auto key = [](const bdd_node* node) {
    return std::tuple(node->internal_var_id, node->then_node()->global_id(),
                      node->else_node()->global_id(), node->else_link_type());
  };
  std::sort(nodes.begin(), nodes.end(),
            [&](const bdd_node* a, const bdd_node* b) { return key(a) < key(b); });
  return nodes;
}

}  // namespace kiva
