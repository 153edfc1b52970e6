// All registers are taken for constant at first, each with its first value; as long as the next
// states of two that are taken for the same differ, or one that is taken for constant changes, they
// are told apart. What is left holds by induction over the instants.

#include "tarn/targets/frame/state_folding.h"

#include <map>

#include "tarn/targets/frame/folding.h"

namespace kiva {

namespace {

/// A module that takes more rounds keeps its registers.
constexpr int most_rounds = 40;

class StateFolding {
 public:
  StateFolding(bddpp_manager& manager, const std::vector<TargetEquation>& equations,
               const std::vector<StateRail>& state, const std::unordered_set<long>& kept)
      : manager_(manager), equations_(equations), state_(state), group_(state.size(), 0) {
    for (size_t i = 0; i < state.size(); ++i)
      if (kept.contains(state[i].index)) group_[i] = groups_++;
  }

  Folding run(std::vector<StateRail>& left) {
    for (int round = 0; round < most_rounds; ++round) {
      Folding folding = assumed(left);
      for (const TargetEquation& equation : equations_)
        if (equation.kind == TargetEquation::function) folding.define(equation.index, equation.f);
      if (!split(folding)) return assumed(left);
    }
    left = state_;
    return Folding(manager_);
  }

 private:
  /// Group 0 is constant; in the others all follow the first.
  Folding assumed(std::vector<StateRail>& left) const {
    Folding folding(manager_);
    std::map<size_t, size_t> first_of;
    left.clear();
    for (size_t i = 0; i < state_.size(); ++i) {
      const StateRail& rail = state_[i];
      if (group_[i] == 0) {
        folding.assume(rail.index, rail.initial ? manager_.Bdd_one() : manager_.Bdd_zero());
        continue;
      }
      const auto [at, is_first] = first_of.emplace(group_[i], i);
      const StateRail& first = state_[at->second];
      if (is_first)
        left.push_back(rail);
      else
        folding.assume(rail.index, turned(manager_.Bdd_var_by_index(first.index),
                                          first.initial != rail.initial));
    }
    return folding;
  }

  /// Tells apart what differs in the next instant; false where nothing does.
  bool split(const Folding& folding) {
    using Key = std::tuple<size_t, const bdd_node*, int>;
    std::map<Key, size_t> groups;
    std::map<size_t, size_t> parts;
    std::vector<size_t> after(group_.size(), 0);
    size_t next_free = groups_;
    bool changed = false;
    for (size_t i = 0; i < state_.size(); ++i) {
      const bdd next = turned(folding.variable(state_[i].next), state_[i].initial);
      if (group_[i] == 0 && manager_.Bdd_is_zero_tautologic(next)) continue;
      const Key key{group_[i], next.node(), next.link_type()};
      const auto [at, is_new] = groups.emplace(key, 0);
      // The first part of a group keeps its number; what leaves the constants never does.
      if (is_new) at->second = group_[i] != 0 && parts[group_[i]]++ == 0 ? group_[i] : next_free++;
      after[i] = at->second;
      changed = changed || after[i] != group_[i];
    }
    group_ = std::move(after);
    groups_ = next_free;
    return changed;
  }

  bdd turned(const bdd& f, bool negated) const { return negated ? manager_.Bdd_not(f) : f; }

  bddpp_manager& manager_;
  const std::vector<TargetEquation>& equations_;
  const std::vector<StateRail> state_;
  std::vector<size_t> group_;  ///< of each register
  size_t groups_ = 1;
};

}  // namespace

Folding fold_registers(bddpp_manager& manager, const std::vector<TargetEquation>& equations,
                       const std::unordered_set<long>& kept, std::vector<StateRail>& state) {
  return StateFolding(manager, equations, state, kept).run(state);
}

}  // namespace kiva
