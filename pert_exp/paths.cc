// Reachability and heaviest chains, in both directions.

#include <algorithm>
#include <iostream>

#include "base/process_end.h"
#include "pert_exp/wood_graph.h"

namespace kiva {

namespace {

/// `known` and all that is reached from `index` past members of `known`. `depth` counts the edges
/// from the caller's start; a way of `nb_vars` edges is cut with `warning`.
template <class Graph>
index_set reached(const Graph& graph, long nb_vars, long index, long depth, const index_set& known,
                  const char* warning) {
  struct Nothing {};
  std::vector<char> in_set(nb_vars, 0);
  for (long member : known) {
    if (member >= 0 && member < nb_vars) in_set[member] = 1;
  }
  std::vector<long> members(known.begin(), known.end());
  const auto edge = [&](const auto&, long next, long edges) -> std::optional<Nothing> {
    const bool in_tables = next >= 0 && next < nb_vars;
    if (in_tables && in_set[next]) return std::nullopt;
    members.push_back(next);
    if (!in_tables) return std::nullopt;
    in_set[next] = 1;
    if (depth + edges < nb_vars) return Nothing{};
    std::cerr << warning;
    return std::nullopt;
  };
  walk_depth_first(graph, index, Nothing{}, edge, [](const auto&, const auto*) {});
  return index_set::from_unsorted(std::move(members));
}

}  // namespace

index_set Bddexpressionwood::down_dependances(long index, long depth,
                                              const index_set& known) const {
  return reached(Readers{*this}, nb_var_bdd, index, depth, known,
                 "WARNING in Bddexpressionwood::down_dependances():\n"
                 "   possible infinite recusion due to a signals cycle\n");
}

index_set Bddexpressionwood::up_dependances(long index, long depth, const index_set& known) const {
  return reached(Dependences{*this}, nb_var_bdd, index, depth, known,
                 "WARNING in Bddexpressionwood::up_dependances():\n"
                 "   possible infinite recursion due to a signals cycle\n");
}

/// The weight of the heaviest chain of equations behind `index`, its own not counted; 0 for none.
/// An edge that closes a cycle, or at which the depth has reached the number of variables, adds
/// nothing: `Graph::check` gets a variable of the cycle, `Graph::warn` tells, once for all cycles.
template <class Graph>
long Bddexpressionwood::heaviest_chain(const Graph& graph, long index, long depth, bool new_walk) {
  struct Nothing {};
  if (!in_tables(index)) return 0;
  walk_mark.resize(nb_var_bdd, 0);
  walk_value.resize(nb_var_bdd, 0);
  if (new_walk) walk_number += 2;
  const std::uint64_t open = walk_number, closed = walk_number + 1;
  if (walk_mark[index] == closed) return walk_value[index];

  const auto enter = [&](long v) {
    walk_mark[v] = open;
    walk_value[v] = 0;
    return Nothing{};
  };
  const auto add = [&](long v, long next) {
    walk_value[v] = std::max(walk_value[v], exp_table[next]->w + walk_value[next]);
  };
  bool cycle_told = false;
  const auto edge = [&](const auto& from, long next, long edges) -> std::optional<Nothing> {
    if (slot(next) == nullptr) return std::nullopt;
    if (depth + edges >= nb_var_bdd) {
      graph.check(from.v);
      graph.warn();
    } else if (walk_mark[next] == closed) {
      add(from.v, next);
    } else if (walk_mark[next] == open) {
      graph.check(next);
      if (!cycle_told) graph.warn();
      cycle_told = true;
    } else {
      return enter(next);
    }
    return std::nullopt;
  };
  const auto leave = [&](const auto& done, const auto* parent) {
    walk_mark[done.v] = closed;
    if (parent != nullptr) add(parent->v, done.v);
  };
  walk_depth_first(graph, index, enter(index), edge, leave);
  return walk_value[index];
}

long Bddexpressionwood::down_critical_path(long index, long depth, long weight) {
  struct Warning_readers : Readers {
    void check(long) const {}
    void warn() const {
      std::cerr << "WARNING in Bddexpressionwood::down_critical_path():\n"
                   "   possible infinite recursion due to a signals cycle\n";
    }
  };
  return weight + heaviest_chain(Warning_readers{{*this}}, index, depth);
}

long Bddexpressionwood::up_critical_path(long index, long depth, long weight) {
  struct Warning_dependences : Dependences {
    void check(long v) const { wood.refuse_self_dependence(v); }
    void warn() const {
      std::cerr << "WARNING in Bddexpressionwood::up_critical_path():\n"
                   "   possible infinite recursion due to a signals cycle\n";
    }
  };
  const Bddexpression* e = slot(index);
  if (e == nullptr) return weight;
  return weight + e->w + heaviest_chain(Warning_dependences{{*this}}, index, depth);
}

void Bddexpressionwood::date_by_weight() {
  struct Told_once {
    const char* operation;
    bool told = false;
    void tell() {
      if (told) return;
      std::cerr << "WARNING in Bddexpressionwood::" << operation
                << "():\n   possible infinite recursion due to a signals cycle\n";
      told = true;
    }
  };
  struct Telling_dependences : Dependences {
    Told_once& warning;
    void check(long) const {}
    void warn() const { warning.tell(); }
  };
  struct Telling_readers : Readers {
    Told_once& warning;
    void check(long) const {}
    void warn() const { warning.tell(); }
  };
  Told_once up{"up_critical_path"}, down{"down_critical_path"};
  const Telling_dependences dependences{{*this}, up};
  const Telling_readers readers{{*this}, down};
  bool new_walk = true;
  for (long index : Set_of_exp()) {
    Bddexpression& e = *exp_table[index];
    e.earliest_date = 1 + e.w + heaviest_chain(dependences, index, 1, new_walk);
    new_walk = false;
  }
  new_walk = true;
  for (long index : Set_of_exp()) {
    latest_date_table[index] = heaviest_chain(readers, index, 1, new_walk);
    new_walk = false;
  }
}

std::unordered_set<long> dependence_cone(const Bddexpressionwood& wood, std::vector<long> roots,
                                         const std::function<bool(long)>& ends) {
  std::unordered_set<long> cone;
  const auto enters = [&](long index) { return cone.insert(index).second; };
  walk_from(std::move(roots), enters, [&](long index, auto more) {
    if (index < 0 || index >= wood.Nb_bdd_vars() || (ends && ends(index))) return;
    const Bddexpression* e = wood.exp_by_index(index);
    if (e == nullptr) return;
    for (long read : e->set_of_var_dependances()) more(read);
  });
  return cone;
}

void Bddexpressionwood::refuse_self_dependence(long index) const {
  const Bddexpression* e = slot(index);
  const index_set& readers = set_of_amont_dependances(index);
  if (e == nullptr || readers.empty() || e->vars_dependance.empty()) return;
  if (!readers.contains(index) && !e->vars_dependance.contains(index)) return;
  std::cerr << "ERROR: detected self-dependance about variable : " << index << " !!!\n"
            << "in associated wood:\n"
            << *this;
  end_process(1);
}

}  // namespace kiva
