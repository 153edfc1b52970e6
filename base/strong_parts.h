#pragma once

#include <algorithm>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "base/graph_walk.h"

namespace kiva {

/// The strongly connected parts of a graph whose vertices are numbers from 0 (R. Tarjan,
/// Depth-first search and linear graph algorithms, SIAM J. Comput. 1, 1972). `graph.next(v)` are
/// the successors of v, `graph.enters(w)` whether a walk goes on to w.
template <class Graph>
class StrongParts {
 public:
  StrongParts(const Graph& graph, long vertices)
      : graph_(graph), number_(vertices, 0), low_(vertices) {}

  /// Calls take(std::span<const long> part, bool cycle) for each part that can be reached from
  /// `root` and has not been met before, behind all parts that it leads to. A part is a cycle if it
  /// has several members, or one with an edge to itself.
  template <class Take>
  void from(long root, Take take) {
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
      if (low_[done.v] == number_[done.v]) close(done.v, done.data, take);
    };
    walk_depth_first(graph_, root, open(root), edge, leave);
  }

 private:
  static constexpr long closed = std::numeric_limits<long>::max();

  /// Numbers a vertex. Nothing is known yet of an edge from it to itself: false.
  bool open(long v) {
    number_[v] = low_[v] = ++last_number_;
    open_.push_back(v);
    return false;
  }

  template <class Take>
  void close(long root, bool reads_itself, Take& take) {
    size_t first = open_.size();
    do number_[open_[--first]] = closed;
    while (open_[first] != root);
    take(std::span<const long>(open_).subspan(first), reads_itself || open_.back() != root);
    open_.resize(first);
  }

  const Graph& graph_;
  std::vector<long> number_;  // of the visit, from 1; 0 before it
  std::vector<long> low_;
  std::vector<long> open_;
  long last_number_ = 0;
};

}  // namespace kiva
