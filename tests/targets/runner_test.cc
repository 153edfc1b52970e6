// The check of all targets: each text of each example, circuit, awkward module and random program
// shows what the simulator shows. Runners stand in run_*.cc.

#include "tests/targets/runner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <sstream>

#include "tarn/targets/targets.h"

namespace kiva::test {

std::vector<Runner>& runners() {
  static std::vector<Runner> all;
  return all;
}

std::function<std::vector<Seen>(const Cases&)> one_by_one(
    std::function<Seen(const TargetCase&)> run) {
  return [run](const Cases& cases) {
    std::vector<Seen> seen;
    for (const TargetCase* test : cases) {
      SCOPED_TRACE(test->name());
      seen.push_back(run(*test));
    }
    return seen;
  };
}

namespace {

std::vector<Runner> chosen(bool tools) {
  std::vector<Runner> found;
  for (const Runner& runner : runners())
    if (runner.tools == tools) found.push_back(runner);
  return found;
}

void compare(const Runner& runner, const TargetCase& test, Seen seen) {
  SCOPED_TRACE(test.name() + ", --" + runner.option);
  const size_t count = test.instants().size();
  ASSERT_TRUE(!seen.rows.empty() && seen.rows.size() % count == 0) << seen.rows.size() << " rows";
  seen.values.resize(seen.rows.size(), NAN);
  for (size_t i = 0; i < seen.rows.size(); ++i) {
    const TargetCase::Instant& instant = test.instants()[i % count];
    const std::vector<int>& row = seen.rows[i];
    ASSERT_EQ(test.statuses_first(row), test.output_bits(instant)) << "instant " << i + 1;
    if (instant.values.empty() || instant.outputs.back() != SignalState::one) continue;
    if (instant.values.back() != "--" && !std::isnan(seen.values[i])) {
      EXPECT_NEAR(seen.values[i], std::stod(instant.values.back()), 0.001) << "instant " << i + 1;
    }
  }
}

void check(const Runner& runner, const Cases& cases) {
  if (runner.prove) return runner.prove(cases);
  const std::vector<Seen> seen = runner.run(cases);
  ASSERT_EQ(seen.size(), cases.size());
  for (size_t i = 0; i < cases.size(); ++i) compare(runner, *cases[i], seen[i]);
}

void check_cases(const Runner& runner) {
  const auto all = all_cases(runner.open);
  Cases cases;
  for (const auto& test : all) cases.push_back(test.get());
  check(runner, cases);
}

void check_random(const Runner& runner) {
  for_random_cases(runner.random_programs, [&](const TargetCase& test) { check(runner, {&test}); });
}

std::string name_of(const testing::TestParamInfo<Runner>& info) {
  std::string name = info.param.option;
  std::erase(name, '-');
  return name;
}

class TargetTexts : public testing::TestWithParam<Runner> {};
class TargetTools : public testing::TestWithParam<Runner> {};

TEST_P(TargetTexts, RunsAsTheSimulatorDoes) {
  check_cases(GetParam());
}
TEST_P(TargetTexts, RandomProgramsRunAsTheSimulatorDoes) {
  check_random(GetParam());
}
TEST_P(TargetTools, RunsAsTheSimulatorDoes) {
  check_cases(GetParam());
}
TEST_P(TargetTools, RandomProgramsRunAsTheSimulatorDoes) {
  check_random(GetParam());
}
INSTANTIATE_TEST_SUITE_P(, TargetTexts, testing::ValuesIn(chosen(false)), name_of);
INSTANTIATE_TEST_SUITE_P(, TargetTools, testing::ValuesIn(chosen(true)), name_of);

TEST(Targets, EachRowIsRunOrIsForPeople) {
  // The explicit automaton wants modules of its own; gal is an interface without a body.
  std::set<std::string> known{"gal", "explicit", "doc", "latex", "debug"};
  for (const Runner& runner : runners()) known.insert(runner.option);
  for (const Target& target : targets()) EXPECT_EQ(known.count(target.option), 1u) << target.option;
  EXPECT_EQ(known.size(), targets().size());
}

}  // namespace
}  // namespace kiva::test
