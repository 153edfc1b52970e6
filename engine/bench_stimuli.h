#pragma once

#include <iosfwd>
#include <set>
#include <string>

#include "engine/simulation.h"
#include "engine/stimuli.h"
#include "tarn/targets/frame/bench.h"

namespace kiva {

/// Makes the instants of a bench while it runs the module beside. What a line awaits of outputs is
/// awaited of the text; where a line awaits nothing, all outputs as they are here. What it awaits
/// of a test on data, which a text without data takes as an input, the text is given.
class BenchStimuli {
 public:
  explicit BenchStimuli(Module* module) : simulation_(module) {}

  /// Throws StimuliError.
  void read(std::istream& in);
  /// Runs an instant with the choices as they stand.
  void add(const std::vector<Expectation>& expectations = {});

  Simulation& simulation() { return simulation_; }
  const BenchInstants& instants() const { return instants_; }
  /// Names of what is awaited and no text shows: registers and locals.
  const std::set<std::string>& unseen() const { return unseen_; }

 private:
  BenchInstant given() const;
  void await(BenchInstant& instant, const Expectation& expectation);
  void await_output(BenchInstant& instant, size_t row, SignalState state) const;
  void await_all(BenchInstant& instant) const;

  Simulation simulation_;
  BenchInstants instants_;
  std::set<std::string> unseen_;
};

}  // namespace kiva
