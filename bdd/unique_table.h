#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/check.h"
#include "bdd/bdd_node.h"
#include "bdd/edge.h"

namespace kiva {

/// The nodes of one manager: their memory, and the hash over (variable id, then, else, polarity)
/// that keeps them unique.
///
/// A node stands in a slot, numbered in the order of creation, and never moves; the slot of a
/// destroyed node is used again. A slot is a page and a place in it, of which the first has no
/// node.
///
/// Nodes are destroyed where a caller of the classic interface asks for it (`destroy`), and by
/// `sweep`, which gives the memory behind the last node that is left back to the system.
///
/// The hash consists of lines of eight entries, one cache line each. A node's first line is that of
/// its younger child: what a recursion makes one after the other comes to lie together. A node that
/// finds its first line full, as above a variable with many nodes above it, goes to the first line
/// with room from a place on that its whole key scatters. An entry holds 32 bits of that key beside
/// the slot, so that a search reads a node only where it almost certainly ends.
///
/// Invariants:
///   1. A node is canonical: its then edge has no complement, and its children differ.
///   2. Its children stand in slots that were taken before it was made.
///   3. No two nodes of the table have one key: a search for a node's key ends at that node.
///   4. A quarter of the entries at least is empty, so that every search ends.
///   5. After a sweep the children of each node of the table are nodes still.
class unique_table {
 public:
  /// The slot of the constant.
  static constexpr std::uint32_t constant_slot = 1;

  explicit unique_table(bddpp_manager* manager);
  ~unique_table();
  unique_table(const unique_table&) = delete;
  unique_table& operator=(const unique_table&) = delete;

  /// The terminal node, which has no entry. To be called once, first.
  bdd_node* make_constant();
  /// The node of a new variable; the caller knows that there is none.
  bdd_node* make_variable(int var_id);
  /// The node (variable, then without complement, else), found or made; one more reference in the
  /// first case, one more for each child in the second.
  bdd_edge find_or_make(int var_id, bdd_edge then_edge, bdd_edge else_edge);

  /// Enters the node; one of the same key leaves the table.
  void integrate(bdd_node* node);
  /// Whatever node has the key of `node` leaves the table.
  void suppress(const bdd_node* node);
  /// The node leaves the table and its slot is free.
  void destroy(bdd_node* node);
  /// Destroys the nodes of the table whose stamp is another one; their children lose the reference
  /// that they had from them. What a node that stays has below it must stay, too. Gives how many
  /// have gone.
  long sweep(std::uint32_t stamp);
  /// Bytes that stand ready for nodes and for the hash.
  std::size_t bytes() const {
    return pages_.size() * node_page::bytes + (line_mask_ + 1) * line_size * sizeof *lines_;
  }

  long next_global_id() const { return next_global_id_; }
  bdd_node* at(std::uint32_t slot) const {
    return page_list_[slot >> node_page::bits]->at(slot & (node_page::places - 1));
  }
  bdd_node* node(bdd_edge f) const { return at(f.slot()); }

  /// Calls visit(node) for each node that a table has or had, in the order of slots.
  template <class Visit>
  void for_each_made(Visit visit) const {
    for (std::uint32_t slot = constant_slot; slot < slots_used_; ++slot) {
      if ((slot & (node_page::places - 1)) != 0) visit(at(slot));
    }
  }
  /// Calls visit(node) for each node of the table, in the order of slots.
  template <class Visit>
  void for_each(Visit visit) const {
    for_each_made([&](bdd_node* node) {
      if (node->internal_in_table != 0) visit(node);
    });
  }
  /// All nodes of the table in key order.
  std::vector<bdd_node*> listing() const;

 private:
  static constexpr std::uint32_t no_slot = ~0u;
  /// What an edge can name, and what a node keeps of its number of creation.
  static constexpr std::uint32_t max_slots = 1u << 31;
  static constexpr int global_id_bits = 44;
  static constexpr int line_size = 8;
  static constexpr int first_line_bits = 6;
  /// Slots whose upper nodes share a first line.
  static constexpr int slots_of_line_bits = 2;
  /// Entries without a node: never used, or left by a suppressed node.
  static constexpr std::uint64_t empty = ~std::uint64_t{0};
  static constexpr std::uint64_t left = empty - 1;

  /// What is looked for: the two edges and 32 scattered bits of everything.
  struct key {
    int var_id;
    bdd_edge then_edge, else_edge;
    std::uint32_t hash;
  };
  static key key_of(int var_id, bdd_edge then_edge, bdd_edge else_edge) {
    const std::uint64_t children = std::uint64_t{then_edge.code()} << 32 | else_edge.code();
    std::uint64_t mixed = children * 0x9E3779B97F4A7C15u;
    mixed ^= mixed >> 32;
    mixed += static_cast<std::uint64_t>(var_id);
    mixed *= 0xD6E8FEB86659FD93u;
    return {var_id, then_edge, else_edge, static_cast<std::uint32_t>(mixed >> 32)};
  }
  static key key_of(const bdd_node* node) {
    return key_of(node->internal_var_id, bdd_edge::of_code(node->internal_then_code),
                  bdd_edge::of_code(node->internal_else_code));
  }
  bool has_key(const bdd_node* node, const key& k) const {
    return node->internal_then_code == k.then_edge.code() &&
           node->internal_else_code == k.else_edge.code() && node->internal_var_id == k.var_id;
  }
  std::uint64_t* first_line(const key& k) const {
    const std::size_t younger = std::max(k.then_edge.slot(), k.else_edge.slot());
    return lines_ + (younger >> slots_of_line_bits & line_mask_) * line_size;
  }
  std::uint64_t* scattered_line(const key& k) const {
    return lines_ + (std::uint64_t{k.hash} * (line_mask_ + 1) >> 32) * line_size;
  }
  std::uint64_t* next_line(std::uint64_t* line) const {
    line += line_size;
    return line == lines_ + (line_mask_ + 1) * line_size ? lines_ : line;
  }

