#pragma once

#include "proof/lane_program.h"
#include "proof/reduction.h"

namespace kiva::proof {

/// Makes runs shorter at whose end a machine is bad: instants go as long as another one stays bad,
/// then inputs. The same for the same run on every machine. The machine must outlive it.
class Shortening {
 public:
  explicit Shortening(const Machine& machine);
  /// `run` must be bad somewhere. What it gives is bad in its last instant, not before, with inputs
  /// Zero that do not matter.
  Run shortened(Run run);

 private:
  static constexpr double most_work = 4e9;  ///< steps of a program, before it is content

  /// Tries them, by blocks of 256, in order; the first that is bad becomes the run, up to there.
  template <class Candidate>
  size_t take_first(Run& run, size_t count, const Candidate& candidate);
  void drop_instants(Run& run);
  void drop_inputs(Run& run);
  void write_inputs(const std::vector<Run>& runs, size_t instant, LaneProgram::Slots& slots) const;
  /// By run: its first bad instant, from 1; 0 for none.
  std::vector<size_t> first_bad(const std::vector<Run>& runs);

  Reduction reduction_;
  LaneProgram program_;
  double work_ = 0;
};

}  // namespace kiva::proof
