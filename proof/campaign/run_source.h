#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "proof/machine.h"

namespace kiva::proof {

/// Where the inputs of runs come from. Runs stand in blocks of 64: run n is bit n % 64 of block
/// n / 64. Several threads may walk through blocks of one source.
class RunSource {
 public:
  /// Something that is awaited of a run in an instant.
  struct Awaited {
    unsigned bit;  ///< of the run
    size_t what;   ///< place among all that may be awaited
  };
  /// A walk through a block, instant by instant.
  class Block {
   public:
    virtual ~Block() = default;
    /// Writes one word an input, and gives those of the runs that have another instant. The others
    /// have ended.
    virtual std::uint64_t next(std::uint64_t* words) = 0;
    /// Of the instant that `next` gave.
    virtual std::span<const Awaited> awaited() const { return {}; }
  };

  virtual ~RunSource() = default;
  virtual std::uint64_t runs() const = 0;
  virtual std::unique_ptr<Block> block(std::uint64_t number) const = 0;

  std::uint64_t blocks() const { return (runs() + 63) / 64; }
  /// The first instants of a run.
  Run run(std::uint64_t number, size_t instants, size_t inputs) const;
};

}  // namespace kiva::proof
