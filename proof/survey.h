#pragma once

#include <optional>
#include <string>

#include "proof/prover.h"

namespace kiva::proof {

/// What is asked about all runs of a machine, which must outlive it.
struct SurveyQuestion {
  const Machine& machine;
  std::vector<Literal> goals;
  /// What shows; where none of it changes any more, whatever comes, the machine is dead.
  std::vector<Literal> shown;
  std::vector<size_t> registers;  ///< latches whose states are counted
  Literal allowed = one;          ///< only instants count up to which it has held
};

struct Survey {
  enum class Goal { unknown, reached, never };
  std::vector<Goal> goals;
  /// States of the registers, as a decimal number; "" where none could be counted.
  std::string states;
  bool all_states = false;  ///< else there are more
  /// After the shortest run of that many instants nothing that shows changes any more.
  std::optional<Run> dead;
};

/// Random runs, then the walk over all states; where that does not end, the prover for each goal
/// that is left. All of it within the time of the options.
Survey survey(const SurveyQuestion& question, const ProverOptions& options);

}  // namespace kiva::proof
