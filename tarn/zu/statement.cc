#include "tarn/zu/statement.h"

#include "tarn/session/session.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/progress.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

void Statement::compile(Module* module, EquationTable* table) {
  for (Statement* child : children()) child->compile(module, table);
  createEquations(module, table);
}

Statement* Statement::duplicate(Module* module, EquationTable*) {
  return copy(Copying(module));
}

Statement* Statement::duplicate(int number) {
  return copy(Copying(number));
}

void Statement::createWires(Module* module, EquationTable* table) {
  if (const auto& begun = statement_begun()) begun();
  const auto make = [&](const char* prefix) {
    auto* wire = make_kept<Signal>(signal_name(prefix + name_, module), module,
                                   table->getBddexpressionWood());
    wire->setWire();
    module->addLocalSignal(wire);
    table->note_source(wire, source_.span);
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

}  // namespace kiva
