#pragma once

#include <string>
#include <vector>

#include "bdd/bddpp.h"

namespace kiva::proof {

/// A machine as diagrams: registers and inputs in an order made for walking.
struct TransitionSystem {
  struct Register {
    long now, next;  ///< indices of its two variables, one behind the other
    bool initial;
    bdd f;  ///< the next value, over `now` variables and inputs
  };
  struct Input {
    size_t position;  ///< among the machine's inputs
    long index;
  };
  bddpp_manager manager;
  std::vector<Register> registers;
  std::vector<Input> inputs;
  bdd bad;  ///< over `now` variables and inputs
};

/// The successors of sets of states, both over the `now` variables. The transition relation is a
/// list of conjuncts, and each variable is quantified once the last conjunct that reads it is in.
class Image {
 public:
  explicit Image(TransitionSystem& system);

  bdd operator()(const bdd& states) const;

 private:
  struct Conjunct {
    bdd relation;
    bdd quantified;  ///< product of the variables that nothing behind it reads
  };

  bddpp_manager& manager_;
  bdd early_;  ///< product of the variables that no conjunct reads
  std::vector<Conjunct> conjuncts_;
  std::vector<long> next_to_now_;
};

/// The states of a set over the `now` variables, as a decimal number. From 2^64 on it is rounded to
/// three places: "about 1.23e+45".
std::string count_states(TransitionSystem& system, const bdd& states);

}  // namespace kiva::proof
