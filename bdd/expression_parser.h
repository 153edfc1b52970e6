#pragma once

#include <iosfwd>
#include <string>

#include "base/parse_values.h"
#include "bdd/bddpp.h"

namespace kiva {

/// Why a parse failed.
enum class ExpressionFault { none, unknown_name, bad_priority, syntax, too_deep };

/// One parse of an expression over the variables of a manager. The scanner and the grammar
/// (parse_expression.y) find it through `pexp_bdd_parser`, so one parse runs at a time in a thread.
///
///   [<priority>] expression      or + |   and . &   not ! ~   xor   xnor   ( ) [ ]   0 1   names
class class_exp_bdd_parser {
 public:
  explicit class_exp_bdd_parser(bddpp_manager* manager);
  /// Messages go to `report` in place of the error stream.
  class_exp_bdd_parser(bddpp_manager* manager, std::ostream& report);
  ~class_exp_bdd_parser();
  class_exp_bdd_parser(const class_exp_bdd_parser&) = delete;
  class_exp_bdd_parser& operator=(const class_exp_bdd_parser&) = delete;

  /// 0 on success.
  int parse(const std::string& text);
  ExpressionFault fault() const { return fault_; }
  /// The value in angle brackets; 0 without one, -1 for "other" and "default".
  int prio() const { return priority_; }
  /// A default-built handle before a parse that succeeded.
  bdd bddexpression() const { return result_; }

  // For the scanner and the grammar.
  bddpp_manager* manager() const { return manager_; }
  /// The next piece of the text; empty at its end.
  const std::string& next_piece();
  const std::string& current_piece() const { return piece_; }
  /// Where the current piece begins, from 0.
  size_t position() const { return position_; }
  ParseValues values;
  void set_result(const bdd& result) { result_ = result; }
  void set_priority(long priority) { priority_ = static_cast<int>(priority); }
  void set_fault(ExpressionFault fault) { fault_ = fault; }
  void message(const std::string& text);

 private:
  bddpp_manager* manager_;
  std::ostream& report_;
  std::string text_;
  std::string rest_;
  std::string piece_;
  size_t position_ = 0;
  int priority_ = 0;
  ExpressionFault fault_ = ExpressionFault::none;
  bdd result_;
};

/// The parse under way in this thread.
extern thread_local class_exp_bdd_parser* pexp_bdd_parser;

}  // namespace kiva
