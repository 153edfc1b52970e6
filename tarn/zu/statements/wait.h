#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class class_zu_parser;

/// Ends in the first instant after its start in which the expression is present.
class Wait : public Statement {
 public:
  Wait(const std::string& name, Expression* expression)
      : Statement(name), expression_(expression) {}
  static Statement* read(class_zu_parser& reader, Expression* expression);
  /// `wait 3 e` is three of them. BadValueNumberWaitException for a count below 1.
  static Statement* read(class_zu_parser& reader, int count, Expression* expression);
  Expression* getExpression() const { return expression_; }
  const RegisterPair& getRegister() const { return register_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  bool reincarnate() override { return false; }
  Statement* copy(const Copying& copying) const override;

 private:
  Expression* expression_;
  RegisterPair register_;
};

}  // namespace kiva
