#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>

#include "base/g_longlong.h"
#include "base/index_set.h"
#include "bdd/bdd.h"

namespace kiva {

struct node_page;

/// One decision node. Nodes are made by `bddpp_manager::Find_or_create_bdd_node` and by the
/// operations that make variables, and by nothing else.
///
/// A variable has an id (its number of creation, which never changes) and an index (its place in
/// the order); nodes hold the id, recursions compare indices.
///
/// Half a cache line: the manager, the children's addresses and the node's own number are found
/// through the page that it stands in.
class alignas(32) bdd_node {
 public:
  bdd_node() = default;
  bdd_node(const bdd_node&) = delete;
  bdd_node& operator=(const bdd_node&) = delete;

  /// Null for a node that no manager has made.
  inline bddpp_manager* my_manager() const;
  /// The printed key: 12 bits of variable id, 20 bits of each child's global id, 1 bit of else
  /// polarity, from the top. Distinct nodes may share it beyond those sizes; the unique table
  /// itself compares whole triples.
  g_longlong signature() const;
  /// Place of the tested variable in the order; -1 on the constant, -3 without manager.
  inline long var_index() const;
  /// Identifier of the tested variable; -1 on the constant.
  long var_id() const { return internal_var_id; }
  /// Ids of all variables in the diagram, found by a walk; empty on the constant.
  index_set var_id_dep() const;
  /// Whether variable `id` occurs in the diagram.
  bool var_id_dep(long id) const;
  /// Number given by the last numbering traversal.
  long local_id() const { return internal_local_id; }
  void local_id(long id) { internal_local_id = static_cast<int>(id); }
  /// Number of creation in this manager; the constant is 1.
  long global_id() const {
    return static_cast<long>(std::uint64_t{internal_global_high} << 32 | internal_global_low);
  }
  /// Polarity of the else edge, +1 or -1; +1 on the constant.
  int else_link_type() const { return (internal_else_code & 1) != 0 ? -1 : 1; }
  bdd_node* then_node() const { return child(internal_then_code); }
  bdd_node* else_node() const { return child(internal_else_code); }

  void clear_mark() { internal_mark = 0; }
  void mark() { internal_mark = 1; }
  bool is_marked() const { return internal_mark != 0; }

  /// Reference counts are upper bounds and stop at INT_MAX.
  void inc_nbrefs() {
    if (internal_nb_refs != INT_MAX) ++internal_nb_refs;
  }
  void dec_nbrefs() {
    if (internal_nb_refs != INT_MAX) --internal_nb_refs;
  }
  int nbrefs() const { return internal_nb_refs; }
  /// Whether a handle has this node: unlike the references, handles are counted exactly. What has
  /// had 65,535 at one time counts as held for ever.
  bool held_by_handle() const { return internal_handles != 0; }

  /// Whether this node is the node of one variable alone.
  bool is_var(bdd_node* one) const {
    return then_node() == one && else_node() == one && else_link_type() == -1;
  }
  /// Whether this node and all below it obey the canonical form.
  bool is_correct() const;
  /// Sets used[global id] to 1 for each unmarked node from here down, and marks it.
  void Lustre_writing_node_used(int* used, bdd_node* one);

 private:
  friend class bdd;
  friend class bddpp_manager;
  friend class unique_table;
  friend class bdd_internals;
  friend class node_walk;
  friend class ternary_evaluation;

  static constexpr std::uint16_t most_handles = 0xFFFF;
  static constexpr int no_manager = -3;

  inline const node_page& page() const;
  /// Place in the memory of the manager.
  inline std::uint32_t slot() const;
  inline bdd_node* child(std::uint32_t code) const;

  void inc_handles() {
    inc_nbrefs();
    if (internal_handles != most_handles) ++internal_handles;
  }
  void dec_handles() {
    dec_nbrefs();
    if (internal_handles != most_handles) --internal_handles;
  }

