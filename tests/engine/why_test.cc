// Causes of random signals: what is outside them changes nothing, and each of them can.

#include "engine/why.h"

#include <gtest/gtest.h>

#include <random>

#include "tarn/readers/readers.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/random_module.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

class Why : public testing::Test {
 protected:
  void load(const std::string& text) {
    module = read_zuc_file(dir.write("m.zuc", text), "", "").module;
    simulation = std::make_unique<Simulation>(module);
    registers = register_rails(module);
  }
  SignalState any() { return static_cast<SignalState>(random() % 4); }

  /// Everything that an instant starts from, by the names that causes bear.
  void vary(const std::vector<Cause>& kept, unsigned one_in) {
    const auto is_free = [&](Cause::Kind kind, const std::string& name) {
      for (const Cause& cause : kept)
        if (cause.kind == kind && cause.name == name) return false;
      return random() % one_in == 0;
    };
    SimulationState state = before;
    for (size_t i = 0; i < registers.size(); ++i) {
      if (!is_free(Cause::register_, simulation->register_names()[i])) continue;
      const StatePair pair = pair_of(any());
      state.context[static_cast<size_t>(registers[i].actual.status_index)] = pair.status;
      state.context[static_cast<size_t>(registers[i].actual.value_index)] = pair.value;
    }
    simulation->restore(state);
    apply(choices, *simulation);
    for (size_t row = 0; row < choices.inputs.size(); ++row)
      if (is_free(Cause::input, simulation->input_names()[row]))
        simulation->choose_input(row, any());
    if (is_free(Cause::wire, "set")) simulation->raise_set(!choices.set);
    if (is_free(Cause::wire, "reset")) simulation->raise_reset(!choices.reset);
    simulation->step(nullptr);
  }

  TempDir dir;
  std::mt19937 random{3};
  Module* module = nullptr;
  std::unique_ptr<Simulation> simulation;
  std::vector<RegisterRails> registers;
  SimulationState before;
  Choices choices;
};

TEST_F(Why, NothingElseMattersAndNothingCanBeSpared) {
  int asked = 0;
  for (int round = 0; round < 60; ++round) {
    load(random_module(random, false, true));
    const Reasons reasons(*simulation);
    for (int i = 0; i < 3; ++i) simulation->step(nullptr);
    before = simulation->state();
    for (size_t row = 0; row < before.inputs.size(); ++row) simulation->choose_input(row, any());
    choices = choices_of(simulation->state());
    simulation->step(nullptr);
    const SimulationState after = simulation->state();
    for (SignalPlace::List list : {SignalPlace::output, SignalPlace::local, SignalPlace::register_})
      for (size_t row = 0; row < SignalNames(*simulation).names(list).size(); ++row) {
        const SignalPlace place{list, row};
        const SignalState shown = shown_state(after, place);
        if (shown == SignalState::unknown) continue;
        const std::vector<Cause> causes = reasons.causes(place, {before, choices, after});
        for (int trial = 0; trial < 100; ++trial) {
          vary(causes, 1 + trial % 3);
          ASSERT_EQ(shown_state(simulation->state(), place), shown);
        }
        for (size_t spared = 0; spared < causes.size(); ++spared) {
          std::vector<Cause> rest = causes;
          rest.erase(rest.begin() + static_cast<long>(spared));
          bool changes = false;
          for (int trial = 0; trial < 20000 && !changes; ++trial) {
            vary(rest, 1 + trial % 4);
            changes = shown_state(simulation->state(), place) != shown;
          }
          EXPECT_TRUE(changes) << causes[spared].name;
          ++asked;
        }
      }
  }
  EXPECT_GT(asked, 300);
}

TEST_F(Why, OfAFunctionTooLargeToSearch) {
  // a0 b0 + a1 b1 + ..., in the order in which its diagram doubles with each a.
  constexpr size_t pairs = 15;
  std::string a, b, rows;
  for (size_t k = 0; k < pairs; ++k) {
    a += " a" + std::to_string(k);
    b += " b" + std::to_string(k);
    rows += std::string(2 * pairs, '-') + " 1\n";
    rows[rows.size() - 4 - k] = rows[rows.size() - 4 - pairs - k] = '1';
  }
  module = read_netlist(dir.write("wide.blif", ".model wide\n.inputs" + a + b + "\n.outputs o\n" +
                                                   ".names" + a + b + " o\n" + rows + ".end\n"));
  simulation = std::make_unique<Simulation>(module);
  before = simulation->state();
  for (size_t row = 0; row < 2 * pairs; ++row) simulation->choose_input(row, SignalState::one);
  choices = choices_of(simulation->state());
  simulation->step(nullptr);
  const std::vector<Cause> causes =
      Reasons(*simulation).causes({SignalPlace::output, 0}, {before, choices, simulation->state()});
  ASSERT_EQ(causes.size(), 2u);
  EXPECT_EQ(causes[0].name.substr(1), causes[1].name.substr(1));
}

}  // namespace
}  // namespace kiva::test
