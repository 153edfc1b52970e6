#pragma once

#include <functional>
#include <iosfwd>
#include <list>
#include <string>

#include "bdd/node_code.h"
#include "pert_exp/Bddexpression.h"

namespace kiva {

/// The texts of an assignment that follows the lines of its diagram:
///
///   copy:      left(index) assign read(variable) end
///   function:  left(index) assign ENTRY end, or left(index) assign not_text ENTRY end
///
/// where ENTRY is that of the diagram's top node.
struct equation_code_texts {
  node_code_texts nodes;
  std::function<std::string(long index)> left;
  std::function<std::string(long index)> read;
  std::string assign = "= ";
  std::string not_text = "!";
  std::string end = ";";
};

/// Writes the nodes of f that bear no mark yet, and the assignment of f to the variable at `index`.
void put_equation_code(std::ostream& out, const equation_code_texts& texts, long index,
                       const bdd& f);

/// Whether the text of f is a copy of a variable.
bool is_copy(const bdd& f);

/// What stands in a document for a definition that is missing.
void put_undefined_doc(std::ostream& out, const std::string& name);

}  // namespace kiva
