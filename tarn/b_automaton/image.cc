// Conjuncts are ordered so that variables leave early: the next one is that which lets most
// variables go for each new one that it brings in. Small neighbours are joined.

#include "tarn/b_automaton/image.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>

namespace kiva {

namespace {

/// Nodes up to which conjuncts are joined.
constexpr long joined_size = 1500;

bdd product(bddpp_manager& manager, std::vector<long> indices) {
  std::sort(indices.rbegin(), indices.rend());
  bdd cube = manager.Bdd_one();
  for (long index : indices) cube = manager.Bdd_and(manager.Bdd_var_by_index(index), cube);
  return cube;
}

/// The order in which the functions come in.
std::vector<size_t> quantification_order(bddpp_manager& manager, const TransitionSystem& system) {
  const size_t count = system.registers.size();
  std::vector<index_set> reads(count);
  std::unordered_map<long, int> readers;
  for (size_t k = 0; k < count; ++k) {
    reads[k] = manager.set_of_index_depend_on(system.registers[k].f);
    for (long index : reads[k]) ++readers[index];
  }
  std::vector<size_t> order;
  std::vector<bool> taken(count, false), met(static_cast<size_t>(manager.Nb_bdd_vars()), false);
  while (order.size() < count) {
    size_t best = count;
    double best_score = 0;
    for (size_t k = 0; k < count; ++k) {
      if (taken[k]) continue;
      double leaving = 0, fresh = 1;  // the next variable is always fresh
      for (long index : reads[k]) {
        if (readers[index] == 1) ++leaving;
        if (!met[static_cast<size_t>(index)]) ++fresh;
      }
      const double score = leaving / (fresh + static_cast<double>(reads[k].size()) / 8);
      if (best == count || score > best_score) best = k, best_score = score;
    }
    taken[best] = true;
    order.push_back(best);
    for (long index : reads[best]) {
      --readers[index];
      met[static_cast<size_t>(index)] = true;
    }
  }
  return order;
}

}  // namespace

Image::Image(const TransitionSystem& system) : manager_(*system.manager) {
  next_to_now_.resize(static_cast<size_t>(manager_.Nb_bdd_vars()));
  std::iota(next_to_now_.begin(), next_to_now_.end(), 0);
  std::vector<bdd> relations;
  for (size_t k : quantification_order(manager_, system)) {
    const TransitionSystem::Register& reg = system.registers[k];
    next_to_now_[static_cast<size_t>(reg.next)] = reg.now;
    const bdd relation = manager_.Bdd_eq(manager_.Bdd_var_by_index(reg.next), reg.f);
    if (!relations.empty() &&
        manager_.Bdd_size(relations.back()) + manager_.Bdd_size(relation) < joined_size) {
      const bdd joined = manager_.Bdd_and(relations.back(), relation);
      if (manager_.Bdd_size(joined) < joined_size) {
        relations.back() = joined;
        continue;
      }
    }
    relations.push_back(relation);
  }

  std::vector<long> unread;
  std::unordered_map<long, size_t> last;
  for (size_t k = 0; k < relations.size(); ++k)
    for (long index : manager_.set_of_index_depend_on(relations[k])) last[index] = k;
  std::vector<std::vector<long>> leaving(relations.size());
  const auto take = [&](long index) {
    const auto at = last.find(index);
    (at == last.end() ? unread : leaving[at->second]).push_back(index);
  };
  for (const TransitionSystem::Register& reg : system.registers) take(reg.now);
  for (const TransitionSystem::Input& input : system.inputs) take(input.index);
  early_ = product(manager_, unread);
  for (size_t k = 0; k < relations.size(); ++k)
    conjuncts_.push_back({relations[k], product(manager_, leaving[k])});
}

bdd Image::operator()(const bdd& states) const {
  bdd reached = manager_.Bdd_and_exist(states, manager_.Bdd_one(), early_);
  for (const Conjunct& conjunct : conjuncts_)
    reached = manager_.Bdd_and_exist(reached, conjunct.relation, conjunct.quantified);
  return manager_.Bdd_replace_vars(reached, next_to_now_.data());
}

double count_states(const TransitionSystem& system, const bdd& states) {
  // Shares of all assignments, so that levels between nodes need no care.
  std::unordered_map<const bdd_node*, double> shares;
  const auto share = [&](const bdd_node* node, auto& self) -> double {
    if (node == system.manager->Bdd_node_one()) return 1;
    if (const auto known = shares.find(node); known != shares.end()) return known->second;
    const double otherwise = self(node->else_node(), self);
    const double result = (self(node->then_node(), self) +
                           (node->else_link_type() == 1 ? otherwise : 1 - otherwise)) /
                          2;
    shares.emplace(node, result);
    return result;
  };
  const double positive = share(states.node(), share);
  return std::round(std::ldexp(states.link_type() == 1 ? positive : 1 - positive,
                               static_cast<int>(system.registers.size())));
}

}  // namespace kiva
