#include "tarn/zu/statements/present.h"

#include "tarn/model/compilation.h"
#include "tarn/model/rules.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

Statement* Present::read(class_zu_parser& reader, Expression* expression, Statement* then_branch,
                         Statement* else_branch) {
  return reader.build<Present>(reader.next_name("PR", Module::PresentNumber()), expression,
                               then_branch, else_branch);
}

Statement* Present::read(class_zu_parser& reader, DataExpr* condition, Statement* then_branch,
                         Statement* else_branch) {
  const std::string name = reader.next_name("IF", Module::PresentNumber());
  Signal* signal = reader.bind_condition(condition, name);
  return reader.build<Present>(name, signal, then_branch, else_branch);
}

void Present::compile(Module* module, EquationTable* table) {
  compile_branches(children(), module, table);
  createEquations(module, table);
}

void Present::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  Expression* e = c.condition(expression_, true, false);
  c.assign_whole(Circuit::set(*then_), Then(e, c.set()));
  if (else_ != nullptr) c.assign_whole(Circuit::set(*else_), Else(e, c.set()));
  c.assign_whole(Circuit::reset(*then_), c.reset());
  if (else_ != nullptr) c.assign_whole(Circuit::reset(*else_), c.reset());
  Expression* other_end =
      else_ != nullptr ? static_cast<Expression*>(Circuit::rtl(*else_)) : Else(e, c.set());
  c.assign_whole(c.rtl(), Or(Circuit::rtl(*then_), other_end));
}

bool Present::reincarnate() {
  if (else_ == nullptr) return Compilation::rules().skip || then_->reincarnate();
  return then_->reincarnate() || else_->reincarnate();
}

Statement* Present::copy(const Copying& copying) const {
  Statement* then_branch = copying.part(then_);
  return copying.make(*this, expression_, then_branch, copying.part(else_));
}

}  // namespace kiva
