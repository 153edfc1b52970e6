#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class Circuit;
class DataExpr;
class class_zu_parser;

/// What statements that write a signal share. A signal's writers join: each adds its rails to the
/// equations of the occurrence that stands where it compiles.
class Emission : public Statement {
 public:
  /// `data` is the signal bound to the value; null for an emission without value.
  Emission(const std::string& name, Signal* signal, const std::string& signal_name, Signal* data)
      : Statement(name), signal_(signal), signal_name_(signal_name), data_(data) {}
  Signal* getSignal() const { return signal_; }
  const std::string& getSignalName() const { return signal_name_; }
  Signal* getDataSignal() const { return data_; }

 protected:
  /// Joins an expression onto the signal, and another onto the signal bound to its value.
  void join(Circuit& c, Expression* state, Expression* value) const;
  /// What a copy has in place of the data signal: by the rule `copies` the same, to which both add.
  Signal* copied_data() const;

 private:
  Signal* signal_;
  std::string signal_name_;
  Signal* data_;
};

/// Makes a signal present, and with it the signal bound to its value, in the instant of its start.
class Emit : public Emission {
 public:
  using Emission::Emission;
  /// `data` is null without a value. StatementSignalException for what is no output or local.
  static Statement* read(class_zu_parser& reader, const std::string& signal, DataExpr* data);
  void createEquations(Module* module, EquationTable* table) override;
  Statement* copy(const Copying& copying) const override;
};

/// Makes a signal absent in the instant of its start.
class NoEmit : public Emission {
 public:
  using Emission::Emission;
  static Statement* read(class_zu_parser& reader, const std::string& signal);
  void createEquations(Module* module, EquationTable* table) override;
  /// A copy has no data signal.
  Statement* copy(const Copying& copying) const override;
};

}  // namespace kiva
