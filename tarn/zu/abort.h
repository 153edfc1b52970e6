#pragma once

#include <unordered_map>

#include "bdd/bddpp.h"
#include "pert_exp/Bddexpression.h"
#include "tarn/zu/statement.h"

namespace kiva {

/// Weak preemption: the body still runs in the instant in which the expression ends it.
class Abort : public Statement {
 public:
  Abort(const std::string& name, Expression* expression, Statement* body)
      : Statement(name), expression_(expression), body_(body) {}
  Expression* getExpression() const { return expression_; }
  Statement* getBody() const { return body_; }
  const RegisterPair& getRegister() const { return register_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
  std::vector<Statement*> children() const override { return {body_}; }

 private:
  Expression* expression_;
  Statement* body_;
  RegisterPair register_;
};

/// Strong preemption: what the body would do in the preempting instant is masked.
class StrongAbort : public Statement {
 public:
  StrongAbort(const std::string& name, Expression* expression, Statement* body)
      : Statement(name), expression_(expression), body_(body) {}
  Expression* getExpression() const { return expression_; }
  Statement* getBody() const { return body_; }
  const RegisterPair& getRegister() const { return register_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
  std::vector<Statement*> children() const override { return {body_}; }

 private:
  void remember_written(Module* module, EquationTable* table);
  void mask_written(const bdd& mask, Module* module, EquationTable* table);

  Expression* expression_;
  Statement* body_;
  RegisterPair register_;
  // While the body compiles, by the rule `abort_mask`: its first occurrence of each signal, and the
  // equations that stood there before it, by variable id.
  std::unordered_map<const Signal*, int> first_written_;
  std::unordered_map<long, bdd> written_before_;
};

}  // namespace kiva
