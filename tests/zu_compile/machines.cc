// Automata and Mealy machines: their text, what they mean, random ones.

#include <algorithm>
#include <climits>
#include <map>

#include "tests/zu_compile/meaning.h"

namespace kiva::test {

namespace {

std::string actions_text(const std::vector<std::string>& actions) {
  std::string text;
  for (const std::string& name : actions) text += (text.empty() ? " / " : ", ") + name;
  return text;
}

std::string automaton_text(const Program& p) {
  std::string text = "automaton\n";
  const auto name = [](int state) { return "S" + std::to_string(state); };
  for (size_t i = 0; i < p.states.size(); ++i) {
    const AutomatonState& state = p.states[i];
    text += "state: " + name(static_cast<int>(i)) + (state.final_state ? " final" : "") +
            (state.run.empty() ? "" : " " + state.run[0].text()) + actions_text(state.actions) +
            ";\n";
  }
  text += "transition:\n";
  for (const Transition& t : p.transitions) {
    text += t.from < 0 ? "initial->" : name(t.from);
    if (t.priority != 0) text += t.priority < 0 ? " other" : " " + std::to_string(t.priority);
    text += t.trigger.kind == Condition::Kind::always ? (t.priority == 0 ? "" : " []")
                                                      : " [" + t.trigger.text() + "]";
    text += actions_text(t.actions) +
            (t.kind == Transition::Kind::strong ? " -> "
             : t.kind == Transition::Kind::weak ? " weak-> "
                                                : " normalterm-> ") +
            name(t.to) + ";\n";
  }
  return text;
}

std::string mealy_text(const Program& p) {
  std::string text = "Mealy Machine\nRegister:";
  for (const MealyRegister& reg : mealy_registers)
    text += std::string(&reg == &mealy_registers[0] ? " " : ", ") + reg.name + ": " +
            (reg.initial ? "1" : "0") + ": " + reg.next;
  text += ";\n";
  for (const MealyEquation& equation : p.equations)
    text += equation.signal + " = " + equation.right.text() + ";\n";
  return text;
}

/// What a machine's registers and their next signals are in an instant; they are its own.
class OwnSignals {
 public:
  OwnSignals(const Meaning& m, int registers) : m_(m) {
    for (size_t i = 0; i < mealy_registers.size(); ++i)
      if ((registers >> i & 1) != 0) own_.insert(mealy_registers[i].name);
    for (const MealyRegister& reg : mealy_registers) nexts_.insert(reg.next);
  }
  bool is_next(const std::string& signal) const { return nexts_.contains(signal); }
  bool holds(const Condition& right) const {
    std::set<std::string> seen = m_.present();
    seen.insert(own_.begin(), own_.end());
    return right.holds(seen);
  }
  /// Next signals may read each other.
  void settle(const std::map<std::string, const Condition*>& equations) {
    for (size_t round = 0; round < nexts_.size(); ++round)
      for (const std::string& next : nexts_) {
        own_.erase(next);
        if (holds(*equations.at(next))) own_.insert(next);
      }
  }
  int next_registers() const {
    int registers = 0;
    for (size_t i = 0; i < mealy_registers.size(); ++i)
      if (own_.contains(mealy_registers[i].next)) registers |= 1 << i;
    return registers;
  }

