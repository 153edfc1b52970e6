#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "pert_exp/wood.h"

namespace kiva {

class Module;

/// The rail of a register, in this instant and in the next: variable indices.
struct StateRail {
  long now;
  long next;
  bool initial;
};

/// Functions over inputs and registers: what the equations of a module under compilation come to
/// when all that they read is put in. Inputs, set and reset are One or Zero, by their status.
class Unfolded {
 public:
  /// The variables of `ones` count as One.
  Unfolded(Module* module, const std::unordered_set<long>& ones);

  /// f with all that it reads put in.
  bdd operator()(const bdd& f);
  /// That of a variable.
  bdd of(long index);

  /// By status index; "" for what is no input. The wires are inputs, too.
  std::string input_name(long index) const;
  const std::map<long, StateRail>& rails() const { return rails_; }
  bddpp_manager& manager() const { return manager_; }
  long set() const { return set_; }
  long reset() const { return reset_; }

 private:
  const Bddexpression* computed(long index) const;
  void take_rail(const StateRail& rail);

  Bddexpressionwood& wood_;
  bddpp_manager& manager_;
  long set_, reset_;
  std::unordered_map<long, bdd> of_;
  std::map<long, std::string> inputs_;
  std::map<long, StateRail> rails_;
};

/// The states that can be reached, as far as `bad` hangs on them.
class ReachedStates {
 public:
  /// BoundPassed where `bad` hangs on too many registers.
  ReachedStates(Unfolded& unfolded, const bdd& bad);

  /// Set comes in the first instant alone and reset never, or, `restarted`, set whenever nothing
  /// runs and reset at any time. False when an instant is reached in which `bad` holds.
  bool stays_good(bool restarted);
  /// After false: the inputs that are One in each instant of a shortest run into the bad one.
  std::vector<std::vector<std::string>> run() const;

 private:
  bdd literal(long index, bool one) const;
  bdd wires(bool first) const;
  bdd image(const bdd& from);
  bdd range(std::vector<bdd> next, size_t at);

  Unfolded& unfolded_;
  bddpp_manager& manager_;
  bdd bad_;
  std::vector<std::pair<long, bdd>> states_;  ///< index, and its next function
  std::vector<bdd> layers_;                   ///< states and inputs, instant by instant
  std::map<std::vector<std::pair<const bdd_node*, int>>, bdd> of_;
  long ranges_ = 0;
};

}  // namespace kiva
