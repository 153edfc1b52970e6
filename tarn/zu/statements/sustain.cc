#include "tarn/zu/statements/sustain.h"

#include "tarn/model/compilation.h"
#include "tarn/model/rules.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

Statement* SustainUntil::read(class_zu_parser& reader, const std::string& signal_name,
                              DataExpr* data, Expression* until) {
  Signal* signal = reader.statement_signal(signal_name);
  const std::string name = reader.next_name("SU", Module::SustainUntilNumber());
  Signal* bound = nullptr;
  reader.check_emission(signal, data);
  if (data != nullptr) {
    bound = reader.bind(data, name, signal);
    reader.place_like(bound, signal);
  }
  return reader.build<SustainUntil>(name, signal, signal_name, bound, until);
}

void SustainUntil::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  Expression* e = c.condition(expression_, true, true);
  register_ = c.make_register("", "ACTIF", false);
  Signal* const actif = register_.ACTIF;
  c.assign_whole(register_.ACTIFPLUS,
                 And(Or(And(c.set(), Not(c.reset())), And(actif, Not(c.reset()))), Np(e)));
  c.assign_whole(c.rtl(), And(Or(actif, c.set()), e));
  Expression* sustains = And(Or(actif, c.set()), Np(e));
  if (Compilation::rules().sustain) sustains = Then(sustains, True());
  join(c, sustains, sustains);
}

bool SustainUntil::reincarnate() {
  return Compilation::rules().skip;
}

Statement* SustainUntil::copy(const Copying& copying) const {
  return copying.make(*this, getSignal(), getSignalName(), copied_data(), expression_);
}

}  // namespace kiva
