#pragma once

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tarn/b_automaton/b_automaton.h"

namespace kiva::test {

/// Equations as text over declared names ("next: a and not s"), read by the manager's own parser.
struct AutomatonText {
  std::list<std::string> state = {}, next_state = {}, inputs = {}, outputs = {}, locals = {};
  std::vector<std::pair<std::string, std::string>> equations = {};
  std::vector<int> init = {};
  std::string invariant = {};  ///< none is true
};
std::unique_ptr<b_automaton> make_automaton(const AutomatonText& text);

/// State s0.., next state n0.., inputs a0.., outputs o0.., locals l0..; functions of up to four
/// variables that close no cycle, and read outputs if wanted.
std::unique_ptr<b_automaton> random_automaton(std::mt19937& random, int state, int inputs,
                                              int outputs, int locals, bool read_outputs = true);

/// One instant: the values of all variables. Fails the test where something stays unknown.
std::vector<int> step(const b_automaton& automaton, const std::vector<int>& state,
                      const std::vector<int>& inputs);
std::vector<int> initial_state(const b_automaton& automaton);
std::vector<int> next_state_of(const b_automaton& automaton, const std::vector<int>& values);
std::vector<int> outputs_of(const b_automaton& automaton, const std::vector<int>& values);
/// The n low bits of a number, lowest first.
std::vector<int> bits(unsigned number, int n);

}  // namespace kiva::test
