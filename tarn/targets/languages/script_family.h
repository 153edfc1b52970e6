#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "tarn/targets/frame/data_text.h"
#include "tarn/targets/frame/straight_code.h"

namespace kiva {

/// What Python and JavaScript have in common: registers are fields of an object, inputs and all
/// that is computed are locals of its step.
class ScriptText {
 public:
  /// How the language has values.
  struct Values {
    const char* const* operators;
    std::string test_open, test_close;  ///< around what is to become a truth value
    std::string if_open, if_close;      ///< around a condition
    std::string local, none, end;       ///< a variable without value: LOCAL NAME NONE END
  };
  /// `object` is what stands in front of a field.
  ScriptText(const TargetText& text, ExpressionTexts texts, Values values, std::string object);

  /// The module in which the user defines the functions and constants.
  static std::string users(const std::string& module) { return module + "_data"; }

  std::string read(long index) const;
  /// The names of the interface, by `form`, where "@" stands for one, with commas between, then
  /// those of values by `value_form`; none where that is empty.
  std::string inputs(const std::string& form, const std::string& value_form = "") const;
  std::string outputs(const std::string& form, const std::string& value_form = "") const;
  /// The constants with a value, a line each; `behind` stands behind them if there are any.
  void put_constants(std::ostream& out, const std::string& start, const std::string& behind) const;
  /// All that a step computes, behind `margin`; a line begins with `start`, a comment with
  /// `comment`.
  void put_lines(std::ostream& out, const std::string& margin, const std::string& start,
                 const std::string& comment) const;
  /// The values of the outputs.
  void put_values(std::ostream& out, const std::string& margin) const;
  /// A line for each register, behind `margin`: what it begins with, or takes over. What is known
  /// of it stands before it, behind `comment`.
  std::string first_values(const std::string& margin, const std::string& end,
                           const std::string& comment) const;
  std::string moves(const std::string& margin, const std::string& end) const;

 private:
  std::string left(const StraightLine& line) const;
  std::string test(const TargetEquation& equation) const;
  void put_value(std::ostream& out, const DataBinding& binding, const std::string& margin) const;
  void put_local_values(std::ostream& out, const std::string& margin) const;
  /// From a condition to what is done where it holds, and the end of that.
  std::string then(const std::string& margin) const;
  void put_none(std::ostream& out, const Signal* signal, const std::string& margin) const;

  const TargetText& text_;
  Values values_;
  DataTexts data_;
  std::string object_, zero_, one_, and_, not_;
  std::unordered_set<long> state_;
  std::vector<StraightLine> lines_;
};

}  // namespace kiva
