#include "tarn/zu/statements/automaton.h"

#include "tarn/model/sexception.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statements/run.h"

namespace kiva {

Statement* Automaton::read(class_zu_parser& reader, const GeometryPair* geometry,
                           const std::list<Transition*>& transitions) {
  return reader.build<Automaton>(
      reader.next_name("AUT", Module::AutomatonNumber()),
      geometry == nullptr ? nullptr : std::make_unique<GeometryPair>(*geometry), reader.states(),
      transitions);
}

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

Statement* Automaton::copy(const Copying&) const {
  throw IllegalOperationException("Automaton::duplicate", getName());
}

}  // namespace kiva
