// Copies of statements, and which statements need them. A copy shares expressions and signals with
// its original; its wires and registers are its own, made when it compiles.

#include <algorithm>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/abort.h"
#include "tarn/zu/automaton.h"
#include "tarn/zu/emit.h"
#include "tarn/zu/halt.h"
#include "tarn/zu/loop.h"
#include "tarn/zu/mealy.h"
#include "tarn/zu/parallel.h"
#include "tarn/zu/present.h"
#include "tarn/zu/rules.h"
#include "tarn/zu/run.h"
#include "tarn/zu/sequence.h"
#include "tarn/zu/sustain.h"
#include "tarn/zu/wait.h"

namespace kiva {

namespace {

/// How one copy names what it copies, all the way down.
struct Naming {
  Naming(Module* module, EquationTable* table) : numbered(false), module(module), table(table) {}
  explicit Naming(int number) : numbered(true), number(number) {}

  bool numbered;
  Module* module = nullptr;
  EquationTable* table = nullptr;
  int number = 0;

  std::string operator()(const Statement& original) const {
    return original.getName() + (numbered ? std::to_string(number) : "_bis");
  }
  Statement* child(Statement* original) const {
    if (original == nullptr) return nullptr;
    return numbered ? original->duplicate(number) : original->duplicate(module, table);
  }
  std::vector<Statement*> children(const std::vector<Statement*>& originals) const {
    std::vector<Statement*> copies;
    copies.reserve(originals.size());
    for (Statement* original : originals) copies.push_back(child(original));
    return copies;
  }
};

template <class T, class... Args>
Statement* make_copy(const T& original, const Naming& naming, Args&&... args) {
  T* copy = make_kept<T>(naming(original), std::forward<Args>(args)...);
  copy->setModule(original.getModule());
  copy->setSpan(original.getSpan());
  return copy;
}

Statement* copy_of(const Nothing& s, const Naming& naming) {
  return make_copy(s, naming);
}
Statement* copy_of(const Halt& s, const Naming& naming) {
  return make_copy(s, naming);
}
Statement* copy_of(const Pause& s, const Naming& naming) {
  return make_copy(s, naming);
}
Statement* copy_of(const Emit& s, const Naming& naming) {
  return make_copy(s, naming, s.getSignal(), s.getSignalName(), nullptr);
}
Statement* copy_of(const NoEmit& s, const Naming& naming) {
  return make_copy(s, naming, s.getSignal(), s.getSignalName(), nullptr);
}
Statement* copy_of(const SustainUntil& s, const Naming& naming) {
  return make_copy(s, naming, s.getSignal(), s.getSignalName(), nullptr, s.getExpression());
}
Statement* copy_of(const Wait& s, const Naming& naming) {
  return make_copy(s, naming, s.getExpression());
}
Statement* copy_of(const Loop& s, const Naming& naming) {
  return make_copy(s, naming, naming.child(s.getBody()));
}
Statement* copy_of(const Sequence& s, const Naming& naming) {
  Statement* left = naming.child(s.getLeft());
  return make_copy(s, naming, left, naming.child(s.getRight()));
}
Statement* copy_of(const Sn& s, const Naming& naming) {
  return make_copy(s, naming, naming.children(s.getMembers()));
}
Statement* copy_of(const Parallel& s, const Naming& naming) {
  Statement* left = naming.child(s.getLeft());
  return make_copy(s, naming, left, naming.child(s.getRight()));
}
Statement* copy_of(const Pn& s, const Naming& naming) {
  return make_copy(s, naming, naming.children(s.getMembers()));
}
Statement* copy_of(const Present& s, const Naming& naming) {
  Statement* then_branch = naming.child(s.getThen());
  return make_copy(s, naming, s.getExpression(), then_branch, naming.child(s.getElse()));
}
Statement* copy_of(const Abort& s, const Naming& naming) {
  return make_copy(s, naming, s.getExpression(), naming.child(s.getBody()));
}
Statement* copy_of(const StrongAbort& s, const Naming& naming) {
  return make_copy(s, naming, s.getExpression(), naming.child(s.getBody()));
}

}  // namespace

#define KIVA_DUPLICATES(CLASS)                                        \
  Statement* CLASS::duplicate(Module* module, EquationTable* table) { \
    return copy_of(*this, Naming(module, table));                     \
  }                                                                   \
  Statement* CLASS::duplicate(int number) {                           \
    return copy_of(*this, Naming(number));                            \
  }

KIVA_DUPLICATES(Nothing)
KIVA_DUPLICATES(Halt)
KIVA_DUPLICATES(Pause)
KIVA_DUPLICATES(Emit)
KIVA_DUPLICATES(NoEmit)
KIVA_DUPLICATES(SustainUntil)
KIVA_DUPLICATES(Wait)
KIVA_DUPLICATES(Loop)
KIVA_DUPLICATES(Sequence)
KIVA_DUPLICATES(Sn)
KIVA_DUPLICATES(Parallel)
KIVA_DUPLICATES(Pn)
KIVA_DUPLICATES(Present)
KIVA_DUPLICATES(Abort)
KIVA_DUPLICATES(StrongAbort)
#undef KIVA_DUPLICATES

Statement* Run::duplicate(Module* module, EquationTable*) {
  Run* copy = make_kept<Run>("R_" + module->getName() + "_" + std::to_string(Module::RunNumber()++),
                             module_name_);
  copy->setModule(getModule());
  copy->setSpan(getSpan());
  copy->renaming_ = renaming_;
  return copy;
}

Statement* Run::duplicate(int number) {
  Run* copy = make_kept<Run>(getName() + std::to_string(number), module_name_);
  copy->setModule(getModule());
  copy->setSpan(getSpan());
  return copy;
}

// By the grammar these two stand only as a whole body, which nothing copies.

Statement* Automaton::duplicate(Module*, EquationTable*) {
  throw IllegalOperationException("Automaton::duplicate", getName());
}
Statement* Automaton::duplicate(int) {
  throw IllegalOperationException("Automaton::duplicate", getName());
}
Statement* MealyMachine::duplicate(Module*, EquationTable*) {
  throw IllegalOperationException("MealyMachine::duplicate", getName());
}
Statement* MealyMachine::duplicate(int) {
  throw IllegalOperationException("MealyMachine::duplicate", getName());
}

bool Sn::reincarnate() {
  return std::all_of(members_.begin(), members_.end(),
                     [](Statement* member) { return member->reincarnate(); });
}

bool Pn::reincarnate() {
  return std::any_of(members_.begin(), members_.end(),
                     [](Statement* member) { return member->reincarnate(); });
}

// It ends in its first instant if the expression is present there.
bool SustainUntil::reincarnate() {
  return Compilation::rules().skip;
}

bool Present::reincarnate() {
  if (else_ == nullptr) return Compilation::rules().skip || then_->reincarnate();
  return then_->reincarnate() || else_->reincarnate();
}

}  // namespace kiva
