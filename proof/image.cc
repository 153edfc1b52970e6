// Conjuncts are ordered so that variables leave early: the next one is that which lets most
// variables go for each new one that it brings in. Small neighbours are joined.

#include "proof/image.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <unordered_map>

#include "base/text_stream.h"

namespace kiva::proof {

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

namespace {

/// A count that is exact below 2^128, and else as close as a double.
struct Count {
  unsigned __int128 exact = 0;
  double rough = 0;
  bool is_exact = true;
};

Count times_two_to(Count count, int levels) {
  count.is_exact =
      count.is_exact &&
      (count.exact == 0 ||
       (levels < 120 && count.exact < (static_cast<unsigned __int128>(1) << (120 - levels))));
  if (count.is_exact && count.exact != 0) count.exact <<= levels;
  count.rough = std::ldexp(count.rough, levels);
  return count;
}

std::string text_of(const Count& count) {
  if (!count.is_exact || count.exact >> 64 != 0) {
    TextStream out;
    out.precision(3);
    out << "about " << count.rough;
    return out.str();
  }
  return std::to_string(static_cast<std::uint64_t>(count.exact));
}

}  // namespace

std::string count_states(TransitionSystem& system, const bdd& states) {
  // Levels are the `now` variables alone; a literal of a node counts the levels that it skips.
  std::vector<int> level(static_cast<size_t>(system.manager.Nb_bdd_vars()), 0);
  std::vector<long> now;
  for (const TransitionSystem::Register& reg : system.registers) now.push_back(reg.now);
  std::sort(now.begin(), now.end());
  const int levels = static_cast<int>(now.size());
  for (int k = 0; k < levels; ++k) level[static_cast<size_t>(now[static_cast<size_t>(k)])] = k;
  std::unordered_map<std::uint64_t, Count> known;
  const auto level_of = [&](const bdd_node* node) {
    return node->var_index() < 0 ? levels : level[static_cast<size_t>(node->var_index())];
  };
  // The assignments of the levels from the node's on.
  const auto count = [&](const bdd_node* node, int link, auto& self) -> Count {
    if (node->var_index() < 0) return link == 1 ? Count{1, 1, true} : Count{};
    const std::uint64_t key = static_cast<std::uint64_t>(node->global_id()) * 2 + (link == 1);
    if (const auto at = known.find(key); at != known.end()) return at->second;
    Count sum;
    for (const auto& [child, child_link] :
         {std::pair{node->then_node(), link},
          std::pair{node->else_node(), link * node->else_link_type()}}) {
      const Count part =
          times_two_to(self(child, child_link, self), level_of(child) - level_of(node) - 1);
      sum.exact += part.exact;
      sum.rough += part.rough;
      sum.is_exact = sum.is_exact && part.is_exact;
    }
    return known.emplace(key, sum).first->second;
  };
  return text_of(
      times_two_to(count(states.node(), states.link_type(), count), level_of(states.node())));
}

}  // namespace kiva::proof
