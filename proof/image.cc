// Conjuncts are ordered so that variables leave early: the next one is that which lets most
// variables go for each new one that it brings in. Small neighbours are joined.

#include "proof/image.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <unordered_map>

#include "base/graph_walk.h"

namespace kiva::proof {

namespace {

/// Nodes up to which conjuncts are joined.
constexpr long joined_size = 1500;

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

bdd product(bddpp_manager& manager, std::vector<long> indices) {
  std::sort(indices.rbegin(), indices.rend());
  bdd cube = manager.Bdd_one();
  for (long index : indices) cube = manager.Bdd_and(manager.Bdd_var_by_index(index), cube);
  return cube;
}

Image::Image(TransitionSystem& system) : manager_(system.manager) {
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

Natural count_states(TransitionSystem& system, const bdd& all,
                     const std::vector<size_t>& registers) {
  // Levels are the variables that count; a literal of a node counts the levels that it skips.
  std::vector<int> level(static_cast<size_t>(system.manager.Nb_bdd_vars()), -1);
  std::vector<long> counted, others;
  for (size_t k : registers) counted.push_back(system.registers[k].now);
  std::sort(counted.begin(), counted.end());
  const int levels = static_cast<int>(counted.size());
  for (int k = 0; k < levels; ++k) level[static_cast<size_t>(counted[static_cast<size_t>(k)])] = k;
  for (const TransitionSystem::Register& reg : system.registers)
    if (level[static_cast<size_t>(reg.now)] < 0) others.push_back(reg.now);
  const bdd states =
      system.manager.Bdd_and_exist(all, system.manager.Bdd_one(), product(system.manager, others));
  const auto level_of = [&](const bdd_node* node) {
    return node->var_index() < 0 ? levels : level[static_cast<size_t>(node->var_index())];
  };
  // By node and link: the assignments of the levels from the node's on.
  using Edge = std::pair<const bdd_node*, int>;
  std::map<Edge, Natural> counts;
  const auto known = [&](const Edge& edge) { return counts.contains(edge); };
  const auto parts = [&](const Edge& edge) {
    const auto [node, link] = edge;
    return std::array{Edge{node->then_node(), link},
                      Edge{node->else_node(), link * node->else_link_type()}};
  };
  const auto needs = [&](const Edge& edge, auto ask) {
    if (edge.first->var_index() < 0) return;
    for (const Edge& part : parts(edge)) ask(part);
  };
  const auto count = [&](const Edge& edge) {
    Natural& sum = counts[edge];
    if (edge.first->var_index() < 0) {
      sum = edge.second == 1 ? 1 : 0;
      return;
    }
    for (const Edge& part : parts(edge)) {
      Natural shifted = counts.at(part);
      sum += shifted <<= static_cast<unsigned>(level_of(part.first) - level_of(edge.first) - 1);
    }
  };
  const Edge root{states.node(), states.link_type()};
  walk_from_below<Edge>(root, known, needs, count);
  return counts.at(root) <<= static_cast<unsigned>(level_of(states.node()));
}

}  // namespace kiva::proof
