#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class class_zu_parser;

/// Statements side by side: what Parallel and Pn share. A member that ends before the others leaves
/// a mark in a register, which stands until all have ended or the whole is killed.
class SideBySide : public Statement {
 public:
  SideBySide(const std::string& name, std::vector<Statement*> members)
      : Statement(name), members_(std::move(members)) {}
  bool isParallel() const override { return true; }
  /// Each member compiles in a table of its own; the tables are then unified.
  void compile(Module* module, EquationTable* table) override;
  /// One of the members could.
  bool reincarnate() override;
  std::vector<Statement*> children() const override { return members_; }

 protected:
  std::vector<Statement*> members_;
};

/// Two statements, with equations of their own. No production makes one.
class Parallel : public SideBySide {
 public:
  Parallel(const std::string& name, Statement* left, Statement* right)
      : SideBySide(name, {left, right}) {}
  Statement* getLeft() const { return members_[0]; }
  Statement* getRight() const { return members_[1]; }
  /// The left member has ended and the right one is awaited.
  const RegisterPair& getLeftRegister() const { return left_ended_; }
  /// The converse ("ACTIFBIS").
  const RegisterPair& getRightRegister() const { return right_ended_; }
  void createEquations(Module* module, EquationTable* table) override;
  Statement* copy(const Copying& copying) const override;

 private:
  RegisterPair left_ended_;
  RegisterPair right_ended_;
};

/// Two or more statements: ends in the first instant in which all have ended.
class Pn : public SideBySide {
 public:
  using SideBySide::SideBySide;
  /// `p || q`; a parallel on the left takes q in.
  static Statement* read(class_zu_parser& reader, Statement* left, Statement* right);
  const std::vector<Statement*>& getMembers() const { return members_; }
  void addMember(Statement* member) { members_.push_back(member); }
  /// One per member, which has ended and waits for the others; empty until compiled.
  const std::vector<RegisterPair>& getRegisters() const { return registers_; }
  void createEquations(Module* module, EquationTable* table) override;
  Statement* copy(const Copying& copying) const override;

 private:
  std::vector<RegisterPair> registers_;
};

}  // namespace kiva
