// The manager's nodes: making, numbering, marking, checking, freeing.

#include <algorithm>
#include <iostream>

#include "base/process_end.h"
#include "bdd/bddpp.h"
#include "bdd/walk.h"

namespace kiva {

std::string Bdd_version() {
  return "4.1";
}

bddpp_manager::bddpp_manager()
    : internal_unique_table(this), internal_call_memory(std::make_unique<call_memory>()) {
  internal_bdd_node_one = internal_unique_table.make_constant();
}

bddpp_manager::bddpp_manager(const bddpp_manager* other) : bddpp_manager() {
  if (other == nullptr) return;
  internal_bdd_vars = other->internal_bdd_vars;
  internal_max_bdd_vars = other->internal_max_bdd_vars;
  internal_names_table = other->internal_names_table;
  internal_first_names = other->internal_first_names;
  internal_idtoindex_table = other->internal_idtoindex_table;
  internal_indextoid_table = other->internal_indextoid_table;
  for (long id = 0; id < internal_bdd_vars; ++id) {
    internal_variables_table.push_back(internal_unique_table.make_variable(static_cast<int>(id)));
  }
  internal_assoc_var_table = internal_variables_table;
}

bddpp_manager::~bddpp_manager() = default;

bdd_node* bddpp_manager::Find_or_create_bdd_node(long index, int then_link, int else_link,
                                                 bdd_node* then_node, bdd_node* else_node,
                                                 int& link) {
  link *= then_link;
  if (index == -1) return internal_bdd_node_one;
  if (index < 0 || index >= internal_bdd_vars || then_node == nullptr || else_node == nullptr ||
      then_node->my_manager() != this || else_node->my_manager() != this)
    return nullptr;
  const long id = internal_indextoid_table[index];
  const int stored_link = then_link * else_link;
  if (then_node == internal_bdd_node_one && else_node == internal_bdd_node_one)
    return stored_link == 1 ? internal_bdd_node_one : internal_variables_table[id];
  for (const bdd_node* child : {then_node, else_node}) {
    if (child == internal_bdd_node_one || index < child->var_index()) continue;
    std::cerr << "FATAL ERROR: Bad call of bddpp_manager::Find_or_create_bdd_node():\n  index "
              << index << " is not less than and "
              << (child == then_node ? " its then node index (" : " its else node index (")
              << child->var_index() << ")\n";
    return nullptr;
  }
  const bdd_edge made =
      internal_unique_table.find_or_make(static_cast<int>(id), bdd_internals::edge_of(1, then_node),
                                         bdd_internals::edge_of(stored_link, else_node));
  return internal_unique_table.node(made);
}

void bddpp_manager::Map_integrate(bdd_node* node) {
  if (node->my_manager() == this && node->internal_var_id >= 0)
    internal_unique_table.integrate(node);
}

void bddpp_manager::Map_suppress(bdd_node* node) {
  if (node->my_manager() == this && node->internal_var_id >= 0)
    internal_unique_table.suppress(node);
}

std::vector<bdd_node*> bddpp_manager::internal_bdd_node_map() const {
  return internal_unique_table.listing();
}

void bddpp_manager::Bdd_clear_marks(bdd_node* node) {
  if (node == nullptr) return;
  node_walk(node->my_manager()).from(node, [](bdd_node* seen) {
    seen->clear_mark();
    return true;
  });
}

void bddpp_manager::Bdd_global_clear_marks() {
  internal_bdd_node_one->clear_mark();
  internal_unique_table.for_each([](bdd_node* node) { node->clear_mark(); });
}

long bddpp_manager::Bdd_incremental_id(bdd_node* node, long start) {
  if (node == nullptr) {
    std::cerr << "Warning: call bddpp_manager::Bdd_incremental_id() with null reference!\n";
    return start;
  }
  std::vector<bdd_node*> open;
  for (;;) {
    if (!node->is_marked()) {
      node->mark();
      node->local_id(start++);
      if (node != internal_bdd_node_one) {
        open.push_back(node->else_node());
        node = node->then_node();
        continue;
      }
    }
    if (open.empty()) return start;
    node = open.back();
    open.pop_back();
  }
}

long bddpp_manager::Bdd_node_size(bdd_node* node) {
  Bdd_clear_marks(node);
  return Bdd_incremental_id(node, 0);
}

int bddpp_manager::Bdd_is_correct(const bdd& f) {
  if (f.node() == nullptr) {
    std::cerr << "Warning: call  bddpp_manager::Bdd_is_correct() with a null reference!\n";
    return 0;
  }
  Bdd_clear_marks(f);
  Bdd_incremental_id(f.node(), 1);
  return f.node()->is_correct() ? 1 : 0;
}

void bddpp_manager::Bdd_gc() {
  std::vector<bdd_node*> dead;
  internal_unique_table.for_each([&](bdd_node* node) {
    if (node->nbrefs() <= 0 && node != internal_variables_table[node->internal_var_id])
      dead.push_back(node);
  });
  for (bdd_node* node : dead) internal_unique_table.destroy(node);
}

long bddpp_manager::collect_unheld() {
  node_walk held(this);
  const auto hold = [&](bdd_node* node) { held.from(node, [](const bdd_node*) { return true; }); };
  hold(internal_bdd_node_one);
  for (bdd_node* node : internal_variables_table) hold(node);
  for (bdd_node* node : internal_assoc_var_table) hold(node);
  internal_unique_table.for_each_made([&](bdd_node* node) {
    const bool taken_out = node->internal_in_table == 0 && node->internal_var_id >= 0;
    if (node->held_by_handle() || taken_out) hold(node);
  });
  const long gone = internal_unique_table.sweep(held.stamp());
  collected_ += gone;
  left_collecting_ = Bdd_kept_size();
  return gone;
}

void bddpp_manager::collect_when_doubled() {
  constexpr long least = 500'000;
  if (Bdd_kept_size() >= std::max(least, 2 * left_collecting_)) collect_unheld();
}

void bddpp_manager::Bdd_free(const bdd&) {
  std::cerr << "bddpp_manager::Bdd_free() is now became useless\n";
}

bdd bddpp_manager::Bdd_dup(const bdd& f) {
  std::cerr << "Warning: bddpp_manager::Bdd_dup() is became useless ...\n";
  return f;
}

void bddpp_manager::Bdd_var_reorder() {
  std::cerr << "bddpp_manager::Bdd_var_reorder(void) A FAIRE\n";
}

bdd bddpp_manager::Bdd_swap_vars(const bdd&, const bdd&, const bdd&) {
  std::cerr << "bddpp_manager::Bdd_swap_vars(bdd f) A FAIRE\n";
  return Bdd_zero();
}

void bdd_internals::require_own(const bddpp_manager* manager, const char* operation,
                                std::initializer_list<const bdd_node*> nodes) {
  for (const bdd_node* node : nodes) {
    if (node->my_manager() == manager) continue;
    std::cerr << "ERROR: call bddpp_manager::" << operation << "() with a bdd of another manager\n";
    end_process();
  }
}

std::uint32_t bdd_internals::new_stamp() const {
  std::uint32_t& last = memory().last_stamp;
  if (++last != 0) return last;
  nodes_->for_each_made([](bdd_node* node) { node->visit_stamp = 0; });
  for (std::uint32_t& stamp : memory().variable_stamps) stamp = 0;
  return last = 1;
}

}  // namespace kiva
