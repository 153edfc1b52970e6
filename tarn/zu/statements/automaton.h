#pragma once

#include <array>
#include <memory>

#include "bdd/bddpp.h"
#include "tarn/zu/statement.h"

namespace kiva {

class Run;
class class_zu_parser;

/// Where a drawing tool puts an object.
using GeometryPair = std::pair<double, double>;

/// A state of an automaton. One that is only named by a transition has nothing but its name.
class State {
 public:
  explicit State(const std::string& name) : name(name) {}

  std::string name;
  int number = 0;  ///< code, given by Automaton::compile
  bool final_state = false;
  bool declared = false;  ///< else only transitions name it
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
  /// One where it fires, and where its trigger holds in its source; null unless wires are kept.
  Signal* fired = nullptr;
  Signal* triggered = nullptr;
};

/// States and transitions as the whole body of a module. `compile` translates it into functions
/// over a binary code of the states, held in registers; what it checks ends the process with a
/// message.
class Automaton : public Statement {
 public:
  using StateTable = std::map<std::string, State*>;

  Automaton(const std::string& name, std::unique_ptr<GeometryPair> geometry, StateTable states,
            std::list<Transition*> transitions)
      : Statement(name),
        geometry_(std::move(geometry)),
        state_table_(std::move(states)),
        transition_list_(std::move(transitions)) {}

  /// The states are those that the reader has gathered.
  static Statement* read(class_zu_parser& reader, const GeometryPair* geometry,
                         const std::list<Transition*>& transitions);
  bool isAutomaton() const override { return true; }
  const std::list<Transition*>* getTransitionList() const override { return &transition_list_; }
  const StateTable* getStateTable() const override { return &state_table_; }
  const GeometryPair* getGeometry() const { return geometry_.get(); }
  bool reincarnate() override { return false; }
  /// The state of that name; null if there is none.
  static State* findState(const StateTable& table, const std::string& name);

  // The steps of compile.
  /// Ends the process at a final state with actions or a run or a transition out of it, and at a
  /// normal termination with a trigger.
  void check_syntax() const;
  /// Ends the process where two transitions of one source, type and priority, or two initial ones
  /// of one priority, can fire together.
  void check_determinism(Module* module, bddpp_manager* manager) const;
  /// Rewrites the triggers: one that has a priority excludes those ranked before it out of its
  /// state, all strong ones before the weak ones.
  void priority_integration();
  /// In rank: 0, 1, 2 ..., then "other"; equals stay in order.
  static std::list<Transition*> priority_sort(const std::list<Transition*>& transitions);
  /// A state that runs a module and from which a transition leads back to it gets a twin: each
  /// leads to the other, so that one run can end or be killed while the next one starts.
  void split_self_restarts();
  /// The codes of the states that a transition leaves and enters; an initial one leaves 0.
  static void ident_states_transitions(std::list<Transition*>::const_iterator transition, int nbits,
                                       int& from_code, int& to_code);

  /// The whole translation. Rewrites the triggers, so it runs once.
  void compile(Module* module, EquationTable* table) override;
  /// Not to be called: IllegalOperationException.
  void createEquations(Module* module, EquationTable* table) override;
  /// It stands only as a whole body, which nothing copies: IllegalOperationException.
  Statement* copy(const Copying& copying) const override;
  /// The runs of the states, in name order of the states.
  std::vector<Statement*> children() const override;

 private:
  State* make_twin(const State& state);

  std::unique_ptr<GeometryPair> geometry_;
  StateTable state_table_;
  std::list<Transition*> transition_list_;
};

}  // namespace kiva
