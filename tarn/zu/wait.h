#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

/// Ends in the first instant after its start in which the expression is present.
class Wait : public Statement {
 public:
  Wait(const std::string& name, Expression* expression)
      : Statement(name), expression_(expression) {}
  Expression* getExpression() const { return expression_; }
  const RegisterPair& getRegister() const { return register_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  bool reincarnate() override { return false; }
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;

 private:
  Expression* expression_;
  RegisterPair register_;
};

}  // namespace kiva
