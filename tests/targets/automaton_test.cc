// Texts of boolean automata: BLIF and VHDL run in their own tools as the automaton steps, a
// module of the source language compiles to the same machine, and all texts are told to the letter.

#include <gtest/gtest.h>

#include <sstream>

#include "engine/simulation.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/targets/frame/target_rules.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/b_automaton/automata.h"
#include "tests/support/process_end.h"
#include "tests/targets/runner.h"

namespace kiva::test {
namespace {

/// The automaton as source text.
void write_source(const b_automaton& automaton, const TempDir& dir) {
  std::ostringstream text;
  Compilation::target_rules() = TargetRules::working();
  automaton.ZU_put(text, 0, "m");
  Compilation::target_rules() = TargetRules::told();
  dir.write("m.zu", text.str());
}

/// The bench of a module for an automaton's text: its reset is low, and its outputs are given where
/// the clock falls.
std::string two_edges(std::string bench) {
  const size_t moves = bench.find("        clk <= '1'; wait for 1 ns;  --");
  const std::string pulse = bench.substr(moves, bench.find("      end loop", moves) - moves);
  bench.erase(moves, pulse.size()).insert(bench.find("        check("), pulse);
  const std::string port = "rst => rst";
  return bench.replace(bench.find(port), port.size(), "reset => not rst");
}

// Its source text is proved below to be the same machine; the benches of that are run over the
// texts of the automaton.
TEST(AutomatonTools, TextsRunAsTheAutomatonSteps) {
  std::mt19937 random(8);
  for (int round = 0; round < 4; ++round) {
    const TempDir dir;
    const auto automaton = random_automaton(random, 4, 3, 3, 4);
    write_source(*automaton, dir);
    std::string stimuli;
    for (int instant = 0; instant < 40; ++instant, stimuli += '\n')
      for (int k = 0; k < automaton->nb_inputs(); ++k)
        if (random() % 2 == 0) stimuli += automaton->nom_input(k) + ' ';
    dir.write("m.stimuli", stimuli);
    for (const char* target : {"blif", "vhdl"}) {
      const std::string told =
          run_tool(std::string(KIVA_PROGRAMS "/tarn -q --bench ") + target + " m.stimuli m.zu 2>&1",
                   dir.path());
      std::ostringstream text;
      target[0] == 'b' ? automaton->BLIF_put(text, 0, "m") : automaton->VHDL_put(text, 0, "m");
      dir.write(std::string("m.") + (target[0] == 'b' ? "blif" : "vhdl"), text.str());
      if (target[0] == 'v')
        dir.write("m_bench.vhdl", two_edges(read_text(dir.file("m_bench.vhdl"))));
      const size_t at = told.find("run it: ") + 8;
      EXPECT_TRUE(run_tool(told.substr(at, told.size() - at - 1), dir.path())
                      .ends_with("40 instants agree\n"));
    }
  }
}

TEST(Automaton, ItsSourceTextCompilesToTheSameMachine) {
  std::mt19937 random(9);
  for (int round = 0; round < 6; ++round) {
    const TempDir dir;
    const auto automaton = random_automaton(random, 3, 2, 2, 2);
    write_source(*automaton, dir);
    run_tool(KIVA_PROGRAMS "/tarn -q m.zu", dir.path(), false);
    const ZucRead read = read_zuc_file(dir.file("m.zuc"), "", "");
    ASSERT_NE(read.module, nullptr) << read.problem;
    Simulation simulation(read.module);
    std::vector<int> state = initial_state(*automaton);
    for (int instant = 0; instant < 200; ++instant) {
      std::vector<int> inputs;
      for (size_t row = 0; row < 2; ++row) {
        inputs.push_back(static_cast<int>(random() % 2));
        simulation.choose_input(row, inputs.back() == 1 ? SignalState::one : SignalState::zero);
      }
      const std::vector<int> values = step(*automaton, state, inputs);
      simulation.step(nullptr);
      for (size_t row = 0; row < 2; ++row)
        ASSERT_EQ(simulation.state().shown_outputs[row] == SignalState::one,
                  outputs_of(*automaton, values)[row] == 1)
            << read_text(dir.file("m.zu"));
      state = next_state_of(*automaton, values);
    }
  }
}

/// A register, an output that another equation reads, a constant, a negation.
std::unique_ptr<b_automaton> told_automaton() {
  return make_automaton(
      {.state = {"s", "r"},
       .next_state = {"snext", "rnext"},
       .inputs = {"a", "b"},
       .outputs = {"o", "p"},
       .locals = {"l"},
       .equations =
           {{"l", "a xor s"}, {"o", "not l"}, {"p", "o and r"}, {"snext", "l"}, {"rnext", "1"}},
       .init = {0, 1}});
}

TEST(Automaton, TextsToTheLetter) {
  const auto automaton = told_automaton();
  std::ostringstream text;
  const auto put = [&](const std::string& title, auto writer) {
    std::ostringstream body, header;
    writer(body, header);
    text << "==== " << title << '\n' << body.str();
    if (!header.str().empty()) text << "---- header\n" << header.str();
  };
  using S = std::ostream&;
  const Outcome told = run_captured([&] {
    put("listing", [&](S body, S) { body << *automaton; });
    put("BAC", [&](S body, S) { automaton->BAC_put(body), body << '\n'; });
    put("BLIF", [&](S body, S) { automaton->BLIF_put(body, 0, "m"); });
    put("C", [&](S body, S header) { automaton->C_put(body, header, 0, "m"); });
    put("board", [&](S body, S) { automaton->INO_put_grafcet(body, 0, "m", {"p"}); });
    put("Esterel", [&](S body, S) { automaton->ESTEREL_put(body, 0, "m"); });
    put("LaTeX", [&](S body, S) { automaton->LATEX_put(body, 0, "m"); });
    put("document", [&](S body, S) { automaton->DOC_put(body, 0, "m"); });
    put("source", [&](S body, S) { automaton->ZU_put(body, 0, "m"); });
    put("Lustre", [&](S body, S) { automaton->LUSTRE_put(body, 0, "m"); });
    put("SystemC", [&](S body, S header) { automaton->SYSTEMC_put(body, header, 0, "m"); });
    put("VHDL", [&](S body, S) { automaton->VHDL_put(body, 1, "m"); });
    put("C#", [&](S body, S) { automaton->CSHARP_put(body, 0, "m"); });
  });
  EXPECT_EQ(told.err, "nb_var locale detecte: 1\n");
  expect_told("automaton.txt", text.str());
}

}  // namespace
}  // namespace kiva::test
