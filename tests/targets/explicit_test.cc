// The explicit automaton: its transition function, compiled and run, gives the results that the
// simulator's outputs and rtl wire amount to.

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/targets/targets.h"
#include "tests/support/process_end.h"
#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

/// Starts, succeeds or fails, each of them also as its last act.
constexpr const char* mission = R"(module mission:
Input: go, done, fail;
Output: start, success, failure;
wait go >>
{ weak abort { { emit start >> wait done >> emit success } || { wait 2 fail >> emit failure } }
  when done } >>
wait fail >>
present done emit success else present go emit start else emit failure
end
)";

int result_of(const Simulation& simulation) {
  Module& module = *simulation.module();
  const long rtl = module.getRtl()->getBddStatusId(&module, module.getBddWood());
  if (simulation.state().context[static_cast<size_t>(rtl)] != 1) return 0;
  for (size_t i = 0; i < 3; ++i)
    if (simulation.state().shown_outputs[i] == SignalState::one) return static_cast<int>(i) + 1;
  return 0;
}

TEST(ExplicitTools, RunsAsTheSimulatorDoes) {
  const TargetCase test("mission.zu", mission, "", "--keep-rtl");
  EXPECT_EQ(test.write("--explicit"), "");
  const std::string text = read_text(test.file("mission.sce"));
  const std::string open = "Transition @\n";
  const size_t start = text.find(open) + open.size();

  Simulation simulation(test.module());
  std::mt19937 random(3);
  std::string calls, want;
  std::set<int> results;
  for (int run = 0; run < 30; ++run) {
    simulation.load();
    calls += "  state= 0;\n";
    for (int instant = 0; instant < 10; ++instant) {
      std::string inputs;
      for (size_t i = 0; i < 3; ++i) {
        const bool present = random() % 3 == 0;
        simulation.choose_input(i, present ? SignalState::one : SignalState::zero);
        if (present) inputs += (inputs.empty() ? "" : ",") + std::to_string(i);
      }
      simulation.step(nullptr);
      calls += "  step({" + inputs + "});\n";
      want += std::to_string(result_of(simulation));
      results.insert(result_of(simulation));
    }
  }
  EXPECT_EQ(results.size(), 4u);
  test.add_file("run.cc",
                "#include <cstdio>\n#include <set>\nenum { CONTINUE, START, SUCCES, FAILURE };\n"
                "static unsigned state;\n"
                "static unsigned next(const std::set<int>& inputset, int& out) {\n  bool _c[" +
                    std::to_string(test.module()->getBddWood()->Nb_bdd_vars()) + "];\n" +
                    text.substr(start, text.find("\n@", start) - start) +
                    "\n}\nstatic void step(const std::set<int>& inputset) {\n  int out;\n"
                    "  state= next(inputset, out);\n  std::putchar('0' + out);\n}\n"
                    "int main() {\n" +
                    calls + "}\n");
  const auto folder = test.folder();
  EXPECT_EQ(run_tool("g++ -Wall -Wextra -o run run.cc && ./run", folder), want);
}

TEST(Explicit, StatesAndTransitions) {
  const TargetCase test("mission.zu", mission, "", "--keep-rtl");
  Module& module = *test.module();
  std::ostringstream out;
  const Outcome outcome = run_captured([&] { module.WRENCC_put(out, 0); });
  expect_told("mission.sce", out.str());
  EXPECT_TRUE(
      outcome.err.starts_with("stateId= 0nb transitions: 1\nfounding about transition 0: \n"))
      << outcome.err;

  // The transitions of the first state that waits, against each input.
  bddpp_manager& man = *module.getBddWood()->my_bdd_manager();
  std::vector<bdd> inputs;
  for (Signal* input : module.getInputSignalList())
    inputs.push_back(input->getBddStatus(&module, module.getBddWood()));
  std::vector<bdd> found(512);
  bdd state = man.Bdd_one();
  for (const regclass* reg : module.getRegisterList()) {
    const bdd v = reg->actual_var()->getBddStatus(&module, module.getBddWood());
    state = man.Bdd_and(state, reg->is_initialy_true() != 0 ? v : man.Bdd_not(v));
  }
  for (int i = 0; i < 2; ++i)  // go
    state = module.next_state(state, man.Minterm(1, 3, inputs.data()));
  const int count = module.real_possible_transitions(state, man.Bdd_one(), found.data());
  EXPECT_GE(count, 3);
  for (int m = 0; m < 8; ++m) {
    const bdd minterm = man.Minterm(m, 3, inputs.data());
    int holds = 0;
    for (int t = 0; t < count; ++t) {
      if (man.Bdd_imply(minterm, found[static_cast<size_t>(2 * t)]) == 0) continue;
      ++holds;
      EXPECT_NE(
          man.Bdd_equiv(found[static_cast<size_t>(2 * t + 1)], module.next_state(state, minterm)),
          0);
    }
    EXPECT_EQ(holds, 1);
  }
}

/// A ring of registers with one token: as many states as registers.
Module* ring(size_t size) {
  Module* module = make_kept<Module>("ring");
  Bddexpressionwood* wood = module->getBddWood();
  std::vector<Signal*> places;
  for (size_t i = 0; i < size; ++i)
    places.push_back(make_kept<Signal>("r" + std::to_string(i), module, wood));
  for (size_t i = 0; i < size; ++i)
    module->addRegisterSignal(places[i], places[(i + size - 1) % size], i == 0);
  for (const char* wire : {"S", "R", "T"}) {
    Signal* signal = make_kept<Signal>(wire, module, wood, true);
    wire[0] == 'S'   ? module->setSet(signal)
    : wire[0] == 'R' ? module->setReset(signal)
                     : module->setRtl(signal);
  }
  module->setFinalised(1);
  return module;
}

TEST(Explicit, SaysWhatItNeeds) {
  for (const auto& [size, reason] :
       {std::pair<size_t, const char*>{256, "TOO MANY STATES DETECTED! aborted ...\n"},
        {255, "Bad Number of outputs! Aborted ...\n"}}) {
    Module* module = ring(size);
    std::ostringstream out;
    const Outcome outcome = run_captured([&] { module->WRENCC_put(out, 0); });
    EXPECT_TRUE(outcome.ended);
    EXPECT_TRUE(outcome.err.ends_with(reason));
  }
  Compilation::target_rules() = TargetRules::working();
  std::ostringstream out;
  EXPECT_THROW(ring(2)->WRENCC_put(out, 0), IllegalOperationException);
  EXPECT_THROW(named_case("toggle.zuc").module()->WRENCC_put(out, 0), IllegalOperationException);
  Compilation::target_rules() = TargetRules::told();
  EXPECT_EQ(out.str(), "");
}

}  // namespace
}  // namespace kiva::test
