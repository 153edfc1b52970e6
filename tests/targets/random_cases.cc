// Random programs for all targets. All take the same programs as long as they have the same seed,
// so their traces agree with each other where they agree with the simulator's.

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>

#include "tests/support/setting.h"
#include "tests/targets/target_case.h"
#include "tests/zu_compile/program.h"

namespace kiva::test {

namespace {

constexpr int instants = 20;

using Check = std::function<void(const TargetCase&)>;

Program random_case(std::mt19937& random, long number) {
  const int size = 4 + static_cast<int>(random() % 12);
  switch (number % 4) {
    case 2:
      return random_automaton(random, size);
    case 3:
      return random_mealy(random, 1 + size / 2);
    default:
      return random_program(random, size);
  }
}

std::string random_stimuli(std::mt19937& random) {
  std::string stimuli;
  for (int instant = 0; instant < instants; ++instant) {
    for (const std::string& input : input_names)
      if (random() % 2 == 0) stimuli += input + " ";
    stimuli += "\n";
  }
  return stimuli;
}

/// Some programs have a dependence cycle.
bool compiles(const std::string& source) {
  const TempDir dir;
  return std::system(("'" KIVA_PROGRAMS "/tarn' -q --module main -d '" + dir.path().string() +
                      "' '" + dir.write("main.zu", source) + "' >/dev/null 2>&1")
                         .c_str()) == 0;
}

/// What the check finds wrong with a program; empty where nothing is.
std::string faults(const std::string& source, const std::string& stimuli, const Check& check) {
  testing::TestPartResultArray results;
  {
    const testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ALL_THREADS, &results);
    try {
      check(TargetCase("main.zu", source, stimuli, "--module main"));
    } catch (const std::exception& exception) {
      ADD_FAILURE() << exception.what();
    }
  }
  std::string all;
  for (int i = 0; i < results.size(); ++i)
    if (results.GetTestPartResult(i).failed())
      all += results.GetTestPartResult(i).message() + std::string("\n");
  return all;
}

/// The smallest program, one step at a time, with which the check still finds fault.
Program shrink(Program program, const std::string& stimuli, const Check& check,
               std::string& found) {
  for (bool smaller_found = true; smaller_found;) {
    smaller_found = false;
    for (const Program& smaller : program.smaller()) {
      const std::string source = module_text(smaller);
      if (smaller.size() >= program.size() || !compiles(source)) continue;
      const std::string still = faults(source, stimuli, check);
      if (still.empty()) continue;
      program = smaller;
      found = still;
      smaller_found = true;
      break;
    }
  }
  return program;
}

}  // namespace

void for_random_cases(int count, const Check& check) {
  const long seed = setting("KIVA_SEED", 20261124);
  const long programs = setting("KIVA_PROGRAMS", count);
  std::cout << "seed " << seed << '\n';
  long compared = 0;
  for (long number = 0; compared < programs && number < 4 * programs + 20; ++number) {
    std::mt19937 random(static_cast<unsigned>(seed + number));
    Program program = random_case(random, number);
    const std::string stimuli = random_stimuli(random);
    if (!compiles(module_text(program))) continue;
    ++compared;
    std::string found = faults(module_text(program), stimuli, check);
    if (found.empty()) continue;
    program = shrink(std::move(program), stimuli, check, found);
    FAIL() << "KIVA_SEED=" << seed << ", program " << number << ": " << found
           << module_text(program) << "over the stimuli\n"
           << stimuli;
  }
  std::cout << compared << " programs agree over " << instants << " instants\n";
  EXPECT_EQ(compared, programs);
}

}  // namespace kiva::test
