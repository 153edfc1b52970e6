#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "bdd/bddpp.h"

namespace kiva {

/// One line of a file's node table.
class parsed_nodes_class {
 public:
  parsed_nodes_class(long var, long then_id, long else_id, long link, int line)
      : internal_var_id(var),
        internal_then_id(then_id),
        internal_else_id(else_id),
        internal_else_link(link),
        line_(line) {}
  /// Variable number; -1 for the constant one.
  long var_id() const { return internal_var_id; }
  /// Node numbers of the children.
  long then_id() const { return internal_then_id; }
  long else_id() const { return internal_else_id; }
  long else_link_type() const { return internal_else_link; }
  /// Null until the node is built.
  bdd_node* built() const { return internal_bdd_node; }
  int line() const { return line_; }

 private:
  friend class parsed_nodes_table;
  enum class Progress : unsigned char { untouched, open, done };

  long internal_var_id;
  long internal_then_id;
  long internal_else_id;
  long internal_else_link;
  bdd_node* internal_bdd_node = nullptr;
  int line_;
  Progress progress_ = Progress::untouched;
};

/// The node table of a file, by node number. It grows with the lines read, whatever numbers they
/// bear.
class parsed_nodes_table {
 public:
  /// A line of a number already there replaces it.
  void enter(long node_id, const parsed_nodes_class& node);
  /// Null when no line has that number.
  parsed_nodes_class* find(long node_id);

  /// Builds the node of that number and all that it needs, each table entry once. Null when that
  /// cannot be: then `problem` says why and `line` is the line of the node at fault (0 when it is
  /// the caller's number that has no line).
  bdd_node* build(bddpp_manager* manager, long node_id, std::string& problem, int& line);

 private:
  [[nodiscard]] bool check(bddpp_manager* manager, long node_id, const parsed_nodes_class& node,
                           std::string& problem);
  /// What a node stands for, its children being built.
  bdd choice_of(bddpp_manager* manager, const parsed_nodes_class& node);

  std::vector<parsed_nodes_class> nodes_;
  std::unordered_map<long, size_t> sparse_;  ///< numbers that are not their line's position
};

}  // namespace kiva
