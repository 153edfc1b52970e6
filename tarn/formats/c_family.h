#pragma once

#include <iosfwd>
#include <string>

#include "tarn/formats/data_text.h"
#include "tarn/formats/target_text.h"

namespace kiva {

/// What the texts of C and of its kin have in common: inputs are passed by value, outputs through
/// pointers, a value beside each valued signal.
class CFamilyText {
 public:
  /// Pointers are the outputs, or the names of `pointers` where it is not null.
  CFamilyText(const TargetText& text, std::string array,
              const std::list<std::string>* pointers = nullptr);

  /// The variable where it is read: an output through its pointer.
  std::string read(long index) const;
  std::string read_value(const Signal* signal) const;
  const DataTexts& data() const { return data_; }
  /// An expression over data.
  std::string expression(const DataBinding& binding) const;

  /// The types' zeros and methods to the header, constants to the body or the header.
  void put_data_declarations(std::ostream& body, std::ostream& header) const;
  /// The names of the state, as a list in a declaration.
  void put_state_names(std::ostream& out) const;
  /// The assignments of the initial values.
  void put_reset(std::ostream& out) const;
  /// All parameters, with `integer` ("int " or "int  ") in front of those that are no value and not
  /// the first.
  void put_parameters(std::ostream& out, const std::string& integer) const;
  void put_locals(std::ostream& out) const;
  /// The equations in order, with the tests on data and the values of locals.
  void put_equations(std::ostream& out) const;
  void put_state_moves(std::ostream& out) const;
  const std::string& array() const { return array_; }

 private:
  void put_test(std::ostream& out, const TargetEquation& equation) const;
  void put_local_value(std::ostream& out, const DataBinding& binding) const;
  std::string left(long index) const;

  const TargetText& text_;
  std::string array_;
  const std::list<std::string>* pointers_;
  equation_code_texts texts_;
  DataTexts data_;
};

}  // namespace kiva
