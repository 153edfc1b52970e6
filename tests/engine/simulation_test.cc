// The engine: states, choices, registers, passes, and a session that is replayed.

#include "engine/simulation.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <random>

#include "engine/code/compiled_pass.h"
#include "engine/context.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/process_end.h"
#include "tests/support/random_module.h"
#include "tests/support/setting.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

using enum SignalState;

class Engine : public testing::Test {
 protected:
  Module* module(const std::string& text) {
    const ZucRead read = read_zuc_file(dir.write("m.zuc", text), "", "");
    EXPECT_NE(read.module, nullptr) << read.problem << "\n" << text;
    return read.module;
  }
  TempDir dir;
};

TEST(SignalStates, ArePairsOfKnownEntriesOnly) {
  EXPECT_EQ(state_of(1, 0), one);
  EXPECT_EQ(state_of(0, 1), zero);
  EXPECT_EQ(state_of(1, 1), top);
  EXPECT_EQ(state_of(0, 0), bottom);
  for (int status : {-1, 0, 1, 2, 3})
    for (int value : {-1, 0, 1, 2, 3}) {
      const bool known = (status == 0 || status == 1) && (value == 0 || value == 1);
      EXPECT_EQ(state_of(status, value) == unknown, !known) << status << ' ' << value;
      if (known) {
        EXPECT_EQ(pair_of(state_of(status, value)).status, status);
      }
    }
}

// I in, O out (what I is), R keeps I for the next instant, P shows R; S shows the set wire.
const char* const keeper =
    "module: keeper 0 1\ninput: I ;\noutput: O P S ;\nlocal: R N ;\nregister: N R 1;\n"
    "connexion: SET RESET RTL;\nequation_def: 5\n0: -1:-3:-3,1\n1: 0:0:0,-1\n2: 1:0:0,-1\n"
    "3: 8:0:0,-1\n4: 12:0:0,-1\nexpressions:\n1 0 2:1,1,(0 )\n1 0 3:2,1,(1 )\n1 0 4:3,1,(8 )\n"
    "1 0 5:3,-1,(8 )\n1 0 6:4,1,(12 )\n1 0 7:4,-1,(12 )\n1 0 10:1,1,(0 )\n1 0 11:2,1,(1 )\nend:\n";

TEST_F(Engine, StartsAfterALoadWithRegistersAloneKnown) {
  Simulation simulation(module(keeper));
  const SimulationState& state = simulation.state();
  EXPECT_EQ(state.shown_outputs, (std::vector{unknown, unknown, unknown}));
  EXPECT_EQ(state.shown_registers, (std::vector{one}));
  EXPECT_EQ(state.shown_locals, (std::vector{one, unknown}));
  EXPECT_EQ(state.inputs, (std::vector{bottom}));
  EXPECT_TRUE(state.set && !state.reset);
}

TEST_F(Engine, ShowsOutputsAndLocalsBeforeTheRegistersMoveAndRegistersAfter) {
  Simulation simulation(module(keeper));
  simulation.choose_input(0, zero);
  simulation.step(nullptr);
  EXPECT_EQ(simulation.state().shown_outputs, (std::vector{zero, one, one}));
  EXPECT_EQ(simulation.state().shown_locals, (std::vector{one, zero}));
  EXPECT_EQ(simulation.state().shown_registers, (std::vector{zero}));
  // The next variable is Bottom until its equation runs again; set was raised in one instant only.
  EXPECT_EQ(simulation.state().context[10], 0);
  EXPECT_EQ(simulation.state().context[11], 0);
  EXPECT_FALSE(simulation.state().set);
  simulation.choose_input(0, top);
  simulation.step(nullptr);
  EXPECT_EQ(simulation.state().shown_outputs, (std::vector{top, zero, zero}));
  EXPECT_EQ(simulation.state().shown_registers, (std::vector{top}));
  EXPECT_EQ(simulation.state().instant, 2);
}

TEST_F(Engine, InitialiseRunsTheEquationsOverUnknownInputs) {
  Simulation simulation(module(keeper));
  simulation.choose_input(0, one);
  simulation.step(nullptr);
  const Outcome outcome = run_captured([&] { simulation.initialise(); });
  EXPECT_EQ(outcome.out, "");
  const SimulationState& state = simulation.state();
  EXPECT_EQ(state.shown_outputs, (std::vector{unknown, unknown, unknown}));
  EXPECT_EQ(state.shown_registers, (std::vector{one}));
  EXPECT_EQ(state.shown_locals, (std::vector{unknown, unknown}));
  EXPECT_EQ(state.inputs, (std::vector{bottom}));
  EXPECT_TRUE(state.set);
  EXPECT_EQ(state.instant, 0);
}

