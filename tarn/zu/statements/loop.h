#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class class_zu_parser;

/// Starts its body again in the instant in which it ends.
class Loop : public Statement {
 public:
  Loop(const std::string& name, Statement* body) : Statement(name), body_(body) {}
  static Statement* read(class_zu_parser& reader, Statement* body);
  Statement* getBody() const { return body_; }
  void createEquations(Module* module, EquationTable* table) override;
  /// A body that could end and start in one instant becomes a sequence of itself and a copy.
  void compile(Module* module, EquationTable* table) override;
  /// While it lives it bounds what the loops of a module under compilation may copy, since each
  /// level of nested loops can double what stands inside: 10,000 statements, and four times the
  /// body. Beyond, compile throws IllegalOperationException.
  class Allowance {
   public:
    explicit Allowance(const Statement& module_body);
    ~Allowance() { copies_left() = outer_; }
    Allowance(const Allowance&) = delete;
    Allowance& operator=(const Allowance&) = delete;

   private:
    long outer_;  ///< of the module whose run brought this one in
  };
  /// Once compiled: the two copies that take turns, none where the body stands alone. If both end
  /// in one instant, the loop goes round for ever within it.
  const std::vector<Statement*>& turns() const { return turns_; }
  bool reincarnate() override { return body_->reincarnate(); }
  Statement* copy(const Copying& copying) const override;
  std::vector<Statement*> children() const override { return {body_}; }

 private:
  static long& copies_left();
  Statement* body_;
  std::vector<Statement*> turns_;
};

}  // namespace kiva
