// What is doubtful about single statements, automata and machines.

#include <algorithm>
#include <array>
#include <set>

#include "tarn/model/expression.h"
#include "tarn/model/module.h"
#include "tarn/zu/statement_walk.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/emit.h"
#include "tarn/zu/statements/halt.h"
#include "tarn/zu/statements/loop.h"
#include "tarn/zu/statements/mealy.h"
#include "tarn/zu/statements/parallel.h"
#include "tarn/zu/statements/present.h"
#include "tarn/zu/statements/sequence.h"
#include "tarn/zu/warnings.h"

namespace kiva {

namespace {

using Found = std::vector<Diagnostic>;

std::string quoted(const std::string& name) {
  return '"' + name + '"';
}

// Ways through statements.

/// False for what surely runs for ever, unless it is killed.
bool can_end(const Statement& statement) {
  if (dynamic_cast<const Halt*>(&statement) != nullptr) return false;
  if (dynamic_cast<const Loop*>(&statement) != nullptr) return false;
  const std::vector<Statement*> parts = statement.children();
  const auto ends = [](const Statement* part) { return can_end(*part); };
  if (statement.isSequence() || statement.isParallel())
    return std::all_of(parts.begin(), parts.end(), ends);
  const auto* present = dynamic_cast<const Present*>(&statement);
  if (present != nullptr && present->getElse() != nullptr)
    return std::any_of(parts.begin(), parts.end(), ends);
  return true;
}

void find_dead_code(const Statement& sequence, Found& found) {
  const std::vector<Statement*> members = sequence.children();
  for (size_t i = 0; i + 1 < members.size(); ++i) {
    if (can_end(*members[i])) continue;
    found.push_back(warning("dead-code", members[i + 1]->getSpan(),
                            "this is never reached: what stands before it never ends"));
    return;
  }
}

/// Of two emissions of a value one after the other in one instant the last counts.
void find_overruled(const Statement& sequence, Found& found) {
  const std::vector<Statement*> members = sequence.children();
  for (size_t i = 0; i + 1 < members.size(); ++i) {
    const auto* first = dynamic_cast<const Emit*>(members[i]);
    if (first == nullptr || first->getDataSignal() == nullptr) continue;
    for (size_t k = i + 1; k < members.size(); ++k) {
      const auto* second = dynamic_cast<const Emit*>(members[k]);
      if (second == nullptr) break;
      if (second->getSignal() != first->getSignal() || second->getDataSignal() == nullptr) continue;
      Diagnostic overruled =
          warning("overruled", first->getSpan(),
                  "the value of " + quoted(first->getSignalName()) +
                      " does not count: it is emitted again in the same instant");
      overruled.notes.push_back({place_of(second->getSpan()), "here"});
      found.push_back(std::move(overruled));
      break;
    }
  }
}

// Conditions.

/// Status and value, as the expressions have them.
struct Rails {
  bool status, value;
};

using States = std::vector<std::pair<const Signal*, Rails>>;

Rails state_of(const Signal* signal, const States& states) {
  for (const auto& [known, state] : states)
    if (known == signal) return state;
  return {false, false};
}

bool is_present(const Rails& r) {
  return r.status && !r.value;
}

Rails rails(const Expression* e, const States& states) {
  if (e->isTrueExpr()) return {true, false};
  if (e->isFalseExpr()) return {false, true};
  if (const auto* signal = dynamic_cast<const Signal*>(e)) return state_of(signal, states);
  if (const auto* negated = dynamic_cast<const NotExpression*>(e)) {
    const Rails r = rails(negated->getExpression(), states);
    return {r.value, r.status};
  }
  if (const auto* absent = dynamic_cast<const NpExpression*>(e)) {
    const Rails r = rails(absent->getExpression(), states);
    return {!is_present(r), is_present(r)};
  }
  const auto* pair = dynamic_cast<const BinaryExpression*>(e);
  if (pair == nullptr) return {false, false};
  const Rails a = rails(pair->getLeft(), states);
  const Rails b = rails(pair->getRight(), states);
  if (dynamic_cast<const AndExpression*>(e) != nullptr)
    return {a.status && b.status, a.value || b.value};
  return {a.status || b.status, a.value && b.value};
}

/// "present" or "absent" where the expression is that in all states of its signals; "" where it is
/// not, and where there are too many to try.
std::string constant(const Expression* e) {
  constexpr size_t most = 6;
  constexpr size_t longest = 64;
  std::set<const Signal*> signals;
  size_t named = 0;
  for_each_signal(e, [&](const Signal* signal) {
    signals.insert(signal);
    ++named;
  });
  if (signals.size() > most || named > longest) return "";
  static constexpr std::array<Rails, 3> each{{{false, false}, {true, false}, {false, true}}};
  size_t count = 1;
  for (size_t i = 0; i < signals.size(); ++i) count *= each.size();
  size_t present = 0;
  for (size_t n = 0; n < count; ++n) {
    States states;
    size_t rest = n;
    for (const Signal* signal : signals) {
      states.emplace_back(signal, each[rest % each.size()]);
      rest /= each.size();
    }
    present += is_present(rails(e, states)) ? 1 : 0;
  }
  if (present == count) return "present";
  return present == 0 ? "absent" : "";
}

// Automata and machines.

std::set<const State*> reached_states(const Statement& automaton) {
  std::set<const State*> reached;
  bool more = true;
  while (more) {
    more = false;
    for (const Transition* t : *automaton.getTransitionList())
      if (t->initial || (t->from != nullptr && reached.contains(t->from)))
        more = reached.insert(t->to).second || more;
  }
  return reached;
}

void find_doubtful_states(const Statement& automaton, Found& found) {
  const auto& transitions = *automaton.getTransitionList();
  const auto initial = [](const Transition* t) { return t->initial; };
  const bool begins = std::any_of(transitions.begin(), transitions.end(), initial);
  if (!begins)
    found.push_back(warning("missing-initial", automaton.getSpan(),
                            "the automaton has no initial-> transition and never begins"));
  const std::set<const State*> reached = reached_states(automaton);
  for (const auto& [name, state] : *automaton.getStateTable()) {
    if (!state->declared) {
      found.push_back(warning("undeclared-state", state->span,
                              "state " + quoted(name) + " is declared nowhere"));
      continue;
    }
    if (name == "initial")
      found.push_back(warning("state-initial", state->span,
                              "this is a state like others; the beginning is written initial->"));
    if (begins && !reached.contains(state))
      found.push_back(
          warning("unreachable-state", state->span,
                  "no transition leads to state " + quoted(name) + " from the initial one"));
  }
}

void find_doubtful_equations(const Module& module, const MealyMachine& machine, Found& found) {
  for (const Equation* equation : machine.getReplaced())
    found.push_back(warning(
        "overruled", equation->span,
        "a later equation replaces this one of " + quoted(equation->signal->getOriginalName())));
  for (const regclass* reg : module.getRegisterList()) {
    const std::string& next = reg->next_var()->getInternalName();
    if (machine.getMachineTable().contains(next)) continue;
    Diagnostic fault = warning("", machine.getSpan(),
                               "no equation gives " + quoted(next) + ", the next of register " +
                                   quoted(reg->actual_var()->getInternalName()));
    fault.severity = Severity::error;
    found.push_back(std::move(fault));
  }
}

}  // namespace

void find_doubtful_statements(const Module& module, Found& found) {
  for_each_statement(module.getStatement(), [&](const Statement& statement) {
    if (statement.isSequence()) {
      find_dead_code(statement, found);
      find_overruled(statement, found);
    }
    if (statement.isAutomaton()) find_doubtful_states(statement, found);
    if (const auto* machine = dynamic_cast<const MealyMachine*>(&statement))
      find_doubtful_equations(module, *machine, found);
    const auto* present = dynamic_cast<const Present*>(&statement);
    if (present == nullptr) return;
    const std::string always = constant(present->getExpression());
    if (!always.empty())
      found.push_back(warning("constant-condition", present->getSpan(),
                              "the condition of this present is always " + always));
  });
}

}  // namespace kiva
