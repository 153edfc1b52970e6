#pragma once

#include "tarn/zu/statement.h"

namespace kiva {

class Circuit;
class class_zu_parser;

/// One equation of a Mealy machine.
struct Equation {
  Signal* signal = nullptr;
  Expression* expression = nullptr;
  SourceSpan span;
};

/// Equations that hold in every instant from the start until a reset, as the whole body of a
/// module.
class MealyMachine : public Statement {
 public:
  using Statement::Statement;
  static Statement* read(class_zu_parser& reader, const std::list<Equation*>& equations);

  /// Enters each equation under its signal's name; a later one replaces an earlier one.
  void setMachineTable(const std::list<Equation*>& equations, Module* module);
  const std::map<std::string, Equation*>& getMachineTable() const { return table_; }
  /// Equations that a later one has replaced.
  const std::vector<Equation*>& getReplaced() const { return replaced_; }
  const RegisterPair& getRegister() const { return register_; }

  void createEquations(Module* module, EquationTable* table) override;
  void createTarnEquation(Equation* equation, Signal* actif, Signal* set, Module* module,
                          EquationTable* table);
  bool reincarnate() override { return false; }
  /// A machine stands only as a whole body, which nothing copies: IllegalOperationException.
  Statement* copy(const Copying& copying) const override;

 private:
  /// A register by the rule `mealy_start`.
  struct Held {
    Signal* signal;  ///< its value in the next instant, by the equations
    Signal* next;    ///< the same while the machine runs on, else the initial value
    bool initial;
  };
  void hold_registers(Circuit& c, Module* module);

  std::map<std::string, Equation*> table_;
  std::vector<Equation*> replaced_;
  std::vector<Held> held_;
  RegisterPair register_;
};

}  // namespace kiva
