#pragma once

#include <vector>

#include "proof/campaign/run_source.h"

namespace kiva::proof {

/// Runs of one length whose inputs are drawn, each with a chance of its own. A block is drawn by
/// the seed and its number alone, the same on every machine.
class RandomRuns : public RunSource {
 public:
  /// By input, from 0 to 1; taken to the next of 2^32.
  RandomRuns(std::uint64_t runs, long instants, std::uint64_t seed,
             const std::vector<double>& chances);
  std::uint64_t runs() const override { return runs_; }
  std::unique_ptr<Block> block(std::uint64_t number) const override;

 private:
  class Drawn;
  std::uint64_t runs_;
  long instants_;
  std::uint64_t seed_;
  std::vector<std::uint64_t> chances_;  ///< of 2^32
};

}  // namespace kiva::proof
