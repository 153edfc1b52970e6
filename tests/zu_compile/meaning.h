#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/zu_compile/program.h"

namespace kiva::test {

/// Where a running statement stands. Which fields count depends on the statement.
struct Running {
  int at = 0;                                 ///< member, branch, state; times left of a wait
  std::vector<std::optional<Running>> parts;  ///< empty: that part has ended
};

/// Runs a program by what its statements mean: each is started, runs from instant to instant, ends
/// or is killed, and makes signals present. It knows no equations.
class Meaning {
 public:
  explicit Meaning(const Program& program);

  /// One instant. `start` starts the program if it does not run; `kill` lets it go through the
  /// instant and then takes it away. False when no set of signals agrees with itself, or a loop
  /// goes round for ever within the instant.
  bool step(const std::set<std::string>& inputs, bool start, bool kill);
  /// Inputs and what was emitted in the last instant.
  const std::set<std::string>& present() const { return present_; }
  bool ended() const { return ended_; }
  bool runs() const { return state_.has_value(); }

 private:
  using State = std::optional<Running>;  // empty: ended

  State start(const Program& p);
  State resume(const Program& p, const Running& state);
  State go_on(const Program& p, int count, int from);
  State start_automaton(const Program& p);
  State resume_automaton(const Program& p, const Running& state);
  /// The first in rank of a kind out of a state that is triggered; null if none is.
  const Transition* triggered(const Program& p, int from, Transition::Kind kind) const;
  State take(const Program& p, const Transition& transition);
  State run_machine(const Program& p);
  const Program& member(const Program& p, int number) const {
    return p.kind == Program::Kind::repeat ? p.parts[0] : p.parts[number];
  }
  bool holds(const Program& p) const { return p.condition.holds(present_); }
  void emit(const Program& p) { emitted_.insert(p.signal); }

  const Program& program_;
  State state_;
  std::set<std::string> present_;  ///< what conditions see
  std::set<std::string> emitted_;
  std::set<std::string> registers_;  ///< of a Mealy machine: those that are one
  bool endless_ = false;
  bool ended_ = false;
  bool refused_ = false;  ///< no initial transition took the start
};

}  // namespace kiva::test
