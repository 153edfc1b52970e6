#pragma once

#include <string>
#include <vector>

#include "engine/lit_source.h"

namespace kiva {

/// What runs of a module shall reach: a statement, a state of an automaton, a transition.
struct CoverageGoal {
  static constexpr const char* statements = "statements";
  static constexpr const char* states = "states of automata";
  static constexpr const char* transitions = "transitions";

  const char* kind;  ///< one of these
  std::string name;  ///< two of one name are one
  ShownCover reached;
  SourcePlace place;
};

/// The goals of a module by the map of its source.
struct CoverageGoals {
  /// `problem` says why the map cannot be used.
  CoverageGoals(const std::string& map_text, const Simulation& simulation);

  std::string problem;
  std::vector<CoverageGoal> goals;
  std::vector<size_t> declared;  ///< rows of the locals that the user declared

 private:
  void read(const std::string& map_text, const Simulation& simulation);
};

}  // namespace kiva
