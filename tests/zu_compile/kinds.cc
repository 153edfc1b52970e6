// The statements as random programs hold them: a row each, with its text, what it chooses, and what
// it means.

#include <algorithm>

#include "tests/zu_compile/meaning.h"

namespace kiva::test {

namespace {

using Random = std::mt19937;

std::string block(const Program& part) {
  return "{ " + part.text() + " }";
}

std::string joined(const Program& p, const char* operation) {
  std::string all;
  for (const Program& part : p.parts) all += (all.empty() ? "" : operation) + block(part);
  return all;
}

std::string counted(const Program& p) {
  return std::to_string(p.count) + " ";
}

// What `draw` does.

int draw_condition(Program& p, Random& random, int) {
  p.condition = random_condition(random, 1);
  return 1;
}

int draw_members(Program&, Random& random, int size) {
  return 2 + pick(random, std::min(3, size - 1));
}

// Common meanings.

State ends(Meaning&, const Program&) {
  return {};
}

State ends_now(Meaning&, const Program&, const Running&) {
  return {};
}

State runs(Meaning&, const Program&) {
  return Running{};
}

/// Members one after the other, from one on, each when the one before has ended.
State go_on(Meaning& m, const Program& p, int from) {
  const int members = std::max(p.count, static_cast<int>(p.parts.size()));
  for (int i = from; i < members; ++i)
    if (State state = m.start(p.parts[i % p.parts.size()])) return Running{i, {state}};
  return {};
}

State start_members(Meaning& m, const Program& p) {
  return go_on(m, p, 0);
}

State resume_members(Meaning& m, const Program& p, const Running& state) {
  if (State now = m.resume(p.parts[state.at % p.parts.size()], *state.parts[0]))
    return Running{state.at, {now}};
  return go_on(m, p, state.at + 1);
}

State start_body(Meaning& m, const Program& p) {
  return m.start(p.parts[0]);
}

State any_running(Running all) {
  for (const State& part : all.parts)
    if (part) return all;
  return {};
}

const Kind rows[] = {
    {.name = "emit",
     .alone = 4,
     .writes = true,
     .text = [](const Program& p) { return "emit " + p.signal; },
     .start =
         [](Meaning& m, const Program& p) {
           m.emit(p.signal);
           return State();
         }},
    {.name = "noemit",
     .alone = 1,
     .writes = true,
     .text = [](const Program& p) { return "noemit " + p.signal; },
     .start =
         [](Meaning& m, const Program& p) {
           m.deny(p.signal);
           return State();
         }},
    {.name = "pause",
     .alone = 3,
     .text = [](const Program&) { return std::string("pause"); },
     .start = runs,
     .resume = ends_now},
    {.name = "wait",
     .alone = 2,
     .draw =
         [](Program& p, Random& random, int) {
           p.condition = random_condition(random, 1);
           if (pick(random, 3) == 0) p.count = 2 + pick(random, 2);
           return 0;
         },
     .text =
         [](const Program& p) {
           return "wait " + (p.count == 1 ? "" : counted(p)) + p.condition.text();
         },
     .start =
         [](Meaning&, const Program& p) {
           return State(Running{p.count, {}});
         },
     .resume =
         [](Meaning& m, const Program& p, const Running& state) {
           if (!m.holds(p)) return State(state);
           return state.at == 1 ? State() : State(Running{state.at - 1, {}});
         }},
    {.name = "sustain",
     .alone = 1,
     .writes = true,
     .draw = draw_condition,
     .text =
         [](const Program& p) { return "sustain " + p.signal + " until " + p.condition.text(); },
     .start =
         [](Meaning& m, const Program& p) {
           if (m.holds(p)) return State();
           m.emit(p.signal);
           return State(Running{});
         },
     .resume = [](Meaning& m, const Program& p, const Running&) { return p.kind->start(m, p); }},
    {.name = "halt",
     .alone = 1,
     .text = [](const Program&) { return std::string("halt"); },
     .start = runs,
     .resume = [](Meaning&, const Program&, const Running& state) { return State(state); }},
    {.name = "nothing",
     .alone = 1,
     .text = [](const Program&) { return std::string("nothing"); },
     .start = ends},
    {.name = ">>",
     .around = 7,
     .least = 2,
     .draw = draw_members,
     .text = [](const Program& p) { return joined(p, " >> "); },
     .start = start_members,
     .resume = resume_members},
    {.name = "||",
     .around = 3,
     .least = 2,
     .draw = draw_members,
     .text = [](const Program& p) { return joined(p, " || "); },
     .start =
         [](Meaning& m, const Program& p) {
           Running all;
           for (const Program& part : p.parts) all.parts.push_back(m.start(part));
           return any_running(all);
         },
     .resume =
         [](Meaning& m, const Program& p, const Running& state) {
           Running all = state;
           for (size_t i = 0; i < p.parts.size(); ++i)
             if (state.parts[i]) all.parts[i] = m.resume(p.parts[i], *state.parts[i]);
           return any_running(all);
         }},
    {.name = "loop",
     .around = 3,
     .text = [](const Program& p) { return "loop " + block(p.parts[0]); },
     .start =
         [](Meaning& m, const Program& p) {
           for (int round = 0; round < 4; ++round)
             if (State state = m.start(p.parts[0])) return state;
           m.never_ends();
           return State(Running{});
         },
     .resume =
         [](Meaning& m, const Program& p, const Running& state) {
           if (State now = m.resume(p.parts[0], state)) return now;
           return m.start(p);
         }},
    {.name = "present",
     .around = 2,
     .draw =
         [](Program& p, Random& random, int) {
           const int branches = 1 + pick(random, 2);
           p.condition = random_condition(random, 1);
           return branches;
         },
     .text =
         [](const Program& p) {
           return "present " + p.condition.text() + " " + block(p.parts[0]) +
                  (p.parts.size() > 1 ? " else " + block(p.parts[1]) : "");
         },
     .start =
         [](Meaning& m, const Program& p) {
           const int branch = m.holds(p) ? 0 : 1;
           if (branch == 1 && p.parts.size() == 1) return State();
           const State state = m.start(p.parts[branch]);
           return state ? State(Running{branch, {state}}) : State();
         },
     .resume =
         [](Meaning& m, const Program& p, const Running& state) {
           const State now = m.resume(p.parts[state.at], *state.parts[0]);
           return now ? State(Running{state.at, {now}}) : State();
         }},
    {.name = "weak abort",
     .around = 2,
     .draw = draw_condition,
     .text =
         [](const Program& p) {
           return "weak abort " + block(p.parts[0]) + " when " + p.condition.text();
         },
     .start = start_body,
     .resume =
         [](Meaning& m, const Program& p, const Running& state) {
           const State now = m.resume(p.parts[0], state);
           return m.holds(p) ? State() : now;
         }},
    {.name = "strong abort",
     .around = 2,
     .draw = draw_condition,
     .text =
         [](const Program& p) {
           return "strong abort " + block(p.parts[0]) + " when " + p.condition.text();
         },
     .start = start_body,
     .resume =
         [](Meaning& m, const Program& p, const Running& state) {
           return m.holds(p) ? State() : m.resume(p.parts[0], state);
         }},
    {.name = "repeat",
     .around = 1,
     .draw =
         [](Program& p, Random& random, int) {
           p.count = 1 + pick(random, 3);
           return 1;
         },
     .text = [](const Program& p) { return "repeat " + counted(p) + block(p.parts[0]); },
     .start = start_members,
     .resume = resume_members},
};

}  // namespace

const std::vector<const Kind*>& kinds() {
  static const std::vector<const Kind*> all = [] {
    std::vector<const Kind*> found;
    for (const Kind& row : rows) found.push_back(&row);
    found.push_back(&automaton_kind);
    found.push_back(&mealy_kind);
    return found;
  }();
  return all;
}

const Kind* kind(const std::string& name) {
  return *std::find_if(kinds().begin(), kinds().end(),
                       [&](const Kind* kind) { return kind->name == name; });
}

}  // namespace kiva::test
