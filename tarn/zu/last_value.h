#pragma once

namespace kiva {

class Module;

/// By the rule `last_value`: of the signals that carry the values of one signal, only the last in
/// the text is present of those that fire in an instant. Called once, when the body of the module
/// has been compiled.
void keep_last_values(Module* module);

}  // namespace kiva
