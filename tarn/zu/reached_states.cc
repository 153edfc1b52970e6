// Sets of states are diagrams over the registers' own variables; the states that follow are the
// range of the registers' next functions (O. Coudert, C. Berthet, J. C. Madre, Verification of
// synchronous sequential machines based on symbolic execution, 1989), so that no variable is added
// to the module's manager.

#include "tarn/zu/reached_states.h"

#include <algorithm>

#include "base/graph_walk.h"
#include "bdd/work_guard.h"
#include "tarn/model/module.h"

namespace kiva {

namespace {

constexpr long most_ranges = 200'000;   ///< steps of one walk over the states
constexpr size_t most_registers = 500;  ///< on which the bad states may hang

}  // namespace

Unfolded::Unfolded(Module* module, const std::unordered_set<long>& ones)
    : wood_(*module->getBddWood()), manager_(*wood_.my_bdd_manager()) {
  Bddexpressionwood* wood = &wood_;
  for (long index : ones) of_[index] = manager_.Bdd_one();
  const auto take_pair = [&](const Signal* signal) {
    const long status = signal->getInitialBddStatusId(module, wood);
    const long value = signal->getInitialBddValueId(module, wood);
    if (status < 0 || value < 0) return;
    inputs_[status] = signal->getInternalName();
    of_[value] = manager_.Bdd_not(manager_.Bdd_var_by_index(status));
  };
  for (const Signal* input : module->getInputSignalList()) take_pair(input);
  for (const Signal* wire : {module->getSet(), module->getReset()}) take_pair(wire);
  set_ = module->getSet()->getInitialBddStatusId(module, wood);
  reset_ = module->getReset()->getInitialBddStatusId(module, wood);
  for (const regclass* reg : module->getRegisterList()) {
    const Signal *now = reg->actual_var(), *next = reg->next_var();
    const bool initial = reg->is_initialy_true() != 0;
    take_rail({now->getBddStatusId(module, wood), next->getBddStatusId(module, wood), initial});
    take_rail({now->getBddValueId(module, wood), next->getBddValueId(module, wood), !initial});
  }
}

bdd Unfolded::operator()(const bdd& f) {
  std::vector<std::pair<long, bdd>> values;
  for (long index : manager_.set_of_index_depend_on(f)) values.emplace_back(index, of(index));
  return manager_.Bdd_vector_compose(f, values);
}

bdd Unfolded::of(long index) {
  const auto done = [&](long v) { return of_.contains(v); };
  const auto reads = [&](long v, const auto& ask) {
    if (const Bddexpression* equation = computed(v))
      for (long read : equation->set_of_var_dependances()) ask(read);
  };
  walk_from_below<long>(index, done, reads, [&](long v) {
    WorkGuard::call();
    const Bddexpression* equation = computed(v);
    if (equation == nullptr) {
      of_[v] = manager_.Bdd_var_by_index(v);
      return;
    }
    std::vector<std::pair<long, bdd>> values;
    for (long read : equation->set_of_var_dependances()) values.emplace_back(read, of_.at(read));
    of_[v] = manager_.Bdd_vector_compose(equation->my_bdd_exp(), values);
  });
  return of_.at(index);
}

std::string Unfolded::input_name(long index) const {
  const auto at = inputs_.find(index);
  return at == inputs_.end() ? "" : at->second;
}

const Bddexpression* Unfolded::computed(long index) const {
  const Bddexpression* equation = wood_.exp_by_index(index);
  return equation == nullptr || equation->getAbstraction() != 0 ? nullptr : equation;
}

void Unfolded::take_rail(const StateRail& rail) {
  if (computed(rail.now) == nullptr) rails_[rail.now] = rail;
}

ReachedStates::ReachedStates(Unfolded& unfolded, const bdd& bad)
    : unfolded_(unfolded), manager_(unfolded.manager()), bad_(bad) {
  std::vector<long> open;
  std::map<long, bdd> next;
  const auto look = [&](const bdd& f) {
    for (long index : manager_.set_of_index_depend_on(f)) {
      const auto rail = unfolded_.rails().find(index);
      if (rail == unfolded_.rails().end() || next.contains(index)) continue;
      next[index] = {};
      open.push_back(index);
    }
  };
  look(bad);
  while (!open.empty()) {
    const long index = open.back();
    open.pop_back();
    if (next.size() > most_registers) throw BoundPassed{};
    look(next[index] = unfolded_.of(unfolded_.rails().at(index).next));
  }
  for (const auto& [index, f] : next) states_.emplace_back(index, f);
}

bool ReachedStates::stays_good(bool restarted) {
  layers_.clear();
  ranges_ = most_ranges;
  bdd front = manager_.Bdd_one();
  for (const auto& [index, f] : states_)
    front = manager_.Bdd_and(front, literal(index, unfolded_.rails().at(index).initial));
  const bdd at_rest = manager_.Bdd_or(front, literal(unfolded_.set(), false));
  bdd reached = manager_.Bdd_zero();
  while (!manager_.Bdd_is_tautology(front, 0)) {
    layers_.push_back(manager_.Bdd_and(front, restarted ? at_rest : wires(layers_.empty())));
    if (manager_.Bdds_excl(layers_.back(), bad_) == 0) return false;
    const bdd next = image(layers_.back());
    front = manager_.Bdd_and(next, manager_.Bdd_not(reached));
    reached = manager_.Bdd_or(reached, next);
  }
  return true;
}

std::vector<std::vector<std::string>> ReachedStates::run() const {
  std::vector<std::vector<std::string>> inputs(layers_.size());
  bdd target = bad_;
  for (size_t i = layers_.size(); i-- > 0;) {
    const bdd cube = manager_.Bdd_satisfy(manager_.Bdd_and(layers_[i], target));
    std::unordered_map<long, bool> chosen;
    manager_.for_each_literal(cube.link_type(), cube.node(),
                              [&](long index, int value) { chosen[index] = value == 1; });
    for (const auto& [index, one] : chosen)
      if (one && !unfolded_.input_name(index).empty() && index != unfolded_.set())
        inputs[i].push_back(unfolded_.input_name(index));
    std::sort(inputs[i].begin(), inputs[i].end());
    target = manager_.Bdd_one();
    for (const auto& [index, f] : states_) {
      const bool one = chosen.contains(index) && chosen[index];
      target = manager_.Bdd_and(target, one ? f : manager_.Bdd_not(f));
    }
  }
  return inputs;
}

bdd ReachedStates::literal(long index, bool one) const {
  const bdd variable = manager_.Bdd_var_by_index(index);
  return one ? variable : manager_.Bdd_not(variable);
}

bdd ReachedStates::wires(bool first) const {
  return manager_.Bdd_and(literal(unfolded_.set(), first), literal(unfolded_.reset(), false));
}

/// The states that follow those of `from`, under its inputs.
bdd ReachedStates::image(const bdd& from) {
  std::vector<bdd> next;
  for (const auto& [index, f] : states_) next.push_back(manager_.Bdd_constrain(f, from));
  of_.clear();
  return range(std::move(next), 0);
}

/// The values that the functions from `at` on take together.
bdd ReachedStates::range(std::vector<bdd> next, size_t at) {
  if (at == states_.size()) return manager_.Bdd_one();
  WorkGuard::call();
  if (--ranges_ == 0) throw BoundPassed{};
  std::vector<std::pair<const bdd_node*, int>> key;
  for (size_t i = at; i < next.size(); ++i) key.emplace_back(next[i].node(), next[i].link_type());
  if (const auto done = of_.find(key); done != of_.end()) return done->second;
  const bdd f = next[at];
  bdd result = manager_.Bdd_zero();
  for (const bool one : {true, false}) {
    const bdd where = one ? f : manager_.Bdd_not(f);
    if (manager_.Bdd_is_tautology(where, 0)) continue;
    std::vector<bdd> under = next;
    if (manager_.Bdd_is_tautology(where, 1) == 0)
      for (size_t i = at + 1; i < under.size(); ++i)
        under[i] = manager_.Bdd_constrain(under[i], where);
    result = manager_.Bdd_or(
        result, manager_.Bdd_and(literal(states_[at].first, one), range(std::move(under), at + 1)));
  }
  return of_[key] = result;
}

}  // namespace kiva
