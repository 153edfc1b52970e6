#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class class_zu_parser;

/// One statement after the other: what Sequence and Sn share.
class InSequence : public Statement {
 public:
  InSequence(const std::string& name, std::vector<Statement*> members)
      : Statement(name), members_(std::move(members)) {}
  bool isSequence() const override { return true; }
  void createEquations(Module* module, EquationTable* table) override;
  /// All members could.
  bool reincarnate() override;
  std::vector<Statement*> children() const override { return members_; }

 protected:
  std::vector<Statement*> members_;
};

/// Two statements. The reader makes none: see Loop::compile.
class Sequence : public InSequence {
 public:
  Sequence(const std::string& name, Statement* left, Statement* right)
      : InSequence(name, {left, right}) {}
  Statement* getLeft() const { return members_[0]; }
  Statement* getRight() const { return members_[1]; }
  Statement* copy(const Copying& copying) const override;
};

/// At least one statement.
class Sn : public InSequence {
 public:
  using InSequence::InSequence;
  /// `p >> q`; a sequence on the left takes q in.
  static Statement* read(class_zu_parser& reader, Statement* left, Statement* right);
  static Statement* read(class_zu_parser& reader, std::vector<Statement*> members);
  const std::vector<Statement*>& getMembers() const { return members_; }
  void addMember(Statement* member) { members_.push_back(member); }
  Statement* copy(const Copying& copying) const override;
};

}  // namespace kiva
