// Time: what is shown at an instant of a branch is a function of the two.

#include "engine/recording.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "engine/session_file.h"
#include "engine/stimuli.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/random_module.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

/// A person in a hurry: goes, comes back, jumps, types, raises wires, begins anew.
class Person {
 public:
  Person(Module* module, unsigned seed) : simulation_(module), recording_(&simulation_) {
    random_.seed(seed);
    note();
  }
  void act() {
    const Recording::Position here = recording_.position();
    const Recording::BranchInfo branch = recording_.branch(here.branch);
    switch (random_() % 16) {
      case 0:
        recording_.back();
        break;
      case 1:
        recording_.forward();
        break;
      case 2:
        recording_.to({random_() % recording_.branches(), static_cast<long>(random_() % 40)});
        break;
      case 3:
        recording_.init();
        break;
      case 4:
        recording_.to({here.branch, branch.last});
        break;
      case 5: {
        // The same choices at an earlier instant lead into what stands there.
        if (here.instant == branch.last) break;
        const size_t known = recording_.branches();
        apply(recording_.choices_at({here.branch, here.instant + 1}), simulation_);
        recording_.go(nullptr);
        EXPECT_EQ(recording_.branches(), known);
        EXPECT_EQ(recording_.position(), (Recording::Position{here.branch, here.instant + 1}));
        break;
      }
      default:
        choose();
        recording_.go(nullptr);
    }
    note();
  }
  /// All that was ever shown, shown again.
  void look_back() {
    for (const auto& [at, state] : seen_)
      ASSERT_EQ(recording_.state_at({at.first, at.second}), state) << at.first << ' ' << at.second;
  }
  Recording& recording() { return recording_; }

 private:
  void choose() {
    for (size_t row = 0; row < simulation_.input_rows().size(); ++row) {
      if (random_() % 2 != 0) continue;
      const auto state = static_cast<SignalState>(random_() % 4);
      simulation_.choose_input(row, state);
      simulation_.type_input(row, state == SignalState::one ? std::to_string(random_() % 3) : "--");
    }
    simulation_.raise_set(random_() % 8 == 0);
    simulation_.raise_reset(random_() % 8 == 0);
  }
  void note() {
    const Recording::Position at = recording_.position();
    const auto [place, is_new] = seen_.try_emplace({at.branch, at.instant}, simulation_.state());
    ASSERT_EQ(simulation_.state(), place->second) << at.branch << ' ' << at.instant;
    ASSERT_EQ(simulation_.state().instant, at.instant);
  }

  Simulation simulation_;
  Recording recording_;
  std::mt19937 random_;
  std::map<std::pair<size_t, long>, SimulationState> seen_;
};

TEST(Recordings, ShowAStateThatThePositionAloneDecides) {
  TempDir dir;
  std::mt19937 random(11);
  for (int round = 0; round < 60; ++round) {
    // Wrong dates: what an equation reads may be of the instant before.
    const std::string file = dir.write("m.zuc", random_module(random, round % 4 == 0));
    Person person(read_zuc_file(file, "", "").module, random());
    for (int i = 0; i < 300; ++i) {
      person.act();
      if (testing::Test::HasFatalFailure()) return;
    }
    person.look_back();
    if (testing::Test::HasFatalFailure()) return;

    // The same person's session, saved and opened.
    Simulation other(person.recording().simulation().module());
    Recording opened(&other);
    Marks marks;
    const std::string text = session_text(person.recording(), {{{0, 0}, "the \"start\""}});
    ASSERT_EQ(open_session(text, opened, nullptr, marks), "");
    ASSERT_EQ(session_text(opened, marks), text);
    ASSERT_EQ(other.state(), person.recording().state_at(opened.position()));
  }
}

TEST(Recordings, HoldManyInstantsAndStopWhereTold) {
  TempDir dir;
  std::mt19937 random(5);
  Simulation simulation(read_zuc_file(dir.write("m.zuc", random_module(random)), "", "").module);
  Recording recording(&simulation);
  const auto choose = [&] {
    const long instant = simulation.state().instant;
    for (size_t row = 0; row < simulation.input_rows().size(); ++row)
      simulation.choose_input(row, static_cast<SignalState>(instant < 400 ? random() % 2 : 0));
    simulation.raise_set(instant == 0 || random() % 8 == 0);
  };
  std::vector<SimulationState> shown{simulation.state()};
  const auto keep = [&](const SimulationState& state) {
    shown.push_back(state);
    return state.instant == 1000;
  };
  EXPECT_EQ(recording.run(5000, nullptr, choose, keep, nullptr), Recording::Stopped::condition);
  for (long instant : {1000L, 0L, 255L, 256L, 257L, 511L, 512L, 513L, 1L, 999L, 998L})
    EXPECT_EQ(recording.state_at({0, instant}), shown[static_cast<size_t>(instant)]) << instant;
  const SignalPlace input{SignalPlace::input, 0};
  for (const long instant : {1L, 300L, 999L, 1000L}) {
    long from = instant;
    const auto at = [&](long n) { return shown_state(shown[static_cast<size_t>(n)], input); };
    while (from > 0 && at(from - 1) == at(instant)) --from;
    EXPECT_EQ(recording.since(input, {0, instant}, 2000), from) << instant;
  }
  EXPECT_EQ(recording.since(input, {0, 1000}, 300), -1);
  EXPECT_FALSE(recording.to({0, 1001}));
  EXPECT_FALSE(recording.to({0, -1}));
  EXPECT_FALSE(recording.forward());
  const std::atomic<bool> stop = true;
  EXPECT_EQ(recording.run(5, nullptr, choose, nullptr, &stop), Recording::Stopped::asked);
  EXPECT_EQ(recording.position().instant, 1000);

  // Its stimuli are a run of their own.
  std::istringstream text(stimuli_text(recording));
  StimuliReader reader(text, simulation);
  simulation.load();
  while (const auto stimulus = reader.next()) {
    apply(*stimulus, simulation);
    simulation.step(nullptr);
    ASSERT_EQ(simulation.state(), shown[static_cast<size_t>(simulation.state().instant)]);
  }
  EXPECT_EQ(simulation.state().instant, 1000);
}

}  // namespace
}  // namespace kiva::test
