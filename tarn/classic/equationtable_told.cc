// What is told of EquationTable and no program calls.

#include "tarn/model/equationtable.h"

#include "tarn/model/function_change.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"

namespace kiva {

void EquationTable::removeSignal(Signal* signal) {
  const std::string name = signal->getName(nullptr, bdd_expression_wood);
  for (const char* rail : {"_s_", "_v_"}) {
    const long index = bdd_expression_wood->Index_var_by_name(rail + name);
    if (index < 0) continue;
    settle(index);
    bdd_expression_wood->forget_expression_by_bddid(index);
  }
}

void EquationTable::learnSignal(Signal* signal, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  Bddexpressionwood* main_wood = module->getBddWood();
  SignalRef* ref = signal->getSignalRef(module, main_wood);
  if (ref != nullptr && ref->isDefinedWood(wood)) return;
  if (signal->getBddStatusId(module, main_wood) == -1 ||
      signal->getBddValueId(module, main_wood) == -1)
    throw IllegalOperationException("EquationTable:learSignal: signal not defined in module wood",
                                    signal->getInternalName());
  const long status_index = SignalRef::computeId("_s_" + ref->getCurrentName(), wood);
  const long value_index = SignalRef::computeId("_v_" + ref->getCurrentName(), wood);
  module->getSignalManager()->extendSignalRef(status_index, value_index, ref, wood);
  signal->extendCurrentOccurrenceTable(wood, signal->getCurrentOccurrence(main_wood));
}

void EquationTable::updatePertDate(Bddexpression* from, Bddexpression* to) {
  to->setEarlyDate(from->getEarlyDate());
  to->setLateDate(from->getLateDate());
}

Bddexpression* EquationTable::equation_or_throw(long index) {
  if (index < 0 || index >= bdd_expression_wood->my_bdd_manager()->Nb_bdd_vars())
    throw IllegalOperationException("EquationTable::id out of bounds");
  return equation_at(index);
}

void EquationTable::cond(Signal* condition, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  const bdd guard = condition->getBddValue(module, wood);
  const auto guard_equation = [&](long index) {
    if (Bddexpression* equation = equation_or_throw(index)) and_function(*equation, guard);
  };
  for (Signal* output : module->getOutputSignalList()) {
    guard_equation(output->getBddStatusId(module, wood));
    guard_equation(output->getBddValueId(module, wood));
  }
  for (Signal* local : module->getLocalSignalList()) {
    if (!local->isLocal() || local->isWire()) continue;
    for (long index : local->getAllBddId(module, wood)) guard_equation(index);
  }
}

}  // namespace kiva
