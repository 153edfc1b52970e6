// Statements side by side. A member that ends before the others leaves a mark in a register, which
// stands until all have ended or the whole is killed.

#include "tarn/zu/circuit.h"
#include "tarn/zu/parallel.h"

namespace kiva {

void Parallel::compile(Module* module, EquationTable* table) {
  BranchTable second(table, module);
  compile_branch(left_, module, table);
  second.compile_into(table, right_);
  createEquations(module, table);
}

void Parallel::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  left_ended_ = c.make_register();
  right_ended_ = c.make_register("", "ACTIFBIS");
  Signal* const A = left_ended_.ACTIF;
  Signal* const B = right_ended_.ACTIF;
  Signal* const left = Circuit::rtl(*left_);
  Signal* const right = Circuit::rtl(*right_);
  Signal* const reset = c.reset();
  c.assign(Circuit::set(*left_), c.set());
  c.assign(Circuit::set(*right_), c.set());
  c.assign(Circuit::reset(*left_), reset);
  c.assign(Circuit::reset(*right_), reset);
  c.assign(c.rtl(), Or(And(And(Not(A), Not(B)), And(right, left)),
                       Or(And(And(right, Not(B)), A), And(And(left, Not(A)), B))));
  c.assign(left_ended_.ACTIFPLUS, Or(And(And(A, Not(right)), Not(reset)),
                                     And(And(And(Not(right), Not(reset)), left), Not(B))));
  c.assign(right_ended_.ACTIFPLUS, Or(And(And(B, Not(left)), Not(reset)),
                                      And(And(And(right, Not(reset)), Not(left)), Not(A))));
}

void Pn::compile(Module* module, EquationTable* table) {
  std::vector<BranchTable> others;
  for (size_t i = 1; i < members_.size(); ++i) others.emplace_back(table, module);
  compile_branch(members_[0], module, table);
  for (size_t i = 1; i < members_.size(); ++i) others[i - 1].compile_into(table, members_[i]);
  createEquations(module, table);
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

}  // namespace kiva
