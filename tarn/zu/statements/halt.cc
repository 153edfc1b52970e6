#include "tarn/zu/statements/halt.h"

#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

Statement* Halt::read(class_zu_parser& reader) {
  return reader.build<Halt>(reader.next_name("H", Module::HaltNumber()));
}

void Halt::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(c.rtl(), False());
  c.tell_that_it_stands();
}

Statement* Halt::copy(const Copying& copying) const {
  return copying.make(*this);
}

}  // namespace kiva
