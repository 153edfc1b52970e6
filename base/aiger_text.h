#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "base/aig.h"

namespace kiva::aig {

/// A sequential circuit as AIGER files have it. Inputs and latches are variables of the graph, each
/// of which is one of them.
struct Circuit {
  struct Named {
    Literal literal;
    std::string name;  ///< without line ends
  };
  struct Latch {
    Literal now, next;
    bool initial;
    std::string name;
  };
  std::string name;
  Aig graph;
  std::vector<Named> inputs;
  std::vector<Latch> latches;
  std::vector<Named> outputs;
  std::vector<Named> bad_states;  ///< in which a property fails
};

/// The ASCII form, and the binary one; of AIGER 1.9 where there are bad states, else as tools of
/// any age read it.
void put_aiger_ascii(const Circuit& circuit, std::ostream& out);
void put_aiger_binary(const Circuit& circuit, std::ostream& out);

}  // namespace kiva::aig
