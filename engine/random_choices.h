#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "engine/simulation.h"

namespace kiva {

/// Choices drawn at random: each input One or Zero, valued ones with a text of their list. The same
/// seed gives the same choices on every machine.
class RandomChoices {
 public:
  RandomChoices(const Simulation& simulation, std::uint64_t seed);
  /// With this probability One, in place of a half; false where no input bears the name.
  [[nodiscard]] bool bias(const std::string& name, double probability);
  /// The texts that a valued input may carry; false where no input bears the name.
  [[nodiscard]] bool values(const std::string& name, std::vector<std::string> texts);
  /// The name of a valued input without texts; empty where there is none.
  std::string input_without_values() const;

  /// For the next instant; the wires stay as they stand.
  void choose(Simulation& simulation);

 private:
  struct Input {
    std::string name;
    bool valued;
    double probability = 0.5;
    std::vector<std::string> texts;
  };
  Input* find(const std::string& name);
  double fraction();

  std::vector<Input> inputs_;
  std::mt19937_64 random_;
};

}  // namespace kiva
