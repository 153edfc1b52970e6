// The told surface of Module: operations that are its members by name, and what a floor above does
// with a module by nature. Each is one call. Behind them, what is told and no program calls.

#include "tarn/model/module.h"

#include "tarn/model/sexception.h"
#include "tarn/zu/compilation.h"
#include "tarn/zu/finalize.h"
#include "tarn/zu/module_inclusion.h"
#include "tarn/zuc/zuc_writer.h"

namespace kiva {

// Compilation.
bool Module::compile() {
  return compile_module(this);
}
void Module::createCompileEnv() {
  create_compile_env(this);
}
void Module::sortCode() {
  sort_code(this);
}
void Module::includeCompiledModule(Module* called, Interface* interface, const std::string& suffix,
                                   Bddexpressionwood* wood) {
  include_compiled_module(this, called, interface, suffix, wood);
}

// Finalisation.
void Module::finalize(int keep_rtl) {
  finalize_module(this, keep_rtl);
}
void Module::clean() {
  clean_module(this);
}
void Module::clean_locals() {
  kiva::clean_locals(this);
}
void Module::suppress_useless_registers() {
  kiva::suppress_useless_registers(this);
}
void Module::constants_propagation() {
  propagate_constants(this);
}
void Module::check_over_knowledge() {
  add_over_knowledge_check(this);
}

// The text of a compiled module.
void Module::ZUC_put(std::ostream& os, int, int, int forget_locals) {
  write_zuc(this, os, forget_locals != 0);
}
void Module::printBinding(std::ostream& os, long* map) {
  write_zuc_bindings(this, os, map);
}
void Module::save() {
  save_zuc(this);
}

// Called by no program.

long Module::getOtherBddId(long index, Bddexpressionwood* wood) const {
  const SignalRef* ref = signal_manager->getSignalRefById(index, wood);
  if (ref == nullptr)
    throw IllegalOperationException("Module::getOtherBddId: no signal in table for this bdd id:",
                                    std::to_string(index));
  const long value_index = ref->getBddValueId(wood);
  return index == value_index ? ref->getBddStatusId(wood) : value_index;
}

void Module::removeBinding(const std::string& signal_name) {
  if (data_table != nullptr) data_table->erase(signal_name);
}

void Module::learnStatusWireAssertion() {
  Bddexpressionwood* wood = getBddWood();
  bdd present = wood->Bdd_one();
  for (const Signal* local : local_signal_list)
    if (local->isWire())
      present = wood->Bdd_and(present, wood->Bdd_var_by_index(local->getBddStatusId(this, wood)));
  for (long index : wood->Set_of_exp().to_set()) {
    Bddexpression* e = wood->exp_by_index(index);
    if (e->getAbstraction() == 0) e->setBddExp(wood->Bdd_reduce(e->my_bdd_exp(), present));
  }
}

}  // namespace kiva
