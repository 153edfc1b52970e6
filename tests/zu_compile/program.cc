#include "tests/zu_compile/program.h"

#include <algorithm>

namespace kiva::test {

namespace {

/// What a kind of condition makes of its parts, by Condition::Kind.
struct Operation {
  const char* text;
  bool (*holds)(bool a, bool b);
};
const Operation operations[] = {
    {"", nullptr},
    {"not ", [](bool a, bool) { return !a; }},
    {" and ", [](bool a, bool b) { return a && b; }},
    {" or ", [](bool a, bool b) { return a || b; }},
    {" nor ", [](bool a, bool b) { return !a && !b; }},
    {" nand ", [](bool a, bool b) { return !a || !b; }},
    {" xor ", [](bool a, bool b) { return a != b; }},
    {"TT", [](bool, bool) { return true; }},
    {"FF", [](bool, bool) { return false; }},
};

}  // namespace

bool Condition::holds(const std::set<std::string>& present) const {
  if (kind == Kind::signal) return present.contains(signal);
  const auto part = [&](size_t i) { return i < parts.size() && parts[i].holds(present); };
  return operations[static_cast<int>(kind)].holds(part(0), part(1));
}

std::string Condition::text() const {
  const std::string operation = operations[static_cast<int>(kind)].text;
  if (kind == Kind::signal) return signal;
  if (parts.size() < 2) return operation + (parts.empty() ? "" : parts[0].text());
  return "(" + parts[0].text() + operation + parts[1].text() + ")";
}

std::vector<std::string> Condition::signals() const {
  std::vector<std::string> all;
  if (kind == Kind::signal) all.push_back(signal);
  for (const Condition& part : parts)
    for (const std::string& name : part.signals()) all.push_back(name);
  return all;
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

namespace {

/// Of an automaton or a Mealy machine.
void add_smaller_machines(const Program& p, std::vector<Program>& found) {
  const auto add = [&](auto change) {
    Program copy = p;
    change(copy);
    found.push_back(std::move(copy));
  };
  for (size_t i = 0; i < p.states.size(); ++i) {
    if (!p.states[i].actions.empty())
      add([i](Program& copy) { copy.states[i].actions.pop_back(); });
    if (p.states[i].run.empty()) continue;
    add([i](Program& copy) {
      copy.states[i].run.clear();
      std::erase_if(copy.transitions, [i](const Transition& t) {
        return t.from == static_cast<int>(i) && t.kind == Transition::Kind::normal_termination;
      });
    });
    for (Program& run : p.states[i].run[0].smaller())
      add([&](Program& copy) { copy.states[i].run[0] = std::move(run); });
  }
  for (size_t i = 0; i < p.transitions.size(); ++i) {
    if (p.transitions.size() > 1)
      add([i](Program& copy) { copy.transitions.erase(copy.transitions.begin() + i); });
    if (!p.transitions[i].actions.empty())
      add([i](Program& copy) { copy.transitions[i].actions.pop_back(); });
    for (const Condition& part : p.transitions[i].trigger.parts)
      add([&](Program& copy) { copy.transitions[i].trigger = part; });
  }
  for (size_t i = 0; i < p.equations.size(); ++i) {
    // A register without a next value has no meaning.
    if (std::none_of(mealy_registers.begin(), mealy_registers.end(),
                     [&](const MealyRegister& reg) { return reg.next == p.equations[i].signal; }))
      add([i](Program& copy) { copy.equations.erase(copy.equations.begin() + i); });
    for (const Condition& part : p.equations[i].right.parts)
      add([&](Program& copy) { copy.equations[i].right = part; });
  }
}

}  // namespace

std::vector<Program> Program::smaller() const {
  std::vector<Program> found = parts;
  if (!parts.empty()) found.emplace_back();  // nothing
  const auto add = [&](auto change) {
    Program copy = *this;
    change(copy);
    found.push_back(std::move(copy));
  };
  for (size_t i = 0; i < parts.size(); ++i) {
    if (parts.size() > kind->least)
      add([i](Program& copy) { copy.parts.erase(copy.parts.begin() + i); });
    for (Program& part : parts[i].smaller())
      add([&](Program& copy) { copy.parts[i] = std::move(part); });
  }
  if (count > 1) add([](Program& copy) { --copy.count; });
  for (const Condition& part : condition.parts) add([&](Program& copy) { copy.condition = part; });
  add_smaller_machines(*this, found);
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

int pick(std::mt19937& random, int below) {
  return static_cast<int>(random() % static_cast<unsigned>(below));
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

namespace {

const Kind* drawn(std::mt19937& random, int Kind::*weight) {
  int all = 0;
  for (const Kind* kind : kinds()) all += kind->*weight;
  int choice = pick(random, all);
  for (const Kind* kind : kinds())
    if ((choice -= kind->*weight) < 0) return kind;
  return nullptr;
}

/// A body that is killed and started again in one instant needs the right company to show.
Program random_restart(std::mt19937& random, int size) {
  Program made, abort, skip, body;
  made.kind = kind("loop");
  abort.kind = kind(pick(random, 2) == 0 ? "weak abort" : "strong abort");
  skip.kind = kind("present");
  body.kind = kind(">>");
  abort.condition = random_condition(random, 1);
  skip.condition = random_condition(random, 1);
  skip.parts.push_back(random_program(random, 1 + pick(random, 2)));
  abort.parts.push_back(random_program(random, size - 3));
  body.parts = {abort, skip};
  made.parts.push_back(body);
  return made;
}

}  // namespace

Program random_program(std::mt19937& random, int size) {
  if (size >= 6 && pick(random, 10) == 0) return random_restart(random, size);
  Program made;
  made.kind = drawn(random, size <= 1 ? &Kind::alone : &Kind::around);
  if (size <= 1) {
    const std::string& signal = written_signal(random);
    if (made.kind->writes) made.signal = signal;
  }
  const int members = made.kind->draw == nullptr ? 1 : made.kind->draw(made, random, size);
  int left = size - 1;
  for (int i = 0; size > 1 && i < members; ++i) {
    const int share = i + 1 == members ? left : 1 + pick(random, std::max(1, left / 2));
    made.parts.push_back(random_program(random, share));
    left = std::max(1, left - share);
  }
  return made;
}

}  // namespace kiva::test
