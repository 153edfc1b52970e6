#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class DataExpr;
class class_zu_parser;

/// Starts one of two branches by the state of an expression in the instant of its start.
class Present : public Statement {
 public:
  /// `else_branch` may be null.
  Present(const std::string& name, Expression* expression, Statement* then_branch,
          Statement* else_branch)
      : Statement(name), expression_(expression), then_(then_branch), else_(else_branch) {}
  static Statement* read(class_zu_parser& reader, Expression* expression, Statement* then_branch,
                         Statement* else_branch);
  /// `if`: the expression is a data signal bound to the condition.
  static Statement* read(class_zu_parser& reader, DataExpr* condition, Statement* then_branch,
                         Statement* else_branch);
  Expression* getExpression() const { return expression_; }
  Statement* getThen() const { return then_; }
  Statement* getElse() const { return else_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  /// Without an else branch, what the rules say of a skip.
  bool reincarnate() override;
  Statement* copy(const Copying& copying) const override;
  std::vector<Statement*> children() const override {
    return else_ == nullptr ? std::vector<Statement*>{then_}
                            : std::vector<Statement*>{then_, else_};
  }

 private:
  Expression* expression_;
  Statement* then_;
  Statement* else_;
};

}  // namespace kiva
