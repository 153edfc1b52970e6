#pragma once

#include "tarn/zu/statements/emit.h"

namespace kiva {

/// Makes a signal present in every instant, from its start on, until the expression is present.
class SustainUntil : public Emission {
 public:
  SustainUntil(const std::string& name, Signal* signal, const std::string& signal_name,
               Signal* data, Expression* expression)
      : Emission(name, signal, signal_name, data), expression_(expression) {}
  /// `data` is null without a value.
  static Statement* read(class_zu_parser& reader, const std::string& signal, DataExpr* data,
                         Expression* until);
  Expression* getExpression() const { return expression_; }
  const RegisterPair& getRegister() const { return register_; }
  void createEquations(Module* module, EquationTable* table) override;
  /// It ends in its first instant if the expression is present there: by the rule `skip`, true.
  bool reincarnate() override;
  /// A copy sustains without value.
  Statement* copy(const Copying& copying) const override;

 private:
  Expression* expression_;
  RegisterPair register_;
};

}  // namespace kiva