  /// Calls probe(line) for each line in which the key may stand, until it gives true.
  template <class Probe>
  void follow(const key& k, Probe probe) const {
    std::uint64_t* line = first_line(k);
    if (probe(line)) return;
    for (line = scattered_line(k); !probe(line); line = next_line(line)) {
    }
  }
  /// The entry of the key, or null.
  std::uint64_t* find(const key& k) const {
    std::uint64_t* found = nullptr;
    follow(k, [&](std::uint64_t* line) {
      for (std::uint64_t* entry = line; entry != line + line_size; ++entry) {
        if (*entry == empty) return true;
        if (*entry >> 32 != k.hash || *entry == left) continue;
        if (!has_key(at(static_cast<std::uint32_t>(*entry)), k)) continue;
        found = entry;
        return true;
      }
      return false;
    });
    return found;
  }
  /// Enters a node whose key is absent.
  void enter(const key& k, std::uint32_t slot) {
    follow(k, [&](std::uint64_t* line) {
      for (std::uint64_t* entry = line; entry != line + line_size; ++entry) {
        if (*entry != empty) continue;
        *entry = std::uint64_t{k.hash} << 32 | slot;
        return true;
      }
      return false;
    });
    if (++entries_used_ > most_entries_) grow();
    KIVA_CHECK(4, entries_used_ <= most_entries_);
  }

  std::uint32_t make(const key& k);
  std::uint32_t take_slot();
  /// How many nodes there are, the constant included.
  std::size_t nodes() const { return slots_used_ - pages_.size() - free_.size(); }
  void add_page();
  [[noreturn]] static void too_many_nodes();
  void set_line_bits(int bits);
  void rebuild(int bits);
  void grow();

  bddpp_manager* manager_;
  std::vector<node_page*> pages_;
  node_page** page_list_ = nullptr;  ///< where `pages_` has them; all pages know this member
  std::vector<std::uint32_t> free_;
  std::uint32_t slots_used_ = 0;  ///< the first that has never had a node
  std::uint64_t* lines_;
  std::size_t line_mask_;
  std::size_t entries_used_ = 0;  ///< those left by suppressed nodes included
  std::size_t entries_left_ = 0;
  std::size_t most_entries_;
  long next_global_id_ = 1;
  /// The node made last. Nothing can have it as a child yet, so that a node above it is new.
  std::uint32_t last_made_ = no_slot;
};

inline std::uint32_t unique_table::take_slot() {
  if (!free_.empty()) {
    const std::uint32_t slot = free_.back();
    free_.pop_back();
    return slot;
  }
  if ((slots_used_ & (node_page::places - 1)) == 0) add_page();
  return slots_used_++;
}

inline std::uint32_t unique_table::make(const key& k) {
  if (next_global_id_ >> global_id_bits != 0) too_many_nodes();
  const std::uint32_t slot = take_slot();
  bdd_node* node = at(slot);
  node->internal_then_code = k.then_edge.code();
  node->internal_else_code = k.else_edge.code();
  node->internal_var_id = k.var_id;
  node->internal_local_id = 0;
  node->internal_nb_refs = 1;
  node->visit_stamp = 0;
  node->internal_global_low = static_cast<std::uint32_t>(next_global_id_);
  node->internal_handles = 0;
  node->internal_global_high = static_cast<std::uint16_t>(next_global_id_ >> 32 & 0xFFF);
  node->internal_mark = 0;
  node->internal_in_table = 1;
  node->visit_value = 0;
  ++next_global_id_;
  return slot;
}

inline bdd_edge unique_table::find_or_make(int var_id, bdd_edge then_edge, bdd_edge else_edge) {
  const key k = key_of(var_id, then_edge, else_edge);
  if (then_edge.slot() != last_made_ && else_edge.slot() != last_made_) {
    if (const std::uint64_t* entry = find(k)) {
      const auto slot = static_cast<std::uint32_t>(*entry);
      at(slot)->inc_nbrefs();
      return bdd_edge(slot, false);
    }
  }
  KIVA_CHECK(1, !then_edge.complemented() && then_edge.code() != else_edge.code());
  KIVA_CHECK(2, then_edge.slot() < slots_used_ && else_edge.slot() < slots_used_);
  KIVA_CHECK(3, find(k) == nullptr);
  last_made_ = make(k);
  node(then_edge)->inc_nbrefs();
  node(else_edge)->inc_nbrefs();
  enter(k, last_made_);
  return bdd_edge(last_made_, false);
}

}  // namespace kiva
