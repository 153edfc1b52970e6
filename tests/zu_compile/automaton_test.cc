// Automata: what is refused and with which words, the code, and traces reasoned out by hand.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tarn/model/arena.h"
#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/run.h"
#include "tests/support/process_end.h"
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

const std::string abandoned = "\n\n   --> compilation process aborted ...\n";

TEST(Automata, TellWhyTheyAreRefused) {
  EXPECT_THAT(report("state: F final / p;", "initial-> F;"),
              StartsWith("ERROR: The FINAL state: \"F\" must not have one (or several) Moore "
                         "action!" +
                         abandoned));
  EXPECT_THAT(report("state: F final run j;", "initial-> F;"),
              StartsWith("ERROR: The FINAL state: \"F\" must not run a module!" + abandoned));
  const std::string from_final = report("state: F final; state: S;", "initial-> F;\nF [a] -> S;");
  EXPECT_THAT(from_final,
              StartsWith("ERROR: A transition beginning with the FINAL state: \"F\" had been "
                         "detected!" +
                         abandoned));
  EXPECT_THAT(from_final, HasSubstr("main.zu:7:1"));
  EXPECT_THAT(report("state: S run j;", "initial-> S; S [a] normalterm-> S;"),
              StartsWith("ERROR: TRIGGER in the Normal Terminaison transition from \"S\" is not "
                         "supported!" +
                         abandoned));
  EXPECT_THAT(report("state: S;", "initial-> S; S [a] -> S; S [b] -> S;"),
              StartsWith("ERROR: Non determinist automaton: Several possible transitions from "
                         "state \"S\" " +
                         abandoned));
  EXPECT_THAT(report("state: S;", "initial-> [a] -> S; initial-> S;"),
              StartsWith("ERROR: Non determinist automaton: Several possible Init transitions "
                         "\"\" " +
                         abandoned));
  // All states are looked at before any transition, each in name order.
  EXPECT_THAT(report("state: G final / p; state: F final run j;", "initial-> F; F -> F;"),
              HasSubstr("\"F\" must not run"));
}

