#include "tarn/zu/statements/nothing.h"

#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

Statement* Nothing::read(class_zu_parser& reader) {
  return reader.build<Nothing>(reader.next_name("N", Module::NothingNumber()));
}

void Nothing::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(c.rtl(), c.set());
}

Statement* Nothing::copy(const Copying& copying) const {
  return copying.make(*this);
}

}  // namespace kiva
