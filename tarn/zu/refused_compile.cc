// Bodies that the compiler does not translate yet: a module that has one is refused, with the place
// where it stands.

#include "tarn/model/sexception.h"
#include "tarn/zu/automaton.h"
#include "tarn/zu/mealy.h"

namespace kiva {

namespace {

[[noreturn]] void refuse(const char* operation, const Statement& statement) {
  IllegalOperationException refusal(operation, statement.getName() + " cannot be compiled yet");
  refusal.set_where(statement.getSpan());
  throw refusal;
}

}  // namespace

void Automaton::compile(Module*, EquationTable*) {
  refuse("Automaton::compile", *this);
}
void MealyMachine::compile(Module*, EquationTable*) {
  refuse("MealyMachine::compile", *this);
}
void MealyMachine::createEquations(Module*, EquationTable*) {
  refuse("MealyMachine::createEquations", *this);
}

}  // namespace kiva
