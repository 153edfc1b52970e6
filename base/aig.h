#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace kiva::aig {

/// A function of a graph: twice a node's number, plus 1 when complemented.
using Literal = std::uint32_t;
constexpr Literal zero = 0, one = 1;  ///< node 0 is the constant 0
constexpr Literal negated(Literal a) {
  return a ^ 1U;
}
constexpr Literal negated_if(Literal a, bool negate) {
  return a ^ (negate ? 1U : 0U);
}
constexpr std::uint32_t node_of(Literal a) {
  return a >> 1;
}
constexpr bool is_negated(Literal a) {
  return (a & 1U) != 0;
}

/// A graph of ands and complements over free variables. A node stands behind those it reads; two
/// ands of the same literals are one node, and constants never stand below one.
class Aig {
 public:
  Aig() { nodes_.push_back({zero, zero}); }

  /// A new free variable.
  Literal variable();
  Literal both(Literal a, Literal b);
  Literal either(Literal a, Literal b) { return negated(both(negated(a), negated(b))); }
  Literal differ(Literal a, Literal b);
  Literal choice(Literal test, Literal then_part, Literal else_part);

  std::uint32_t size() const { return static_cast<std::uint32_t>(nodes_.size()); }
  bool is_variable(std::uint32_t node) const { return nodes_[node].left == none; }
  bool is_and(std::uint32_t node) const { return node != 0 && !is_variable(node); }
  /// Of an and: the smaller of its literals, and the other.
  Literal left(std::uint32_t node) const { return nodes_[node].left; }
  Literal right(std::uint32_t node) const { return nodes_[node].right; }

  /// The nodes that the literals depend on, ascending.
  std::vector<std::uint32_t> cone(const std::vector<Literal>& roots) const;

 private:
  static constexpr Literal none = ~Literal{0};
  struct Node {
    Literal left, right;
  };
  /// Whether the and of the two is simpler by what the inner says of the outer: x and (x and y), x
  /// and not (x and y).
  [[nodiscard]] bool absorbed(Literal outer, Literal inner, Literal& result);
  std::vector<Node> nodes_;
  std::unordered_map<std::uint64_t, std::uint32_t> known_;
};

/// `literal` of another graph, whose nodes stand in `image` as literals of this one.
inline Literal image_of(Literal literal, const std::vector<Literal>& image) {
  return negated_if(image[node_of(literal)], is_negated(literal));
}
/// Copies the nodes, ascending, into `to`; `image` holds the images of their variables, and gets
/// those of the ands.
void copy_nodes(const Aig& from, const std::vector<std::uint32_t>& nodes, Aig& to,
                std::vector<Literal>& image);

}  // namespace kiva::aig
