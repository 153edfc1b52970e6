// The told surface of Module: operations that are its members by name, and what a floor above does
// with a module by nature. Each is one call; nothing else stands here.

#include "tarn/model/module.h"

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
void Module::learnStatusWireAssertion() {
  assume_wires_present(this);
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

}  // namespace kiva
