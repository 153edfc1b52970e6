#include "tarn/zu/compilation.h"

#include <memory>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/causality.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/last_value.h"
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
  const auto tie = [&](long index, const bdd& inside, int usertype) {
    const std::unique_ptr<Bddexpression> replaced(wood->exp_by_index(index));
    // Learnt, and so owned, by the wood.
    new Bddexpression(signal->getInternalName(), wood, wood->Bdd_var_by_index(index), inside, 0, 0,
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

bool compile_module(Module* module) {
  const CompilingModule nested(module);
  create_compile_env(module);
  Statement* const body = module->getStatement();
  const Loop::Allowance copies(*body);
  body->compile(module, module->getCompilation());
  body->connectExternalWires(module);
  // What is still to be or-ed onto an equation would undo a change of it.
  module->getCompilation()->settle();
  if (Compilation::rules().last_value) keep_last_values(module);
  sort_code(module);
  for (Signal* wire : {module->getSet(), module->getReset(), module->getRtl()}) wire->setWire();
  module->setReincarnate(body->reincarnate());
  return module->getReincarnate();
}

void create_compile_env(Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  const auto make_wire = [&](const char* prefix) {
    return make_kept<Signal>(signal_name(prefix + module->getName(), module), module, wood);
  };
  module->setSet(make_wire("SET"));
  module->setReset(make_wire("RESET"));
  module->setRtl(make_wire("RTL"));
  for (Signal* output : module->getOutputSignalList()) {
    start_signal(output, module, "Module::createCompileEnv: undefined output signal");
    start_bound_signals(output, module);
  }
  for (Signal* local : module->getLocalSignalList()) {
    if (local->isRegister() && local->getSignalRef(module, wood) != nullptr) continue;
    start_signal(local, module, "Module::createCompileEnv: undefined local signal");
    start_bound_signals(local, module);
  }
}

void sort_code(Module* module) {
  if (Compilation::rules().causality) settle_cycles(module);
  std::list<long> indices;
  for (const signal_list* list : {&module->getLocalSignalList(), &module->getOutputSignalList()})
    for (const Signal* signal : *list)
      indices.splice(indices.end(), signal->getAllBddId(module, module->getBddWood()));
  module->getCompilation()->callPert(indices);
}

}  // namespace kiva
