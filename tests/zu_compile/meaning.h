#pragma once

#include <map>
#include <set>
#include <string>

#include "tests/zu_compile/program.h"

namespace kiva::test {

/// Runs a program by what its statements mean: each is started, runs from instant to instant, ends
/// or is killed, and makes signals present. It knows no equations.
class Meaning {
 public:
  explicit Meaning(const Program& program) : program_(program) {}

  /// One instant. `start` starts the program if it does not run; `kill` lets it go through the
  /// instant and then takes it away. False when no set of signals agrees with itself, or a loop
  /// goes round for ever within the instant.
  bool step(const std::set<std::string>& inputs, bool start, bool kill);
  /// Inputs and what was emitted, and not denied, in the last instant.
  const std::set<std::string>& present() const { return present_; }
  /// A condition has read what is both emitted and denied: no meaning tells what follows.
  bool contradicted() const { return contradicted_; }
  /// What the last instant says of an output or local: '1' present, '0' absent, 'T' both, '_'
  /// nothing.
  char said(const std::string& signal) const;
  bool ended() const { return ended_; }
  bool runs() const { return state_.has_value(); }
  /// What stands, with all that runs in it.
  const State& state() const { return state_; }

  /// How often a statement started and ended in the last instant.
  struct Events {
    int started = 0, ended = 0;
  };
  Events events(const Program* p) const {
    const auto at = events_.find(p);
    return at == events_.end() ? Events() : at->second;
  }
  /// Its condition counted in the last instant.
  bool has_looked(const Program* p) const { return looked_.contains(p); }

  // For the kinds of statements.
  State start(const Program& p) {
    ++events_[&p].started;
    return of(p, p.kind->start(*this, p));
  }
  State resume(const Program& p, const Running& state) {
    return of(p, p.kind->resume(*this, p, state));
  }
  bool holds(const Condition& condition);
  bool holds(const Program& p) {
    looked_.insert(&p);
    return holds(p.condition);
  }
  void emit(const std::string& signal) { emitted_.insert(signal); }
  void deny(const std::string& signal) { denied_.insert(signal); }
  /// A loop goes round for ever.
  void never_ends() { endless_ = true; }
  /// No initial transition took the start.
  void refuse() { refused_ = true; }

 private:
  State of(const Program& p, State state) {
    if (state)
      state->of.insert(&p);
    else
      ++events_[&p].ended;
    return state;
  }

  const Program& program_;
  State state_;
  std::set<std::string> present_;  ///< what conditions see
  std::set<std::string> emitted_;
  std::map<const Program*, Events> events_;
  std::set<const Program*> looked_;
  std::set<std::string> denied_;
  std::set<std::string> both_;  ///< emitted and denied, in the round before
  bool endless_ = false;
  bool ended_ = false;
  bool refused_ = false;
  bool contradicted_ = false;
};

}  // namespace kiva::test
