#include "tarn/zu/automaton.h"

#include "tarn/model/sexception.h"
#include "tarn/zu/run.h"

namespace kiva {

State* Automaton::findState(const StateTable& table, const std::string& name) {
  auto at = table.find(name);
  return at == table.end() ? nullptr : at->second;
}

std::vector<Statement*> Automaton::children() const {
  std::vector<Statement*> runs;
  for (const auto& [name, state] : state_table_)
    if (state->run != nullptr) runs.push_back(state->run);
  return runs;
}

void Automaton::createEquations(Module*, EquationTable*) {
  throw IllegalOperationException("ModuleTable::createEquations()", "do not use ...");
}

}  // namespace kiva