TEST_F(Engine, LeavesInputsAndOutputsBoundToDataWithoutARow) {
  // J is bound under a clock: it has no row, and no choice reaches it.
  Module* m = module(
      "module: m 0 1\ninput: I J K ;\noutput: O ;\nconnexion: S R T;\nequation_def: 2\n"
      "0: -1:-3:-3,1\n1: 4:0:0,-1\nexpressions:\n1 0 6:1,1,(4 )\n1 0 7:1,-1,(4 )\nend:\n"
      "binding: (2,3): value: 0 clock: (0,1); end: evaltable: 0: $0; end:\n"
      "data: type: method: constant: int engine_c \"1\"; end:\n");
  Simulation simulation(m);
  EXPECT_EQ(simulation.input_names(), (std::vector<std::string>{"I", "K"}));
  simulation.choose_input(1, one);  // K, whatever its place in the module's list
  simulation.step(nullptr);
  EXPECT_EQ(simulation.state().shown_outputs, (std::vector{one}));
  EXPECT_EQ(simulation.state().context[2], 0);
  EXPECT_EQ(simulation.state().context[3], 0);
}

/// The pass as the diagrams themselves tell it.
void plain_pass(Module* m, std::vector<int>& context) {
  Bddexpressionwood* wood = m->getBddWood();
  for (long index : wood->earliest_sort()) {
    const Bddexpression* e = wood->Exp_table()[index];
    context[static_cast<size_t>(index)] =
        wood->my_bdd_manager()->Bdd_eval_for_literal(e->my_bdd_exp(), context.data());
  }
}

/// Names and files; the large ones where they stand beside the tree.
std::map<std::string, std::string> circuits() {
  std::map<std::string, std::string> files;
  for (const char* name :
       {"tests/system/circuits/s27", "tests/system/circuits/planet", "tests/system/circuits/s1423",
        "../shared/circuits/b04_opt", "../shared/circuits/s5378", "../shared/circuits/s38417"}) {
    const std::string file = std::string(KIVA_SOURCE "/") + name + ".zuc";
    if (std::filesystem::exists(file)) files[name] = file;
  }
  return files;
}

/// Tables, machine code and diagrams leave the same entries; gives whether there is code.
bool same_passes(Module* m, std::mt19937& random) {
  const Simulation simulation(m), code(m);
  const bool compiled = code.compile();
  for (int pass = 0; pass < 18; ++pass) {
    std::vector<int> context(simulation.state().context.size());
    for (size_t k = 0; k < context.size(); ++k) {
      context[k] = static_cast<int>(random() % (pass < 6 ? 3 : 2));
      // Machine code is for signals that are One or Zero.
      if (pass >= 12 && k % 2 == 1) context[k] = 1 - context[k - 1];
    }
    std::vector<int> plain = context, by_code = context;
    simulation.run_equations(context.data());
    code.run_equations(by_code.data());
    plain_pass(m, plain);
    EXPECT_TRUE(context == plain) << "tables";
    EXPECT_TRUE(by_code == plain) << "machine code";
    if (testing::Test::HasFailure()) break;
  }
  return compiled;
}

TEST_F(Engine, FlatPassesGiveWhatTheDiagramsGive) {
  const auto seed = static_cast<unsigned>(setting("KIVA_SEED", std::random_device{}()));
  SCOPED_TRACE("KIVA_SEED=" + std::to_string(seed));
  std::mt19937 random(seed);
  int compiled = 0;
  for (int round = 0; round < 400; ++round) {
    compiled += same_passes(module(random_module(random, round % 3 == 0, round % 2 == 0)), random);
    ASSERT_FALSE(HasFailure()) << read_text(dir.file("m.zuc"));
  }
  EXPECT_TRUE(compiled > 50 || !code::CompiledPass::possible());
  for (const auto& [name, file] : circuits()) {
    SCOPED_TRACE(name);
    EXPECT_EQ(same_passes(module(read_text(file)), random), code::CompiledPass::possible());
  }
}

/// A run that is looked at now and then shows what one shows that is looked at always; gives
/// whether machine code ran it meanwhile.
bool same_runs(Module* m, std::mt19937& random) {
  Simulation always(m), rarely(m);
  const bool compiled = rarely.compile_instants();
  SimulationState kept = always.state();
  for (int instant = 0; instant < 40; ++instant) {
    for (size_t row = 0; row < always.input_rows().size(); ++row) {
      const auto state = static_cast<SignalState>(instant % 13 == 7 ? random() % 4 : random() % 2);
      for (Simulation* run : {&always, &rarely}) run->choose_input(row, state);
    }
    for (Simulation* run : {&always, &rarely}) {
      run->raise_reset(instant % 11 == 10);
      run->step(nullptr);
    }
    const SimulationState& state = always.state();
    for (size_t row = 0; row < state.shown_outputs.size(); ++row)
      EXPECT_EQ(rarely.shown_output(row), state.shown_outputs[row]) << instant;
    if (random() % 4 == 0) {
      EXPECT_TRUE(rarely.state() == state) << instant;
    }
    if (random() % 8 == 0) kept = state;
    if (random() % 16 == 0)
      for (Simulation* run : {&always, &rarely}) run->restore(kept);
    if (random() % 32 == 0)
      for (Simulation* run : {&always, &rarely}) run->initialise();
    if (testing::Test::HasFailure()) break;
  }
  return compiled;
}