 private:
  const Meaning& m_;
  std::set<std::string> own_, nexts_;
};

bool is_written(const std::string& name) {
  return name == local_names[0] || name == local_names[1] ||
         std::find(output_names.begin(), output_names.end(), name) != output_names.end();
}

/// The equations hold in each instant from the start on; the state has a bit for each register.
State hold_equations(Meaning& m, const Program& p, int registers) {
  std::map<std::string, const Condition*> last;
  for (const MealyEquation& equation : p.equations) last[equation.signal] = &equation.right;
  OwnSignals own(m, registers);
  own.settle(last);
  for (const auto& [signal, right] : last) {
    if (own.is_next(signal)) continue;
    if (own.holds(*right)) m.emit(signal);
    // What reads outputs may be neither true nor false.
    const std::vector<std::string> read = right->signals();
    if (!own.holds(*right) && std::none_of(read.begin(), read.end(), is_written)) m.deny(signal);
  }
  Running next;
  next.at = own.next_registers();
  return next;
}

State start_equations(Meaning& m, const Program& p) {
  int initial = 0;
  for (size_t i = 0; i < mealy_registers.size(); ++i)
    if (mealy_registers[i].initial) initial |= 1 << i;
  return hold_equations(m, p, initial);
}

/// The first in rank of a kind out of a state that is triggered; null if none is.
const Transition* triggered(Meaning& m, const Program& p, int from, Transition::Kind kind) {
  const auto rank = [](const Transition& t) { return t.priority < 0 ? INT_MAX : t.priority; };
  const Transition* first = nullptr;
  for (const Transition& t : p.transitions)
    if (t.from == from && t.kind == kind && m.holds(t.trigger))
      if (first == nullptr || rank(t) < rank(*first)) first = &t;
  return first;
}

/// Into a state, whose run starts in this instant; into a final one that is the end.
State take(Meaning& m, const Program& p, const Transition& transition) {
  for (const std::string& action : transition.actions) m.emit(action);
  const AutomatonState& target = p.states[transition.to];
  if (target.final_state) return {};
  Running state{transition.to, {}};
  for (const Program& run : target.run) state.parts.push_back(m.start(run));
  return state;
}

State start_automaton(Meaning& m, const Program& p) {
  for (const auto kind : {Transition::Kind::strong, Transition::Kind::weak})
    if (const Transition* initial = triggered(m, p, -1, kind)) return take(m, p, *initial);
  m.refuse();
  return {};
}

State resume_automaton(Meaning& m, const Program& p, const Running& state) {
  const AutomatonState& here = p.states[state.at];
  for (const std::string& action : here.actions) m.emit(action);
  if (const Transition* strong = triggered(m, p, state.at, Transition::Kind::strong))
    return take(m, p, *strong);
  Running now{state.at, state.parts};
  const bool ran = !now.parts.empty() && now.parts[0];
  if (ran) now.parts[0] = m.resume(here.run[0], *now.parts[0]);
  if (const Transition* weak = triggered(m, p, state.at, Transition::Kind::weak))
    return take(m, p, *weak);
  if (ran && !now.parts[0])
    if (const Transition* end = triggered(m, p, state.at, Transition::Kind::normal_termination))
      return take(m, p, *end);
  return now;
}

}  // namespace

const Kind automaton_kind{.name = "automaton",
                          .text = automaton_text,
                          .start = start_automaton,
                          .resume = resume_automaton};
const Kind mealy_kind{.name = "Mealy Machine",
                      .text = mealy_text,
                      .start = start_equations,
                      .resume = [](Meaning& m, const Program& p, const Running& state) {
                        return hold_equations(m, p, state.at);
                      }};

namespace {

/// The next name of a module.
std::string new_module() {
  static int number = 0;
  return "m" + std::to_string(number++);
}

std::vector<std::string> random_actions(std::mt19937& random) {
  std::vector<std::string> names;
  while (names.size() < 2 && pick(random, 3) == 0) names.push_back(written_signal(random));
  return names;
}

Transition random_transition(std::mt19937& random, int from, int states) {
  Transition made;
  made.from = from;
  made.to = pick(random, states);
  made.trigger = random_condition(random, 2);
  made.actions = random_actions(random);
  return made;
}

/// Makes a program fit to be a module that reads the inputs and writes the outputs alone.
void confine(Condition& condition) {
  const auto is_own = [&](const MealyRegister& reg) {
    return condition.signal == reg.name || condition.signal == reg.next;
  };
  if (condition.kind == Condition::Kind::signal &&
      std::none_of(mealy_registers.begin(), mealy_registers.end(), is_own))
    condition.signal = input_names[std::hash<std::string>()(condition.signal) % 3];
  for (Condition& part : condition.parts) confine(part);
}

/// With `pure`, it gives no values.
void confine(Program& program, bool pure) {
  const auto confine_written = [pure](std::string& written) {
    for (size_t i = 0; i < local_names.size(); ++i)
      if (written == local_names[i]) written = output_names[i];
    if (pure && valued_names.contains(written)) written = "c";
  };
  if (program.kind != &run_kind) confine_written(program.signal);
  confine(program.condition);
  for (Program& part : program.parts) confine(part, pure);
  for (AutomatonState& state : program.states) {
    for (std::string& action : state.actions) confine_written(action);
    for (Program& run : state.run) confine(run, pure);
  }
  for (Transition& t : program.transitions) {
    confine(t.trigger);
    for (std::string& action : t.actions) confine_written(action);
  }
  for (MealyEquation& equation : program.equations) {
    confine_written(equation.signal);
    confine(equation.right);
  }
}

/// A caller with a value to take does not take a signal that never has one.
Program run_of(Program body) {
  bool pure = true;
  for_each_writing(body, [&](const std::string&, int value) { pure = pure && value == 0; });
  confine(body, pure);
  Program made;
  made.kind = &run_kind;
  made.signal = new_module();
  made.parts.push_back(std::move(body));
  return made;
}

}  // namespace

Program random_automaton(std::mt19937& random, int size) {  // house: one choice after the other
  Program made;
  made.kind = &automaton_kind;
  const int states = 1 + pick(random, std::max(1, size / 2));
  made.states.resize(states);
  for (AutomatonState& state : made.states) {
    state.final_state = states > 1 && pick(random, 6) == 0;
    if (state.final_state) continue;
    state.actions = random_actions(random);
    if (states == 1 || pick(random, 4) != 0) continue;
    state.run.push_back(run_of(random_program(random, 1 + pick(random, 8))));
  }
  // Priorities do not rank initial transitions: a second one takes what the first leaves.
  Transition initial = random_transition(random, -1, states);
  if (pick(random, 2) == 0) initial.trigger = Condition();
  made.transitions.push_back(initial);
  if (pick(random, 3) == 0) {
    Transition second = random_transition(random, -1, states);
    second.kind = Transition::Kind::weak;
    second.trigger = {Condition::Kind::negation, "", {initial.trigger}};
    made.transitions.push_back(second);
  }
  // Priorities of one kind out of one state are all different.
  for (int from = 0; from < states; ++from) {
    if (made.states[from].final_state) continue;
    for (const auto kind : {Transition::Kind::strong, Transition::Kind::weak}) {
      std::vector<int> priorities{-1, 0, 1, 2, 7};
      std::shuffle(priorities.begin(), priorities.end(), random);
      for (int left = pick(random, 4); left > 0; --left) {
        Transition t = random_transition(random, from, states);
        t.kind = kind;
        t.priority = priorities[left];
        made.transitions.push_back(t);
      }
    }
    if (made.states[from].run.empty()) continue;
    Transition end = random_transition(random, from, states);
    end.kind = Transition::Kind::normal_termination;
    end.trigger = Condition();
    made.transitions.push_back(end);
  }
  std::shuffle(made.transitions.begin(), made.transitions.end(), random);
  return made;
}

namespace {

Condition random_right_side(std::mt19937& random, int depth) {
  using Kind = Condition::Kind;
  if (depth > 0 && pick(random, 2) == 0) {
    const Kind kinds[] = {Kind::negation, Kind::both,     Kind::either,
                          Kind::neither,  Kind::not_both, Kind::differ};
    Condition made{kinds[pick(random, 6)], "", {random_right_side(random, depth - 1)}};
    if (made.kind != Kind::negation) made.parts.push_back(random_right_side(random, depth - 1));
    return made;
  }
  const int choice = pick(random, 8);
  if (choice == 0) return {Kind::signal, written_signal(random), {}};
  if (choice == 1) return {Kind::signal, pick(random, mealy_registers).next, {}};
  if (choice < 5) return {Kind::signal, pick(random, mealy_registers).name, {}};
  return {Kind::signal, pick(random, input_names), {}};
}

}  // namespace

Program random_mealy(std::mt19937& random, int size) {
  Program made;
  made.kind = &mealy_kind;
  for (const MealyRegister& reg : mealy_registers)
    made.equations.push_back({reg.next, random_right_side(random, 3)});
  for (int left = 1 + pick(random, size); left > 0; --left)
    made.equations.push_back({written_signal(random), random_right_side(random, 3)});
  std::shuffle(made.equations.begin(), made.equations.end(), random);
  return made;
}

void enrich(Program& program, std::mt19937& random) {
  for (Program& part : program.parts) enrich(part, random);
  for (AutomatonState& state : program.states)
    for (Program& run : state.run) enrich(run, random);
  if (program.kind == kind("emit") || program.kind == kind("sustain"))
    program.value = valued_names.contains(program.signal) ? 1 + pick(random, 4) : 0;
  if (!program.states.empty() || !program.equations.empty() || pick(random, 12) != 0) return;
  if (program.kind == &run_kind) {
    Program body = pick(random, 2) == 0 ? random_mealy(random, 2) : random_automaton(random, 3);
    const Program made = run_of(body);
    program.parts = made.parts;
  } else {
    program = run_of(pick(random, 2) == 0   ? random_mealy(random, 2)
                     : pick(random, 2) == 0 ? random_automaton(random, 3)
                                            : program);
  }
}

}  // namespace kiva::test
