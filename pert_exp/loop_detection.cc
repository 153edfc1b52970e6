// The members of cycles: strongly connected parts with more than one member, or with an edge to
// itself (R. Tarjan, Depth-first search and linear graph algorithms, SIAM J. Comput. 1, 1972).
// Early dates climb along the readers and late dates along the dependences; the
// two tables can differ by what abstract equations add, so each is searched.

#include <algorithm>
#include <limits>
#include <vector>

#include "pert_exp/wood_graph.h"

namespace kiva {

namespace {

template <class Graph>
class Cycle_search {
 public:
  Cycle_search(const Graph& graph, long nb_vars)
      : graph_(graph), number_(nb_vars, 0), low_(nb_vars) {}

  void from(long root, std::vector<long>& members) {
    if (number_[root] != 0) return;
    const auto edge = [this](auto& from, long next, long) -> std::optional<bool> {
      if (!graph_.enters(next)) return std::nullopt;
      if (next == from.v) from.data = true;
      if (number_[next] == 0) return open(next);
      // A closed part has the number of no open one, and lowers nothing.
      low_[from.v] = std::min(low_[from.v], number_[next]);
      return std::nullopt;
    };
    const auto leave = [&](const auto& done, const auto* parent) {
      if (parent != nullptr) low_[parent->v] = std::min(low_[parent->v], low_[done.v]);
      if (low_[done.v] == number_[done.v]) close(done.v, done.data, members);
    };
    walk_depth_first(graph_, root, open(root), edge, leave);
  }

 private:
  static constexpr long closed = std::numeric_limits<long>::max();

  /// Numbers a vertex. Nothing is known yet of an edge from it to itself: false.
  bool open(long v) {
    number_[v] = low_[v] = ++last_number_;
    part_.push_back(v);
    return false;
  }

  void close(long root, bool reads_itself, std::vector<long>& members) {
    const bool cycle = part_.back() != root || reads_itself;
    long v;
    do {
      v = part_.back();
      part_.pop_back();
      number_[v] = closed;
      if (cycle) members.push_back(v);
    } while (v != root);
  }

  const Graph& graph_;
  std::vector<long> number_;  // of the visit, from 1; 0 before it
  std::vector<long> low_;
  std::vector<long> part_;
  long last_number_ = 0;
};

}  // namespace

std::list<long> Bddexpressionwood::loop_detection() {
  if (nb_level == 0) compute_dates();
  // No chain of an acyclic wood that was dated here has more levels than variables.
  if (nb_level <= nb_var_bdd) return {};
  const Readers readers{*this};
  const Dependences dependences{*this};
  Cycle_search early_cycles(readers, nb_var_bdd);
  Cycle_search late_cycles(dependences, nb_var_bdd);
  std::vector<long> members;
  for (long index : Set_of_exp()) {
    early_cycles.from(index, members);
    late_cycles.from(index, members);
  }
  const index_set ascending = index_set::from_unsorted(std::move(members));
  return {ascending.begin(), ascending.end()};
}

}  // namespace kiva
