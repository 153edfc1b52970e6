#include "tarn/zu/statements/loop.h"

#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"
#include "tarn/zu/statements/sequence.h"

namespace kiva {

Statement* Loop::read(class_zu_parser& reader, Statement* body) {
  return reader.build<Loop>(reader.next_name("L", Module::LoopNumber()), body);
}

namespace {

long statements_of(const Statement& statement) {
  long number = 1;
  for (const Statement* child : statement.children()) number += statements_of(*child);
  return number;
}

}  // namespace

long& Loop::copies_left() {
  struct Copies {
    long left = 0;
  };
  return Session::current().part<Copies>().left;
}

Loop::Allowance::Allowance(const Statement& module_body) : outer_(copies_left()) {
  copies_left() = 10'000 + 4 * statements_of(module_body);
}

void Loop::compile(Module* module, EquationTable* table) {
  if (body_->reincarnate()) {
    copies_left() -= statements_of(*body_);
    if (copies_left() < 0) {
      IllegalOperationException refusal("Loop::compile: too many copies of loop bodies", getName());
      refusal.set_where(getSpan());
      throw refusal;
    }
    // Two copies take turns, so that one can end, or be killed, while the other starts.
    const std::string name = "S_" + std::to_string(Module::SequenceNumber()++);
    Statement* copy = body_->duplicate(module, table);
    turns_ = {body_, copy};
    auto* both = make_kept<Sequence>(name, body_, copy);
    both->setModule(body_->getModule());
    both->setSpan(body_->getSpan());
    body_ = both;
  }
  body_->compile(module, table);
  createEquations(module, table);
}

void Loop::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(Circuit::set(*body_), Or(c.set(), Circuit::rtl(*body_)));
  c.assign(Circuit::reset(*body_), c.reset());
  c.assign(c.rtl(), False());
}

Statement* Loop::copy(const Copying& copying) const {
  return copying.make(*this, copying.part(body_));
}

}  // namespace kiva
