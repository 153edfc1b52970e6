#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "bdd/bdd_node.h"

namespace kiva {

/// The nodes of one manager: their memory, and the hash over (variable id, then, else, polarity)
/// that keeps them unique.
///
/// A node stands in a slot, numbered from 0 in the order of creation; a destroyed node's slot is
/// used again. Slots lie in chunks, each as large as all before it, so that a node never moves.
class unique_table {
 public:
  explicit unique_table(bddpp_manager* manager);
  ~unique_table();
  unique_table(const unique_table&) = delete;
  unique_table& operator=(const unique_table&) = delete;

  /// The terminal node; it is in no bucket. To be called once, first.
  bdd_node* make_constant();
  /// The node of a new variable; the caller knows that there is none.
  bdd_node* make_variable(int var_id, bdd_node* one);
  /// The node (variable, then, else with polarity), found or made; one more reference in the first
  /// case, one more for each child in the second.
  bdd_node* find_or_make(int var_id, bool else_complemented, bdd_node* then_node,
                         bdd_node* else_node);

  /// Enters the node; one of the same key leaves the table.
  void integrate(bdd_node* node);
  /// Whatever node has the key of `node` leaves the table.
  void suppress(const bdd_node* node);
  /// The node leaves the table and its slot is free.
  void destroy(bdd_node* node);

  long next_global_id() const { return next_global_id_; }
  /// Number of slots ever used; some may be free.
  std::size_t slots() const { return slots_used_; }
  bdd_node* at(std::uint32_t slot) const {
    const int chunk = std::bit_width(slot >> first_chunk_bits);
    return chunks_[chunk] + (slot - chunk_start(chunk));
  }
  static std::uint32_t slot_of(const bdd_node* node) { return node->internal_slot; }

  /// Calls visit(node) for each node of the table, in the order of slots.
  template <class Visit>
  void for_each(Visit visit) const {
    for (std::uint32_t slot = 0; slot < slots_used_; ++slot) {
      bdd_node* node = at(slot);
      if (node->internal_in_table) visit(node);
    }
  }
  /// All nodes of the table in key order.
  std::vector<bdd_node*> listing() const;

 private:
  static constexpr int first_chunk_bits = 8;
  static std::uint32_t chunk_start(int chunk) {
    return chunk == 0 ? 0 : std::uint32_t{1} << (first_chunk_bits + chunk - 1);
  }
  static std::size_t chunk_size(int chunk) {
    return std::size_t{1} << (first_chunk_bits + (chunk == 0 ? 0 : chunk - 1));
  }
  std::size_t bucket_of(int var_id, bool else_complemented, const bdd_node* then_node,
                        const bdd_node* else_node) const {
    const std::uint64_t then_bits = reinterpret_cast<std::uintptr_t>(then_node) >> 6;
    const std::uint64_t else_bits =
        reinterpret_cast<std::uintptr_t>(else_node) >> 5 | (else_complemented ? 1 : 0);
    const std::uint64_t mixed = then_bits * 0x9E3779B97F4A7C15u + else_bits * 0xC2B2AE3D27D4EB4Fu +
                                static_cast<std::uint64_t>(var_id) * 0xD6E8FEB86659FD93u;
    return mixed >> bucket_shift_;
  }
  std::size_t bucket_of(const bdd_node* node) const {
    return bucket_of(node->internal_var_id, node->internal_else_link_type < 0, node->internal_then,
                     node->internal_else);
  }
  bdd_node* make(int var_id, bool else_complemented, bdd_node* then_node, bdd_node* else_node);
  bdd_node* take_slot();
  void add_chunk();
  void link_in(bdd_node* node, std::size_t bucket);
  void grow();

  bddpp_manager* manager_;
  std::vector<bdd_node*> chunks_;
  bdd_node* unused_ = nullptr;  ///< first node of the last chunk that was never used
  bdd_node* chunk_end_ = nullptr;
  bdd_node* free_ = nullptr;  ///< destroyed nodes, through internal_next
  std::uint32_t slots_used_ = 0;
  std::vector<bdd_node*> buckets_;
  int bucket_shift_;
  std::size_t in_table_ = 0;
  long next_global_id_ = 1;
  /// The node made last. Nothing can have it as a child yet, so that a node above it is new.
  const bdd_node* last_made_ = nullptr;
};

inline void unique_table::link_in(bdd_node* node, std::size_t bucket) {
  node->internal_next = buckets_[bucket];
  buckets_[bucket] = node;
  node->internal_in_table = true;
  if (++in_table_ > buckets_.size()) grow();
}

inline bdd_node* unique_table::take_slot() {
  if (free_ != nullptr) {
    bdd_node* node = free_;
    free_ = node->internal_next;
    return node;
  }
  if (unused_ == chunk_end_) add_chunk();
  unused_->internal_slot = slots_used_++;
  return unused_++;
}

inline bdd_node* unique_table::make(int var_id, bool else_complemented, bdd_node* then_node,
                                    bdd_node* else_node) {
  bdd_node* node = take_slot();
  node->internal_manager_ref = manager_;
  node->internal_then = then_node;
  node->internal_else = else_node;
  node->internal_global_id = next_global_id_++;
  node->internal_local_id = 0;
  node->internal_var_id = var_id;
  node->internal_nb_refs = 1;
  node->internal_else_link_type = else_complemented ? -1 : 1;
  node->internal_mark = 0;
  node->visit_stamp = 0;
  return node;
}

inline bdd_node* unique_table::find_or_make(int var_id, bool else_complemented, bdd_node* then_node,
                                            bdd_node* else_node) {
  const std::size_t bucket = bucket_of(var_id, else_complemented, then_node, else_node);
  if (then_node != last_made_ && else_node != last_made_) {
    const int else_link = else_complemented ? -1 : 1;
    for (bdd_node* node = buckets_[bucket]; node != nullptr; node = node->internal_next) {
      if (node->internal_then == then_node && node->internal_else == else_node &&
          node->internal_var_id == var_id && node->internal_else_link_type == else_link) {
        node->inc_nbrefs();
        return node;
      }
    }
  }
  bdd_node* node = make(var_id, else_complemented, then_node, else_node);
  last_made_ = node;
  then_node->inc_nbrefs();
  else_node->inc_nbrefs();
  link_in(node, bucket);
  return node;
}

}  // namespace kiva
