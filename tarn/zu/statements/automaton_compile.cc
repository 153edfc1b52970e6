// An automaton as functions over a binary code of its state.
//
// For n states the codes are: 0 before the start and after the end, 1 to n the states in the order
// of their names, all ones the instant after a final state. The code is held in registers. Each
// transition, and each state that stays, says where it makes which code the next; a register is set
// where one of them does that has its bit:
//
//             initial, set               transition                 always
//     [ 0 ] ----------------> [ state ] ------------> [ final ] ------------> [ all ones ]
//       ^                       |   ^  |                                           |
//       |        reset          |   +--+ no transition fires                       |
//       +-----------------------+--------------------------------------------------+
//
// Where none does the code falls back to 0.
//
// The variables of the code come behind those of the signals, so functions over many states are
// large: exponential in the inputs, where each state looks at others. They are put together last,
// two by two; where one would become too large, in small pieces by way of wires.

#include <iostream>

#include "tarn/model/compilation.h"
#include "tarn/model/rules.h"
#include "tarn/session/session.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/run.h"

namespace kiva {

namespace {

class AutomatonCircuit {
 public:
  AutomatonCircuit(Automaton& automaton, Module* module, EquationTable* table)
      : automaton_(automaton), module_(module), table_(table), wood_(module->getBddWood()) {}

  void number_states();
  void make_registers();
  void compile_runs();
  void fire_transitions();
  void stay();
  void show_transitions();
  void write_next_code();
  void write_actions();
  void write_end(Signal* rtl);

 private:
  /// What is known of one state, by its code.
  struct Place {
    State* state;
    bdd here;        ///< the code is this state's
    bdd strong;      ///< a strong transition out of it is triggered
    bdd weak;        ///< a weak one
    bdd left;        ///< a transition out of it fires
    bdd run_starts;  ///< a transition into it fires
  };
  struct Arc {
    Transition* transition;
    Place* from;
    Place* to;
    int to_code;
    bdd trigger;
    bdd fires;       ///< whether or not the automaton is set
    bdd moves = {};  ///< it fires, in an instant that lets it
  };

  bdd And(const bdd& f, const bdd& g) { return wood_->Bdd_and(f, g); }
  bdd Or(const bdd& f, const bdd& g) { return wood_->Bdd_or(f, g); }
  bdd Not(const bdd& f) { return wood_->Bdd_not(f); }
  bool is_zero(const bdd& f) { return wood_->Bdd_is_tautology(f, 0) != 0; }
  bdd truth(Signal* signal) {
    return And(signal->getBddStatus(module_, wood_), Not(signal->getBddValue(module_, wood_)));
  }
  bdd code_is(int code) { return wood_->my_bdd_manager()->Minterm(code, nbits_, bits_.data()); }
  int all_ones() const { return (1 << nbits_) - 1; }

  void add_place(State* state);
  Signal* make_bit(const std::string& name);
  Signal* make_wire(const std::string& name);
  void compile_run(Place& place);
  /// Adds a trigger to those of one type out of a state that runs a module.
  void add_behaviour(bdd& behaviours, const Arc& arc);
  void reset_run(const Place& place);
  bdd fires(const Arc& arc);
  bdd ends_normally(const Arc& arc);
  /// Where `f` holds the next code is `code`.
  void go_to(int code, const bdd& f);
  void raise(const std::vector<Signal*>& actions, const bdd& f);
  /// The or of all; takes them away.
  bdd any(std::vector<bdd>& functions);
  /// Ors two by two until one is left. Where two have more than `most` nodes together, if that is
  /// not 0, `too_large` may give another diagram for them, or false: then all is given up.
  template <class Either>
  bool join(std::vector<bdd>& functions, long most, const Either& too_large);
  /// The variable of a wire for a function that is no small one.
  bdd by_wire(const bdd& f);
  /// Codes that can come.
  bdd reachable();

