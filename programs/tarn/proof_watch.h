#pragma once

#include <atomic>
#include <string>

#include "proof/prover.h"

namespace kiva::tarn_program {

/// While one lives, an interrupt ends proofs, which then say how far they came; a terminal shows
/// that meanwhile. One at a time.
class ProofWatch {
 public:
  ProofWatch();
  ~ProofWatch();
  ProofWatch(const ProofWatch&) = delete;
  ProofWatch& operator=(const ProofWatch&) = delete;

  /// For a proof of so many seconds.
  proof::ProverOptions options(double seconds) const;
  static bool interrupted();
  /// Takes the progress from the terminal.
  void clear() const;
  /// Tells how far an interrupted proof came; gives the exit status.
  static int stopped(const std::string& so_far);

 private:
  bool terminal_;
};

}  // namespace kiva::tarn_program
