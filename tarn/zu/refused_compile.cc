// Bodies that the compiler does not translate yet: a module that has one is refused, with the place
// where it stands.

#include "tarn/model/sexception.h"
#include "tarn/zu/run.h"

namespace kiva {

namespace {

[[noreturn]] void refuse(const char* operation, const Statement& statement) {
  IllegalOperationException refusal(operation, statement.getName() + " cannot be compiled yet");
  refusal.set_where(statement.getSpan());
  throw refusal;
}

}  // namespace

void Run::compile(Module*, EquationTable*) {
  refuse("Run::compile", *this);
}
void Run::compile_with_preemption(Module*, EquationTable*, const bdd&) {
  refuse("Run::compile_with_preemption", *this);
}
void Run::createEquations(Module*, EquationTable*) {
  refuse("Run::createEquations", *this);
}
bool Run::reincarnate() {
  refuse("Run::reincarnate", *this);
}

}  // namespace kiva
