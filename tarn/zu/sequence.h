#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

/// Two statements, one after the other. The reader makes none: see Loop::compile.
class Sequence : public Statement {
 public:
  Sequence(const std::string& name, Statement* left, Statement* right)
      : Statement(name), left_(left), right_(right) {}
  Statement* getLeft() const { return left_; }
  Statement* getRight() const { return right_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  bool isSequence() const override { return true; }
  bool reincarnate() override { return left_->reincarnate() && right_->reincarnate(); }
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
  std::vector<Statement*> children() const override { return {left_, right_}; }

 private:
  Statement* left_;
  Statement* right_;
};

/// At least one statement, one after the other.
class Sn : public Statement {
 public:
  Sn(const std::string& name, std::vector<Statement*> members)
      : Statement(name), members_(std::move(members)) {}
  const std::vector<Statement*>& getMembers() const { return members_; }
  void addMember(Statement* member) { members_.push_back(member); }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  bool isSequence() const override { return true; }
  bool reincarnate() override;
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
  std::vector<Statement*> children() const override { return members_; }

 private:
  std::vector<Statement*> members_;
};

}  // namespace kiva
