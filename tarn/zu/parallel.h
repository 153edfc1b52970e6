#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

/// Two statements side by side, with equations of their own. No production makes one.
class Parallel : public Statement {
 public:
  Parallel(const std::string& name, Statement* left, Statement* right)
      : Statement(name), left_(left), right_(right) {}
  Statement* getLeft() const { return left_; }
  Statement* getRight() const { return right_; }
  /// The left member has ended and the right one is awaited.
  const RegisterPair& getLeftRegister() const { return left_ended_; }
  /// The converse ("ACTIFBIS").
  const RegisterPair& getRightRegister() const { return right_ended_; }
  void createEquations(Module* module, EquationTable* table) override;
  /// Each member compiles in a table of its own; the tables are then unified.
  void compile(Module* module, EquationTable* table) override;
  bool isParallel() const override { return true; }
  bool reincarnate() override { return left_->reincarnate() || right_->reincarnate(); }
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
  std::vector<Statement*> children() const override { return {left_, right_}; }

 private:
  Statement* left_;
  Statement* right_;
  RegisterPair left_ended_;
  RegisterPair right_ended_;
};

/// Two or more statements side by side: ends in the first instant in which all have ended.
class Pn : public Statement {
 public:
  Pn(const std::string& name, std::vector<Statement*> members)
      : Statement(name), members_(std::move(members)) {}
  const std::vector<Statement*>& getMembers() const { return members_; }
  void addMember(Statement* member) { members_.push_back(member); }
  /// One per member, which has ended and waits for the others; empty until compiled.
  const std::vector<RegisterPair>& getRegisters() const { return registers_; }
  void createEquations(Module* module, EquationTable* table) override;
  /// Each member compiles in a table of its own; the tables are then unified.
  void compile(Module* module, EquationTable* table) override;
  bool isParallel() const override { return true; }
  bool reincarnate() override;
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
  std::vector<Statement*> children() const override { return members_; }

 private:
  std::vector<Statement*> members_;
  std::vector<RegisterPair> registers_;
};

}  // namespace kiva
