#pragma once

#include <functional>
#include <string>

#include "bdd/bdd_node.h"

namespace kiva {

/// The texts of straight-line code that computes a diagram into a table of nodes. A line is
///
///   constant:  constant_start ENTRY assign constant line_end
///   variable:  line_start ENTRY assign NAME line_end
///   node:      line_start ENTRY assign first_open NAME and_text ENTRY first_close or_text
///              second_open not_open NAME not_close and_text ENTRY second_close line_end
///
/// where ENTRY is table, entry_open, the node's number, entry_close, NAME is var_prefix, the
/// variable, var_suffix, and the last entry stands between not_open and not_close on a complemented
/// edge.
struct node_code_texts {
  std::string line_start = "  ";
  std::string constant_start = "   ";
  std::string table = {};
  std::string entry_open = "[";
  std::string entry_close = "]";
  std::string assign = "= ";
  std::string or_text = {};
  std::string and_text = {};
  std::string not_open = {};
  std::string not_close = {};
  std::string first_open = {};
  std::string first_close = {};
  std::string second_open = {};
  std::string second_close = {};
  std::string var_prefix = {};
  std::string var_suffix = {};
  std::string constant = {};  ///< true in the target
  std::string line_end = ";";
  /// The number of a node's entry; its global id where this is empty.
  std::function<long(const bdd_node*)> number = {};
  /// The variable at an index; its name where this is empty.
  std::function<std::string(long index)> name = {};
};

/// Calls put(node) for each unmarked node from `root` (null for none) down, children before it,
/// then side first, and marks it. A variable and the constant come without what is below them.
void for_each_from_below(bdd_node* root, const std::function<void(const bdd_node&)>& put);

}  // namespace kiva
