#include "pert_exp/cycle_solution.h"

#include <deque>
#include <unordered_set>

#include "base/strong_parts.h"
#include "pert_exp/wood.h"

namespace kiva {

namespace {

/// From an equation to what it reads, as far as that has an equation.
struct Reads {
  const Bddexpressionwood& wood;

  const index_set& next(long v) const { return wood.exp_by_index(v)->set_of_var_dependances(); }
  bool enters(long v) const { return wood.Set_of_exp().contains(v); }
};

}  // namespace

/// One function under what is known, from its nodes below up. Each node is settled One where the
/// side that its variable chooses is, and where both are, whatever the variable.
class CycleSolution::Evaluation {
 public:
  Evaluation(bddpp_manager& manager, const std::unordered_map<long, Known>& known)
      : manager_(manager), known_(known) {
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

 private:
  Known taken(const bdd_node* node, int link) const {
    const Known& known = of_.at(node);
    return link > 0 ? known : Known{known.zero, known.one};
  }

  Known of_node(const bdd_node* node) {
    const Known high = taken(node->then_node(), 1);
    const Known low = taken(node->else_node(), node->else_link_type());
    const long index = node->var_index();
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
  std::unordered_map<const bdd_node*, Known> of_;
};

CycleSolution::CycleSolution(Bddexpressionwood& wood, long most_nodes)
    : wood_(wood),
      manager_(*wood.my_bdd_manager()),
      last_node_(wood.my_bdd_manager()->Bdd_total_size() + most_nodes) {
  const Reads reads{wood};
  StrongParts parts(reads, wood.Nb_bdd_vars());
  for (long index : wood.Set_of_exp())
    parts.from(index, [&](std::span<const long> part, bool cycle) {
      if (cycle) parts_.emplace_back(part.begin(), part.end());
    });
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
    if (manager_.Bdd_total_size() > last_node_) return false;
    const long index = open.front();
    open.pop_front();
    waits.erase(index);
    const Known now = Evaluation(manager_, known)(wood_.exp_by_index(index)->my_bdd_exp());
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

void CycleSolution::put() {
  for (const std::vector<long>& part : parts_)
    for (long index : part) {
      Bddexpression* equation = wood_.exp_by_index(index);
      before_[index] = equation->my_bdd_exp();
      equation->setBddExp(known_.at(index).one, 0, 0);
    }
}

void CycleSolution::restore() {
  for (const auto& [index, f] : before_) wood_.exp_by_index(index)->setBddExp(f, 0, 0);
  before_.clear();
}

}  // namespace kiva
