#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

/// Makes a signal present in every instant, from its start on, until the expression is present.
class SustainUntil : public Statement {
 public:
  /// `data` is null for an emission without value.
  SustainUntil(const std::string& name, Signal* signal, const std::string& signal_name,
               Signal* data, Expression* expression)
      : Statement(name),
        signal_(signal),
        signal_name_(signal_name),
        data_(data),
        expression_(expression) {}
  Signal* getSignal() const { return signal_; }
  const std::string& getSignalName() const { return signal_name_; }
  Signal* getDataSignal() const { return data_; }
  Expression* getExpression() const { return expression_; }
  const RegisterPair& getRegister() const { return register_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  bool reincarnate() override { return false; }
  // A copy sustains without value.
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;

 private:
  Signal* signal_;
  std::string signal_name_;
  Signal* data_;
  Expression* expression_;
  RegisterPair register_;
};

}  // namespace kiva