  Automaton& automaton_;
  Module* module_;
  EquationTable* table_;
  Bddexpressionwood* wood_;
  int nbits_ = 0;
  std::vector<Place> places_;  ///< by code: before the start, the states, the falling one
  std::vector<Arc> arcs_;      ///< in file order
  std::vector<bdd> bits_;
  std::vector<Signal*> next_;
  std::vector<std::vector<bdd>> on_;                          ///< by bit, where it is set
  std::vector<std::pair<Signal*, std::vector<bdd>>> raised_;  ///< in the order of first mention
  std::map<Signal*, size_t> place_in_raised_;
  bdd set_, not_set_, reset_;
  int wires_ = 0;
};

void AutomatonCircuit::add_place(State* state) {
  state->number = static_cast<int>(places_.size());
  const bdd zero = wood_->Bdd_zero();
  places_.push_back({state, zero, zero, zero, zero, zero});
}

void AutomatonCircuit::number_states() {
  add_place(make_kept<State>("pre-existing"));
  for (const auto& [name, state] : *automaton_.getStateTable()) add_place(state);
  add_place(make_kept<State>("falling"));
  while (1ul << nbits_ < places_.size()) ++nbits_;

  const auto& transitions = *automaton_.getTransitionList();
  for (auto t = transitions.begin(); t != transitions.end(); ++t) {
    int from = 0, to = 0;
    Automaton::ident_states_transitions(t, nbits_, from, to);
    const auto place = [&](int code) {
      return &places_[std::min(static_cast<size_t>(code), places_.size() - 1)];
    };
    arcs_.push_back({*t, place(from), place(to), to, wood_->Bdd_zero(), wood_->Bdd_zero()});
  }
}

Signal* AutomatonCircuit::make_bit(const std::string& name) {
  auto* bit = make_kept<Signal>(signal_name(name, module_), module_, wood_, true);
  module_->addLocalSignal(bit);
  table_->note_source(bit, automaton_.getSpan());
  return bit;
}

Signal* AutomatonCircuit::make_wire(const std::string& name) {
  auto* wire = make_kept<Signal>(signal_name(name, module_), module_, wood_);
  wire->setWire();
  module_->addLocalSignal(wire);
  return wire;
}

void AutomatonCircuit::make_registers() {
  for (int i = 0; i < nbits_; ++i) {
    Signal* bit = make_bit(module_->getName() + "reg" + std::to_string(i));
    Signal* next = make_bit(module_->getName() + "nextreg" + std::to_string(i));
    module_->addRegisterSignal(bit, next, 0);
    automaton_.note_register({bit, next});
    bits_.push_back(bit->getBddStatus(module_, wood_));
    next_.push_back(next);
  }
  on_.resize(nbits_);
  for (Place& place : places_) place.here = code_is(place.state->number);

  set_ = truth(module_->getSet());
  not_set_ = Not(set_);
  reset_ = truth(module_->getReset());
  if (!Compilation::rules().kill) reset_ = And(reset_, not_set_);
}

void AutomatonCircuit::add_behaviour(bdd& behaviours, const Arc& arc) {
  const bdd trigger = arc.transition->triggerable_bdd(module_);
  const bdd both = And(behaviours, trigger);
  if (!is_zero(both)) {
    bddpp_manager& man = *wood_->my_bdd_manager();
    const std::string when = man.Bdd_is_one_tautologic(both) != 0
                                 ? "tick"
                                 : man.Print_sop_to_String(" or ", " and ", "not ", "", both, 1);
    end_at(arc.transition->span,
           "Error: Multiple behaviors about state:\"" + arc.from->state->name + "\" when " + when,
           "two transitions of one kind can leave state \"" + arc.from->state->name +
               "\" together, when " + when);
  }
  behaviours = Or(behaviours, trigger);
}

void AutomatonCircuit::compile_run(Place& place) {
  Run* run = place.state->run;
  std::cerr << "Run detecte:" << run->getName() << '\n';
  bdd strong = wood_->Bdd_zero();
  bdd weak = wood_->Bdd_zero();
  for (const Arc& arc : arcs_) {
    if (arc.from != &place) continue;
    if (arc.transition->tpe == Transition::strong) add_behaviour(strong, arc);
    if (arc.transition->tpe == Transition::weak) add_behaviour(weak, arc);
  }
  if (Compilation::rules().state_mask) strong = And(strong, place.here);
  const std::unique_ptr<EquationTable> backup(table_->duplicate(module_));
  run->compile_with_preemption(module_, table_, strong);
  table_->unify(backup.get(), module_);
  reset_run(place);
  if (!Compilation::MapFlag()) return;
  Signal* stop = make_wire("STOP" + run->getName());
  const bdd stops = And(strong, place.here);
  table_->createRails(stop, stops, Not(stops), Compilation::SWIRE, module_);
  run->note_stop(stop);
}

/// The run is killed where a transition takes its state away.
void AutomatonCircuit::reset_run(const Place& place) {
  bdd killed = wood_->Bdd_zero();
  for (const Arc& arc : arcs_)
    if (arc.from == &place && arc.transition->tpe != Transition::normal_termination)
      killed = Or(killed, And(place.here, arc.transition->triggerable_bdd(module_)));
  if (Compilation::rules().state_reset) killed = Or(killed, reset_);
  table_->createRails(Circuit::reset(*place.state->run), killed, Not(killed), Compilation::SWIRE,
                      module_);
}

void AutomatonCircuit::compile_runs() {
  for (Place& place : places_)
    if (place.state->run != nullptr) compile_run(place);
}

bdd AutomatonCircuit::ends_normally(const Arc& arc) {
  const State& state = *arc.from->state;
  if (state.run == nullptr) {
    report("Warning: No found Run module about state " + state.name +
               ": Normal Terminaison has no effect ...",
           Manner::message, Severity::warning);
    return wood_->Bdd_zero();
  }
  const bdd ended = And(arc.from->here, truth(Circuit::rtl(*state.run)));
  return And(And(ended, Not(arc.from->strong)), Not(arc.from->weak));
}

bdd AutomatonCircuit::fires(const Arc& arc) {
  switch (arc.transition->tpe) {
    case Transition::strong:
      return And(arc.transition->initial ? set_ : arc.from->here, arc.trigger);
    case Transition::weak:
      if (arc.transition->initial) return And(set_, arc.trigger);
      return And(And(arc.from->here, arc.trigger), Not(arc.from->strong));
    case Transition::normal_termination:
      return ends_normally(arc);
    default:
      report("Warning: Skipping TRANSITION " + std::to_string(arc.from->state->number) + " " +
                 std::to_string(arc.to_code) + ": unknown type ...",
             Manner::message, Severity::warning);
      return wood_->Bdd_zero();
  }
}

void AutomatonCircuit::go_to(int code, const bdd& f) {
  for (int i = 0; i < nbits_; ++i)
    if ((code >> i & 1) != 0) on_[i].push_back(f);
}

void AutomatonCircuit::raise(const std::vector<Signal*>& actions, const bdd& f) {
  for (Signal* signal : actions) {
    const auto [at, first] = place_in_raised_.emplace(signal, raised_.size());
    if (first) raised_.push_back({signal, {}});
    raised_[at->second].second.push_back(f);
  }
}

bdd AutomatonCircuit::by_wire(const bdd& f) {
  constexpr long tiny = 20;
  if (wood_->my_bdd_manager()->Bdd_size(f) < tiny) return f;
  Signal* wire = make_wire(module_->getName() + "joins" + std::to_string(wires_++));
  table_->note_source(wire, automaton_.getSpan());
  table_->createRails(wire, f, Not(f), Compilation::SWIRE, module_);
  return wire->getBddStatus(module_, wood_);
}

template <class Either>
bool AutomatonCircuit::join(std::vector<bdd>& functions, long most, const Either& too_large) {
  while (functions.size() > 1) {
    for (size_t i = 0; i + 1 < functions.size(); i += 2) {
      const bdd &f = functions[i], &g = functions[i + 1];
      bdd either = Or(f, g);
      if (most > 0 && wood_->my_bdd_manager()->Bdd_size(either) > most && !too_large(f, g, either))
        return false;
      functions[i / 2] = either;
    }
    if (functions.size() % 2 != 0) functions[functions.size() / 2] = functions.back();
    functions.resize((functions.size() + 1) / 2);
  }
  return true;
}

bdd AutomatonCircuit::any(std::vector<bdd>& functions) {
  constexpr long large = 1000, piece = 100;
  if (functions.empty()) return wood_->Bdd_zero();
  std::vector<bdd> all = functions;
  const bool wires = Compilation::rules().automaton_wires;
  const auto give_up = [](const bdd&, const bdd&, const bdd&) { return false; };
  if (!join(all, wires ? large : 0, give_up)) {
    all = functions;
    join(all, piece, [&](const bdd& f, const bdd& g, bdd& either) {
      either = Or(by_wire(f), by_wire(g));
      return true;
    });
  }
  functions.clear();
  return all.front();
}

void AutomatonCircuit::fire_transitions() {
  for (Arc& arc : arcs_) {
    arc.trigger = arc.transition->triggerable_bdd(module_);
    if (arc.transition->tpe == Transition::strong)
      arc.from->strong = Or(arc.from->strong, arc.trigger);
    if (arc.transition->tpe == Transition::weak) arc.from->weak = Or(arc.from->weak, arc.trigger);
  }
  for (Arc& arc : arcs_) {
    const Transition& t = *arc.transition;
    arc.fires = fires(arc);
    // In the instant of set only initial transitions change the code.
    const bdd moves = arc.moves = t.initial ? arc.fires : And(arc.fires, not_set_);
    go_to(arc.to_code, moves);
    raise(t.action, arc.fires);
    for (const Signal* signal : t.action) table_->note_cause(arc.fires, signal, t.span);
    // The state stays present while a weak transition leaves it.
    if (t.tpe == Transition::weak && !t.initial) raise(arc.from->state->actions, moves);
    arc.from->left = Or(arc.from->left, moves);
    arc.to->run_starts = Or(arc.to->run_starts, moves);
  }
  for (const Place& place : places_)
    if (place.state->run != nullptr)
      table_->createRails(Circuit::set(*place.state->run), place.run_starts, Not(place.run_starts),
                          Compilation::SWIRE, module_);
}

void AutomatonCircuit::stay() {
  for (const auto& [name, state] : *automaton_.getStateTable()) {
    const Place& place = places_[state->number];
    go_to(state->number, And(And(place.here, Not(place.left)), not_set_));
  }
}

/// Signals by which a map tells what each transition does.
void AutomatonCircuit::show_transitions() {
  int number = 0;
  const auto show = [&](const char* what, const bdd& f) {
    Signal* signal = make_bit(module_->getName() + what + std::to_string(number));
    table_->createRails(signal, f, Not(f), Compilation::SWIRE, module_);
    return signal;
  };
  for (Arc& arc : arcs_) {
    Transition& t = *arc.transition;
    const bdd here = t.initial ? set_ : And(arc.from->here, not_set_);
    t.fired = show("fires", And(arc.moves, Not(reset_)));
    t.triggered = show(
        "triggered", t.tpe == Transition::normal_termination ? arc.moves : And(here, arc.trigger));
    ++number;
  }
}

bdd AutomatonCircuit::reachable() {
  bdd codes = code_is(all_ones());
  for (size_t code = 0; code + 1 < places_.size(); ++code) codes = Or(codes, places_[code].here);
  return codes;
}

/// A function may take any value at codes that never come, and nowhere else. To look for the best
/// one pays only while it is small.
void AutomatonCircuit::write_next_code() {
  constexpr long small = 2000;
  bdd leaves = wood_->Bdd_zero();
  for (const Place& place : places_)
    if (place.state->final_state) leaves = Or(leaves, And(place.here, not_set_));
  for (int i = 0; i < nbits_; ++i) {
    bdd f = Or(And(any(on_[i]), Not(reset_)), leaves);
    if (wood_->my_bdd_manager()->Bdd_size(f) < small)
      f = wood_->Bdd_simplify(f, And(Not(f), reachable()));
    table_->createRails(next_[i], f, Not(f), Compilation::SREG, module_);
  }
}

void AutomatonCircuit::write_actions() {
  for (const auto& [name, state] : *automaton_.getStateTable())
    raise(state->actions, places_[state->number].here);
  for (auto& [signal, functions] : raised_) table_->raise(signal, any(functions), module_);
}

void AutomatonCircuit::write_end(Signal* rtl) {
  std::vector<bdd> ending;
  for (const Arc& arc : arcs_)
    if (arc.to->state->final_state)
      ending.push_back(Compilation::rules().final_state ? arc.fires
                                                        : And(arc.from->here, arc.trigger));
  const bdd ends = any(ending);
  table_->createRails(rtl, ends, Not(ends), Compilation::STAT, module_);
}

}  // namespace

void Automaton::ident_states_transitions(std::list<Transition*>::const_iterator transition,
                                         int nbits, int& from_code, int& to_code) {
  const Transition& t = **transition;
  from_code = 0;
  if (!t.initial) {
    if (t.from == nullptr) {
      report("PROBLEM DETECTED ABOUT FIRST STATE!!!", Manner::message);
    } else {
      from_code = t.from->number;
    }
  }
  if (t.to == nullptr) {
    report("PROBLEM DETECTED ABOUT FINAL STATE!!!", Manner::message);
    to_code = (1 << nbits) - 1;
  } else {
    to_code = t.to->number;
  }
}

void Automaton::compile(Module* module, EquationTable* table) {
  check_syntax();
  createWires(module, table);
  check_determinism(module, module->getBddWood()->my_bdd_manager());
  priority_integration();
  if (Compilation::rules().self_restart) split_self_restarts();

  AutomatonCircuit circuit(*this, module, table);
  circuit.number_states();
  circuit.make_registers();
  circuit.compile_runs();
  circuit.fire_transitions();
  circuit.stay();
  if (Compilation::MapFlag()) circuit.show_transitions();
  circuit.write_next_code();
  circuit.write_actions();
  circuit.write_end(Circuit::rtl(*this));
}

}  // namespace kiva
