// Statements without parts that neither emit nor test: nothing, halt, pause; and wait.

#include "tarn/zu/circuit.h"
#include "tarn/zu/halt.h"
#include "tarn/zu/wait.h"

namespace kiva {

void Nothing::compile(Module* module, EquationTable* table) {
  createEquations(module, table);
}

void Nothing::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(c.rtl(), c.set());
}

void Halt::compile(Module* module, EquationTable* table) {
  createEquations(module, table);
}

void Halt::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(c.rtl(), False());
}

void Pause::compile(Module* module, EquationTable* table) {
  table->pre(module);
  createEquations(module, table);
}

void Pause::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  register_ = c.make_register();
  c.assign(c.rtl(), register_.ACTIF);
  c.assign_whole(register_.ACTIFPLUS, And(c.set(), Not(c.reset())));
}

void Wait::compile(Module* module, EquationTable* table) {
  table->pre(module);
  createEquations(module, table);
}

void Wait::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  Expression* e = c.current(expression_);
  register_ = c.make_register();
  Signal* const actif = register_.ACTIF;
  c.assign_whole(c.rtl(), And(actif, e));
  c.assign_whole(register_.ACTIFPLUS,
                 Or(And(c.set(), Not(c.reset())), And(And(actif, Not(c.reset())), Np(e))));
}

}  // namespace kiva
