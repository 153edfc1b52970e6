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

/// The same as BLIF tables, where `left` and `read` name the two variables.
void put_blif_equation(std::ostream& out, const equation_code_texts& texts, long index,
                       const bdd& f);

/// Whether the text of f is a copy of a variable.
bool is_copy(const bdd& f);

/// The texts of C as they were given: outputs are assigned through pointers, and read plainly.
equation_code_texts c_equation_texts(bddpp_manager* manager, const std::string& array,
                                     const std::list<std::string>& outputs,
                                     const std::string& prefix, const std::string& suffix);

/// Those of SMV, with nodes as definitions named "node_" and a number.
equation_code_texts smv_equation_texts(bddpp_manager* manager);

/// Those of Lustre, with nodes as elements of an array, or as variables named array, "_", a number.
equation_code_texts lustre_equation_texts(bddpp_manager* manager, const std::string& array);
equation_code_texts lustre_arrayless_texts(bddpp_manager* manager, const std::string& array);

/// The emission of a signal in Esterel under a condition.
void put_esterel_emission(std::ostream& out, const std::string& signal,
                          const std::string& condition);

/// Those of C#: no output is a pointer.
equation_code_texts csharp_equation_texts(bddpp_manager* manager, const std::string& array);

/// Those of a document, with nodes named `prefix`, "_" and a number.
equation_code_texts doc_equation_texts(bddpp_manager* manager, const std::string& prefix);
/// The definition of a variable in a document; a constant is a word.
void put_doc_equation(std::ostream& out, const equation_code_texts& texts, long index,
                      const bdd& f);
/// What stands in a document for a definition that is missing.
void put_undefined_doc(std::ostream& out, const std::string& name);

/// The assignment of an explicit automaton's context, a sum of products over its elements, which
/// stand in brackets if wanted.
void put_wren_equation(std::ostream& out, const std::string& array, long index, const bdd& f,
                       bool brackets = false);

}  // namespace kiva