/// Which no text can bring about: a priority below "other" ranks before 0.
TEST(Automata, TellOfSeveralBehaviours) {
  const Outcome outcome = run_captured([] {
    Module module("main");
    auto* a = make_kept<Signal>("a", &module, module.getBddWood());
    a->setInput();
    module.addInputSignal(a);
    auto* state = make_kept<State>("S");
    state->run = make_kept<kiva::Run>("R_0", "j");
    std::list<Transition*> transitions;
    for (int priority : {-2, 0}) {
      auto* t = make_kept<Transition>();
      t->tpe = Transition::weak;
      t->priority = priority;
      t->trigger = a;
      t->from = t->to = state;
      transitions.push_back(t);
    }
    module.addBodyStatement(
        make_kept<Automaton>("A", nullptr, Automaton::StateTable{{"S", state}}, transitions));
    module.compile();
  });
  EXPECT_EQ(outcome.exit_status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("Error: Multiple behaviors about state:\"S\" when "));
  EXPECT_THAT(outcome.err, HasSubstr("_s_a"));
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

struct Case {
  std::string states, transitions, output, stimuli, expected;
};

void check(const std::vector<Case>& cases) {
  for (const Case& c : cases)
    EXPECT_EQ(trace(automaton(c.states, c.transitions), c.output, c.stimuli), c.expected)
        << c.transitions << " over " << c.stimuli << ": " << c.output;
}

TEST(Automata, TheFirstReactionTakesAnInitialTransition) {
  const std::string states = "state: S / o; state: T / p;";
  const std::string choice = "initial-> [a] / q -> S; initial-> [not a] -> T; S [b] -> T;";
  check({
      // Its own actions now, those of its state from the next instant on.
      {states, choice, "q", "a . .", "1__"},
      {states, choice, "o", "a . .", "_11"},
      {states, choice, "p", ". . .", "_11"},
      // No transition out of a state is taken yet.
      {states, choice, "o", "a+b . b .", "_11_"},
      // The trigger is looked at in the instant of the start alone.
      {"state: S / o;", "initial-> [a] -> S;", "o", ". a . !set+a .", "____1"},
  });
}

TEST(Automata, ActionsInTheInstantOfATransition) {
  const std::string states = "state: S / o; state: T / p;";
  for (const char* arrow : {"->", "weak->", "strong->", ""}) {
    const std::string transitions = std::string("initial-> S; S [a] / q ") + arrow + " T;";
    check({{states, transitions, "o", ". . a .", "_11_"},
           {states, transitions, "q", ". a . a", "_1__"},
           {states, transitions, "p", ". . a . .", "___11"}});
  }
}

TEST(Automata, Priorities) {
  const std::string states = "state: S; state: T / o; state: U / p; state: V / q;";
  const std::string ranked =
      "initial-> S; S other [] -> V; S 2 [b] -> U; S 1 [a] -> T; T -> S; U -> S; V -> S;";
  check({
      {states, ranked, "o", ". a+b . . b .", "__1___"},
      {states, ranked, "p", ". a+b . b .", "____1"},
      {states, ranked, "q", ". a+b . . .", "____1"},
      // Strong before weak, whatever their numbers.
      {states, "initial-> S; S 1 [a] weak-> T; S 5 [a] -> U;", "p", ". a .", "__1"},
      {states, "initial-> S; S 1 [a] weak-> T; S 5 [a] -> U;", "o", ". a .", "___"},
  });
}

TEST(Automata, StatesRunModules) {
  const auto text = [](const std::string& run, const std::string& transitions) {
    return "module j: Input: a; Output: o; " + run + " end\n" +
           "module main: Input: a, b; Output: o, p; automaton state: S run j; state: T / p; "
           "transition: initial-> S; " +
           transitions + " end";
  };
  const std::string steady = "loop { emit o >> pause }";
  // The run starts with the transition into its state.
  EXPECT_EQ(trace(text(steady, "S [b] -> T; T [b] -> S;"), "o", ". . b . b ."), "11__11");
  EXPECT_EQ(trace(text(steady, "S [b] weak-> T;"), "o", ". . b ."), "111_");
  const std::string once = "wait a >> emit o";
  EXPECT_EQ(trace(text(once, "S normalterm-> T;"), "p", ". . a . ."), "___11");
  EXPECT_EQ(trace(text(once, "S normalterm-> T; S [b] -> S;"), "p", ". a+b . a ."), "_____");
  // An end in the first instant goes by unseen.
  EXPECT_EQ(trace(text("emit o", "S normalterm-> T;"), "p", ". . ."), "___");
  // A transition into the own state starts the run and kills it.
  EXPECT_EQ(trace(text(steady, "S [b] weak-> S;"), "o", ". . b . ."), "111__");
  EXPECT_EQ(trace(text(steady, "S [b] -> S;"), "o", ". . b . ."), "11___");
}

TEST(Automata, EndInAFinalState) {
  const std::string states = "state: S / o; state: F final;";
  const std::string text = automaton(states, "initial-> S; S [a] / p -> F;");
  EXPECT_EQ(trace(text, "RTL", ". a . ."), "0100");
  EXPECT_EQ(trace(text, "o", ". a . . !set .  ."), "_1___11");
  // The next start may come at once.
  EXPECT_EQ(trace(text, "o", ". a !set . ."), "_1_11");
  // A transition that another outranks does not end it.
  const std::string outranked = automaton(states, "initial-> S; S [a] -> S; S [a or b] weak-> F;");
  EXPECT_EQ(trace(outranked, "RTL", ". a b . ."), "00100");
  EXPECT_EQ(trace(outranked, "RTL", ". a b . .", Rules::classic()), "01100");
}

TEST(Automata, AreKilledByAReset) {
  const std::string text = automaton("state: S / o;", "initial-> S;");
  EXPECT_EQ(trace(text, "o", ". . !reset . !set ."), "_11__1");
  EXPECT_EQ(trace(text, "o", "!reset . ."), "___");
  EXPECT_EQ(trace(text, "o", "!reset . .", Rules::classic()), "_11");
  // Before the start nothing moves, whatever the rules.
  for (const Rules& rules : {Rules::classic(), Rules::sound()}) {
    const Compiled c(text, rules);
    Instants instants(c);
    for (int i = 0; i < 3; ++i) {
      instants.step({});
      EXPECT_EQ(instants.state("o"), '_');
    }
  }
}

TEST(MealyMachines, EveryOperator) {
  const auto machine = [](const std::string& right) {
    return "module main: Input: a, b; Output: o; Mealy Machine o = " + right + "; end";
  };
  const std::map<std::string, std::string> tables{
      {"a and b", "0001"}, {"a or b", "0111"},      {"a nand b", "1110"},
      {"a nor b", "1000"}, {"a xor b", "0110"},     {"not a", "1010"},
      {"abs a", "1010"},   {"1", "1111"},           {"0", "0000"},
      {"(a)", "0101"},     {"not a and b", "0010"}, {"a or not a and b", "0111"}};
  for (const auto& [right, table] : tables)
    EXPECT_EQ(trace(machine(right), "o", ". a b a+b"), table) << right;
}

TEST(MealyMachines, RegistersAndTheirEnd) {
  const std::string text =
      "module main: Input: a; Output: o, p;\n"
      "Mealy Machine Register: r: 0: n, t: 1: u;\n"
      "n = 0; n = a; u = r; o = r; p = t; end";
  EXPECT_EQ(trace(text, "o", "a . a a ."), "01011") << "the later equation of n counts";
  EXPECT_EQ(trace(text, "p", "a . a a ."), "10101");
  EXPECT_EQ(trace(text, "RTL", ". . .").find('1'), std::string::npos);
  // A reset lets the instant run; then the registers hold zero.
  EXPECT_EQ(trace(text, "p", ". !reset . . !set ."), "10__00");
  EXPECT_EQ(trace(text, "o", "a !reset+a . a", Rules::classic()), "0100");
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

}  // namespace
}  // namespace kiva::test
