#include "tarn/zu/statements/wait.h"

#include "tarn/model/sexception.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"
#include "tarn/zu/statements/sequence.h"

namespace kiva {

Statement* Wait::read(class_zu_parser& reader, Expression* expression) {
  return reader.build<Wait>(reader.next_name("W", Module::WaitNumber()), expression);
}

Statement* Wait::read(class_zu_parser& reader, int count, Expression* expression) {
  if (count < 1)
    reader.refuse(BadValueNumberWaitException(count),
                  "wait wants a number of 1 or more, not " + std::to_string(count));
  if (count <= 1) return read(reader, expression);
  reader.count_copies(count, 1);
  std::vector<Statement*> members;
  members.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) {
    members.push_back(read(reader, expression));
    members.back()->setCounted();
  }
  return Sn::read(reader, std::move(members));
}

void Wait::compile(Module* module, EquationTable* table) {
  table->pre_later(module);
  createEquations(module, table);
}

void Wait::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  Expression* e = c.condition(expression_, false, true);
  register_ = c.make_register();
  Signal* const actif = register_.ACTIF;
  c.assign_whole(c.rtl(), And(actif, e));
  c.assign_whole(register_.ACTIFPLUS,
                 Or(And(c.set(), Not(c.reset())), And(And(actif, Not(c.reset())), Np(e))));
}

Statement* Wait::copy(const Copying& copying) const {
  return copying.make(*this, expression_);
}

}  // namespace kiva
