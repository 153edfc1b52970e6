#include "base/aig.h"

#include <algorithm>
#include <utility>

namespace kiva::aig {

Literal Aig::variable() {
  nodes_.push_back({none, none});
  return 2 * (size() - 1);
}

bool Aig::absorbed(Literal outer, Literal inner, Literal& result) {
  if (!is_and(node_of(inner))) return false;
  const Literal x = left(node_of(inner)), y = right(node_of(inner));
  if (outer == negated(x) || outer == negated(y)) {
    result = is_negated(inner) ? outer : zero;
    return true;
  }
  if (outer != x && outer != y) return false;
  result = is_negated(inner) ? both(outer, negated(outer == x ? y : x)) : inner;
  return true;
}

Literal Aig::both(Literal a, Literal b) {
  if (a > b) std::swap(a, b);
  if (a == zero || a == negated(b)) return zero;
  if (a == one || a == b) return b;
  Literal result = zero;
  if (absorbed(a, b, result) || absorbed(b, a, result)) return result;
  const std::uint64_t key = (std::uint64_t{a} << 32) | b;
  const auto [at, fresh] = known_.emplace(key, size());
  if (fresh) nodes_.push_back({a, b});
  return 2 * at->second;
}

Literal Aig::differ(Literal a, Literal b) {
  return both(negated(both(a, b)), negated(both(negated(a), negated(b))));
}

Literal Aig::choice(Literal test, Literal then_part, Literal else_part) {
  if (then_part == else_part) return then_part;
  if (then_part == negated(else_part)) return differ(test, else_part);
  return either(both(test, then_part), both(negated(test), else_part));
}

std::vector<std::uint32_t> Aig::cone(const std::vector<Literal>& roots) const {
  std::uint32_t last = 0;
  for (Literal root : roots) last = std::max(last, node_of(root));
  std::vector<bool> needed(last + 1, false);
  for (Literal root : roots) needed[node_of(root)] = true;
  size_t count = 0;
  for (std::uint32_t node = last + 1; node-- > 0;) {
    if (!needed[node]) continue;
    ++count;
    if (!is_and(node)) continue;
    needed[node_of(left(node))] = needed[node_of(right(node))] = true;
  }
  std::vector<std::uint32_t> nodes;
  nodes.reserve(count);
  for (std::uint32_t node = 0; node <= last; ++node)
    if (needed[node]) nodes.push_back(node);
  return nodes;
}

void copy_nodes(const Aig& from, const std::vector<std::uint32_t>& nodes, Aig& to,
                std::vector<Literal>& image) {
  for (std::uint32_t node : nodes)
    if (from.is_and(node))
      image[node] = to.both(image_of(from.left(node), image), image_of(from.right(node), image));
}

}  // namespace kiva::aig
