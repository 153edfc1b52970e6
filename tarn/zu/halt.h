#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

/// Ends at once.
class Nothing : public Statement {
 public:
  using Statement::Statement;
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
};

/// Never ends.
class Halt : public Statement {
 public:
  using Statement::Statement;
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  bool reincarnate() override { return false; }
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
};

/// Ends in the instant after its start.
class Pause : public Statement {
 public:
  using Statement::Statement;
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  bool reincarnate() override { return false; }
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
  const RegisterPair& getRegister() const { return register_; }

 private:
  RegisterPair register_;
};

}  // namespace kiva
