#pragma once

#include <string>

namespace kiva {

class Bddexpressionwood;
class Interface;
class Module;

/// Takes the signals, registers, equations and bindings of a compiled module in, as locals of
/// `module` whose internal names end in `suffix`, and enters them in the interface: inputs and
/// outputs by the called module's names, locals and data signals by its internal names.
void include_compiled_module(Module* module, Module* called, Interface* interface,
                             const std::string& suffix, Bddexpressionwood* wood);

}  // namespace kiva
