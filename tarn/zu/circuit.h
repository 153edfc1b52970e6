#pragma once

// The circuit of one statement. Every createEquations begins with one of these, which makes the
// statement's wires, and reads as the list of its equations:
//   assign          x := e over the latest occurrences of the signals that e reads
//   assign_whole    x := e over the whole signals (occurrence 0)
//   join            x takes e in, over the whole signals

#include <string>
#include <vector>

#include "tarn/model/equationtable.h"
#include "tarn/model/expression.h"
#include "tarn/model/module.h"
#include "tarn/session/session.h"
#include "tarn/zu/statement.h"

namespace kiva {

// The operators of the right sides.
inline Expression* True() {
  return make_kept<TrueExpression>();
}
inline Expression* False() {
  return make_kept<FalseExpression>();
}
inline Expression* And(Expression* a, Expression* b) {
  return make_kept<AndExpression>(a, b);
}
inline Expression* Or(Expression* a, Expression* b) {
  return make_kept<OrExpression>(a, b);
}
inline Expression* Not(Expression* a) {
  return make_kept<NotExpression>(a);
}
inline Expression* Np(Expression* a) {
  return make_kept<NpExpression>(a);
}
inline Expression* Then(Expression* a, Expression* b) {
  return make_kept<ThenExpression>(a, b);
}
inline Expression* Else(Expression* a, Expression* b) {
  return make_kept<ElseExpression>(a, b);
}
inline Expression* Cond(Expression* e, Signal* condition) {
  return make_kept<CondExpression>(e, condition);
}

/// `name`, or by the rule `copies` the first of `name`, `name`_bis, ... that the module has not.
std::string signal_name(const std::string& name, Module* module);

class Circuit {
 public:
  Circuit(Statement& statement, Module* module, EquationTable* table);

  // Wires of the statement or of a child; StatementWireException when it has none.
  static Signal* set(const Statement& statement);
  static Signal* reset(const Statement& statement);
  static Signal* rtl(const Statement& statement);
  Signal* set() const { return set(statement_); }
  Signal* reset() const { return reset(statement_); }
  Signal* rtl() const { return rtl(statement_); }

  /// A further wire of this statement.
  Signal* make_wire(const std::string& name);
  /// One variable of a register.
  Signal* make_register_variable(const std::string& name);
  /// A register, initially false, whose names are `prefix` and `prefix`PLUS, each with the
  /// statement's name and the suffix. Without `value_equation` its present value is the register's.
  RegisterPair make_register(const std::string& suffix = "", const std::string& prefix = "ACTIF",
                             bool value_equation = true);
  /// The statement's condition over the current view of its operands; where a map is asked for,
  /// with a wire that tells it.
  Expression* condition(Expression* e, bool at_start, bool later);
  /// Where a map is asked for: a register that is One from the statement's start to its end.
  void tell_that_it_stands();
  /// The expression over the current view of its operands.
  Expression* current(Expression* e) { return e->buildCurrentExpression(table_, module_); }

  void assign(Signal* x, Expression* e) { table_->createEquation(x, e, module_); }
  void assign_whole(Signal* x, Expression* e) { table_->createEquation(x, e, module_, true); }
  void join(Signal* x, Expression* e) { table_->join_rails_later(x, e, module_, true); }

  /// Starts a child with this statement, and passes a reset on.
  void start_and_reset(const Statement& child);

 private:
  Statement& statement_;
  Module* module_;
  EquationTable* table_;
};

/// Compiles statements that run in one instant, so that none sees what another writes: the first in
/// the table, each further one in a branch of it, which is then merged. Each records the levels of
/// its table.
void compile_branches(const std::vector<Statement*>& branches, Module* module,
                      EquationTable* table);

}  // namespace kiva
