#pragma once

#include <array>
#include <initializer_list>
#include <vector>

#include "bdd/bddpp.h"
#include "bdd/call_table.h"

namespace kiva {

/// Memory that the recursions of a manager use again from call to call.
struct call_memory {
  /// An operator that rebuilds with ite runs the recursion of the or inside its own.
  static constexpr int max_nested = 2;
  std::array<call_table, max_nested> tables;
  int tables_in_use = 0;
  std::vector<std::uint32_t> variable_stamps;  ///< by id, for walks that collect variables
  std::uint32_t last_stamp = 0;
  std::vector<int> literals;  ///< by index; all 2 between calls
};

/// The way of the package's own recursions into a manager. Made for one call: it does not see
/// variables that come later.
class bdd_internals {
 public:
  explicit bdd_internals(bddpp_manager* manager)
      : manager_(manager),
        nodes_(&manager->internal_unique_table),
        index_of_id_(manager->internal_idtoindex_table.data()) {}

  bddpp_manager* manager() const { return manager_; }
  call_memory& memory() const { return *manager_->internal_call_memory; }

  static constexpr bdd_edge one() { return bdd_edge(unique_table::constant_slot, false); }
  static bool is_constant(bdd_edge f) { return f.slot() == unique_table::constant_slot; }
  bdd_node* node(bdd_edge f) const { return nodes_->node(f); }

  // Of a node that is not the constant.
  int var_id(bdd_edge f) const { return node(f)->internal_var_id; }
  int index(bdd_edge f) const { return index_of_id_[var_id(f)]; }
  bdd_edge then_of(bdd_edge f) const {
    return bdd_edge::of_code(node(f)->internal_then_code).flipped_if(f.complemented());
  }
  bdd_edge else_of(bdd_edge f) const {
    return bdd_edge::of_code(node(f)->internal_else_code).flipped_if(f.complemented());
  }

  bdd_edge variable(int var_id) const {
    return bdd_edge(manager_->internal_variables_table[var_id]->slot(), false);
  }
  /// If the variable then `then_edge` else `else_edge`; both test later variables only.
  bdd_edge make(int var_id, bdd_edge then_edge, bdd_edge else_edge) const {
    if (then_edge == else_edge) return then_edge;
    const bool flip = then_edge.complemented();
    if (is_constant(then_edge) && is_constant(else_edge)) return variable(var_id).flipped_if(flip);
    return nodes_->find_or_make(var_id, then_edge.regular(), else_edge.flipped_if(flip))
        .flipped_if(flip);
  }
  bdd_edge disjoin(bdd_edge f, bdd_edge g) const;
  bdd_edge conjoin(bdd_edge f, bdd_edge g) const;
  /// As the operator on handles: the or of two ands.
  bdd_edge ite(bdd_edge f, bdd_edge g, bdd_edge h) const {
    const bdd_edge positive = conjoin(f, g);
    return disjoin(positive, conjoin(!f, h));
  }

  static bdd_edge edge_of(int link, const bdd_node* node) {
    return bdd_edge(node->slot(), link != 1);
  }
  static bdd_edge edge_of(const bdd& f) { return edge_of(f.link_type(), f.node()); }
  bdd handle(bdd_edge f) const { return bdd(manager_, f.link(), node(f)); }
  /// A result of the operators on nodes: its polarity by reference, its node with one more count.
  bdd_node* returned(bdd_edge f, int& link) const {
    link = f.link();
    node(f)->inc_nbrefs();
    return node(f);
  }

  /// Ends the process unless all nodes are of this manager.
  static void require_own(const bddpp_manager* manager, const char* operation,
                          std::initializer_list<const bdd_node*> nodes);
  /// A stamp that no node and no variable of the manager carries.
  std::uint32_t new_stamp() const;

 private:
  bddpp_manager* manager_;
  unique_table* nodes_;
  const int* index_of_id_;
};

/// Borrows one of the manager's tables for the length of a call.
class table_lease {
 public:
  explicit table_lease(call_memory& memory) : memory_(memory) {}
  ~table_lease() {
    if (table_ != nullptr) --memory_.tables_in_use;
  }
  table_lease(const table_lease&) = delete;
  table_lease& operator=(const table_lease&) = delete;

  /// Null before start().
  call_table* table() const { return table_; }
  void start() {
    table_ = &memory_.tables.at(memory_.tables_in_use++);
    table_->begin();
  }

 private:
  call_memory& memory_;
  call_table* table_ = nullptr;
};

}  // namespace kiva
