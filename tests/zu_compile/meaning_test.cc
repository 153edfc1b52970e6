// Compiled programs against their meaning: under the sound rules, every output and local of a
// random program must be One in just those instants in which an interpreter that knows no equations
// makes it present, and the program must end when it does there.

#include "tests/zu_compile/meaning.h"

#include <gtest/gtest.h>

#include <iostream>

#include "tests/support/setting.h"
#include "tests/zu_compile/judge.h"

namespace kiva::test {
namespace {

constexpr int runs_of_each = 3;

/// The smallest program, one step at a time, that still differs.
Program shrink(Program program, const std::vector<History>& runs, std::string& difference) {
  for (bool found = true; found;) {
    found = false;
    for (const Program& smaller : program.smaller()) {
      std::string told;
      if (smaller.size() >= program.size() || compare(smaller, runs, told) != Verdict::differs)
        continue;
      program = smaller;
      difference = told;
      found = true;
      break;
    }
  }
  return program;
}

/// Compares `standard` random programs, or as many as the environment asks for.
template <class Make>
void judge(const char* what, long standard, Make make) {
  const long seed = setting("KIVA_SEED", 20240611);
  const long programs = setting("KIVA_PROGRAMS", standard);
  long agreed = 0, refused = 0, differed = 0;
  std::cout << "seed " << seed << '\n';
  for (long number = 0; number < programs && differed < 3; ++number) {
    std::mt19937 random(static_cast<unsigned>(seed + number));
    Program program = make(random, number);
    enrich(program, random);
    std::vector<History> runs;
    for (int i = 0; i < runs_of_each; ++i) runs.push_back(random_history(random));
    std::string difference;
    switch (compare(program, runs, difference)) {
      case Verdict::agrees:
        ++agreed;
        break;
      case Verdict::refused:
        ++refused;
        break;
      case Verdict::differs:
        ++differed;
        program = shrink(std::move(program), runs, difference);
        ADD_FAILURE() << "KIVA_SEED=" << seed + number << " KIVA_PROGRAMS=1: " << difference << '\n'
                      << module_text(program);
    }
  }
  std::cout << agreed << " " << what << " agree over " << runs_of_each << " runs of "
            << instants_of_history << " instants, " << refused << " are refused for a cycle\n";
  EXPECT_GT(agreed, programs / 3);
}

TEST(Meaning, RandomProgramsRunAsTheyRead) {
  judge("programs", 3000, [](std::mt19937& random, long number) {
    return random_program(random, 2 + static_cast<int>(random() % (number % 10 == 0 ? 40 : 14)));
  });
}

TEST(Meaning, RandomAutomataRunAsTheyRead) {
  judge("automata", 2000, [](std::mt19937& random, long) {
    return random_automaton(random, 2 + static_cast<int>(random() % 14));
  });
}

TEST(Meaning, RandomMealyMachinesRunAsTheyRead) {
  judge("machines", 1000, [](std::mt19937& random, long) {
    return random_mealy(random, 1 + static_cast<int>(random() % 6));
  });
}

/// The comparison is worth something only if it sees each of the rules that programs need.
TEST(Meaning, SeesEachRuleThatIsMissing) {
  const auto statements = [](std::mt19937& random) {
    return random_program(random, 2 + static_cast<int>(random() % 14));
  };
  const auto automata = [](std::mt19937& random) { return random_automaton(random, 8); };
  const auto machines = [](std::mt19937& random) { return random_mealy(random, 4); };
  const std::vector<std::pair<bool Rules::*, std::function<Program(std::mt19937&)>>> rules{
      {&Rules::values, statements},       {&Rules::sustain, statements},
      {&Rules::abort_start, statements},  {&Rules::abort_mask, statements},
      {&Rules::abort_signal, statements}, {&Rules::skip, statements},
      {&Rules::copies, statements},       {&Rules::final_state, automata},
      {&Rules::kill, automata},           {&Rules::state_mask, automata},
      {&Rules::state_reset, automata},    {&Rules::self_restart, automata},
      {&Rules::mealy_start, machines},    {&Rules::last_value, statements}};
  int number = 0;
  for (const auto& [rule, make] : rules) {
    Rules without = Rules::sound();
    without.*rule = false;
    bool seen = false;
    for (unsigned seed = 0; seed < 3000 && !seen; ++seed) {
      std::mt19937 random(seed);
      Program program = make(random);
      enrich(program, random);
      std::string difference;
      seen = compare(program, {random_history(random)}, difference, without) == Verdict::differs;
    }
    EXPECT_TRUE(seen) << "rule number " << number;
    ++number;
  }
}

}  // namespace
}  // namespace kiva::test
