#pragma once

#include <climits>
#include <cstdint>

#include "base/g_longlong.h"
#include "base/index_set.h"
#include "bdd/bdd.h"

namespace kiva {

/// One decision node. Nodes are made by `bddpp_manager::Find_or_create_bdd_node` and by the
/// operations that make variables, and by nothing else.
///
/// A variable has an id (its number of creation, which never changes) and an index (its place in
/// the order); nodes hold the id, recursions compare indices.
class alignas(64) bdd_node {
 public:
  bddpp_manager* my_manager() const { return internal_manager_ref; }
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
  long global_id() const { return internal_global_id; }
  /// Polarity of the else edge, +1 or -1; +1 on the constant.
  int else_link_type() const { return internal_else_link_type; }
  bdd_node* then_node() const { return internal_then; }
  bdd_node* else_node() const { return internal_else; }

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

  /// Whether this node is the node of one variable alone.
  bool is_var(bdd_node* one) const {
    return internal_then == one && internal_else == one && internal_else_link_type == -1;
  }
  /// Whether this node and all below it obey the canonical form.
  bool is_correct() const;
  /// Sets used[global id] to 1 for each unmarked node from here down, and marks it.
  void Lustre_writing_node_used(int* used, bdd_node* one);

 private:
  friend class bddpp_manager;
  friend class unique_table;
  friend class bdd_internals;
  friend class node_walk;
  friend class ternary_evaluation;

  bddpp_manager* internal_manager_ref = nullptr;
  bdd_node* internal_then = nullptr;
  bdd_node* internal_else = nullptr;
  // The children as edges of their manager, the else edge with its polarity.
  std::uint32_t internal_then_code = 0;
  std::uint32_t internal_else_code = 0;
  long internal_global_id = 0;
  int internal_local_id = 0;
  int internal_var_id = -3;
  int internal_nb_refs = 0;
  std::uint32_t internal_slot = 0;  ///< place in the memory of the manager
  /// Stamp of the last internal walk that saw this node, and what that walk found there.
  mutable std::uint32_t visit_stamp = 0;
  mutable std::int8_t visit_value = 0;
  std::int8_t internal_else_link_type = 1;
  std::int8_t internal_mark = 0;
  bool internal_in_table = false;
};
static_assert(sizeof(bdd_node) == 64, "a node is one cache line");

inline bdd::bdd(bddpp_manager* manager, int link_type, bdd_node* node)
    : internal_manager_ref(manager), internal_link_type(link_type), internal_bdd_node(node) {
  if (node != nullptr) node->inc_nbrefs();
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
  if (internal_bdd_node != nullptr) internal_bdd_node->dec_nbrefs();
  internal_bdd_node = other.internal_bdd_node;
  if (internal_bdd_node != nullptr) internal_bdd_node->inc_nbrefs();
  return *this;
}
inline bdd& bdd::operator=(bdd&& other) noexcept {
  if (this == &other) return *this;
  if (internal_bdd_node != nullptr) internal_bdd_node->dec_nbrefs();
  internal_manager_ref = other.internal_manager_ref;
  internal_link_type = other.internal_link_type;
  internal_bdd_node = other.internal_bdd_node;
  other.internal_manager_ref = nullptr;
  other.internal_link_type = 0;
  other.internal_bdd_node = nullptr;
  return *this;
}
inline bdd::~bdd() {
  if (internal_bdd_node != nullptr) internal_bdd_node->dec_nbrefs();
}

}  // namespace kiva
