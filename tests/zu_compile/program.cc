#include "tests/zu_compile/program.h"

#include <algorithm>

namespace kiva::test {

bool Condition::holds(const std::set<std::string>& present) const {
  switch (kind) {
    case Kind::signal:
      return present.contains(signal);
    case Kind::negation:
      return !parts[0].holds(present);
    case Kind::both:
      return parts[0].holds(present) && parts[1].holds(present);
    case Kind::either:
      return parts[0].holds(present) || parts[1].holds(present);
    case Kind::neither:
      return !parts[0].holds(present) && !parts[1].holds(present);
    case Kind::not_both:
      return !parts[0].holds(present) || !parts[1].holds(present);
    case Kind::differ:
      return parts[0].holds(present) != parts[1].holds(present);
    case Kind::always:
      return true;
    case Kind::never:
      return false;
  }
  return false;
}

std::string Condition::text() const {
  const auto between = [this](const char* operation) {
    return "(" + parts[0].text() + operation + parts[1].text() + ")";
  };
  switch (kind) {
    case Kind::signal:
      return signal;
    case Kind::negation:
      return "not " + parts[0].text();
    case Kind::both:
      return between(" and ");
    case Kind::either:
      return between(" or ");
    case Kind::neither:
      return between(" nor ");
    case Kind::not_both:
      return between(" nand ");
    case Kind::differ:
      return between(" xor ");
    case Kind::always:
      return "TT";
    case Kind::never:
      return "FF";
  }
  return "";
}

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
            (state.run.empty() ? "" : " run run" + std::to_string(i)) +
            actions_text(state.actions) + ";\n";
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

}  // namespace

std::string Program::text() const {
  const auto block = [](const Program& part) { return "{ " + part.text() + " }"; };
  const auto joined = [&](const char* operation) {
    std::string all;
    for (const Program& part : parts) all += (all.empty() ? "" : operation) + block(part);
    return all;
  };
  switch (kind) {
    case Kind::nothing:
      return "nothing";
    case Kind::halt:
      return "halt";
    case Kind::pause:
      return "pause";
    case Kind::emit:
      return "emit " + signal;
    case Kind::sustain:
      return "sustain " + signal + " until " + condition.text();
    case Kind::wait:
      return "wait " + (count == 1 ? "" : std::to_string(count) + " ") + condition.text();
    case Kind::loop:
      return "loop " + block(parts[0]);
    case Kind::sequence:
      return joined(" >> ");
    case Kind::parallel:
      return joined(" || ");
    case Kind::present:
      return "present " + condition.text() + " " + block(parts[0]) +
             (parts.size() > 1 ? " else " + block(parts[1]) : "");
    case Kind::weak_abort:
      return "weak abort " + block(parts[0]) + " when " + condition.text();
    case Kind::strong_abort:
      return "strong abort " + block(parts[0]) + " when " + condition.text();
    case Kind::repeat:
      return "repeat " + std::to_string(count) + " " + block(parts[0]);
    case Kind::automaton:
      return automaton_text(*this);
    case Kind::mealy:
      return mealy_text(*this);
  }
  return "";
}

int Program::size() const {
  int all = 1 + static_cast<int>(condition.parts.size());
  for (const Program& part : parts) all += part.size();
  for (const AutomatonState& state : states) {
    all += static_cast<int>(state.actions.size());
    for (const Program& run : state.run) all += run.size();
  }
  for (const Transition& t : transitions)
    all += 2 + static_cast<int>(t.actions.size() + t.trigger.parts.size());
  for (const MealyEquation& e : equations) all += 1 + static_cast<int>(e.right.parts.size());
  return all + count - 1;
}

