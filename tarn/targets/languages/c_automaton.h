#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tarn/b_automaton/b_automaton.h"

namespace kiva {

// The state of a boolean automaton in C and its kin: names with `prefix` in front, this instant's
// before the next one's.

std::vector<std::string> c_state_names(const b_automaton& automaton);
/// The declaration; nothing without state.
void put_c_state(std::ostream& out, const b_automaton& automaton, const std::string& prefix);
void put_c_initial_state(std::ostream& out, const b_automaton& automaton,
                         const std::string& prefix);
/// The next state becomes this one; nothing without state.
void put_c_moves(std::ostream& out, const b_automaton& automaton, const std::string& prefix);

}  // namespace kiva
