#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/aig.h"

namespace kiva {
class FlatEquations;
}

namespace kiva::code {

using aig::Aig;
using aig::Literal;

/// A pass over equations as machine code, for contexts in which all that the pass reads from
/// outside is known and the rails of each signal there are each other's complement. What it leaves
/// is then, bit by bit, what the tables leave.
class CompiledPass {
 public:
  /// Whether this build makes code at all.
  static bool possible();
  /// Null where this machine has no code of ours, its memory may not be made executable, or the
  /// equations are better off as diagrams. Reads the equations, in whatever thread.
  static std::unique_ptr<CompiledPass> make(const FlatEquations& equations, size_t variables);
  ~CompiledPass();
  CompiledPass(const CompiledPass&) = delete;
  CompiledPass& operator=(const CompiledPass&) = delete;

  /// False, and nothing has been done, for a context that is not such a one.
  bool run(int* context);

 private:
  CompiledPass();
  struct Sources;
  struct Layout;
  struct Machine;

  /// Entries that the pass reads before it writes them, with the place of their byte.
  struct Pair {
    std::uint32_t status, slot;  ///< the value stands behind the status
  };
  struct Single {
    std::uint32_t index, slot;
  };
  struct Stretch {
    std::uint32_t begin, end;  ///< blocks of eight pairs
  };
  std::vector<Pair> pairs_;
  std::vector<Single> singles_;
  std::vector<Stretch> regular_;     ///< all pairs of them are complements, or were and are kept
  std::vector<Single> irregular_;    ///< written entries outside of them
  std::vector<std::uint8_t> slots_;  ///< a bit each: of pair k at place k, then all else
  std::unique_ptr<Machine> machine_;
};

}  // namespace kiva::code
