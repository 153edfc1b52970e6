// A module from its statement tree to dated equations.

#include <memory>

#include "tarn/model/arena.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/nested_modules.h"
#include "tarn/zu/statements/loop.h"

namespace kiva {

namespace {

/// Gives the signal its first occurrence for statements to write, Bottom until one does, and ties
/// what the outside sees to it.
void start_signal(Signal* signal, Module* module, const char* complaint) {
  Bddexpressionwood* wood = module->getBddWood();
  const SignalRef* outside = signal->getSignalRef(module, wood);
  if (outside == nullptr) throw IllegalOperationException(complaint, signal->getInternalName());
  signal->newOccurrence(wood, module);
  module->getCompilation()->createBottomEquation(signal, module);
  const auto tie = [&](long id, const bdd& inside, int usertype) {
    const std::unique_ptr<Bddexpression> replaced(wood->exp_by_index(id));
    // Learnt, and so owned, by the wood.
    new Bddexpression(signal->getInternalName(), wood, wood->Bdd_var_by_index(id), inside, 0, 0,
                      usertype);
  };
  tie(outside->getBddStatusId(wood), signal->getBddStatus(module, wood),
      signal->computeStatusType());
  tie(outside->getBddValueId(wood), signal->getBddValue(module, wood), signal->computeValueType());
}

/// The signals that carry the values of a valued signal.
void start_bound_signals(const Signal* clock, Module* module) {
  if (!clock->isValued(module, module->getBddWood())) return;
  const auto bound = module->getSignalBindingByClock(clock);
  if (bound == nullptr) return;
  for (Signal* signal : *bound)
    start_signal(signal, module, "Module::createCompileEnv: undefined signal");
}

}  // namespace

bool Module::compile() {
  const CompilingModule nested(this);
  createCompileEnv();
  const Loop::Allowance copies(*statement);
  statement->compile(this, compilation);
  statement->connectExternalWires(this);
  sortCode();
  for (Signal* wire : {set_wire, reset_wire, rtl_wire}) wire->setWire();
  reincarnate = statement->reincarnate();
  return reincarnate;
}

void Module::createCompileEnv() {
  Bddexpressionwood* wood = getBddWood();
  set_wire = make_kept<Signal>("SET" + name, this, wood);
  reset_wire = make_kept<Signal>("RESET" + name, this, wood);
  rtl_wire = make_kept<Signal>("RTL" + name, this, wood);
  for (Signal* output : output_signal_list) {
    start_signal(output, this, "Module::createCompileEnv: undefined output signal");
    start_bound_signals(output, this);
  }
  for (Signal* local : local_signal_list) {
    if (local->isRegister() && local->getSignalRef(this, wood) != nullptr) continue;
    start_signal(local, this, "Module::createCompileEnv: undefined local signal");
    start_bound_signals(local, this);
  }
}

void Module::sortCode() {
  std::list<long> ids;
  for (const signal_list* list : {&local_signal_list, &output_signal_list})
    for (const Signal* signal : *list)
      ids.splice(ids.end(), signal->getAllBddId(this, getBddWood()));
  compilation->callPert(ids);
}

}  // namespace kiva
