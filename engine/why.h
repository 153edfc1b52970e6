#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "engine/recording.h"
#include "engine/signal_names.h"

namespace kiva {

/// A signal in a state.
struct Cause {
  std::string name;
  SignalState state;
  enum Kind { input, register_, wire, computed } kind;
  friend bool operator==(const Cause&, const Cause&) = default;
};

/// Why signals are what they are in an instant.
class Reasons {
 public:
  explicit Reasons(const Simulation& simulation);

  /// The causes of one instant: run with `choices` from `before`, which gave `after`.
  struct Instant {
    const SimulationState& before;
    const Choices& choices;
    const SimulationState& after;
  };
  /// The smallest set of inputs, wires and registers (as they stood before they moved) whose states
  /// alone make the signal's state what it is: nothing outside it matters, and no member can be
  /// spared. A register's state is the one it moves to. Abstract equations are causes themselves.
  /// Where the search for the smallest would take too long, a set that is only irredundant.
  std::vector<Cause> causes(SignalPlace signal, const Instant& instant) const;
  /// The same of the signal's own equation alone: what it reads, one step down. Empty for inputs
  /// and registers.
  std::vector<Cause> step_down(const std::string& name, const Instant& instant) const;

 private:
  struct Group {
    std::string name;
    SignalRails rails;
    Cause::Kind kind;
  };
  SignalRails rails_of_place(SignalPlace place) const;
  std::vector<int> context_of(const Instant& instant) const;
  std::vector<Cause> implicant(const bdd& f, const std::vector<int>& context) const;
  bdd as_it_is(SignalRails rails, const std::vector<int>& context, bool unfold) const;

  const Simulation* simulation_;
  SignalNames names_;
  std::vector<Group> groups_;
  std::vector<long> group_of_;  ///< by variable index; -1 for none
};

}  // namespace kiva
