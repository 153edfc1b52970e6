#pragma once

#include <list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tarn/model/source_span.h"

namespace kiva {

class Copying;
class EquationTable;
class Expression;
class Module;
class Signal;
class State;
class Transition;

/// The pair of signals of a statement's register; null until it has been compiled.
struct RegisterPair {
  Signal* ACTIF = nullptr;      ///< the value in this instant
  Signal* ACTIFPLUS = nullptr;  ///< the value in the next
};

/// The condition of a statement. Where a map is asked for, `value` is a wire that has its state.
struct LookedAt {
  Signal* value = nullptr;
  bool at_start = false;  ///< looked at in the instant in which the statement starts,
  bool later = false;     ///< and while it waits or goes on
};

/// A node of a module's body. It compiles to a small circuit with three wires: `set` (started in
/// this instant), `reset` (killed in this instant) and `rtl` (ends in this instant).
///
/// Each kind stands in a file of its own in tarn/zu/statements, with all that it is: how it is made
/// of what a production has read, its circuit, its copy, its parts. Statements, like all of the
/// model, are made by make_kept.
class Statement {
 public:
  explicit Statement(const std::string& name) : name_(name) {}
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  virtual ~Statement() = default;

  // What a kind of statement gives.
  /// Makes the wires and registers and writes the statement's own equations; the children have been
  /// compiled. StatementWireException for a child without wires.
  virtual void createEquations(Module* module, EquationTable* table) = 0;
  /// Compiles the children in order, each in the table, then this statement. Runs once.
  virtual void compile(Module* module, EquationTable* table);
  /// The statement could end and start again in one instant.
  virtual bool reincarnate() { return true; }
  /// The copy that `duplicate` asks for; statement_copy.h helps.
  virtual Statement* copy(const Copying& copying) const = 0;
  /// The statements right below, in the order of the source.
  virtual std::vector<Statement*> children() const { return {}; }

  virtual bool isAutomaton() const { return false; }
  virtual bool isParallel() const { return false; }
  virtual bool isSequence() const { return false; }
  /// An automaton's transitions in file order and its states by name; else null.
  virtual const std::list<Transition*>* getTransitionList() const { return nullptr; }
  virtual const std::map<std::string, State*>* getStateTable() const { return nullptr; }

  /// A deep copy, every name with "_bis" behind it. Expressions and signals are shared.
  Statement* duplicate(Module* module, EquationTable* table);
  /// A deep copy, every name with the number behind it.
  Statement* duplicate(int number);

  /// Makes the three wires as locals of the module: first in every createEquations.
  void createWires(Module* module, EquationTable* table);
  /// Joins the root of a body to the module's own wires.
  void connectExternalWires(Module* module);

  /// The registers that its circuit has, in the order of their making: of an automaton the bits of
  /// its code, of any other statement what tells that it waits or goes on.
  const std::vector<RegisterPair>& registers() const { return registers_; }
  void note_register(const RegisterPair& pair) { registers_.push_back(pair); }

  const std::string& getName() const { return name_; }
  Module* getModule() const { return module_; }
  void setModule(Module* module) { module_ = module; }
  // Null until createWires.
  Signal* getSet() const { return set_wire; }
  Signal* getReset() const { return reset_wire; }
  Signal* getRtl() const { return rtl_wire; }
  /// Levels of the table when a branch had been compiled; 0 before, and for what is no branch.
  long getPertLevel() const { return pert_level_; }
  void setPertLevel(long levels) { pert_level_ = levels; }

  /// Where the statement stands in its source; a copy stands where its original does.
  const SourceSpan& getSpan() const { return source_.span; }
  void setSpan(const SourceSpan& span) { source_.span = span; }
  /// Where its condition stands; unknown without one.
  const SourceSpan& getConditionSpan() const { return source_.condition; }
  void setConditionSpan(const SourceSpan& span) { source_.condition = span; }
  /// One of the several, all in one sequence, that stand for one of the source: of `wait 3 x`.
  bool is_counted() const { return source_.counted; }
  void setCounted() { source_.counted = true; }
  void stand_like(const Statement& original) { source_ = original.source_; }

  // Where a map is asked for; else null.
  const LookedAt& looked_at() const { return looked_at_; }
  void note_condition(const LookedAt& condition) { looked_at_ = condition; }
  /// One where its body, or what it runs, is stopped before it does anything in this instant.
  Signal* getStop() const { return stop_wire_; }
  void note_stop(Signal* wire) { stop_wire_ = wire; }

 protected:
  Signal* set_wire = nullptr;
  Signal* reset_wire = nullptr;
  Signal* rtl_wire = nullptr;

 private:
  std::string name_;
  Module* module_ = nullptr;
  long pert_level_ = 0;
  struct {
    SourceSpan span, condition;
    bool counted = false;
  } source_;
  std::vector<RegisterPair> registers_;
  LookedAt looked_at_;
  Signal* stop_wire_ = nullptr;
};

}  // namespace kiva
