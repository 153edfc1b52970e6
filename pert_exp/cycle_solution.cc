#include "pert_exp/cycle_solution.h"

#include <algorithm>
#include <deque>
#include <tuple>

#include "base/strong_parts.h"
#include "bdd/work_guard.h"
#include "pert_exp/undated.h"
#include "pert_exp/wood.h"

namespace kiva {

namespace {

/// From an equation to what it reads, as far as that has an equation, or is among the members.
struct Reads {
  const Bddexpressionwood& wood;
  const std::unordered_set<long>* members = nullptr;

  const index_set& next(long v) const { return wood.exp_by_index(v)->set_of_var_dependances(); }
  bool enters(long v) const {
    return members == nullptr ? wood.Set_of_exp().contains(v) : members->contains(v);
  }
};

}  // namespace

bool has_cycle(const Bddexpressionwood& wood) {
  const Reads reads{wood};
  StrongParts parts(reads, wood.Nb_bdd_vars());
  bool found = false;
  for (long index : wood.Set_of_exp())
    parts.from(index, [&](std::span<const long>, bool cycle) { found = found || cycle; });
  return found;
}

/// One function under what is known, from its nodes below up. Each node is settled One where the
/// side that its variable chooses is, and where both are, whatever the variable.
class CycleSolution::Evaluation {
 public:
  Evaluation(bddpp_manager& manager, const std::unordered_map<long, Known>& known,
             const std::unordered_set<long>& ones)
      : manager_(manager), known_(known), ones_(ones) {
    of_[manager.Bdd_node_one()] = {manager.Bdd_one(), manager.Bdd_zero()};
  }

  Known operator()(const bdd& f) {
    const auto done = [&](const bdd_node* node) { return of_.contains(node); };
    const auto sides = [](const bdd_node* node, const auto& ask) {
      ask(node->then_node());
      ask(node->else_node());
    };
    walk_from_below<const bdd_node*>(f.node(), done, sides,
                                     [&](const bdd_node* node) { of_[node] = of_node(node); });
    return taken(f.node(), f.link_type());
  }
  size_t visits() const { return of_.size(); }

 private:
  Known taken(const bdd_node* node, int link) const {
    const Known& known = of_.at(node);
    return link > 0 ? known : Known{known.zero, known.one};
  }

  Known of_node(const bdd_node* node) {
    const Known high = taken(node->then_node(), 1);
    const Known low = taken(node->else_node(), node->else_link_type());
    const long index = node->var_index();
    if (ones_.contains(index)) return high;
    const auto at = known_.find(index);
    if (at == known_.end()) {
      const bdd variable = manager_.Bdd_var_by_index(index);
      return {manager_.Bdd_ite(variable, high.one, low.one),
              manager_.Bdd_ite(variable, high.zero, low.zero)};
    }
    const auto side = [&](const bdd& h, const bdd& l) {
      const bdd chosen = manager_.Bdd_or(manager_.Bdd_and(at->second.one, h),
                                         manager_.Bdd_and(at->second.zero, l));
      return manager_.Bdd_or(chosen, manager_.Bdd_and(h, l));
    };
    return {side(high.one, low.one), side(high.zero, low.zero)};
  }

