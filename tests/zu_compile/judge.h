#pragma once

#include <random>
#include <string>
#include <vector>

#include "tests/zu_compile/compiled.h"
#include "tests/zu_compile/program.h"

namespace kiva::test {

constexpr int instants_of_history = 14;

/// What a program is given, instant by instant.
struct History {
  std::vector<Stimulus> stimuli;

  std::string text() const;
};
History random_history(std::mt19937& random);

/// Refused: for a dependence cycle, or since a run has no value where its caller needs one.
enum class Verdict { agrees, refused, differs };

/// Compiles and runs a program both ways: by its equations, and by its meaning. A running program
/// is not set again.
Verdict compare(const Program& program, const std::vector<History>& runs, std::string& difference,
                const Rules& rules = Rules::sound());

}  // namespace kiva::test
