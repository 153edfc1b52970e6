#include "tests/zu_compile/meaning.h"

namespace kiva::test {

using Kind = Program::Kind;

bool Meaning::step(const std::set<std::string>& inputs, bool start_now, bool kill) {
  const State before = state_;
  present_ = inputs;
  // What is emitted depends on what is present, and the other way round: go through the instant
  // until both are the same. Without circles that takes one round a signal at most.
  for (size_t round = 0; round <= output_names.size() + local_names.size() + 1; ++round) {
    emitted_ = inputs;
    endless_ = false;
    ended_ = false;
    state_.reset();
    if (before) {
      state_ = resume(program_, *before);
      ended_ = !state_;
    } else if (start_now) {
      state_ = start(program_);
      ended_ = !state_;
    }
    if (emitted_ == present_) {
      if (kill) state_.reset();
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
  }
  return {};
}

}  // namespace kiva::test
