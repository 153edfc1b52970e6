#include "tarn/zu/statements/abort.h"

#include "tarn/model/compilation.h"
#include "tarn/model/function_change.h"
#include "tarn/model/rules.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

void Preemption::preempt(Circuit& c, Expression* e) {
  register_ = c.make_register();
  Signal* const actif = register_.ACTIF;
  c.assign(Circuit::set(*body_), c.set());
  c.assign_whole(Circuit::reset(*body_), Or(And(actif, And(Not(c.reset()), e)), c.reset()));
  Expression* body_ends = Circuit::rtl(*body_);
  if (!Compilation::rules().abort_start) body_ends = And(body_ends, Np(e));
  c.assign_whole(c.rtl(), Or(body_ends, And(e, actif)));
  c.assign_whole(register_.ACTIFPLUS, And(Not(c.reset()), And(Or(And(actif, Np(e)), c.set()),
                                                              Not(Circuit::rtl(*body_)))));
}

Statement* Abort::read(class_zu_parser& reader, Statement* body, Expression* expression) {
  return reader.build<Abort>(reader.next_name("A", Module::AbortNumber()), expression, body);
}

void Abort::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  preempt(c, c.condition(getExpression(), false, true));
}

Statement* Abort::copy(const Copying& copying) const {
  return copying.make(*this, getExpression(), copying.part(getBody()));
}

Statement* StrongAbort::read(class_zu_parser& reader, Statement* body, Expression* expression) {
  return reader.build<StrongAbort>(reader.next_name("SA", Module::AbortNumber()), expression, body);
}

Statement* StrongAbort::copy(const Copying& copying) const {
  return copying.make(*this, getExpression(), copying.part(getBody()));
}

namespace {

/// What a strong abort may mask: calls see(signal, occurrence, variable index) for both variables
/// of the occurrences from `first(signal)` on, of each output and plain local that the wood knows.
template <class First, class See>
void for_each_written(Module* module, Bddexpressionwood* wood, First first, See see) {
  const auto visit = [&](Signal* signal) {
    if (!signal->hasOccurrence(wood)) return;
    const int last = signal->getCurrentOccurrence(wood);
    for (int occurrence = first(signal); occurrence <= last; ++occurrence) {
      const SignalRef* ref =
          module->getSignalManager()->getSignalRefByOccurrence(signal, occurrence);
      if (ref == nullptr || !ref->isDefinedWood(wood)) continue;
      see(signal, occurrence, ref->getBddStatusId(wood));
      see(signal, occurrence, ref->getBddValueId(wood));
    }
  };
  for (Signal* output : module->getOutputSignalList()) visit(output);
  for (Signal* local : module->getLocalSignalList().plain())
    if (!local->isWire() && !local->isRegister()) visit(local);
}

}  // namespace

/// The body writes only the occurrence at which it starts and those that it makes, so these are the
/// only ones to remember.
void StrongAbort::remember_written(Module* module, EquationTable* table) {
  Bddexpressionwood* wood = table->getBddexpressionWood();
  written_before_.clear();
  for_each_written(
      module, wood,
      [&](Signal* signal) {
        const int current = signal->getCurrentOccurrence(wood);
        first_written_[signal] = current;
        return current;
      },
      [&](Signal*, int, long index) {
        if (const Bddexpression* equation = table->getBddExpression(index))
          if (equation->getAbstraction() == 0)
            written_before_.emplace(index, equation->my_bdd_exp());
      });
}

void StrongAbort::compile(Module* module, EquationTable* table) {
  struct Forget {
    StrongAbort& abort;
    ~Forget() {
      abort.written_before_.clear();
      abort.first_written_.clear();
    }
  } forget{*this};
  if (Compilation::rules().abort_mask) remember_written(module, table);
  Preemption::compile(module, table);
}

void StrongAbort::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  Expression* e = c.condition(getExpression(), false, true);
  preempt(c, e);
  if (Compilation::MapFlag()) {
    note_stop(c.make_wire("STOP" + getName()));
    c.assign_whole(getStop(), And(getRegister().ACTIF, e));
  }

  Bddexpressionwood* wood = table->getBddexpressionWood();
  if (wood == nullptr || wood->my_bdd_manager() == nullptr) return;
  const bool whole = Compilation::rules().abort_signal;
  const bdd status = whole ? e->getInitialBddStatus(module, wood) : e->getBddStatus(module, wood);
  const bdd value = whole ? e->getInitialBddValue(module, wood) : e->getBddValue(module, wood);
  bdd mask = wood->Bdd_or(value, wood->Bdd_not(status));
  mask = wood->Bdd_or(mask, wood->Bdd_not(getRegister().ACTIF->getBddStatus(module, wood)));
  if (wood->my_bdd_manager()->Bdd_is_one_tautologic(mask)) return;
  table->note_cause(wood->Bdd_or(value, wood->Bdd_not(status)), nullptr, getSpan());
  mask_written(mask, module, table);
}

void StrongAbort::mask_written(const bdd& mask, Module* module, EquationTable* table) {
  Bddexpressionwood* wood = table->getBddexpressionWood();
  const bool body_only = Compilation::rules().abort_mask;
  for_each_written(
      module, wood,
      [&](Signal* signal) {
        if (!body_only) return 1;
        auto at = first_written_.find(signal);
        if (at != first_written_.end()) return std::max(1, at->second);
        // What a run of the body has bound to a value has no further occurrences.
        return signal->isValue() && !signal->isInstance() ? 0 : 1;
      },
      [&](Signal*, int, long index) {
        Bddexpression* equation = table->getBddExpression(index);
        if (equation == nullptr || equation->getAbstraction() != 0) return;
        bdd masked = wood->Bdd_and(mask, equation->my_bdd_exp());
        auto before = written_before_.find(index);
        if (before != written_before_.end()) masked = wood->Bdd_or(before->second, masked);
        if (!(masked == equation->my_bdd_exp())) set_function(*equation, masked);
      });
}

}  // namespace kiva
