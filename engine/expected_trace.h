#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "engine/signal_names.h"

namespace kiva {

/// A trace in JSON, an object an instant, that a run is compared with: signal by signal, as far as
/// the trace names them.
class ExpectedTrace {
 public:
  /// `in` must outlive it.
  ExpectedTrace(std::istream& in, const Simulation& simulation) : in_(in), names_(simulation) {}

  /// A line for each difference of this instant and the next object of the trace.
  std::vector<std::string> compare(const SimulationState& state);
  /// What is wrong at the end of the run: instants that are left; empty if nothing is.
  std::string end();
  /// Number of the line read last, from 1.
  long line() const { return line_; }

 private:
  [[nodiscard]] bool read_line(std::string& text);

  std::istream& in_;
  SignalNames names_;
  long line_ = 0;
};

}  // namespace kiva
