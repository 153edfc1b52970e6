#include "tarn/zu/statements/parallel.h"

#include <algorithm>

#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

Statement* Pn::read(class_zu_parser& reader, Statement* left, Statement* right) {
  if (left->isParallel()) return reader.appended(static_cast<Pn*>(left), right);
  return reader.build<Pn>(reader.next_name("Pn", Module::ParallelNumber()),
                          std::vector<Statement*>{left, right});
}

void SideBySide::compile(Module* module, EquationTable* table) {
  compile_branches(members_, module, table);
  createEquations(module, table);
}

bool SideBySide::reincarnate() {
  return std::any_of(members_.begin(), members_.end(),
                     [](Statement* member) { return member->reincarnate(); });
}

void Parallel::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  left_ended_ = c.make_register();
  right_ended_ = c.make_register("", "ACTIFBIS");
  Signal* const A = left_ended_.ACTIF;
  Signal* const B = right_ended_.ACTIF;
  Signal* const left = Circuit::rtl(*getLeft());
  Signal* const right = Circuit::rtl(*getRight());
  Signal* const reset = c.reset();
  c.assign(Circuit::set(*getLeft()), c.set());
  c.assign(Circuit::set(*getRight()), c.set());
  c.assign(Circuit::reset(*getLeft()), reset);
  c.assign(Circuit::reset(*getRight()), reset);
  c.assign(c.rtl(), Or(And(And(Not(A), Not(B)), And(right, left)),
                       Or(And(And(right, Not(B)), A), And(And(left, Not(A)), B))));
  c.assign(left_ended_.ACTIFPLUS, Or(And(And(A, Not(right)), Not(reset)),
                                     And(And(And(Not(right), Not(reset)), left), Not(B))));
  c.assign(right_ended_.ACTIFPLUS, Or(And(And(B, Not(left)), Not(reset)),
                                      And(And(And(right, Not(reset)), Not(left)), Not(A))));
}

Statement* Parallel::copy(const Copying& copying) const {
  Statement* left = copying.part(getLeft());
  return copying.make(*this, left, copying.part(getRight()));
}

void Pn::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  std::vector<Signal*> all_ended;  // of the members up to this one
  for (size_t i = 0; i < members_.size(); ++i) {
    const std::string index = std::to_string(i);
    registers_.push_back(c.make_register(index));
    all_ended.push_back(c.make_wire("RTL" + getName() + index));
  }
  for (Statement* member : members_) c.start_and_reset(*member);
  for (size_t i = 0; i < members_.size(); ++i) {
    Expression* ended = Or(registers_[i].ACTIF, Circuit::rtl(*members_[i]));
    c.assign(all_ended[i], i == 0 ? ended : And(ended, all_ended[i - 1]));
  }
  c.assign(c.rtl(), all_ended.back());
  for (size_t i = 0; i < members_.size(); ++i)
    c.assign(registers_[i].ACTIFPLUS, And(Or(registers_[i].ACTIF, Circuit::rtl(*members_[i])),
                                          And(Not(c.rtl()), Not(c.reset()))));
}

Statement* Pn::copy(const Copying& copying) const {
  return copying.make(*this, copying.parts(members_));
}

}  // namespace kiva
