#pragma once

#include <string>
#include <vector>

#include "proof/aig.h"

namespace kiva::proof {

/// A sequential machine: in each instant inputs come in, `bad` is looked at, latches take their
/// next values.
struct Machine {
  struct Latch {
    Literal now;   ///< a variable of the graph
    Literal next;  ///< over latches and inputs
    bool initial;
    std::string name;
  };
  struct Input {
    Literal literal;  ///< a variable of the graph
    std::string name;
  };
  Aig aig;
  std::vector<Input> inputs;
  std::vector<Latch> latches;
  Literal bad = zero;

  Literal new_input(const std::string& name);
  /// A latch whose next value is 0 until somebody sets it; gives its place among the latches.
  size_t new_latch(const std::string& name, bool initial);
};

/// The inputs of each instant, by place among the inputs.
using Run = std::vector<std::vector<bool>>;

/// Runs a machine, 64 runs side by side: bit k of a word belongs to run k.
class Stepper {
 public:
  explicit Stepper(const Machine& machine);
  void start();
  /// Computes an instant from the latches and one word an input.
  void look(const std::vector<std::uint64_t>& inputs);
  /// What the literal is in the instant looked at.
  std::uint64_t word(Literal literal) const {
    return words_[node_of(literal)] ^ (is_negated(literal) ? ~std::uint64_t{0} : 0);
  }
  /// The latches move.
  void move();

 private:
  const Machine& machine_;
  std::vector<std::uint64_t> words_, next_;
};

/// By node: whether it depends, now or earlier, on a variable that is neither input nor latch.
std::vector<bool> undetermined(const Machine& machine);

/// One word an input, each run of the 64 with the same.
std::vector<std::uint64_t> words_of(const std::vector<bool>& inputs);

/// The machine as the run leaves it.
Machine after(const Machine& machine, const Run& run);

/// The first instant of the run, from 1, in which `bad` is 1; 0 for none.
size_t first_bad(const Machine& machine, const Run& run);

}  // namespace kiva::proof