  // The children as edges of their manager: slots, the else edge with its polarity.
  std::uint32_t internal_then_code = 0;
  std::uint32_t internal_else_code = 0;
  int internal_var_id = no_manager;
  int internal_local_id = 0;
  int internal_nb_refs = 0;
  /// Stamp of the last internal walk that saw this node, and below what that walk found there.
  mutable std::uint32_t visit_stamp = 0;
  std::uint32_t internal_global_low = 0;
  std::uint16_t internal_handles = 0;
  std::uint16_t internal_global_high : 12 = 0;
  std::uint16_t internal_mark : 1 = 0;
  std::uint16_t internal_in_table : 1 = 0;
  mutable std::uint16_t visit_value : 2 = 0;
};
static_assert(sizeof(bdd_node) == 32, "two nodes in a cache line");

/// What stands in the first place of each page of nodes. A page lies at a multiple of its size.
struct alignas(32) node_page {
  static constexpr int bits = 16;
  /// Of a page; the first place has no node.
  static constexpr std::uint32_t places = 1u << bits;
  static constexpr std::size_t bytes = places * sizeof(bdd_node);

  bddpp_manager* manager;
  /// The list of the manager's pages, which grows and moves.
  node_page** const* pages;
  std::uint32_t first_slot;

  bdd_node* at(std::uint32_t place) { return reinterpret_cast<bdd_node*>(this) + place; }
};
static_assert(sizeof(node_page) == sizeof(bdd_node));

inline const node_page& bdd_node::page() const {
  return *reinterpret_cast<const node_page*>(reinterpret_cast<std::uintptr_t>(this) &
                                             ~std::uintptr_t{node_page::bytes - 1});
}
inline bddpp_manager* bdd_node::my_manager() const {
  return internal_var_id == no_manager ? nullptr : page().manager;
}
inline std::uint32_t bdd_node::slot() const {
  const std::uintptr_t offset = reinterpret_cast<std::uintptr_t>(this) & (node_page::bytes - 1);
  return page().first_slot + static_cast<std::uint32_t>(offset / sizeof(bdd_node));
}
inline bdd_node* bdd_node::child(std::uint32_t code) const {
  if (internal_var_id < 0) return nullptr;
  const std::uint32_t place = code >> 1;
  return (*page().pages)[place >> node_page::bits]->at(place & (node_page::places - 1));
}

inline bdd::bdd(bddpp_manager* manager, int link_type, bdd_node* node)
    : internal_manager_ref(manager), internal_link_type(link_type), internal_bdd_node(node) {
  if (node != nullptr) node->inc_handles();
}
inline bdd::bdd(const bdd& other)
    : bdd(other.internal_manager_ref, other.internal_link_type, other.internal_bdd_node) {}
inline bdd::bdd(bdd&& other) noexcept
    : internal_manager_ref(other.internal_manager_ref),
      internal_link_type(other.internal_link_type),
      internal_bdd_node(other.internal_bdd_node) {
  other.internal_manager_ref = nullptr;
  other.internal_link_type = 0;
  other.internal_bdd_node = nullptr;
}
// A handle of the same node returns before any count changes.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
inline bdd& bdd::operator=(const bdd& other) {
  internal_manager_ref = other.internal_manager_ref;
  internal_link_type = other.internal_link_type;
  if (internal_bdd_node == other.internal_bdd_node) return *this;
  if (internal_bdd_node != nullptr) internal_bdd_node->dec_handles();
  internal_bdd_node = other.internal_bdd_node;
  if (internal_bdd_node != nullptr) internal_bdd_node->inc_handles();
  return *this;
}
inline bdd& bdd::operator=(bdd&& other) noexcept {
  if (this == &other) return *this;
  if (internal_bdd_node != nullptr) internal_bdd_node->dec_handles();
  internal_manager_ref = other.internal_manager_ref;
  internal_link_type = other.internal_link_type;
  internal_bdd_node = other.internal_bdd_node;
  other.internal_manager_ref = nullptr;
  other.internal_link_type = 0;
  other.internal_bdd_node = nullptr;
  return *this;
}
inline bdd::~bdd() {
  if (internal_bdd_node != nullptr) internal_bdd_node->dec_handles();
}

}  // namespace kiva
