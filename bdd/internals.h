#pragma once

#include <array>
#include <initializer_list>
#include <vector>

#include "bdd/bddpp.h"
#include "bdd/call_table.h"
#include "bdd/edge.h"

namespace kiva {

/// Memory that the recursions of a manager use again from call to call.
struct call_memory {
  static constexpr int max_nested = 2;
  std::array<call_table, max_nested> tables;
  int tables_in_use = 0;
  std::vector<std::uint32_t> variable_stamps;  ///< by id, for walks that collect variables
  std::uint32_t last_stamp = 0;
  std::vector<int> literals;  ///< by index; all 2 between calls
};

/// The way of the package's own recursions into a manager.
class bdd_internals {
 public:
  explicit bdd_internals(bddpp_manager* manager)
      : manager_(manager),
        nodes_(&manager->internal_unique_table),
        index_of_id_(manager->internal_idtoindex_table.data()),
        one_(manager->internal_bdd_node_one) {}

  bddpp_manager* manager() const { return manager_; }
  call_memory& memory() const { return *manager_->internal_call_memory; }
  bdd_edge one() const { return bdd_edge(one_, 1); }
  bool is_constant(bdd_edge f) const { return f.node() == one_; }

  /// Of a node that is not the constant.
  int index(bdd_edge f) const { return index_of_id_[f.node()->var_id()]; }
  bdd_edge then_of(bdd_edge f) const {
    return bdd_edge(f.node()->then_node(), 1).flipped_if(f.complemented());
  }
  bdd_edge else_of(bdd_edge f) const {
    return bdd_edge(f.node()->else_node(), f.node()->else_link_type()).flipped_if(f.complemented());
  }
  /// If the variable then `then_edge` else `else_edge`; both test later variables only.
  bdd_edge make(int var_id, bdd_edge then_edge, bdd_edge else_edge) const {
    if (then_edge == else_edge) return then_edge;
    const bool complemented = then_edge.complemented();
    bdd_node* then_node = then_edge.node();
    bdd_node* else_node = else_edge.node();
    if (then_node == one_ && else_node == one_)
      return bdd_edge(manager_->internal_variables_table[var_id], 1).flipped_if(complemented);
    return bdd_edge(nodes_->find_or_make(var_id, else_edge.complemented() != complemented,
                                         then_node, else_node),
                    1)
        .flipped_if(complemented);
  }

  /// 32 bits that stand for the edge in a table.
  std::uint32_t code(bdd_edge f) const {
    return unique_table::slot_of(f.node()) << 1 | (f.complemented() ? 1 : 0);
  }
  bdd_edge edge(std::uint32_t code) const {
    return bdd_edge(nodes_->at(code >> 1), 1).flipped_if((code & 1) != 0);
  }

  bdd_edge disjoin(bdd_edge f, bdd_edge g) const;
  bdd_edge conjoin(bdd_edge f, bdd_edge g) const;
  /// As the operator on handles: the or of two ands.
  bdd_edge ite(bdd_edge f, bdd_edge g, bdd_edge h) const {
    const bdd_edge positive = conjoin(f, g);
    return disjoin(positive, conjoin(!f, h));
  }
  bdd_edge variable(int var_id) const {
    return bdd_edge(manager_->internal_variables_table[var_id], 1);
  }
  bdd handle(bdd_edge f) const { return bdd(manager_, f.link(), f.node()); }
  static bdd_edge edge_of(const bdd& f) { return bdd_edge(f.node(), f.link_type()); }
  /// Ends the process unless all nodes are of this manager.
  static void require_own(const bddpp_manager* manager, const char* operation,
                          std::initializer_list<const bdd_node*> nodes);
  /// A stamp that no node and no variable of the manager carries.
  std::uint32_t new_stamp() const;

 private:
  bddpp_manager* manager_;
  unique_table* nodes_;
  const int* index_of_id_;
  bdd_node* one_;
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
