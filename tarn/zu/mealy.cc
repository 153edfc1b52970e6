#include "tarn/zu/mealy.h"

#include "tarn/model/signal.h"

namespace kiva {

void MealyMachine::setMachineTable(const std::list<Equation*>& equations, Module*) {
  for (Equation* equation : equations) table_[equation->signal->getInternalName()] = equation;
}

}  // namespace kiva
