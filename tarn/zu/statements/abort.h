#pragma once

#include <unordered_map>

#include "bdd/bddpp.h"
#include "tarn/zu/statement.h"

namespace kiva {

class Circuit;
class class_zu_parser;

/// Preemption: what both aborts share. The register tells that the body was started in an earlier
/// instant, so the expression is not looked at in the first.
class Preemption : public Statement {
 public:
  Preemption(const std::string& name, Expression* expression, Statement* body)
      : Statement(name), expression_(expression), body_(body) {}
  Expression* getExpression() const { return expression_; }
  Statement* getBody() const { return body_; }
  const RegisterPair& getRegister() const { return register_; }
  std::vector<Statement*> children() const override { return {body_}; }

 protected:
  /// Makes the register and writes the equations, with `e` in the place of the expression.
  void preempt(Circuit& c, Expression* e);

 private:
  Expression* expression_;
  Statement* body_;
  RegisterPair register_;
};

/// Weak preemption: the body still runs in the instant in which the expression ends it.
class Abort : public Preemption {
 public:
  using Preemption::Preemption;
  static Statement* read(class_zu_parser& reader, Statement* body, Expression* expression);
  void createEquations(Module* module, EquationTable* table) override;
  Statement* copy(const Copying& copying) const override;
};

/// Strong preemption: what the body would do in the preempting instant is masked, in the equations
/// of outputs and plain locals, which stand in the table already.
class StrongAbort : public Preemption {
 public:
  using Preemption::Preemption;
  static Statement* read(class_zu_parser& reader, Statement* body, Expression* expression);
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  Statement* copy(const Copying& copying) const override;

 private:
  void remember_written(Module* module, EquationTable* table);
  void mask_written(const bdd& mask, Module* module, EquationTable* table);

  // While the body compiles, by the rule `abort_mask`: its first occurrence of each signal, and the
  // equations that stood there before it, by variable index.
  std::unordered_map<const Signal*, int> first_written_;
  std::unordered_map<long, bdd> written_before_;
};

}  // namespace kiva
