#include "tests/zu_compile/meaning.h"

#include <climits>
#include <map>

namespace kiva::test {

using Kind = Program::Kind;

Meaning::Meaning(const Program& program) : program_(program) {
  if (program.kind != Kind::mealy) return;
  for (const MealyRegister& reg : mealy_registers)
    if (reg.initial) registers_.insert(reg.name);
}

bool Meaning::step(const std::set<std::string>& inputs, bool start_now, bool kill) {
  const State before = state_;
  std::set<std::string> given = inputs;
  given.insert(registers_.begin(), registers_.end());
  present_ = given;
  // What is emitted depends on what is present, and the other way round: go through the instant
  // until both are the same. Without circles that takes one round a signal at most.
  for (size_t round = 0; round <= 10; ++round) {
    emitted_ = given;
    refused_ = false;
    endless_ = false;
    ended_ = false;
    state_.reset();
    if (before) {
      state_ = resume(program_, *before);
      ended_ = !state_;
    } else if (start_now) {
      state_ = start(program_);
      ended_ = !state_ && !refused_;
    }
    if (emitted_ == present_) {
      if (kill) state_.reset();
      registers_.clear();
      for (const MealyRegister& reg : mealy_registers)
        if (present_.contains(reg.next)) registers_.insert(reg.name);
      return !endless_;
    }
    present_ = emitted_;
  }
  return false;
}

Meaning::State Meaning::start(const Program& p) {
  switch (p.kind) {
    case Kind::nothing:
      return {};
    case Kind::emit:
      emit(p);
      return {};
    case Kind::halt:
    case Kind::pause:
      return Running{};
    case Kind::wait:
      return Running{p.count, {}};
    case Kind::sustain:
      if (holds(p)) return {};
      emit(p);
      return Running{};
    case Kind::sequence:
      return go_on(p, static_cast<int>(p.parts.size()), 0);
    case Kind::repeat:
      return go_on(p, p.count, 0);
    case Kind::parallel: {
      Running all;
      bool any = false;
      for (const Program& part : p.parts) {
        all.parts.push_back(start(part));
        any = any || all.parts.back();
      }
      return any ? State(all) : State();
    }
    case Kind::present: {
      const int branch = holds(p) ? 0 : 1;
      if (branch == 1 && p.parts.size() == 1) return {};
      State state = start(p.parts[branch]);
      return state ? State(Running{branch, {state}}) : State();
    }
    case Kind::weak_abort:
    case Kind::strong_abort:
      return start(p.parts[0]);
    case Kind::loop:
      for (int round = 0; round < 4; ++round)
        if (State state = start(p.parts[0])) return state;
      endless_ = true;
      return Running{};
    case Kind::automaton:
      return start_automaton(p);
    case Kind::mealy:
      return run_machine(p);
  }
  return {};
}

/// Starts the members from one on, each when the one before has ended.
Meaning::State Meaning::go_on(const Program& p, int count, int from) {
  for (int i = from; i < count; ++i)
    if (State state = start(member(p, i))) return Running{i, {state}};
  return {};
}

Meaning::State Meaning::resume(const Program& p, const Running& state) {
  switch (p.kind) {
    case Kind::nothing:
    case Kind::emit:
    case Kind::pause:
      return {};
    case Kind::halt:
      return state;
    case Kind::wait:
      if (!holds(p)) return state;
      return state.at == 1 ? State() : State(Running{state.at - 1, {}});
    case Kind::sustain:
      if (holds(p)) return {};
      emit(p);
      return state;
    case Kind::sequence:
    case Kind::repeat: {
      if (State now = resume(member(p, state.at), *state.parts[0])) return Running{state.at, {now}};
      return go_on(p, p.kind == Kind::repeat ? p.count : static_cast<int>(p.parts.size()),
                   state.at + 1);
    }
    case Kind::parallel: {
      Running all;
      bool any = false;
      for (size_t i = 0; i < p.parts.size(); ++i) {
        all.parts.push_back(state.parts[i] ? resume(p.parts[i], *state.parts[i]) : State());
        any = any || all.parts.back();
      }
      return any ? State(all) : State();
    }
    case Kind::present: {
      State now = resume(p.parts[state.at], *state.parts[0]);
      return now ? State(Running{state.at, {now}}) : State();
    }
    case Kind::weak_abort: {
      State now = resume(p.parts[0], state);
      return holds(p) ? State() : now;
    }
    case Kind::strong_abort:
      return holds(p) ? State() : resume(p.parts[0], state);
    case Kind::loop:
      if (State now = resume(p.parts[0], state)) return now;
      return start(p);
    case Kind::automaton:
      return resume_automaton(p, state);
    case Kind::mealy:
      return run_machine(p);
  }
  return {};
}

/// The equations hold in each instant, whatever was before but for the registers.
Meaning::State Meaning::run_machine(const Program& p) {
  std::map<std::string, const Condition*> last;
  for (const MealyEquation& equation : p.equations) last[equation.signal] = &equation.right;
  for (const auto& [signal, right] : last)
    if (right->holds(present_)) emitted_.insert(signal);
  return Running{};
}

const Transition* Meaning::triggered(const Program& p, int from, Transition::Kind kind) const {
  const auto rank = [](const Transition& t) { return t.priority < 0 ? INT_MAX : t.priority; };
  const Transition* first = nullptr;
  for (const Transition& t : p.transitions)
    if (t.from == from && t.kind == kind && t.trigger.holds(present_))
      if (first == nullptr || rank(t) < rank(*first)) first = &t;
  return first;
}

/// Into a state, whose run starts in this instant; into a final one that is the end.
Meaning::State Meaning::take(const Program& p, const Transition& transition) {
  emitted_.insert(transition.actions.begin(), transition.actions.end());
  const AutomatonState& target = p.states[transition.to];
  if (target.final_state) return {};
  Running state{transition.to, {}};
  for (const Program& run : target.run) state.parts.push_back(start(run));
  return state;
}

Meaning::State Meaning::start_automaton(const Program& p) {
  for (const auto kind : {Transition::Kind::strong, Transition::Kind::weak})
    if (const Transition* initial = triggered(p, -1, kind)) return take(p, *initial);
  refused_ = true;
  return {};
}

Meaning::State Meaning::resume_automaton(const Program& p, const Running& state) {
  const AutomatonState& here = p.states[state.at];
  emitted_.insert(here.actions.begin(), here.actions.end());
  if (const Transition* strong = triggered(p, state.at, Transition::Kind::strong))
    return take(p, *strong);
  Running now{state.at, state.parts};
  const bool ran = !now.parts.empty() && now.parts[0];
  if (ran) now.parts[0] = resume(here.run[0], *now.parts[0]);
  if (const Transition* weak = triggered(p, state.at, Transition::Kind::weak))
    return take(p, *weak);
  if (ran && !now.parts[0])
    if (const Transition* end = triggered(p, state.at, Transition::Kind::normal_termination))
      return take(p, *end);
  return now;
}

}  // namespace kiva::test
