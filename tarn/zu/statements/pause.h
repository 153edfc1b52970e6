#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class class_zu_parser;

/// Ends in the instant after its start.
class Pause : public Statement {
 public:
  using Statement::Statement;
  static Statement* read(class_zu_parser& reader);
  const RegisterPair& getRegister() const { return register_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  bool reincarnate() override { return false; }
  Statement* copy(const Copying& copying) const override;

 private:
  RegisterPair register_;
};

}  // namespace kiva
