#pragma once

#include <functional>

#include "proof/engine.h"

namespace kiva::proof {

/// The engines by turns, in growing slices of time, on the machine and what is left of it.
struct ProverOptions {
  double seconds = 60;
  const std::atomic<bool>* asked = nullptr;          ///< ends the work when set; may be null
  bool invariant = false;                            ///< only answers of `holds` that give one
  std::function<void(const std::string&)> progress;  ///< what is known so far; may be empty
};

/// `unknown` has in `how` how far the engines came.
Answer prove(const Machine& machine, const ProverOptions& options);

/// Whether the invariant holds at the start, is kept by every instant and implies that nothing is
/// bad, as a SAT solver sees it.
[[nodiscard]] bool is_invariant(const Machine& machine, const Invariant& invariant);

}  // namespace kiva::proof
