#include "tarn/zu/statements/emit.h"

#include "tarn/model/compilation.h"
#include "tarn/model/rules.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

void Emission::join(Circuit& c, Expression* state, Expression* value) const {
  c.join(signal_, state);
  if (data_ != nullptr) c.join(data_, value);
}

Statement* Emit::read(class_zu_parser& reader, const std::string& signal_name, DataExpr* data) {
  Signal* signal = reader.statement_signal(signal_name);
  const std::string name = reader.next_name("E", Module::EmitNumber());
  Signal* bound = nullptr;
  reader.check_emission(signal, data);
  if (data != nullptr) {
    bound = reader.bind(data, name, signal);
    reader.place_local(bound);
  }
  return reader.build<Emit>(name, signal, signal_name, bound);
}

void Emit::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(c.rtl(), c.set());
  Expression* present = Cond(True(), c.rtl());
  join(c, present, present);
}

Signal* Emission::copied_data() const {
  return Compilation::rules().copies ? data_ : nullptr;
}

Statement* Emit::copy(const Copying& copying) const {
  return copying.make(*this, getSignal(), getSignalName(), copied_data());
}

Statement* NoEmit::read(class_zu_parser& reader, const std::string& signal_name) {
  Signal* signal = reader.statement_signal(signal_name);
  return reader.build<NoEmit>(reader.next_name("NE", Module::NoEmitNumber()), signal, signal_name,
                              nullptr);
}

void NoEmit::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(c.rtl(), c.set());
  join(c, Cond(False(), c.rtl()), c.rtl());
}

Statement* NoEmit::copy(const Copying& copying) const {
  return copying.make(*this, getSignal(), getSignalName(), nullptr);
}

}  // namespace kiva