std::vector<Program> Program::smaller() const {
  std::vector<Program> found = parts;
  if (!parts.empty()) found.emplace_back();  // nothing
  const auto add = [&](auto change) {
    Program copy = *this;
    change(copy);
    found.push_back(std::move(copy));
  };
  const size_t least = kind == Kind::sequence || kind == Kind::parallel ? 2
                       : kind == Kind::present                          ? 1
                                                                        : parts.size();
  for (size_t i = 0; i < parts.size(); ++i) {
    if (parts.size() > least) add([i](Program& copy) { copy.parts.erase(copy.parts.begin() + i); });
    for (Program& part : parts[i].smaller())
      add([&](Program& copy) { copy.parts[i] = std::move(part); });
  }
  if (count > 1) add([](Program& copy) { --copy.count; });
  for (const Condition& part : condition.parts) add([&](Program& copy) { copy.condition = part; });
  for (size_t i = 0; i < states.size(); ++i) {
    if (!states[i].actions.empty()) add([i](Program& copy) { copy.states[i].actions.pop_back(); });
    if (states[i].run.empty()) continue;
    add([i](Program& copy) {
      copy.states[i].run.clear();
      std::erase_if(copy.transitions, [i](const Transition& t) {
        return t.from == static_cast<int>(i) && t.kind == Transition::Kind::normal_termination;
      });
    });
    for (Program& run : states[i].run[0].smaller())
      add([&](Program& copy) { copy.states[i].run[0] = std::move(run); });
  }
  for (size_t i = 0; i < transitions.size(); ++i) {
    if (transitions.size() > 1)
      add([i](Program& copy) { copy.transitions.erase(copy.transitions.begin() + i); });
    if (!transitions[i].actions.empty())
      add([i](Program& copy) { copy.transitions[i].actions.pop_back(); });
    for (const Condition& part : transitions[i].trigger.parts)
      add([&](Program& copy) { copy.transitions[i].trigger = part; });
  }
  for (size_t i = 0; i < equations.size(); ++i) {
    if (equations.size() > 1)
      add([i](Program& copy) { copy.equations.erase(copy.equations.begin() + i); });
    for (const Condition& part : equations[i].right.parts)
      add([&](Program& copy) { copy.equations[i].right = part; });
  }
  return found;
}

std::string module_text(const Program& body) {
  const auto list = [](const char* section, const std::vector<std::string>& names) {
    std::string text = section;
    for (const std::string& name : names) text += (name == names[0] ? " " : ", ") + name;
    return text + ";\n";
  };
  const std::string interface = list("Input:", input_names) + list("Output:", output_names);
  std::string text;
  for (size_t i = 0; i < body.states.size(); ++i)
    for (const Program& run : body.states[i].run)
      text += "module run" + std::to_string(i) + ":\n" + interface + run.text() + "\nend\n";
  return text + "module main:\n" + interface + list("Local:", local_names) + body.text() +
         "\nend\n";
}

namespace {

int pick(std::mt19937& random, int below) {
  return static_cast<int>(random() % static_cast<unsigned>(below));
}

template <class Member>
const Member& pick(std::mt19937& random, const std::vector<Member>& names) {
  return names[pick(random, static_cast<int>(names.size()))];
}

const std::string& written_signal(std::mt19937& random) {
  return pick(random, pick(random, 4) == 0 ? local_names : output_names);
}

Condition random_condition(std::mt19937& random, int depth) {
  using Kind = Condition::Kind;
  const int choice = pick(random, 20);
  if (depth > 0 && choice < 6) {
    const Kind kind = choice < 2 ? Kind::negation : choice < 4 ? Kind::both : Kind::either;
    Condition made{kind, "", {random_condition(random, depth - 1)}};
    if (kind != Kind::negation) made.parts.push_back(random_condition(random, depth - 1));
    return made;
  }
  if (choice == 19) return {Kind::always, "", {}};
  if (choice == 18) return {Kind::never, "", {}};
  if (choice > 14) return {Kind::signal, written_signal(random), {}};
  return {Kind::signal, pick(random, input_names), {}};
}

}  // namespace