  bddpp_manager& manager_;
  const std::unordered_map<long, Known>& known_;
  const std::unordered_set<long>& ones_;
  std::unordered_map<const bdd_node*, Known> of_;
};

CycleSolution::CycleSolution(Bddexpressionwood& wood, Hints hints)
    : wood_(wood), manager_(*wood.my_bdd_manager()), hints_(std::move(hints)) {
  const Reads reads{wood};
  StrongParts parts(reads, wood.Nb_bdd_vars());
  for (long index : wood.Set_of_exp())
    parts.from(index, [&](std::span<const long> part, bool cycle) {
      if (cycle) parts_.emplace_back(part.begin(), part.end());
    });
}

std::list<long> CycleSolution::members() const {
  std::list<long> all;
  for (const std::vector<long>& part : parts_) all.insert(all.end(), part.begin(), part.end());
  all.sort();
  return all;
}

bool CycleSolution::solve() {
  for (const std::vector<long>& part : parts_) {
    for (long index : part)
      if (wood_.exp_by_index(index)->getAbstraction() != 0) return false;
    if (!solve_part(part)) return false;
  }
  return true;
}

bool CycleSolution::solve_part(const std::vector<long>& part) {
  const std::unordered_set<long> members(part.begin(), part.end());
  std::unordered_map<long, Known> known;
  std::unordered_map<long, std::vector<long>> readers;
  for (long index : part) {
    known[index] = {manager_.Bdd_zero(), manager_.Bdd_zero()};
    for (long read : wood_.exp_by_index(index)->set_of_var_dependances())
      if (members.contains(read)) readers[read].push_back(index);
  }
  std::deque<long> open(part.begin(), part.end());
  std::unordered_set<long> waits(part.begin(), part.end());
  while (!open.empty()) {
    WorkGuard::call();
    if (visits_ > most_visits) throw BoundPassed{};
    const long index = open.front();
    open.pop_front();
    waits.erase(index);
    Evaluation evaluation(manager_, known, hints_.ones);
    const Known now = evaluation(wood_.exp_by_index(index)->my_bdd_exp());
    visits_ += evaluation.visits();
    Known& before = known.at(index);
    if (now.one == before.one && now.zero == before.zero) continue;
    before = now;
    for (long reader : readers[index])
      if (waits.insert(reader).second) open.push_back(reader);
  }
  bdd unsettled = manager_.Bdd_zero();
  for (const auto& [index, rails] : known)
    unsettled = manager_.Bdd_or(unsettled, manager_.Bdd_nor(rails.one, rails.zero));
  unsettled_.push_back(unsettled);
  known_.merge(known);
  return true;
}

/// Where a member is not settled, anything will do; but no function becomes constant by that, since
/// a signal that is never anything is read in another way.
bdd CycleSolution::solution_of(long index) {
  const Known& known = known_.at(index);
  return manager_.Bdd_is_tautology(known.one, 0) != 0 ? manager_.Bdd_not(known.zero) : known.one;
}

/// Members without which the others have no cycle; those with most edges first (for a smallest set
/// there is no fast way).
std::vector<long> CycleSolution::feedback_of(const std::vector<long>& part) const {
  constexpr size_t most_chosen_singly = 1000;
  std::unordered_set<long> left(part.begin(), part.end());
  std::vector<long> feedback;
  const auto take = [&](long index) {
    left.erase(index);
    feedback.push_back(index);
  };
  if (part.size() > most_chosen_singly)
    for (long index : part)
      if (hints_.preferred.contains(index)) take(index);
  for (bool more = true; more;) {
    const Reads reads{wood_, &left};
    StrongParts parts(reads, wood_.Nb_bdd_vars());
    std::vector<std::vector<long>> cycles;
    for (long index : std::vector<long>(left.begin(), left.end()))
      parts.from(index, [&](std::span<const long> inner, bool cycle) {
        if (cycle) cycles.emplace_back(inner.begin(), inner.end());
      });
    for (const std::vector<long>& cycle : cycles) {
      const std::unordered_set<long> inner(cycle.begin(), cycle.end());
      std::unordered_map<long, long> in, out;
      for (long index : cycle)
        for (long read : wood_.exp_by_index(index)->set_of_var_dependances())
          if (inner.contains(read)) ++in[index], ++out[read];
      take(*std::max_element(cycle.begin(), cycle.end(), [&](long a, long b) {
        const auto worth = [&](long v) {
          return std::tuple(hints_.preferred.contains(v), in[v] * out[v], -v);
        };
        return worth(a) < worth(b);
      }));
    }
    more = !cycles.empty();
  }
  return feedback;
}

void CycleSolution::put() {
  for (const std::vector<long>& part : parts_)
    for (long index : feedback_of(part)) {
      Bddexpression* equation = wood_.exp_by_index(index);
      before_[index] = equation->my_bdd_exp();
      equation->setBddExp(solution_of(index), 0, 0);
    }
  if (!parts_.empty()) forget_dates(wood_);
}

void CycleSolution::restore() {
  for (const auto& [index, f] : before_) wood_.exp_by_index(index)->setBddExp(f, 0, 0);
  if (!before_.empty()) forget_dates(wood_);
  before_.clear();
}

}  // namespace kiva
