// Statements that write a signal. A signal's writers join: each adds its rails to the equations of
// the occurrence that stands where it compiles.

#include "tarn/model/compilation.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/emit.h"
#include "tarn/zu/rules.h"
#include "tarn/zu/sustain.h"

namespace kiva {

void Emit::compile(Module* module, EquationTable* table) {
  createEquations(module, table);
}

void Emit::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(c.rtl(), c.set());
  c.join(signal_, Cond(True(), c.rtl()));
  if (data_ != nullptr) c.join(data_, Cond(True(), c.rtl()));
}

void NoEmit::compile(Module* module, EquationTable* table) {
  createEquations(module, table);
}

void NoEmit::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(c.rtl(), c.set());
  c.join(signal_, Cond(False(), c.rtl()));
  if (data_ != nullptr) c.join(data_, c.rtl());
}

void SustainUntil::compile(Module* module, EquationTable* table) {
  createEquations(module, table);
}

void SustainUntil::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  Expression* e = c.current(expression_);
  register_ = c.make_register("", "ACTIF", false);
  Signal* const actif = register_.ACTIF;
  c.assign_whole(register_.ACTIFPLUS,
                 And(Or(And(c.set(), Not(c.reset())), And(actif, Not(c.reset()))), Np(e)));
  c.assign_whole(c.rtl(), And(Or(actif, c.set()), e));
  Expression* sustains = And(Or(actif, c.set()), Np(e));
  if (Compilation::rules().sustain) sustains = Then(sustains, True());
  c.join(signal_, sustains);
  if (data_ != nullptr) c.join(data_, sustains);
}

}  // namespace kiva
