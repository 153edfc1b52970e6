#include <optional>

#include "tarn/zu/circuit.h"
#include "tarn/zu/present.h"

namespace kiva {

void Present::compile(Module* module, EquationTable* table) {
  std::optional<BranchTable> second;
  if (else_ != nullptr) second.emplace(table, module);
  compile_branch(then_, module, table);
  if (second) second->compile_into(table, else_);
  createEquations(module, table);
}

void Present::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  Expression* e = c.current(expression_);
  c.assign_whole(Circuit::set(*then_), Then(e, c.set()));
  if (else_ != nullptr) c.assign_whole(Circuit::set(*else_), Else(e, c.set()));
  c.assign_whole(Circuit::reset(*then_), c.reset());
  if (else_ != nullptr) c.assign_whole(Circuit::reset(*else_), c.reset());
  Expression* other_end =
      else_ != nullptr ? static_cast<Expression*>(Circuit::rtl(*else_)) : Else(e, c.set());
  c.assign_whole(c.rtl(), Or(Circuit::rtl(*then_), other_end));
}

}  // namespace kiva
