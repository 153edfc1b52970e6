#include "tarn/zu/circuit.h"

#include "tarn/model/compilation.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"

namespace kiva {

std::string signal_name(const std::string& name, Module* module) {
  return Compilation::rules().copies ? module->getSignalManager()->freeName(name) : name;
}

Circuit::Circuit(Statement& statement, Module* module, EquationTable* table)
    : statement_(statement), module_(module), table_(table) {
  statement.createWires(module, table);
}

Signal* Circuit::set(const Statement& statement) {
  if (statement.getSet() == nullptr) throw StatementWireException("set");
  return statement.getSet();
}

Signal* Circuit::reset(const Statement& statement) {
  if (statement.getReset() == nullptr) throw StatementWireException("reset");
  return statement.getReset();
}

Signal* Circuit::rtl(const Statement& statement) {
  if (statement.getRtl() == nullptr) throw StatementWireException("rtl");
  return statement.getRtl();
}

Signal* Circuit::make_wire(const std::string& name) {
  auto* wire =
      make_kept<Signal>(signal_name(name, module_), module_, table_->getBddexpressionWood());
  wire->setWire();
  module_->addLocalSignal(wire);
  table_->note_source(wire, statement_.getSpan());
  return wire;
}

Signal* Circuit::make_register_variable(const std::string& name) {
  auto* variable =
      make_kept<Signal>(signal_name(name, module_), module_, table_->getBddexpressionWood(), true);
  module_->addLocalSignal(variable);
  table_->note_source(variable, statement_.getSpan());
  return variable;
}

RegisterPair Circuit::make_register(const std::string& suffix, const std::string& prefix,
                                    bool value_equation) {
  RegisterPair pair;
  pair.ACTIF = make_register_variable(prefix + statement_.getName() + suffix);
  pair.ACTIFPLUS = make_register_variable(prefix + "PLUS" + statement_.getName() + suffix);
  module_->addRegisterSignal(pair.ACTIF, pair.ACTIFPLUS);
  statement_.note_register(pair);
  if (value_equation) table_->createRegisterEquation(pair.ACTIF, module_);
  return pair;
}

Expression* Circuit::condition(Expression* e, bool at_start, bool later) {
  Expression* now = current(e);
  if (!Compilation::MapFlag()) return now;
  Signal* wire = make_wire("COND" + statement_.getName());
  assign_whole(wire, now);
  statement_.note_condition({wire, at_start, later});
  return now;
}

void Circuit::tell_that_it_stands() {
  if (!Compilation::MapFlag()) return;
  const RegisterPair stands = make_register("", "STANDS");
  assign_whole(stands.ACTIFPLUS, And(And(Or(set(), stands.ACTIF), Not(rtl())), Not(reset())));
}

void Circuit::start_and_reset(const Statement& child) {
  assign(set(child), set());
  assign(reset(child), reset());
}

namespace {

/// The table of one branch. Unless it ends in `unify`, its wood goes with it.
class BranchTable {
 public:
  BranchTable(EquationTable* table, Module* module) : module_(module), table_(table) {}
  ~BranchTable() {
    if (table_ != nullptr && table_->getBddexpressionWood() != nullptr) table_->discard(module_);
  }
  EquationTable* operator->() const { return table_.get(); }
  EquationTable* get() const { return table_.get(); }

 private:
  Module* module_;
  std::unique_ptr<EquationTable> table_;
};

/// Records the levels of its table, unless cycles are judged in the whole module alone.
void compile_branch(Statement* branch, Module* module, EquationTable* table) {
  branch->compile(module, table);
  if (branch->getPertLevel() == 0 && !Compilation::rules().causality)
    branch->setPertLevel(table->callPert());
}

}  // namespace

void compile_branches(const std::vector<Statement*>& branches, Module* module,
                      EquationTable* table) {
  // All begin with what stood there before the first.
  const auto compile_in = [&](Statement* branch, EquationTable* own) {
    own->begin_branch(module);
    compile_branch(branch, module, own);
    table->unify_later(own, module);
    // Most nodes were made on the way to functions that have grown since.
    table->getBddexpressionWood()->my_bdd_manager()->collect_when_doubled();
  };
  if (branches.size() < 2) return compile_branch(branches[0], module, table);
  const BranchTable before(table->branch(module), module);
  compile_branch(branches[0], module, table);
  for (size_t i = 1; i + 1 < branches.size(); ++i) {
    const BranchTable own(before->fellow(module), module);
    compile_in(branches[i], own.get());
  }
  compile_in(branches.back(), before.get());
}

}  // namespace kiva