TEST_F(Engine, InstantsThatNobodyLooksAtAreThoseThatOneSees) {
  const auto seed = static_cast<unsigned>(setting("KIVA_SEED", std::random_device{}()));
  SCOPED_TRACE("KIVA_SEED=" + std::to_string(seed));
  std::mt19937 random(seed);
  int compiled = 0;
  for (int round = 0; round < 200; ++round) {
    compiled += same_runs(module(random_module(random, false, round % 2 == 0)), random);
    ASSERT_FALSE(HasFailure()) << read_text(dir.file("m.zuc"));
  }
  EXPECT_TRUE(compiled > 20 || !code::CompiledPass::possible());
  for (const auto& [name, file] : circuits()) {
    SCOPED_TRACE(name);
    EXPECT_EQ(same_runs(module(read_text(file)), random), code::CompiledPass::possible());
  }
}

TEST_F(Engine, FlatPassesTakeDeepDiagramsWithEveryEntryUnknown) {
  // Parity of 256 inputs: two nodes a level, 2^256 paths.
  constexpr int inputs = 256;
  std::string names, nodes = "0: -1:-3:-3,1\n";
  for (int i = 0; i < inputs; ++i) names += "I" + std::to_string(i) + " ";
  for (int i = 0; i < inputs; ++i) {
    const int node = inputs - i;  // node n tests the n-th variable from the end
    const std::string below = std::to_string(node - 1);
    nodes +=
        std::to_string(node) + ": " + std::to_string(2 * i) + ":" + below + ":" + below + ",-1\n";
  }
  Module* m = module("module: parity 0 1 input: " + names + "; output: O ; connexion: S R T; " +
                     "equation_def: 257\n" + nodes + "expressions: 1 0 512:256,1,() end:\n");
  Simulation simulation(m);
  std::vector<int> context = simulation.state().context;
  simulation.run_equations(context.data());
  EXPECT_EQ(context[512], 2);
  for (int i = 0; i < inputs; ++i) context[static_cast<size_t>(2 * i)] = i % 2;
  simulation.run_equations(context.data());
  EXPECT_EQ(context[512], 1);  // an even number of zeros
}

/// What a person can do to a simulation.
struct Session {
  Simulation* simulation;
  SimulationState kept;

  void act(unsigned what) {
    const size_t row = (what >> 8) % simulation->input_rows().size();
    switch (what % 8) {
      case 0:
        simulation->initialise();
        break;
      case 1:
        simulation->load();
        break;
      case 2:
        kept = simulation->state();
        break;
      case 3:
        simulation->restore(kept);
        break;
      case 4:
        simulation->raise_set((what >> 4) % 2 == 0);
        break;
      case 5:
        simulation->raise_reset((what >> 4) % 2 == 0);
        break;
      case 6:
        simulation->type_input(row, std::to_string(what));
        break;
      default:
        simulation->choose_input(row, static_cast<SignalState>((what >> 4) % 4));
        simulation->step(nullptr);
    }
  }
};

TEST_F(Engine, ASessionEndsWhereItsReplayEnds) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  run_captured([&] {
    for (int round = 0; round < 40; ++round) {
      const std::string texts[] = {random_module(random), random_module(random)};
      std::vector<unsigned> script;
      for (int i = 0; i < 120; ++i) script.push_back(static_cast<unsigned>(random()));
      // The replay runs on modules read anew; half way both load the other module.
      SimulationState ends[2];
      for (SimulationState& end : ends) {
        for (const std::string& text : texts) {
          Simulation simulation(module(text));
          Session session{&simulation, simulation.state()};
          for (unsigned what : script) session.act(what);
          end = simulation.state();
        }
      }
      ASSERT_EQ(ends[0], ends[1]);
    }
  });
}

TEST_F(Engine, AStatePutBackContinuesAsIfNothingHadHappened) {
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    Simulation simulation(module(random_module(random)));
    const auto run = [&](unsigned pattern) {
      for (int i = 0; i < 10; ++i, pattern = pattern * 1664525u + 1013904223u) {
        for (size_t row = 0; row < simulation.input_rows().size(); ++row)
          simulation.choose_input(row, static_cast<SignalState>((pattern >> (8 + row)) % 4));
        simulation.step(nullptr);
      }
      return simulation.state();
    };
    run(static_cast<unsigned>(random()));
    const SimulationState kept = simulation.state();
    const SimulationState first = run(12345u);
    run(777u);
    simulation.restore(kept);
    ASSERT_EQ(run(12345u), first);
  }
}

}  // namespace
}  // namespace kiva::test
