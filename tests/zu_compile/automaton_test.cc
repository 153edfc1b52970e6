// Automata: what is refused and with which words, the code, and traces reasoned out by hand.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/statements/automaton.h"
#include "tests/zu_compile/compiled.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// The text of an automaton; `j` is a module that it may run.
std::string automaton(const std::string& states, const std::string& transitions) {
  return "module j: Output: o; emit o >> halt end\n"
         "module main: Input: a, b, c; Output: o, p, q;\nautomaton\n" +
         states + "\ntransition:\n" + transitions + "\nend\n";
}

std::string report(const std::string& states, const std::string& transitions) {
  return Compiled(automaton(states, transitions)).report();
}

TEST(Automata, TellWhyTheyAreRefused) {
  const char* const cases[][3] = {
      {"state: F final / p;", "initial-> F;",
       "The FINAL state: \"F\" must not have one (or several) Moore action!"},
      {"state: F final run j;", "initial-> F;", "The FINAL state: \"F\" must not run a module!"},
      {"state: F final; state: S;", "initial-> F;\nF [a] -> S;",
       "A transition beginning with the FINAL state: \"F\" had been detected!"},
      {"state: S run j;", "initial-> S; S [a] normalterm-> S;",
       "TRIGGER in the Normal Terminaison transition from \"S\" is not supported!"},
      {"state: S;", "initial-> S; S [a] -> S; S [b] -> S;",
       "Non determinist automaton: Several possible transitions from state \"S\" "},
      {"state: S;", "initial-> [a] -> S; initial-> S;",
       "Non determinist automaton: Several possible Init transitions \"\" "},
      // All states are looked at before any transition, each in name order.
      {"state: G final / p; state: F final run j;", "initial-> F; F -> F;",
       "The FINAL state: \"F\" must not run a module!"}};
  for (const auto& [states, transitions, complaint] : cases) {
    const std::string told = report(states, transitions);
    EXPECT_THAT(told, StartsWith("ERROR: " + std::string(complaint) +
                                 "\n\n   --> compilation process aborted ...\n"));
    if (std::string(complaint).starts_with("A transition")) {
      EXPECT_THAT(told, HasSubstr("main.zu:7:1"));
    }
  }
}

TEST(Automata, WarnOfTransitionsThatNeverFire) {
  EXPECT_EQ(report("state: S; state: T;", "initial-> S; S normalterm-> T;"),
            "Warning: No found Run module about state S: Normal Terminaison has no effect ...\n");
}

TEST(Automata, AreCompiledByCompileAlone) {
  Automaton a("A", nullptr, {}, {});
  EXPECT_THROW(a.createEquations(nullptr, nullptr), IllegalOperationException);
}

TEST(Automata, WhatPrioritiesAndTypesTellApartIsAccepted) {
  for (const char* transitions :
       {"S [a] -> T; S [not a] -> S;", "S [a] -> T; S 1 [a] -> S;", "S [a] -> T; S [a] weak-> S;",
        "S other [] -> T; S [a] -> S;", "S other [a] -> T; S other [not a] -> S;",
        "S [a] -> T; T [a] -> S;", "S [FF] -> T; S [a] -> S;"})
    EXPECT_EQ(report("state: S; state: T;", std::string("initial-> S; ") + transitions), "")
        << transitions;
  for (const char* transitions :
       {"S -> T; S [a] -> S;", "S 2 [a] -> T; S 2 [b] -> S;", "S [a] weak-> T; S [b] weak-> S;",
        "S other [] -> T; S other [a] -> S;"})
    EXPECT_THAT(report("state: S; state: T;", std::string("initial-> S; ") + transitions),
                HasSubstr("Several possible"))
        << transitions;
}

TEST(Automata, HoldTheirCodeInTheFewestBits) {
  const std::map<int, size_t> bits{{1, 2}, {2, 2}, {3, 3}, {6, 3}, {7, 4}};
  for (const auto& [states, expected] : bits) {
    std::string names;
    for (int i = 0; i < states; ++i) names += "state: S" + std::to_string(i) + ";";
    const Compiled c(automaton(names, "initial-> S0;"));
    const RegisterList& registers = c.module()->getRegisterList();
    EXPECT_EQ(registers.size(), expected) << states << " states";
    EXPECT_EQ(registers[1]->actual_var()->getInternalName(), "mainreg1");
    EXPECT_EQ(registers[1]->next_var()->getInternalName(), "mainnextreg1");
    EXPECT_EQ(registers[1]->is_initialy_true(), 0);
  }
}

TEST(Automata, RankTransitions) {
  std::list<Transition> kept;
  std::list<Transition*> unsorted;
  for (int priority : {-1, 3, 0, -1, 3, 1}) {
    kept.emplace_back().priority = priority;
    unsorted.push_back(&kept.back());
  }
  const std::list<Transition*> sorted = Automaton::priority_sort(unsorted);
  auto at = [&](int i) { return *std::next(unsorted.begin(), i); };
  EXPECT_EQ(sorted, (std::list<Transition*>{at(2), at(5), at(1), at(4), at(0), at(3)}));
}

