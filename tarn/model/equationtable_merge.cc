// Whole tables: a table is copied for each branch of a statement, and the copies are merged again.
//
// The copies share the manager, so a variable has one index in all of them and equal functions are
// equal handles; merging still goes by names, and serves tables with managers of their own.
//
// Invariants:
//  2. An equation that moves from one table to another keeps its variable: the two woods have one
//     manager.
//  3. After a merge every variable with an equation there has one here.
//  4. After a merge a signal's current occurrence here is the latest of the two tables.
//  5. A branch knows no signals but those that it took over and those that came since it began, so
//     that with these a wood is forgotten by all.
//  6. Nothing waits to be put in place where an equation is copied, nor in a table whose wood goes,
//     but in a branch that an exception has left.
//
// By rules under which statements only ever or their part onto an occurrence, and and a new one
// onto the whole value, a branch need not know what stood there before: it begins with nothing, and
// what it adds is handed on as it is, so that nesting costs no more than the terms.

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include "base/check.h"
#include "tarn/model/compilation.h"
#include "tarn/model/equationtable.h"
#include "tarn/model/function_change.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/diagnostic.h"

namespace kiva {

namespace {

/// f in the manager of `to`, by name.
bdd carried(Bddexpressionwood* to, Bddexpressionwood* from, const bdd& f) {
  if (to->my_bdd_manager() == from->my_bdd_manager()) return f;
  const bdd copy = Bdd_isomorphe_by_name(to->my_bdd_manager(), from->my_bdd_manager(), f);
  to->update_bdd_vars();
  return copy;
}

index_set carried(Bddexpressionwood* to, Bddexpressionwood* from, const index_set& indices) {
  if (to->my_bdd_manager() == from->my_bdd_manager()) return indices;
  std::vector<long> found;
  for (long index : indices)
    found.push_back(to->Index_new_var_last(from->Name_var_by_index(index)));
  return index_set::from_unsorted(std::move(found));
}

std::array<const signal_list*, 4> lists_of(const Module* module) {
  return {&module->getInputSignalList(), &module->getOutputSignalList(),
          &module->getLocalSignalList(), &module->getDataSignalList()};
}

template <class See>
void for_each_signal(Module* module, See see) {
  for (const signal_list* list : lists_of(module))
    for (Signal* signal : *list) see(signal);
}

/// Has a signal of the module an occurrence in the wood?
[[maybe_unused]] bool is_known(const Module* module, Bddexpressionwood* wood) {
  for (const signal_list* list : lists_of(module))
    for (const Signal* signal : *list)
      if (signal->hasOccurrence(wood)) return true;
  return false;
}

/// What an or, or an and, leaves as it is.
bdd neutral(Bddexpressionwood* wood, bool conjunction) {
  return conjunction ? wood->Bdd_one() : wood->Bdd_zero();
}

/// The current occurrence in the wood; -1 when the wood does not know the signal.
int occurrence_in(const Signal* signal, Bddexpressionwood* wood) {
  return signal->hasOccurrence(wood) ? signal->getCurrentOccurrence(wood) : -1;
}

}  // namespace

void EquationTable::begin_branch(const Module* module) {
  const auto lists = lists_of(module);
  for (size_t i = 0; i < lists.size(); ++i) lists_at_begin_[i] = lists[i]->size();
}

/// Calls `see` for all signals that can have an occurrence in this table's wood.
template <class See>
void EquationTable::for_each_known_signal(Module* module, See see) {
  for (Signal* signal : carried_) see(signal);
  const auto lists = lists_of(module);
  for (size_t i = 0; i < lists.size(); ++i)
    for (size_t at = lists_at_begin_[i]; at < lists[i]->size(); ++at) see((*lists[i])[at]);
}

/// The signal's current occurrence here becomes the given one, unless it has a later one.
void EquationTable::learn_occurrence(Signal* signal, int occurrence) {
  if (occurrence > occurrence_in(signal, bdd_expression_wood))
    signal->extendCurrentOccurrenceTable(bdd_expression_wood, occurrence);
}

void EquationTable::add(Bddexpression* e, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  Bddexpressionwood* from = e->my_wood();
  const bdd variable = carried(wood, from, e->my_bdd_var());
  wood->update_bdd_vars();
  const long index = wood->Index_var_by_bdd(variable);
  const std::unique_ptr<Bddexpression> replaced(equation_at(index));
  Bddexpression* copy;
  if (e->getAbstraction() != 0) {
    copy = new Bddexpression(index, wood, carried(wood, from, e->set_of_var_dependances()),
                             e->getExpDef(), e->getEarlyDate(), e->getLateDate());
    copy->setName(e->my_name());
    copy->setUserType(e->getUserType());
  } else {
    copy = new Bddexpression(e->my_name(), wood, variable, carried(wood, from, e->my_bdd_exp()),
                             e->getEarlyDate(), e->getLateDate(), e->getUserType());
  }

  const std::string name = Compilation::bddNameToSignalName(copy->my_bddname());
  SignalRef* ref = module->getSignalManager()->getSignalRefByName(name);
  if (ref == nullptr) throw IllegalOperationException("EquationTable::add: no Signal ref", name);
  if (!ref->isDefinedWood(wood)) {
    const long status_index = SignalRef::computeId("_s_" + name, wood);
    const long value_index = SignalRef::computeId("_v_" + name, wood);
    module->getSignalManager()->extendSignalRef(status_index, value_index, ref, wood);
  }
  if (Signal* signal = module->getSignalFromInternalName(ref->getInternalName()))
    learn_occurrence(signal, ref->getCurrentOccurrence());
}

void EquationTable::unify(EquationTable* other, Module* module) {
  unify_later(other, module);
  settle();
}

void EquationTable::unify_later(EquationTable* other, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  Bddexpressionwood* from = other->bdd_expression_wood;
  if (wood->my_bdd_manager() != from->my_bdd_manager()) other->settle();
  wood->update_bdd_vars();
  from->update_bdd_vars();
  SignalManager* manager = module->getSignalManager();
  const index_set equations = from->Set_of_exp();
  for (long index : equations) {
    unify_equation(from->exp_by_index(index), index, *other, module);
    KIVA_CHECK(
        3, wood->exp_by_index(wood->Index_var_by_name(from->Name_var_by_index(index))) != nullptr);
  }
  take_terms(other);
  // Signals without an equation there are known all the same.
  for (SignalRef* ref : manager->definedIn(from)) {
    if (ref->isDefinedWood(wood)) continue;
    if (module->getSignalFromInternalName(ref->getInternalName()) == nullptr) continue;
    const long status_index = SignalRef::computeId("_s_" + ref->getCurrentName(), wood);
    const long value_index = SignalRef::computeId("_v_" + ref->getCurrentName(), wood);
    manager->extendSignalRef(status_index, value_index, ref, wood);
  }
  // The table had each signal at its latest occurrence.
  other->for_each_known_signal(module, [&](Signal* signal) {
    if (signal->hasOccurrence(from)) learn_occurrence(signal, signal->getCurrentOccurrence(from));
    KIVA_CHECK(4, occurrence_in(signal, wood) >= occurrence_in(signal, from));
  });
  other->discard(module);
}

/// What `add` does, for a wood over the same manager that is about to go.
void EquationTable::move_equation(long index, Bddexpressionwood* from, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  SignalRef* ref = module->getSignalManager()->getSignalRefById(index, from);
  if (ref == nullptr)
    throw IllegalOperationException(
        "EquationTable::add: no Signal ref",
        Compilation::bddNameToSignalName(from->Name_var_by_index(index)));
  KIVA_CHECK(2, wood->my_bdd_manager() == from->my_bdd_manager());
  Bddexpression* moved = std::exchange(from->Exp_table()[index], nullptr);
  moved->setBddexpressionwood(wood);
  moved->setLateDate(from->getLateDate(index));
  if (moved->getAbstraction() != 0) {
    wood->learn_abstract_expression(moved, nullptr);
  } else {
    wood->learn_expression(moved);
  }
  if (!ref->isDefinedWood(wood))
    module->getSignalManager()->extendSignalRef(ref->getBddStatusId(from), ref->getBddValueId(from),
                                                ref, wood);
}

/// Is the variable the value of a signal of which one of the tables has further occurrences?
bool EquationTable::joins_by_and(long index, const EquationTable& other, Module* module) const {
  if (!Compilation::rules().values) return false;
  const SignalRef* ref = module->getSignalManager()->getSignalRefById(index, bdd_expression_wood);
  if (ref == nullptr || ref->getCurrentOccurrence() != 0 ||
      index != ref->getBddValueId(bdd_expression_wood))
    return false;
  const Signal* signal = module->getSignalFromInternalName(ref->getInternalName());
  return signal != nullptr && std::max(occurrence_in(signal, bdd_expression_wood),
                                       occurrence_in(signal, other.bdd_expression_wood)) > 0;
}

void EquationTable::unify_equation(Bddexpression* theirs, long their_index, EquationTable& other,
                                   Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  Bddexpressionwood* from = other.bdd_expression_wood;
  const bool shared = wood->my_bdd_manager() == from->my_bdd_manager();
  const long index =
      shared ? their_index : wood->Index_var_by_name(from->Name_var_by_index(their_index));
  Bddexpression* ours = index < 0 ? nullptr : wood->exp_by_index(index);
  if (ours == nullptr && shared) {
    move_equation(their_index, from, module);
    return;
  }
  if (theirs->getAbstraction() != 0 || ours == nullptr) {
    add(theirs, module);
    return;
  }
  const bool conjunction = joins_by_and(index, other, module);
  const auto waiting = other.pending_.find(their_index);
  if (waiting != other.pending_.end() && waiting->second.conjunction != conjunction)
    other.settle(their_index);
  const bdd function = carried(wood, from, theirs->my_bdd_exp());
  if (function == ours->my_bdd_exp() || function == neutral(wood, conjunction)) return;
  join_later(index, conjunction, function);
}

/// What still waits in a table over the same manager waits here from now on.
void EquationTable::take_terms(EquationTable* other) {
  for (auto& [index, theirs] : other->pending_) {
    const auto [at, first] = pending_.try_emplace(index, std::move(theirs));
    if (first) continue;
    if (at->second.conjunction != theirs.conjunction) {
      settle(index);
      pending_.emplace(index, std::move(theirs));
    } else {
      std::move(theirs.terms.begin(), theirs.terms.end(), std::back_inserter(at->second.terms));
    }
  }
  other->pending_.clear();
}

void EquationTable::pre(Module* module) {
  pre_later(module);
  settle();
}

void EquationTable::pre_later(Module* module) {
  for (Signal* output : module->getOutputSignalList())
    if (output->hasOccurrence(bdd_expression_wood)) start_occurrence(output, module);
  for (Signal* local : module->getLocalSignalList().plain())
    if (!local->isWire() && !local->isValue() && !local->isInstance() &&
        local->hasOccurrence(bdd_expression_wood))
      start_occurrence(local, module);
}

/// The whole signal takes the new occurrence in: its status is the or of all statuses, its value
/// the and of all values.
void EquationTable::start_occurrence(Signal* signal, Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  signal->newOccurrence(wood, module);
  createBottomEquation(signal, module);
  const long status_index = signal->getInitialBddStatusId(module, wood);
  const long value_index = signal->getInitialBddValueId(module, wood);
  const bool no_status = wood->exp_by_index(status_index) == nullptr;
  if (no_status || wood->exp_by_index(value_index) == nullptr) {
    end_with(std::string("undefined equation for ") + (no_status ? "status" : "value") +
             " of :" + signal->getInternalName());
  }
  join_later(status_index, false, wood->Bdd_var_by_index(signal->getBddStatusId(module, wood)));
  join_later(value_index, true, wood->Bdd_var_by_index(signal->getBddValueId(module, wood)));
}

EquationTable* EquationTable::over(Bddexpressionwood* copy) {
  std::unique_ptr<Bddexpressionwood> nobodys(copy);
  auto table = std::make_unique<EquationTable>(module_name, copy);
  table->own_wood();
  nobodys.release();
  if (sources_ == nullptr) sources_ = std::make_shared<Sources>();
  table->sources_ = sources_;
  return table.release();
}

EquationTable* EquationTable::duplicate(Module* module) {
  settle();
  Bddexpressionwood* wood = bdd_expression_wood;
  for_each_signal(module, [](Signal* signal) {
    if (signal->getOccurrenceTable() == nullptr)
      throw IllegalOperationException("EquationTable::duplicate: no occurrence table for signal",
                                      signal->getInternalName());
  });
  // The copy of a wood shares the manager of one that shares its own.
  const auto sharing = [](Bddexpressionwood* of) {
    struct Sharing {
      Bddexpressionwood* wood;
      int before = wood->get_common_bdd_manager();
      explicit Sharing(Bddexpressionwood* of) : wood(of) { wood->set_common_bdd_manager(1); }
      ~Sharing() { wood->set_common_bdd_manager(before); }
    } const meanwhile(of);
    return new Bddexpressionwood(of);
  };
  Bddexpressionwood* const copy = sharing(wood);
  EquationTable* table = over(copy);
  module->getSignalManager()->duplicate(wood, copy);
  for_each_signal(module, [&](Signal* signal) {
    if (signal->hasOccurrence(wood))
      signal->extendCurrentOccurrenceTable(copy, signal->getCurrentOccurrence(wood));
  });
  return table;
}

/// A wood for a branch: one that another has left, where there is one.
std::unique_ptr<Bddexpressionwood> EquationTable::wood_for_branch() {
  bddpp_manager* manager = bdd_expression_wood->my_bdd_manager();
  if (sources_ == nullptr) sources_ = std::make_shared<Sources>();
  while (!sources_->left_woods.empty()) {
    std::unique_ptr<Bddexpressionwood> left = std::move(sources_->left_woods.back());
    sources_->left_woods.pop_back();
    if (left->my_bdd_manager() == manager && left->Nb_bdd_vars() <= manager->Nb_bdd_vars())
      return left;
  }
  auto made = std::make_unique<Bddexpressionwood>(manager);
  made->note_entries_in_use();
  sources_->left_woods.reserve(++sources_->woods_made);  // no branch may fail to leave its own
  return made;
}

/// Takes the signal over from the other table, with its equations, or empty ones, unless it is only
/// read.
void EquationTable::carry(Signal* signal, EquationTable& from, Module* module) {
  Bddexpressionwood* wood = from.bdd_expression_wood;
  if (!signal->hasOccurrence(wood)) return;
  Bddexpressionwood* copy = bdd_expression_wood;
  SignalManager* manager = module->getSignalManager();
  const int current = signal->getCurrentOccurrence(wood);
  signal->extendCurrentOccurrenceTable(copy, current);
  carried_.push_back(signal);
  // A branch writes the whole signal and the occurrences from the current one on; those before are
  // finished, and needed only where each branch looks for cycles by itself.
  const int first = Compilation::rules().causality ? std::max(1, current) : 1;
  for (int occurrence = 0; occurrence <= current;
       occurrence = occurrence == 0 ? first : occurrence + 1) {
    SignalRef* ref = manager->getSignalRefByOccurrence(signal, occurrence);
    if (ref == nullptr || !ref->isDefinedWood(wood)) continue;
    const long status_index = ref->getBddStatusId(wood);
    const long value_index = ref->getBddValueId(wood);
    manager->extendSignalRef(status_index, value_index, ref, copy);
    if (carried_.size() <= only_read_) continue;
    for (long index : {status_index, value_index}) {
      if (wood->exp_by_index(index) == nullptr) continue;
      // Statements write occurrence 0 itself as long as there is no other.
      if (additions_ && current > 0) {
        carry_nothing(*wood->exp_by_index(index), occurrence == 0 && index == value_index);
      } else {
        from.settle(index);
        carry_equation(*wood->exp_by_index(index));
      }
    }
  }
}

void EquationTable::carry_equation(const Bddexpression& equation) {
  Bddexpressionwood* copy = bdd_expression_wood;
  auto* copied = new Bddexpression(copy, equation);
  if (equation.getAbstraction() != 0) {
    copy->learn_abstract_expression(copied, nullptr);
  } else {
    copy->learn_expression(copied);
  }
}

void EquationTable::carry_nothing(const Bddexpression& equation, bool conjunction) {
  if (equation.getAbstraction() != 0) return carry_equation(equation);
  Bddexpressionwood* copy = bdd_expression_wood;
  new Bddexpression(equation.my_name(), copy, equation.my_bdd_var(), neutral(copy, conjunction), 0,
                    0, equation.getUserType());
}

/// A table over such a wood, into which `take_over` carries signals.
template <class TakeOver>
EquationTable* EquationTable::branch_with(Module* module, TakeOver take_over) {
  std::unique_ptr<EquationTable> table(over(wood_for_branch().release()));
  table->bdd_expression_wood->update_nb_level(bdd_expression_wood->Nb_level());
  try {
    take_over(*table);
  } catch (...) {
    table->discard(module);
    throw;
  }
  return table.release();
}

EquationTable* EquationTable::branch(Module* module) {
  return branch_with(module, [&](EquationTable& table) {
    const Rules& rules = Compilation::rules();
    table.additions_ = rules.values && rules.abort_mask && rules.run_join && rules.causality;
    table.only_read_ = std::numeric_limits<size_t>::max();
    for (Signal* input : module->getInputSignalList()) table.carry(input, *this, module);
    for (Signal* data : module->getDataSignalList()) table.carry(data, *this, module);
    table.only_read_ = table.carried_.size();
    for (Signal* output : module->getOutputSignalList()) table.carry(output, *this, module);
    for (Signal* local : module->getLocalSignalList().plain())
      if (!local->isWire() && !local->isInstance()) table.carry(local, *this, module);
  });
}

EquationTable* EquationTable::fellow(Module* module) {
  return branch_with(module, [&](EquationTable& table) {
    table.only_read_ = only_read_;
    table.additions_ = additions_;
    for (Signal* signal : carried_) table.carry(signal, *this, module);
  });
}

void EquationTable::discard(Module* module) {
  Bddexpressionwood* wood = bdd_expression_wood;
  for_each_known_signal(module, [wood](Signal* signal) { signal->forgetWood(wood); });
  KIVA_CHECK(5, !is_known(module, wood));
  if (sources_ == nullptr || !wood->notes_entries_in_use()) {
    module->getSignalManager()->deleteWood(wood);
  } else {
    module->getSignalManager()->forgetWood(wood);
    wood->empty();
    sources_->left_woods.emplace_back(wood);
  }
  lose_wood();
}

}  // namespace kiva
