#pragma once

// The walks over graphs, on stacks of the heap: what is walked may be deeper than the machine's
// stack. Each takes a vertex type of the caller's and asks it for what it needs to know.

#include <optional>
#include <utility>
#include <vector>

namespace kiva {

/// Reaches from `open` on, last in first out. `enters(v)` says whether v is to be entered, and
/// marks it: false for one seen before. `expand(v, more)` then calls more(w) for what follows v.
template <class Vertex, class Enters, class Expand>
void walk_from(std::vector<Vertex> open, Enters enters, Expand expand) {
  while (!open.empty()) {
    const Vertex v = std::move(open.back());
    open.pop_back();
    if (enters(v)) expand(v, [&open](Vertex w) { open.push_back(std::move(w)); });
  }
}

/// Makes the vertices of an acyclic graph from `root` down, each behind what it needs. `done(v)`
/// says whether v has been made, `needs(v, ask)` calls ask(w) for what v needs (what is asked last
/// is made first), `make(v)` makes v, so that done(v) holds.
template <class Vertex, class Done, class Needs, class Make>
void walk_from_below(Vertex root, Done done, Needs needs, Make make) {
  std::vector<Vertex> path{std::move(root)};
  while (!path.empty()) {
    const Vertex v = path.back();
    if (done(v)) {
      path.pop_back();
      continue;
    }
    const size_t before = path.size();
    needs(v, [&](Vertex w) {
      if (!done(w)) path.push_back(std::move(w));
    });
    if (path.size() != before) continue;
    make(v);
    path.pop_back();
  }
}

/// A vertex on the way of a depth-first walk, with what is left of its successors, and data of the
/// caller's.
template <class Vertex, class Iterator, class Data>
struct WalkFrame {
  Vertex v;
  Iterator at;
  Iterator end;
  Data data;
};

/// Walks depth first from `root`. `graph.next(v)` is the range of v's successors. For each edge,
/// `edge(frame, w, depth)` gives the data of w's frame if the walk goes on to w; `depth` counts the
/// edges from the root to the frame. `leave(frame, parent)` comes when all of a frame's successors
/// have been seen; the root's parent is null.
template <class Data, class Graph, class Vertex, class Edge, class Leave>
void walk_depth_first(const Graph& graph, Vertex root, Data root_data, Edge edge, Leave leave) {
  using Iterator = decltype(graph.next(root).begin());
  std::vector<WalkFrame<Vertex, Iterator, Data>> way;
  const auto open = [&](Vertex v, Data data) {
    const auto& next = graph.next(v);
    way.push_back({v, next.begin(), next.end(), std::move(data)});
  };
  open(root, std::move(root_data));
  while (!way.empty()) {
    auto& top = way.back();
    if (top.at == top.end) {
      auto done = std::move(top);
      way.pop_back();
      leave(done, way.empty() ? nullptr : &way.back());
      continue;
    }
    const Vertex next = *top.at++;
    std::optional<Data> data = edge(top, next, static_cast<long>(way.size()) - 1);
    if (data) open(next, std::move(*data));
  }
}

}  // namespace kiva