/// What random automata, which keep to the sound rules, do not show.
TEST(Automata, TracesApart) {
  const std::string outranked =
      automaton("state: S / o; state: F final;", "initial-> S; S [a] -> S; S [a or b] weak-> F;");
  const std::string shown = automaton("state: S / o;", "initial-> S;");
  const auto machine = [](const std::string& right) {
    return "module main: Input: a, b; Output: o; Mealy Machine o = " + right + "; end";
  };
  const std::string registers =
      "module main: Input: a; Output: o; Mealy Machine Register: r: 0: n; n = a; o = r; end";
  const Rules sound = Rules::sound(), classic = Rules::classic();
  const struct {
    std::string text, signal, stimuli, states;
    Rules rules;
  } cases[] = {
      // A transition that another outranks does not end it.
      {outranked, "RTL", ". a b . .", "00100", sound},
      {outranked, "RTL", ". a b . .", "01100", classic},
      {shown, "o", "!reset . .", "___", sound},
      {shown, "o", "!reset . .", "_11", classic},
      // Not the same where the operand is neither True nor False.
      {machine("abs a"), "o", ". a", "10", sound},
      {machine("1"), "o", ". a", "11", sound},
      {machine("(0)"), "o", ". a", "00", sound},
      {machine("a or not a and b"), "o", ". a b a+b", "0111", sound},
      {registers, "o", "a !reset+a . a", "0100", classic},
  };
  for (const auto& c : cases)
    EXPECT_EQ(trace(c.text, c.signal, c.stimuli, c.rules), c.states) << c.text << c.stimuli;
  // Before the start nothing moves, whatever the rules.
  for (const Rules& rules : {classic, sound}) {
    const Compiled c(shown, rules);
    Instants instants(c);
    for (int i = 0; i < 3; ++i) {
      instants.step({});
      EXPECT_EQ(instants.state("o"), '_');
    }
  }
}

TEST(MealyMachines, GiveAValuedOutputItsValue) {
  const Compiled c("module main: Input: v: int; Output: o: int; Mealy Machine o(#v) = v; end");
  ASSERT_TRUE(c.ok()) << c.report();
  const auto bound = c.module()->getSignalBindingByClock(c.module()->getOutputSignal("o"));
  ASSERT_TRUE(bound != nullptr && bound->size() == 1);
  Instants instants(c);
  instants.step({{"v"}, true, false});
  EXPECT_EQ(instants.state(bound->front()->getInternalName()), '1');
}

/// Against a walk over the table of transitions: functions too large for one diagram go by wires.
TEST(Automata, LargeOnesRunAsTheirTables) {
  constexpr size_t states = 60, inputs = 14;
  const std::vector<std::string> outputs{"o", "p", "q"};
  std::mt19937 random(5);
  struct Arc {
    size_t yes, no, to, out;
  };
  const auto input = [](size_t k) { return "i" + std::to_string(k); };
  std::vector<std::array<Arc, 3>> table(states);
  std::string text = "module main: Input: " + input(0), arcs = "transition: initial-> S0;\n";
  for (size_t k = 1; k < inputs; ++k) text += ", " + input(k);
  text += "; Output: o, p, q; automaton\n";
  for (size_t s = 0; s < states; ++s) {
    text += "state: S" + std::to_string(s) + " / " + outputs[s % 3] + ";\n";
    for (size_t rank = 0; rank < 3; ++rank) {
      const Arc& arc =
          table[s][rank] = {random() % inputs, random() % inputs, random() % states, random() % 3};
      arcs += "S" + std::to_string(s) + " " + std::to_string(rank + 1) + " [" + input(arc.yes) +
              " and not " + input(arc.no) + "] / " + outputs[arc.out] + " -> S" +
              std::to_string(arc.to) + ";\n";
    }
  }
  const Compiled c(text + arcs + "end\n");
  ASSERT_EQ(c.report(), "");
  EXPECT_NE(c.module()->getSignalManager()->getSignalRefByName("mainjoins0"), nullptr);
  Instants instants(c);
  instants.step({.present = {}, .set = true});
  size_t at = 0;
  for (int instant = 0; instant < 3000; ++instant) {
    Stimulus stimulus;
    for (size_t k = 0; k < inputs; ++k)
      if (random() % 2 != 0) stimulus.present.insert(input(k));
    instants.step(stimulus);
    std::set<std::string> awaited{outputs[at % 3]};
    for (const Arc& arc : table[at])
      if (stimulus.present.contains(input(arc.yes)) && !stimulus.present.contains(input(arc.no))) {
        awaited.insert(outputs[arc.out]);
        at = arc.to;
        break;
      }
    for (const std::string& output : outputs)
      ASSERT_EQ(instants.state(output) == '1', awaited.contains(output)) << output << instant;
  }
}

}  // namespace
}  // namespace kiva::test
