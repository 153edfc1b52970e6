#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class class_zu_parser;

/// Never ends.
class Halt : public Statement {
 public:
  using Statement::Statement;
  static Statement* read(class_zu_parser& reader);
  void createEquations(Module* module, EquationTable* table) override;
  bool reincarnate() override { return false; }
  Statement* copy(const Copying& copying) const override;
};

}  // namespace kiva
