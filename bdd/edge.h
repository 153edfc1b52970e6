#pragma once

#include <cstdint>

namespace kiva {

/// A node and the polarity with which it is taken, in 32 bits: the node's slot in the memory of its
/// manager, and bit 0 for the complement. What the recursions pass around and remember; it counts
/// no reference and means nothing outside its manager.
class bdd_edge {
 public:
  bdd_edge() = default;
  constexpr bdd_edge(std::uint32_t slot, bool complemented)
      : code_(slot << 1 | (complemented ? 1 : 0)) {}
  static constexpr bdd_edge of_code(std::uint32_t code) { return bdd_edge(code >> 1, code & 1); }

  std::uint32_t code() const { return code_; }
  std::uint32_t slot() const { return code_ >> 1; }
  bool complemented() const { return (code_ & 1) != 0; }
  int link() const { return complemented() ? -1 : 1; }

  bdd_edge operator!() const { return of_code(code_ ^ 1); }
  /// The complement when `flip` holds.
  bdd_edge flipped_if(bool flip) const { return of_code(code_ ^ (flip ? 1 : 0)); }
  bdd_edge regular() const { return of_code(code_ & ~1u); }
  /// Whether both have one node.
  bool same_node(bdd_edge other) const { return ((code_ ^ other.code_) & ~1u) == 0; }
  friend bool operator==(bdd_edge a, bdd_edge b) { return a.code_ == b.code_; }

 private:
  std::uint32_t code_ = 0;
};

}  // namespace kiva
