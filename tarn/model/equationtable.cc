// The equations of single signals. Each is a pair: of the status on the signal's "_s_" variable and
// of the value on its "_v_" variable, over one wood.
//
// A function is always replaced together with the dates that stood there: the walks over the whole
// wood that would warn of a cycle cost time at every equation, and callPert tells each cycle once.
//
// Invariant (its fellows stand in equationtable_merge.cc):
//  1. Terms wait only for a variable that has an equation.

#include "tarn/model/equationtable.h"

#include <algorithm>
#include <iostream>
#include <memory>

#include "base/check.h"
#include "tarn/model/compilation.h"
#include "tarn/model/function_change.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"

namespace kiva {

/// Later terms are over later variables, which stand below the others in the order: built from the
/// last one on, each adds nodes on top of what is there.
void EquationTable::settle(long index) {
  const auto at = pending_.find(index);
  if (at == pending_.end()) return;
  const auto [conjunction, terms] = std::move(at->second);
  pending_.erase(at);
  Bddexpressionwood* wood = bdd_expression_wood;
  bdd all = terms.back();
  for (size_t i = terms.size() - 1; i-- > 0;)
    all = conjunction ? wood->Bdd_and(terms[i], all) : wood->Bdd_or(terms[i], all);
  if (conjunction) {
    and_function(*wood->exp_by_index(index), all);
  } else {
    or_function(*wood->exp_by_index(index), all);
  }
}

void EquationTable::settle() {
  while (!pending_.empty()) settle(pending_.begin()->first);
}

void EquationTable::join_later(long index, bool conjunction, const bdd& f) {
  const auto at = pending_.find(index);
  if (at != pending_.end() && at->second.conjunction != conjunction) settle(index);
  KIVA_CHECK(1, bdd_expression_wood->exp_by_index(index) != nullptr);
  PendingTerms& pending = pending_[index];
  pending.conjunction = conjunction;
  pending.terms.push_back(f);
}

Bddexpression* EquationTable::equation_at(long index) {
  settle(index);
  bdd_expression_wood->update_bdd_vars();
  return bdd_expression_wood->exp_by_index(index);
}

void EquationTable::define(const std::string& name, long index, const bdd& f, int usertype) {
  const std::unique_ptr<Bddexpression> replaced(equation_at(index));
  // Learnt, and so owned, by the wood.
  new Bddexpression(name, bdd_expression_wood, bdd_expression_wood->Bdd_var_by_index(index), f, 0,
                    0, usertype);
}

void EquationTable::createEquation(Signal* signal, Expression* e, Module* module, bool initial) {
  Bddexpressionwood* wood = bdd_expression_wood;
  const bdd status = signal->getBddStatus(module, wood);
  const long status_index = wood->Index_var_by_bdd(status);
  const long value_index = wood->Index_var_by_bdd(signal->getBddValue(module, wood));
  define(signal->getInternalName(), status_index,
         initial ? e->getInitialBddStatus(module, wood) : e->getBddStatus(module, wood),
         signal->computeStatusType());
  bdd value;
  if (signal->isWire()) {
    value = wood->Bdd_not(status);
  } else {
    value = initial ? e->getInitialBddValue(module, wood) : e->getBddValue(module, wood);
  }
  define(signal->getInternalName(), value_index, value, signal->computeValueType());
}

void EquationTable::createUnifyEquation(Signal* signal, Expression* e, Module* module,
                                        bool initial) {
  join_rails_later(signal, e, module, initial);
  settle(signal->getBddStatusId(module, bdd_expression_wood));
  settle(signal->getBddValueId(module, bdd_expression_wood));
}

void EquationTable::join_rails_later(Signal* signal, Expression* e, Module* module, bool initial) {
  Bddexpressionwood* wood = bdd_expression_wood;
  const long status_index = signal->getBddStatusId(module, wood);
  const long value_index = signal->getBddValueId(module, wood);
  const bdd status = initial ? e->getInitialBddStatus(module, wood) : e->getBddStatus(module, wood);
  const bdd value = initial ? e->getInitialBddValue(module, wood) : e->getBddValue(module, wood);
  wood->update_bdd_vars();
  if (wood->exp_by_index(status_index) != nullptr) {
    join_later(status_index, false, status);
  } else {
    std::cerr << "internal error 1 in createUnifyEquation()! about sid=" << status_index << '\n';
  }
  if (wood->exp_by_index(value_index) != nullptr) {
    join_later(value_index, false, value);
  } else {
    std::cerr << "internal error 2 in createUnifyEquation()! about vid=" << value_index << '\n';
  }
}

void EquationTable::createRails(Signal* signal, const bdd& status, const bdd& value,
                                int status_type, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  const std::string name = signal->getName(module, wood);
  define(name, signal->getBddStatusId(module, wood), status, status_type);
  define(name, signal->getBddValueId(module, wood), value, status_type + 1);
}

void EquationTable::raise(Signal* signal, const bdd& f, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  const long status_index = signal->getBddStatusId(module, wood);
  if (Bddexpression* equation = equation_at(status_index)) {
    or_function(*equation, f);
  } else {
    define(signal->getName(module, wood), status_index, f, Compilation::STAT);
  }
}

void EquationTable::createRegisterEquation(Signal* signal, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  define(signal->getInternalName(), wood->Index_var_by_bdd(signal->getBddValue(module, wood)),
         wood->Bdd_not(signal->getBddStatus(module, wood)), signal->computeValueType());
}

void EquationTable::createBottomEquation(Signal* signal, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  define(signal->getInternalName(), signal->getBddStatusId(module, wood), wood->Bdd_zero(),
         signal->computeStatusType());
  define(signal->getInternalName(), signal->getBddValueId(module, wood), wood->Bdd_zero(),
         signal->computeValueType());
}

void EquationTable::createBottomEquation(Signal* signal, Module* module, int occurrence) {
  Bddexpressionwood* wood = bdd_expression_wood;
  const SignalRef* ref = module->getSignalManager()->getSignalRefByOccurrence(signal, occurrence);
  if (ref == nullptr)
    throw IllegalOperationException("createBottomEquation: no signalref",
                                    signal->getInternalName());
  define(signal->getInternalName(), ref->getBddStatusId(wood), wood->Bdd_zero(),
         signal->computeStatusType());
  define(signal->getInternalName(), ref->getBddValueId(wood), wood->Bdd_zero(),
         signal->computeValueType());
}

void EquationTable::replaceEquation(Signal* signal, Signal* other, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  const auto follow = [&](long index, const bdd& followed, long followed_index, int usertype) {
    if (Bddexpression* equation = equation_at(index)) {
      set_function(*equation, followed);
    } else {
      define(signal->getInternalName(), index, wood->Bdd_var_by_index(followed_index), usertype);
    }
  };
  follow(signal->getBddStatusId(module, wood), other->getBddStatus(module, wood),
         other->getBddStatusId(module, wood), Compilation::STAT);
  follow(signal->getBddValueId(module, wood), other->getBddValue(module, wood),
         other->getBddValueId(module, wood), Compilation::VAL);
}

void EquationTable::note_source(const Signal* signal, const SourceSpan& span) {
  if (!span.known()) return;
  if (sources_ == nullptr) sources_ = std::make_shared<Sources>();
  sources_->makers[signal->getInternalName()] = span;
}

void EquationTable::note_cause(const bdd& f, const Signal* written, const SourceSpan& span) {
  if (!span.known()) return;
  if (sources_ == nullptr) sources_ = std::make_shared<Sources>();
  Sources::Cause cause{{}, written, span};
  const bddpp_manager& manager = *bdd_expression_wood->my_bdd_manager();
  for (long index : manager.set_of_index_depend_on(f))
    cause.reads.push_back(
        Compilation::bddNameToSignalName(bdd_expression_wood->Name_var_by_index(index)));
  std::sort(cause.reads.begin(), cause.reads.end());
  sources_->causes.push_back(std::move(cause));
}

}  // namespace kiva
