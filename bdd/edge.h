#pragma once

#include <cstdint>

#include "bdd/bdd_node.h"

namespace kiva {

/// A node and the polarity with which it is taken, in one word: bit 0 stands for the complement.
/// What the recursions pass around; it counts no reference.
class bdd_edge {
 public:
  bdd_edge() = default;
  bdd_edge(bdd_node* node, int link)
      : bits_(reinterpret_cast<std::uintptr_t>(node) | (link == 1 ? 0 : 1)) {}

  bdd_node* node() const { return reinterpret_cast<bdd_node*>(bits_ & ~std::uintptr_t{1}); }
  bool complemented() const { return (bits_ & 1) != 0; }
  int link() const { return complemented() ? -1 : 1; }
  bool null() const { return node() == nullptr; }

  bdd_edge operator!() const { return from_bits(bits_ ^ 1); }
  /// The complement when `flip` holds.
  bdd_edge flipped_if(bool flip) const { return from_bits(bits_ ^ (flip ? 1 : 0)); }
  bdd_edge regular() const { return from_bits(bits_ & ~std::uintptr_t{1}); }
  friend bool operator==(bdd_edge a, bdd_edge b) { return a.bits_ == b.bits_; }

  std::uintptr_t bits() const { return bits_; }

 private:
  static bdd_edge from_bits(std::uintptr_t bits) {
    bdd_edge edge;
    edge.bits_ = bits;
    return edge;
  }
  std::uintptr_t bits_ = 0;
};

}  // namespace kiva
