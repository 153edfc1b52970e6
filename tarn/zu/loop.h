#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

/// Starts its body again in the instant in which it ends.
class Loop : public Statement {
 public:
  Loop(const std::string& name, Statement* body) : Statement(name), body_(body) {}
  Statement* getBody() const { return body_; }
  void createEquations(Module* module, EquationTable* table) override;
  /// A body that could end and start in one instant becomes a sequence of itself and a copy.
  void compile(Module* module, EquationTable* table) override;
  /// Bounds what the loops of a module that is about to compile may copy, since each level of
  /// nested loops can double what stands inside: 10,000 statements, and four times the body.
  /// Beyond, compile throws IllegalOperationException.
  static void allow_copies(const Statement& module_body);
  bool reincarnate() override { return body_->reincarnate(); }
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
  std::vector<Statement*> children() const override { return {body_}; }

 private:
  static inline long copies_left_ = 0;
  Statement* body_;
};

}  // namespace kiva
