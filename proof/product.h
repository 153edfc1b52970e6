#pragma once

#include <string>
#include <vector>

#include "proof/machine.h"
#include "proof/module_machine.h"

namespace kiva::proof {

/// One of two modules that are compared: its machine, and what of it shows.
struct Side {
  struct Output {
    std::string name;
    Literal present;
  };
  Machine machine;
  std::vector<Output> outputs;
};

/// Throws MachineError where the module cannot be compared with others.
void require_comparable(Module& module);
/// The module that the simulation runs, with its outputs as they are present. Throws MachineError
/// where one is read before anything computes it.
Side side_of(const Simulation& simulation, ModuleMachine& module);
/// The kind and name of an input or output that only the first has; empty where there is none.
std::string missing_in(const Side& second, const Side& first);

/// Two machines side by side with the inputs of the first, which must have the names of the
/// second's, in any order; so must the outputs. Bad when an output is present on one side only.
struct Product {
  struct Output {
    std::string name;
    Literal present[2];
  };
  Machine machine;
  std::vector<Output> outputs;  ///< in the order of the first side
  std::vector<Literal> first;   ///< images of the nodes of the first side

  Product(const Side& first, const Side& second);
};

}  // namespace kiva::proof
