#pragma once

#include <random>
#include <utility>

#include "proof/engine.h"
#include "proof/sat.h"

namespace kiva::proof {

/// Nodes of a machine that are equal, or opposite, in all reachable instants, latches and inner
/// nodes alike. The machine must outlive it.
class Correspondence {
 public:
  explicit Correspondence(const Machine& machine);
  /// Finds them; false when stopped, and then nothing is known.
  [[nodiscard]] bool find(const Stop& stop);
  /// Nodes that another one stands for.
  size_t count() const;
  /// The machine with one node for all that correspond; its inputs are the same.
  Machine merged() const;

 private:
  struct Claim {
    std::uint32_t node;
    Literal first;        ///< what stands for the node
    Literal own, shared;  ///< of the graph of a round: equal, if the claim is right
  };
  struct Round;

  void group_by_random_runs();
  bool refute(bool from_start, const Stop& stop);
  void look(std::vector<std::uint64_t>& words) const;
  bool split(const Round& round, bool from_start);
  bool part(const std::vector<std::uint64_t>& words, std::uint64_t lanes);
  bool is_merged(std::uint32_t node) const { return node_of(first_[node]) != node; }
  template <class Own>
  void copy_merged(Aig& to, std::vector<Literal>& image, std::vector<Claim>& claims,
                   const Own& own) const;

  const Machine& machine_;
  std::vector<std::uint32_t> cone_;  ///< ascending, the constant first
  std::vector<Literal> first_;       ///< by node: the first of its class, or its opposite
  std::mt19937_64 random_{1};
};

}  // namespace kiva::proof
