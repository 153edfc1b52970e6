#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "tarn/targets/frame/data_text.h"
#include "tarn/targets/frame/straight_code.h"
#include "tarn/targets/frame/target.h"

namespace kiva {

/// Words that no field of a structure may be called, in C, in C++, or as a macro of their headers.
extern const TargetText::Language c_step_language, cpp_step_language, systemc_step_language;

/// How C and C++ spell a module whose state is one object, and whose instant takes one of inputs
/// and fills one of outputs.
struct StepStyle {
  bool cpp = false;
  std::string state, in, out, wires;  ///< in front of a field of each
};

/// What the two have in common.
class StepText {
 public:
  StepText(const TargetText& text, const StepStyle& style);

  /// The bit where it is read.
  std::string read(long index) const;
  /// The type of a signal's value, and what one holds that got none.
  static std::string type_text(const std::string& type);
  std::string zero(const std::string& type) const;
  /// The module has types, functions or constants that its user writes.
  bool wants_types() const { return wants_types_; }

  bool reads_inputs() const;

  /// What the text is, how it is called, which names have changed; a line each, behind `start`.
  void put_comment(std::ostream& out, const std::string& start, const std::string& calls) const;
  /// Functions and constants that the user writes.
  void put_data_declarations(std::ostream& out, const std::string& margin) const;
  /// Constants with a value that expressions read.
  void put_constants(std::ostream& out) const;
  /// The fields of the inputs, outputs and registers, a line each.
  void put_inputs(std::ostream& out) const;
  void put_outputs(std::ostream& out) const;
  void put_state(std::ostream& out) const;
  void put_wires(std::ostream& out) const;
  /// Assignments of the first values to the registers.
  void put_first_values(std::ostream& out, const std::string& margin) const;
  /// The lines of part `part`; all of them where there is one part.
  void put_lines(std::ostream& out, size_t part, const std::string& margin) const;
  /// The values of the outputs, the bits of outputs that are registers, and the moves.
  void put_end(std::ostream& out, const std::string& margin) const;
  /// Large modules are computed by several functions, with the locals in a structure.
  size_t parts() const { return parts_; }

 private:
  void put_field(std::ostream& out, const std::string& type, const std::string& name,
                 const std::string& first) const;
  void put_signals(std::ostream& out, const std::vector<long>& rails,
                   const std::vector<Signal*>& signals) const;
  void put_test(std::ostream& out, const StraightLine& line, const std::string& margin) const;
  void put_value(std::ostream& out, const DataBinding& binding, const std::string& margin) const;
  void put_value_locals(std::ostream& out, const std::string& margin) const;
  std::string left(const StraightLine& line) const;
  std::string part_name(long number) const;
  std::string read_value(const Signal* signal) const;

  const TargetText& text_;
  StepStyle style_;
  std::unordered_set<long> inputs_, state_;
  bool wants_types_ = false;
  size_t parts_ = 1;
  DataTexts data_;
  ExpressionTexts expressions_;
  std::vector<StraightLine> lines_;
};

}  // namespace kiva
