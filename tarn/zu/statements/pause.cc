#include "tarn/zu/statements/pause.h"

#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

Statement* Pause::read(class_zu_parser& reader) {
  return reader.build<Pause>(reader.next_name("PS", Module::PauseNumber()));
}

void Pause::compile(Module* module, EquationTable* table) {
  table->pre_later(module);
  createEquations(module, table);
}

void Pause::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  register_ = c.make_register();
  c.assign(c.rtl(), register_.ACTIF);
  c.assign_whole(register_.ACTIFPLUS, And(c.set(), Not(c.reset())));
}

Statement* Pause::copy(const Copying& copying) const {
  return copying.make(*this);
}

}  // namespace kiva
