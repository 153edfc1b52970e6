#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

/// Makes a signal present, and with it the signal bound to its value, in the instant of its start.
class Emit : public Statement {
 public:
  /// `data` is null for an emission without value.
  Emit(const std::string& name, Signal* signal, const std::string& signal_name, Signal* data)
      : Statement(name), signal_(signal), signal_name_(signal_name), data_(data) {}
  Signal* getSignal() const { return signal_; }
  const std::string& getSignalName() const { return signal_name_; }
  Signal* getDataSignal() const { return data_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  // A copy emits without value.
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;

 private:
  Signal* signal_;
  std::string signal_name_;
  Signal* data_;
};

/// Makes a signal absent in the instant of its start.
class NoEmit : public Statement {
 public:
  NoEmit(const std::string& name, Signal* signal, const std::string& signal_name, Signal* data)
      : Statement(name), signal_(signal), signal_name_(signal_name), data_(data) {}
  Signal* getSignal() const { return signal_; }
  const std::string& getSignalName() const { return signal_name_; }
  Signal* getDataSignal() const { return data_; }
  void createEquations(Module* module, EquationTable* table) override;
  void compile(Module* module, EquationTable* table) override;
  // A copy has no data signal.
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;

 private:
  Signal* signal_;
  std::string signal_name_;
  Signal* data_;
};

}  // namespace kiva
