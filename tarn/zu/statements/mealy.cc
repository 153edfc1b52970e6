#include "tarn/zu/statements/mealy.h"

#include "tarn/model/compilation.h"
#include "tarn/model/function_change.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"

namespace kiva {

Statement* MealyMachine::read(class_zu_parser& reader, const std::list<Equation*>& equations) {
  auto* machine = reader.build<MealyMachine>(reader.next_name("MM", Module::MealyMachineNumber()));
  machine->setMachineTable(equations, machine->getModule());
  return machine;
}

void MealyMachine::setMachineTable(const std::list<Equation*>& equations, Module*) {
  for (Equation* equation : equations) {
    Equation*& entry = table_[equation->signal->getInternalName()];
    if (entry != nullptr) replaced_.push_back(entry);
    entry = equation;
  }
}

void MealyMachine::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  if (Compilation::rules().mealy_start) hold_registers(c, module);
  register_ = c.make_register("", "ACTIF", false);
  c.assign(register_.ACTIFPLUS, And(Or(c.set(), register_.ACTIF), Not(c.reset())));
  for (const auto& [name, equation] : table_)
    createTarnEquation(equation, register_.ACTIF, c.set(), module, table);
  for (const Held& held : held_) {
    Expression* stays = register_.ACTIFPLUS;
    c.assign(held.next, held.initial ? Or(held.signal, Np(stays)) : And(held.signal, stays));
  }
  table->createBottomEquation(c.rtl(), module);
}

/// The signal that a register's declaration names stays what its equation says; what the register
/// moves to is a signal of its own.
void MealyMachine::hold_registers(Circuit& c, Module* module) {
  for (regclass* reg : module->getRegisterList()) {
    Signal* next = reg->next_var();
    held_.push_back({next, c.make_register_variable("PLUS" + next->getInternalName()),
                     reg->is_initialy_true() != 0});
    reg->next_var(held_.back().next);
    next->setRegister(false);
    next->setWire(false);
  }
}

void MealyMachine::createTarnEquation(Equation* equation, Signal* actif, Signal* set,
                                      Module* module, EquationTable* table) {
  Expression* runs = Or(actif, set);
  Expression* e = Compilation::rules().mealy ? Then(runs, equation->expression)
                                             : And(equation->expression, runs);
  Bddexpressionwood* wood = table->getBddexpressionWood();
  table->note_cause(equation->expression->getBddStatus(module, wood), equation->signal,
                    equation->span);
  table->settle();
  wood->update_bdd_vars();
  const auto equation_of = [&](long index) {
    if (index < 0 || index >= wood->Nb_bdd_vars())
      throw IllegalOperationException("EquationTable::id out of bounds");
    return wood->exp_by_index(index);
  };
  Bddexpression* status = equation_of(equation->signal->getBddStatusId(module, wood));
  Bddexpression* value = equation_of(equation->signal->getBddValueId(module, wood));
  if (status == nullptr || value == nullptr) {
    table->createEquation(equation->signal, e, module);
    return;
  }
  int loop = -1;
  bddpp_manager* manager = wood->my_bdd_manager();
  set_function(*status, manager->Bdd_follow_assoc(e->getBddStatus(module, wood), &loop));
  set_function(*value, manager->Bdd_follow_assoc(e->getBddValue(module, wood), &loop));
}

Statement* MealyMachine::copy(const Copying&) const {
  throw IllegalOperationException("MealyMachine::duplicate", getName());
}

}  // namespace kiva
