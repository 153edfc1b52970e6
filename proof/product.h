#pragma once

#include <string>
#include <vector>

#include "proof/machine.h"

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

/// Two machines side by side with the inputs of the first, which must have the names of the
/// second's, in any order; so must the outputs. Bad when an output is present on one side only.
struct Product {
  struct Output {
    std::string name;
    Literal present[2];
  };
  Machine machine;
  std::vector<Output> outputs;  ///< in the order of the first side

  Product(const Side& first, const Side& second);
};

}  // namespace kiva::proof
