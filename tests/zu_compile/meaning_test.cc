// Compiled programs against their meaning: under the sound rules, every output and local of a
// random program must be One in just those instants in which an interpreter that knows no equations
// makes it present, and the program must end when it does there.

#include "tests/zu_compile/meaning.h"

#include <gtest/gtest.h>

#include <iostream>

#include "tests/support/setting.h"
#include "tests/zu_compile/compiled.h"

namespace kiva::test {
namespace {

constexpr int instants = 14;
constexpr int runs_of_each = 3;

struct History {
  std::vector<Stimulus> stimuli;

  std::string text() const {
    std::string all;
    for (const Stimulus& stimulus : stimuli) {
      std::string names = stimulus.set ? "!set" : ".";
      if (stimulus.reset) names += "+!reset";
      for (const std::string& name : stimulus.present) names += "+" + name;
      all += names + " ";
    }
    return all;
  }
};

History random_history(std::mt19937& random) {
  History run;
  const unsigned density = 2 + random() % 4;
  for (int i = 0; i < instants; ++i) {
    Stimulus stimulus;
    for (const std::string& name : input_names)
      if (random() % density == 0) stimulus.present.insert(name);
    stimulus.set = i == 0 || random() % 3 == 0;
    stimulus.reset = i > 0 && random() % 10 == 0;
    run.stimuli.push_back(stimulus);
  }
  return run;
}

enum class Verdict { agrees, refused, differs };

/// Compiles and runs a program both ways. A running program is not set again.
Verdict compare(const Program& program, const std::vector<History>& runs, std::string& difference,
                const Rules& rules = Rules::sound()) {
  const Compiled compiled(module_text(program), rules);
  if (!compiled.ok()) {
    difference = compiled.report();
    if (difference.find("dependance cycle") != std::string::npos) return Verdict::refused;
    return Verdict::differs;
  }
  for (History run : runs) {
    Instants machine(compiled);
    Meaning meaning(program);
    for (size_t i = 0; i < run.stimuli.size(); ++i) {
      Stimulus& stimulus = run.stimuli[i];
      stimulus.set = stimulus.set && !meaning.runs();
      machine.step(stimulus);
      const auto differs = [&](const std::string& what) {
        difference = what + " at instant " + std::to_string(i + 1) + " of " + run.text();
        return Verdict::differs;
      };
      if (!meaning.step(stimulus.present, stimulus.set, stimulus.reset))
        return differs("no meaning");
      for (const auto* names : {&output_names, &local_names})
        for (const std::string& name : *names)
          if ((machine.state(name) == '1') != meaning.present().contains(name))
            return differs(name + " is " + machine.state(name) + ", meant " +
                           (meaning.present().contains(name) ? "present" : "absent"));
      if ((machine.state("RTL") == '1') != meaning.ended())
        return differs(std::string("the end is ") + machine.state("RTL"));
    }
  }
  return Verdict::agrees;
}

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
  std::cout << agreed << " " << what << " agree over " << runs_of_each << " runs of " << instants
            << " instants, " << refused << " are refused for a cycle\n";
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
      {&Rules::mealy_start, machines}};
  int number = 0;
  for (const auto& [rule, make] : rules) {
    Rules without = Rules::sound();
    without.*rule = false;
    bool seen = false;
    for (unsigned seed = 0; seed < 3000 && !seen; ++seed) {
      std::mt19937 random(seed);
      const Program program = make(random);
      std::string difference;
      seen = compare(program, {random_history(random)}, difference, without) == Verdict::differs;
    }
    EXPECT_TRUE(seen) << "rule number " << number;
    ++number;
  }
}

}  // namespace
}  // namespace kiva::test
