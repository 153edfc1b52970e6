// One statement after the other, and again.

#include "tarn/model/sexception.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/loop.h"
#include "tarn/zu/sequence.h"

namespace kiva {

void Sequence::compile(Module* module, EquationTable* table) {
  left_->compile(module, table);
  right_->compile(module, table);
  createEquations(module, table);
}

void Sequence::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  c.assign(Circuit::set(*left_), c.set());
  c.assign(Circuit::set(*right_), Circuit::rtl(*left_));
  c.assign(Circuit::reset(*left_), c.reset());
  c.assign(Circuit::reset(*right_), c.reset());
  c.assign(c.rtl(), Circuit::rtl(*right_));
}

void Sn::compile(Module* module, EquationTable* table) {
  for (Statement* member : members_) member->compile(module, table);
  createEquations(module, table);
}

void Sn::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  Signal* starter = c.set();
  for (Statement* member : members_) {
    c.assign(Circuit::set(*member), starter);
    starter = Circuit::rtl(*member);
  }
  for (Statement* member : members_) c.assign(Circuit::reset(*member), c.reset());
  c.assign(c.rtl(), starter);
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

}  // namespace kiva
