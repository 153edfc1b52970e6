// What an automaton must hold before it is translated, the rank of its transitions, and the twins
// of states that restart themselves.

#include "tarn/model/expression.h"
#include "tarn/model/module.h"
#include "tarn/session/session.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/run.h"

namespace kiva {

namespace {

/// A complaint about a name, of which the last words are the same for all, and the sentence that
/// says the same.
struct Complaint {
  const char* before;
  const char* after;
  const char* sentence_before;
  const char* sentence_after;
};

constexpr Complaint moore_action_of_final{"ERROR: The FINAL state: \"",
                                          "\" must not have one (or several) Moore action!\n\n",
                                          "the final state \"", "\" cannot have actions"};
constexpr Complaint run_of_final{"ERROR: The FINAL state: \"", "\" must not run a module!\n\n",
                                 "the final state \"", "\" cannot run a module"};
constexpr Complaint transition_from_final{"ERROR: A transition beginning with the FINAL state: \"",
                                          "\" had been detected!\n\n",
                                          "no transition can leave the final state \"", "\""};
constexpr Complaint trigger_of_normal_termination{
    "ERROR: TRIGGER in the Normal Terminaison transition from \"", "\" is not supported!\n\n",
    "the normalterm-> transition of state \"", "\" cannot have a trigger"};
constexpr Complaint several_transitions{
    "ERROR: Non determinist automaton: Several possible transitions from state \"", "\" \n\n",
    "two transitions of one kind and rank can leave state \"",
    "\" together; exclude their triggers or number them"};
constexpr Complaint several_initial{
    "ERROR: Non determinist automaton: Several possible Init transitions \"", "\" \n\n",
    "two initial transitions", " can be taken together; exclude their triggers or number them"};

[[noreturn]] void refuse(const Complaint& complaint, const std::string& name,
                         const SourceSpan& span) {
  end_at(span, complaint.before + name + complaint.after + "   --> compilation process aborted ...",
         complaint.sentence_before + name + complaint.sentence_after);
}

bool compared(const Transition& a, const Transition& b) {
  if (a.priority != b.priority || a.initial != b.initial) return false;
  return a.initial || (a.from == b.from && a.tpe == b.tpe);
}

bool priority_comp(const Transition* a, const Transition* b) {
  if (a->priority == -1) return false;
  return b->priority == -1 || a->priority < b->priority;
}

}  // namespace

bdd Transition::triggerable_bdd(Module* module) const {
  Bddexpressionwood* wood = module->getBddWood();
  return wood->Bdd_and(trigger->getBddStatus(module, wood),
                       wood->Bdd_not(trigger->getBddValue(module, wood)));
}

void Automaton::check_syntax() const {
  for (const auto& [name, state] : state_table_) {
    if (!state->final_state) continue;
    if (!state->actions.empty()) refuse(moore_action_of_final, name, state->span);
    if (state->run != nullptr) refuse(run_of_final, name, state->span);
  }
  for (const Transition* t : transition_list_) {
    const std::string from = t->from == nullptr ? "" : t->from->name;
    if (!t->initial && t->from != nullptr && t->from->final_state)
      refuse(transition_from_final, from, t->span);
    if (t->tpe == Transition::normal_termination && t->trigger != nullptr &&
        !t->trigger->isTrueExpr())
      refuse(trigger_of_normal_termination, from, t->span);
  }
}

void Automaton::check_determinism(Module* module, bddpp_manager* manager) const {
  std::vector<std::pair<const Transition*, bdd>> triggers;
  for (const Transition* t : transition_list_) triggers.emplace_back(t, t->triggerable_bdd(module));
  for (auto t1 = triggers.begin(); t1 != triggers.end(); ++t1) {
    if (manager->Bdd_is_zero_tautologic(t1->second)) continue;
    for (auto t2 = std::next(t1); t2 != triggers.end(); ++t2) {
      if (!compared(*t1->first, *t2->first) || manager->Bdds_excl(t1->second, t2->second)) continue;
      if (t1->first->initial) refuse(several_initial, "", t2->first->span);
      refuse(several_transitions, t1->first->from == nullptr ? "" : t1->first->from->name,
             t2->first->span);
    }
  }
}

std::list<Transition*> Automaton::priority_sort(const std::list<Transition*>& transitions) {
  std::list<Transition*> sorted = transitions;
  if (sorted.size() > 1) sorted.sort(priority_comp);
  return sorted;
}

void Automaton::priority_integration() {
  struct Leaving {
    std::list<Transition*> strong, weak;
  };
  std::map<const State*, Leaving> leaving;
  for (Transition* t : transition_list_) {
    if (t->initial || t->from == nullptr) continue;
    if (t->tpe == Transition::strong) leaving[t->from].strong.push_back(t);
    if (t->tpe == Transition::weak) leaving[t->from].weak.push_back(t);
  }
  for (auto& [state, transitions] : leaving) {
    std::list<Transition*> ranked = priority_sort(transitions.strong);
    ranked.splice(ranked.end(), priority_sort(transitions.weak));
    Expression* before = make_kept<FalseExpression>();
    for (Transition* t : ranked) {
      if (t->priority != 0)
        t->trigger = make_kept<AndExpression>(t->trigger, make_kept<NpExpression>(before));
      before = make_kept<OrExpression>(before, t->trigger);
    }
  }
}

namespace {

/// A run that ends and starts again in one instant needs a twin as a loop's body does.
bool restarts_its_run(const Transition& t) {
  return !t.initial && t.from != nullptr && t.from == t.to && t.from->run != nullptr &&
         (t.tpe != Transition::normal_termination || t.from->run->reincarnate());
}

Transition* of_twin(const Transition& t, State* twin, State* to) {
  auto* copy = make_kept<Transition>();
  copy->tpe = t.tpe;
  copy->priority = t.priority;
  copy->trigger = t.trigger;
  copy->action = t.action;
  copy->from = twin;
  copy->to = to;
  copy->span = t.span;
  return copy;
}

}  // namespace

State* Automaton::make_twin(const State& state) {
  std::string name = state.name + "_bis";
  while (state_table_.contains(name)) name += "_bis";
  auto* twin = make_kept<State>(name);
  twin->run = static_cast<Run*>(state.run->duplicate(getModule(), nullptr));
  twin->actions = state.actions;
  twin->span = state.span;
  state_table_[name] = twin;
  return twin;
}

void Automaton::split_self_restarts() {
  std::map<const State*, State*> twins;
  for (const Transition* t : transition_list_)
    if (restarts_its_run(*t) && !twins.contains(t->from)) twins[t->from] = make_twin(*t->from);
  std::list<Transition*> of_twins;
  for (Transition* t : transition_list_) {
    const auto at = t->initial ? twins.end() : twins.find(t->from);
    if (at == twins.end()) continue;
    State* const twin = at->second;
    const bool restarts = restarts_its_run(*t);
    of_twins.push_back(of_twin(*t, twin, t->to == t->from && !restarts ? twin : t->to));
    if (restarts) t->to = twin;
  }
  transition_list_.splice(transition_list_.end(), of_twins);
}

}  // namespace kiva
