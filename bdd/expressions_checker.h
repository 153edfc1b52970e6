#pragma once

#include <list>
#include <string>

namespace kiva {

/// Checks the syntax of expressions over operators, brackets and variables that its user gives;
/// builds nothing. Any closing bracket ends any opening one. Each step is traced on the error
/// stream.
class expressions_checker {
 public:
  /// Numbers are operands from now on.
  void accept_numbers() { numbers_accepted = 1; }
  /// Kind 1 stands before an operand, kind 2 between two.
  void add_operator(const std::string& name, int kind);
  void add_factor(const std::string& open, const std::string& close);
  void add_variable(const std::string& name) { variables.push_back(name); }

  /// 0 for a correct text, else the position at which it goes wrong, counted as the lengths of the
  /// pieces before it, each with one blank, from 1.
  int check(const std::string& text) const;
  /// Reads one expression and gives the text behind it. `depth` counts open brackets, `position`
  /// goes on from what it is; `error` becomes 1.
  std::string rec_check(const std::string& text, int* depth, int* error, int* position) const;

 private:
  bool is_operator(const std::string& piece, int& kind) const;

  int numbers_accepted = 0;
  std::list<int> operator_kinds;
  std::list<std::string> operators;
  std::list<std::string> factor_openers;
  std::list<std::string> factor_closers;
  std::list<std::string> variables;
};

}  // namespace kiva
