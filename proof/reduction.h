#pragma once

#include "proof/engine.h"
#include "proof/machine.h"

namespace kiva::proof {

/// A machine that is bad in the same runs, as small as cheap means make it: what `bad` does not
/// depend on is gone, and latches that always agree, or disagree, or never change, are one, as far
/// as their equations show it.
class Reduction {
 public:
  /// What `roots` are in the original is kept, too.
  explicit Reduction(const Machine& original, std::vector<Literal> roots = {});
  const Machine& machine() const { return reduced_; }
  /// The same roots, of the reduced machine.
  const std::vector<Literal>& roots() const { return roots_; }
  /// The place in the original of an input of the reduced machine.
  size_t input_of(size_t input) const { return static_cast<size_t>(input_of_[input]); }
  /// An answer for the reduced machine as one for the original.
  Answer lifted(Answer answer) const;

 private:
  struct Classes;
  void build(const Classes& classes);
  void cut(const Machine& merged, const std::vector<size_t>& first_latches);
  std::vector<Literal> roots_with(Literal bad) const;

  const Machine& original_;
  Machine reduced_;
  std::vector<Literal> roots_;
  std::vector<size_t> cone_latches_;  ///< places of those that `bad` depends on
  std::vector<Literal> shared_;       ///< what stands for each of them, by place in `cone_latches_`
  std::vector<long> input_of_, latch_of_;  ///< of the reduced: place in the original
};

}  // namespace kiva::proof