Program random_program(std::mt19937& random, int size) {
  using Kind = Program::Kind;
  Program made;
  if (size >= 6 && pick(random, 10) == 0) {
    // A body that is killed and started again in one instant needs the right company to show.
    Program abort, skip, body;
    abort.kind = pick(random, 2) == 0 ? Kind::weak_abort : Kind::strong_abort;
    skip.kind = Kind::present;
    abort.condition = random_condition(random, 1);
    skip.condition = random_condition(random, 1);
    skip.parts.push_back(random_program(random, 1 + pick(random, 2)));
    abort.parts.push_back(random_program(random, size - 3));
    body.kind = Kind::sequence;
    body.parts = {abort, skip};
    made.kind = Kind::loop;
    made.parts.push_back(body);
    return made;
  }
  if (size <= 1) {
    const int choice = pick(random, 12);
    made.kind = choice < 4    ? Kind::emit
                : choice < 7  ? Kind::pause
                : choice < 9  ? Kind::wait
                : choice < 10 ? Kind::sustain
                : choice < 11 ? Kind::halt
                              : Kind::nothing;
    made.signal = written_signal(random);
    if (made.kind == Kind::wait || made.kind == Kind::sustain)
      made.condition = random_condition(random, 1);
    if (made.kind == Kind::wait && pick(random, 3) == 0) made.count = 2 + pick(random, 2);
    return made;
  }
  const int choice = pick(random, 20);
  made.kind = choice < 7    ? Kind::sequence
              : choice < 10 ? Kind::parallel
              : choice < 13 ? Kind::loop
              : choice < 15 ? Kind::present
              : choice < 17 ? Kind::weak_abort
              : choice < 19 ? Kind::strong_abort
                            : Kind::repeat;
  int members = 1;
  if (made.kind == Kind::sequence || made.kind == Kind::parallel)
    members = 2 + pick(random, std::min(3, size - 1));
  if (made.kind == Kind::present) members = 1 + pick(random, 2);
  if (made.kind == Kind::repeat) made.count = 1 + pick(random, 3);
  if (made.kind == Kind::present || made.kind == Kind::weak_abort ||
      made.kind == Kind::strong_abort)
    made.condition = random_condition(random, 1);
  int left = size - 1;
  for (int i = 0; i < members; ++i) {
    const int share = i + 1 == members ? left : 1 + pick(random, std::max(1, left / 2));
    made.parts.push_back(random_program(random, share));
    left = std::max(1, left - share);
  }
  return made;
}

namespace {

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
  if (condition.kind == Condition::Kind::signal)
    condition.signal = input_names[std::hash<std::string>()(condition.signal) % 3];
  for (Condition& part : condition.parts) confine(part);
}

void confine(Program& program) {
  for (size_t i = 0; i < local_names.size(); ++i)
    if (program.signal == local_names[i]) program.signal = output_names[i];
  confine(program.condition);
  for (Program& part : program.parts) confine(part);
}

}  // namespace

Program random_automaton(std::mt19937& random, int size) {
  Program made;
  made.kind = Program::Kind::automaton;
  const int states = 1 + pick(random, std::max(1, size / 2));
  made.states.resize(states);
  for (AutomatonState& state : made.states) {
    state.final_state = states > 1 && pick(random, 6) == 0;
    if (state.final_state) continue;
    state.actions = random_actions(random);
    if (states == 1 || pick(random, 4) != 0) continue;
    state.run.push_back(random_program(random, 1 + pick(random, 8)));
    confine(state.run[0]);
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
  // A transition from a state to itself kills the run that it starts.
  for (Transition& t : made.transitions)
    if (t.from == t.to && !made.states[t.from].run.empty()) t.to = (t.to + 1) % states;
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
  made.kind = Program::Kind::mealy;
  for (const MealyRegister& reg : mealy_registers)
    made.equations.push_back({reg.next, random_right_side(random, 3)});
  for (int left = 1 + pick(random, size); left > 0; --left)
    made.equations.push_back({written_signal(random), random_right_side(random, 3)});
  std::shuffle(made.equations.begin(), made.equations.end(), random);
  return made;
}

}  // namespace kiva::test
