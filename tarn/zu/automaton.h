#pragma once

#include <array>
#include <memory>

#include "bdd/bddpp.h"
#include "tarn/zu/statement.h"

namespace kiva {

class Run;

/// Where a drawing tool puts an object.
using GeometryPair = std::pair<double, double>;

/// A state of an automaton. One that is only named by a transition has nothing but its name.
class State {
 public:
  explicit State(const std::string& name) : name(name) {}

  std::string name;
  int number = 0;  ///< code, given by Automaton::compile
  bool final_state = false;
  Run* run = nullptr;
  /// Moore actions: each signal, behind a valued one the signal bound to its value.
  std::vector<Signal*> actions;
  std::unique_ptr<std::array<double, 3>> geometry;
  SourceSpan span;  ///< of its declaration; else of the transition that names it first
};

/// A transition between two states.
class Transition {
 public:
  // Types.
  static constexpr int strong = 1;
  static constexpr int weak = 2;
  static constexpr int normal_termination = 3;

  /// Holds where the trigger is exactly True, over the module's wood.
  bdd triggerable_bdd(Module* module) const;

  int tpe = strong;
  int priority = 0;  ///< n from "n [...]", -1 for "other"
  Expression* trigger = nullptr;
  /// Mealy actions, as a state's.
  std::vector<Signal*> action;
  State* from = nullptr;  ///< null for an initial transition
  State* to = nullptr;
  std::unique_ptr<GeometryPair> geometry;
  bool initial = false;
  SourceSpan span;
};

/// States and transitions as the whole body of a module.
class Automaton : public Statement {
 public:
  using StateTable = std::map<std::string, State*>;

  Automaton(const std::string& name, std::unique_ptr<GeometryPair> geometry, StateTable states,
            std::list<Transition*> transitions)
      : Statement(name),
        geometry_(std::move(geometry)),
        state_table_(std::move(states)),
        transition_list_(std::move(transitions)) {}

  bool isAutomaton() const override { return true; }
  const std::list<Transition*>* getTransitionList() const override { return &transition_list_; }
  const StateTable* getStateTable() const override { return &state_table_; }
  const GeometryPair* getGeometry() const { return geometry_.get(); }
  bool reincarnate() override { return false; }
  /// The state of that name; null if there is none.
  static State* findState(const StateTable& table, const std::string& name);

  /// The whole translation.
  void compile(Module* module, EquationTable* table) override;
  /// Not to be called: IllegalOperationException.
  void createEquations(Module* module, EquationTable* table) override;
  // An automaton is never copied: IllegalOperationException.
  Statement* duplicate(Module* module, EquationTable* table) override;
  Statement* duplicate(int number) override;
  /// The runs of the states, in name order of the states.
  std::vector<Statement*> children() const override;

 private:
  std::unique_ptr<GeometryPair> geometry_;
  StateTable state_table_;
  std::list<Transition*> transition_list_;
};

}  // namespace kiva
