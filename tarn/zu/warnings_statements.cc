// What is doubtful about single statements, automata and machines.

#include <algorithm>
#include <set>

#include "tarn/model/expression.h"
#include "tarn/model/module.h"
#include "tarn/zu/statement_walk.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/halt.h"
#include "tarn/zu/statements/loop.h"
#include "tarn/zu/statements/mealy.h"
#include "tarn/zu/statements/parallel.h"
#include "tarn/zu/statements/present.h"
#include "tarn/zu/statements/sequence.h"
#include "tarn/zu/three_states.h"
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

// Conditions.

/// "present" or "absent" where the expression is that in all states of its signals; "" where it is
/// not, and where there are too many to try.
std::string constant(const Expression* e) {
  if (expression_key(e).empty()) return "";
  std::set<Moment> signals;
  for_each_signal(e, [&](const Signal* signal) { signals.insert({signal, 0}); });
  bool present = false, absent = false;
  const bool tried = for_each_state(signals, [&](const States& states) {
    (is_present(rails(e, 0, states)) ? present : absent) = true;
  });
  if (!tried || present == absent) return "";
  return present ? "present" : "absent";
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
                              "state " + quoted(name) + " is declared nowhere" +
                                  (name == "initial" ? "; the beginning is written initial->, "
                                                       "without a blank"
                                                     : "")));
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
    if (statement.isSequence()) find_dead_code(statement, found);
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
