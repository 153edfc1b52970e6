#include "tarn/zu/circuit.h"

#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/progress.h"
#include "tarn/zu/rules.h"

namespace kiva {

std::string signal_name(const std::string& name, Module* module) {
  return Compilation::rules().copies ? module->getSignalManager()->freeName(name) : name;
}

void Statement::createWires(Module* module, EquationTable* table) {
  if (const auto& begun = statement_begun()) begun();
  const auto make = [&](const char* prefix) {
    auto* wire =
        make_kept<Signal>(signal_name(prefix + name_, module), module, table->working_wood());
    wire->setWire();
    module->addLocalSignal(wire);
    table->note_source(wire, span_);
    return wire;
  };
  set_wire = make("SET");
  reset_wire = make("RESET");
  rtl_wire = make("RTL");
}

void Statement::connectExternalWires(Module* module) {
  EquationTable* table = module->getCompilation();
  table->createEquation(Circuit::set(*this), module->getSet(), module);
  table->createEquation(Circuit::reset(*this), module->getReset(), module);
  table->createEquation(module->getRtl(), Circuit::rtl(*this), module);
}

Circuit::Circuit(Statement& statement, Module* module, EquationTable* table)
    : statement_(statement), module_(module), table_(table) {
  statement.createWires(module, table);
}

Signal* Circuit::set(const Statement& statement) {
  if (statement.getSet() == nullptr) throw StatementWireException("set");
  return statement.getSet();
}

Signal* Circuit::reset(const Statement& statement) {
  if (statement.getReset() == nullptr) throw StatementWireException("reset");
  return statement.getReset();
}

Signal* Circuit::rtl(const Statement& statement) {
  if (statement.getRtl() == nullptr) throw StatementWireException("rtl");
  return statement.getRtl();
}

Signal* Circuit::make_wire(const std::string& name) {
  auto* wire = make_kept<Signal>(signal_name(name, module_), module_, table_->working_wood());
  wire->setWire();
  module_->addLocalSignal(wire);
  table_->note_source(wire, statement_.getSpan());
  return wire;
}

Signal* Circuit::make_register_variable(const std::string& name) {
  auto* variable =
      make_kept<Signal>(signal_name(name, module_), module_, table_->working_wood(), true);
  module_->addLocalSignal(variable);
  table_->note_source(variable, statement_.getSpan());
  return variable;
}

RegisterPair Circuit::make_register(const std::string& suffix, const std::string& prefix,
                                    bool value_equation) {
  RegisterPair pair;
  pair.ACTIF = make_register_variable(prefix + statement_.getName() + suffix);
  pair.ACTIFPLUS = make_register_variable(prefix + "PLUS" + statement_.getName() + suffix);
  module_->addRegisterSignal(pair.ACTIF, pair.ACTIFPLUS);
  if (value_equation) table_->createRegisterEquation(pair.ACTIF, module_);
  return pair;
}

void Circuit::start_and_reset(const Statement& child) {
  assign(set(child), set());
  assign(reset(child), reset());
}

void compile_branch(Statement* branch, Module* module, EquationTable* table) {
  branch->compile(module, table);
  if (branch->getPertLevel() == 0) branch->setPertLevel(table->callPert());
}

void BranchTable::compile_into(EquationTable* into, Statement* branch) {
  table_->begin_branch(module_);
  compile_branch(branch, module_, table_.get());
  into->unify_later(table_.get(), module_);
}

}  // namespace kiva
