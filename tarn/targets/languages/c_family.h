#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "pert_exp/equation_code.h"
#include "tarn/targets/frame/data_text.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

/// What differs between the told and the working texts of these languages.
struct CFamilyRules {
  /// Outputs are read through their pointers.
  bool pointer_reads;
  /// Registers and constants are static, so that two modules link into one program.
  bool static_state;
  /// The operator Or is "||"; else the bitwise "|".
  bool logical_or;
  /// "true" and "false" are defined only where they are not.
  bool guarded_truth;
  /// Parameters that no equation reads are used up, and constants that no expression reads left
  /// out: compilers warn of them.
  bool no_leftovers;
};

constexpr CFamilyRules c_family_rules(bool working) {
  return {working, working, working, working, working};
}

/// The texts of equations as they were given: outputs are assigned through pointers, and read
/// plainly.
equation_code_texts c_equation_texts(bddpp_manager* manager, const std::string& array,
                                     const std::list<std::string>& outputs,
                                     const std::string& prefix, const std::string& suffix);

/// A parameter of the reaction: the bit of a rail, and behind it the value of its signal if that
/// carries one.
struct CParameter {
  long index;
  bool is_output;
  const Signal* valued;  ///< null for none
};
/// In the order of the function's head.
std::vector<CParameter> c_parameters(const TargetText& text);

/// The layout of the value of an output.
struct ValuedOutputTexts {
  const char *open_if, *open, *first, *other, *otherwise, *close;
  const char* test = "  if (";
};

/// In what a language differs from C within the reaction.
struct CFamilyStyle {
  bool plain_outputs = false;  ///< outputs are variables, not pointers
  const char* margin = "";     ///< in front of each line of an equation
  const char* truth = "!0";
  const char* operation = "DataExpr::C_opname";  ///< that refuses an operator
};

/// What the texts of C and of its kin have in common: inputs are passed by value, outputs through
/// pointers, a value beside each valued signal.
class CFamilyText {
 public:
  /// Pointers are the outputs, or the names of `pointers` where it is not null.
  CFamilyText(const TargetText& text, std::string array,
              const std::list<std::string>* pointers = nullptr, const CFamilyStyle& style = {});

  /// The variable where it is read: an output through its pointer.
  std::string read(long index) const;
  std::string read_value(const Signal* signal) const;
  const DataTexts& data() const { return data_; }
  /// An expression over data.
  std::string expression(const DataBinding& binding) const;

  /// The definitions of true and false.
  void put_truth(std::ostream& body) const;
  /// The types' zeros and methods to the header, constants to the body or the header.
  void put_data_declarations(std::ostream& body, std::ostream& header) const;
  /// The names of the state, as a list in a declaration.
  void put_state_names(std::ostream& out, bool with_first_values = false) const;
  /// The function that gives the state its initial values.
  void put_reset_function(std::ostream& body, std::ostream& header) const;
  /// The reaction's head, up to its "{".
  void put_reaction_head(std::ostream& body, std::ostream& header) const;
  void put_locals(std::ostream& out) const;
  void put_test(std::ostream& out, const TargetEquation& equation) const;
  /// The equations in order, with the tests on data and the values of locals.
  void put_equations(std::ostream& out) const;
  /// The values of outputs, assigned to the value's name, or to the value rail's with "_val".
  void put_valued_outputs(std::ostream& out, const ValuedOutputTexts& texts,
                          bool value_rails = false) const;
  void put_state_moves(std::ostream& out, const char* margin = "  ") const;
  const std::string& array() const { return array_; }

 private:
  /// All parameters, with `integer` ("int " or "int  ") in front of those that are no value and not
  /// the first.
  void put_parameters(std::ostream& out, const std::string& integer) const;
  void put_local_value(std::ostream& out, const DataBinding& binding) const;
  std::string left(long index) const;

  const TargetText& text_;
  CFamilyRules rules_;
  std::string array_;
  const std::list<std::string>* pointers_;
  CFamilyStyle style_;
  equation_code_texts texts_;
  DataTexts data_;
};

/// The told text of an expression in C, refused in the name of `operation`.
void put_told_c_data(std::ostream& out, const char* operation, const DataExpr& e, Module* module);

}  // namespace kiva
