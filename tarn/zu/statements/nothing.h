#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class class_zu_parser;

/// Ends at once.
class Nothing : public Statement {
 public:
  using Statement::Statement;
  static Statement* read(class_zu_parser& reader);
  void createEquations(Module* module, EquationTable* table) override;
  Statement* copy(const Copying& copying) const override;
};

}  // namespace kiva
