// What is doubtful about signals and modules as wholes: who writes a signal, who reads it, which
// module runs which. What a run does with its caller's signals is known of modules that have been
// read; beside others, nothing is said of signals.

#include "tarn/zu/warnings.h"

#include <algorithm>
#include <set>

#include "tarn/model/compilation.h"
#include "tarn/model/expression.h"
#include "tarn/model/module.h"
#include "tarn/zu/statement_walk.h"
#include "tarn/zu/statements/abort.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/emit.h"
#include "tarn/zu/statements/mealy.h"
#include "tarn/zu/statements/present.h"
#include "tarn/zu/statements/run.h"
#include "tarn/zu/statements/sustain.h"
#include "tarn/zu/statements/wait.h"

namespace kiva {

const std::vector<WarningRow>& warning_table() {
  static const std::vector<WarningRow> table{
      {"never-emitted", "an output or local that nothing emits"},
      {"never-read", "an input or local that nothing reads"},
      {"missing-initial", "an automaton without initial transition, which never begins"},
      {"unreachable-state", "a state that no way from an initial transition reaches"},
      {"state-initial", "a state called \"initial\", which is no initial transition"},
      {"undeclared-state", "a transition names a state that is declared nowhere"},
      {"dead-code", "statements behind one that never ends"},
      {"overruled", "an emission or equation that a later one of the same instant overrules"},
      {"constant-condition", "a present whose condition is the same in every instant"},
      {"never-reached", "a statement, state or transition that no run reaches (`--prove`)"},
      {"constant-signal", "an output or local that is the same in all runs (`--prove`)"},
      {"dead-end", "a run behind which no output changes any more, whatever comes (`--prove`)"},
      {"unused-module", "a module that the last module of its file does not reach"},
  };
  return table;
}

Diagnostic warning(const char* name, const SourceSpan& span, std::string sentence) {
  Diagnostic found;
  found.severity = Severity::warning;
  found.name = name;
  found.where = place_of(span);
  found.sentence = std::move(sentence);
  found.manner = Manner::untold;
  return found;
}

namespace {

using Signals = std::set<const Signal*>;

/// Who reads and writes the signals of a module.
class Usage {
 public:
  explicit Usage(const Module& module) : module_(module) {
    for_each_statement(module.getStatement(), [this](const Statement& s) { take(s); });
    if (module.getDataTable() == nullptr) return;
    for (const auto& [name, binding] : *module.getDataTable())
      if (const auto reads = binding->getValue()->computeDependencySet())
        read_.insert(reads->begin(), reads->end());
  }

  bool writes(const Signal* signal) const { return written_.contains(signal); }
  bool reads(const Signal* signal) const { return read_.contains(signal); }
  /// A module that nobody has read is run.
  bool unknown() const { return unknown_; }

 private:
  void take(const Statement& statement) {
    if (const auto* emission = dynamic_cast<const Emission*>(&statement))
      written_.insert(emission->getSignal());
    if (const Expression* condition = condition_of(statement)) take(condition);
    if (const auto* run = dynamic_cast<const Run*>(&statement)) take_run(*run);
    if (const auto* machine = dynamic_cast<const MealyMachine*>(&statement))
      for (const auto& [name, equation] : machine->getMachineTable()) {
        written_.insert(equation->signal);
        take(equation->expression);
      }
    if (!statement.isAutomaton()) return;
    for (const auto& [name, state] : *statement.getStateTable())
      written_.insert(state->actions.begin(), state->actions.end());
    for (const Transition* transition : *statement.getTransitionList()) {
      written_.insert(transition->action.begin(), transition->action.end());
      take(transition->trigger);
    }
  }

  void take(const Expression* expression) {
    for_each_signal(expression, [this](const Signal* signal) { read_.insert(signal); });
  }

  void take_run(const Run& run) {
    const Module* called = Compilation::ModTable()->get(run.getModuleName());
    if (called == nullptr) unknown_ = true;
    if (called == nullptr) return;
    const auto actual = [&](const Signal* formal) -> const Signal* {
      const Signal* renamed = run.getRenamingSignal(formal->getOriginalName());
      return renamed != nullptr ? renamed : module_.getSignal(formal->getOriginalName());
    };
    for (const Signal* input : called->getInputSignalList()) read_.insert(actual(input));
    for (const Signal* output : called->getOutputSignalList()) written_.insert(actual(output));
  }

  const Module& module_;
  Signals written_, read_;
  bool unknown_ = false;
};

struct Doubt {
  const char* name = nullptr;  ///< null for none
  const char* what = nullptr;
};

Doubt doubt_of_local(const Signal* local, const Usage& usage) {
  if (local->isValue() || local->isRegister() || local->isWire()) return {};
  const bool is_read = usage.reads(local);
  if (usage.writes(local)) {
    if (is_read) return {};
    return {"never-read", "a local that nothing reads"};
  }
  if (is_read) return {"never-emitted", "a local that nothing emits"};
  return {"never-read", "a local that nothing emits or reads"};
}

}  // namespace

void find_doubtful_signals(const ReadModule& read, std::vector<Diagnostic>& found) {
  const Usage usage(*read.module);
  if (usage.unknown()) return;
  const auto tell = [&](const char* name, const Signal* signal, const char* what) {
    const auto place = read.places.find(signal->getOriginalName());
    if (place != read.places.end())
      found.push_back(
          warning(name, place->second, '"' + signal->getOriginalName() + "\" is " + what));
  };
  for (const Signal* input : read.module->getInputSignalList())
    if (!usage.reads(input)) tell("never-read", input, "an input that nothing reads");
  for (const Signal* output : read.module->getOutputSignalList())
    if (!output->isValue() && !usage.writes(output))
      tell("never-emitted", output, "an output that nothing emits");
  for (const Signal* local : read.module->getLocalSignalList()) {
    const Doubt doubt = doubt_of_local(local, usage);
    if (doubt.name != nullptr) tell(doubt.name, local, doubt.what);
  }
}

/// The last module of a file is the one that uses the others, if one of them runs another.
void find_doubtful_modules(const std::vector<ReadModule>& modules, std::vector<Diagnostic>& found) {
  std::set<std::string> reached;
  std::vector<const Module*> row;
  bool some_run = false;
  const auto follow = [&](const Module* module) {
    for_each_statement(module->getStatement(), [&](const Statement& statement) {
      const auto* run = dynamic_cast<const Run*>(&statement);
      if (run == nullptr) return;
      some_run = true;
      const Module* called = Compilation::ModTable()->get(run->getModuleName());
      if (called != nullptr && reached.insert(called->getName()).second) row.push_back(called);
    });
  };
  for (const ReadModule& read : modules) follow(read.module);
  if (!some_run) return;
  reached = {modules.back().module->getName()};
  row = {modules.back().module};
  while (!row.empty()) {
    const Module* module = row.back();
    row.pop_back();
    follow(module);
  }
  for (const ReadModule& read : modules)
    if (!reached.contains(read.module->getName()))
      found.push_back(warning("unused-module", read.module->getSpan(),
                              "module \"" + read.module->getName() + "\" is not reached from \"" +
                                  modules.back().module->getName() + "\", the last of the file"));
}

std::vector<Diagnostic> find_doubtful(const std::vector<ReadModule>& modules) {
  std::vector<Diagnostic> found;
  for (const ReadModule& read : modules) {
    find_doubtful_signals(read, found);
    find_doubtful_statements(*read.module, found);
    find_overruled(*read.module, found);
  }
  if (!modules.empty()) find_doubtful_modules(modules, found);
  return found;
}

}  // namespace kiva
