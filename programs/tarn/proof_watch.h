#pragma once

#include <atomic>
#include <string>

#include "programs/tarn/options.h"
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

  /// For a proof as the command line wants it.
  proof::ProverOptions options(const Options& options) const;
  /// For work that takes about so many seconds, ended by an interrupt, too.
  static proof::Stop stop(double seconds);
  static bool interrupted();
  /// Takes the progress from the terminal.
  void clear() const;
  /// Tells how far an interrupted proof came; gives the exit status.
  static int stopped(const std::string& so_far);

 private:
  bool terminal_;
};

/// Writes the certificate of an answer that holds, where one is asked for; false when it could not
/// be written, which has been told.
bool certify(const std::string& folder, const proof::Machine& machine, const proof::Answer& answer);

}  // namespace kiva::tarn_program
