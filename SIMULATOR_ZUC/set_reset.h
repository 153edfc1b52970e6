#pragma once

#include "engine/simulation.h"

namespace kiva {

/// The two flags for the module's set and reset wires. Of a simulation they are its choices for the
/// next instant, and nothing is kept here; without one they stand alone.
class set_reset {
 public:
  explicit set_reset(Simulation* simulation = nullptr) : simulation_(simulation) {}

  void set_Set(bool value) {
    if (simulation_ != nullptr)
      simulation_->raise_set(value);
    else
      set = value;
  }
  void set_Reset(bool value) {
    if (simulation_ != nullptr)
      simulation_->raise_reset(value);
    else
      reset = value;
  }
  bool get_Set() const { return simulation_ != nullptr ? simulation_->state().set : set; }
  bool get_Reset() const { return simulation_ != nullptr ? simulation_->state().reset : reset; }
  void initialise_set_reset() {
    set_Set(false);
    set_Reset(false);
  }

 private:
  Simulation* simulation_;
  // Only where there is no simulation.
  bool set = false;
  bool reset = false;
};

}  // namespace kiva
