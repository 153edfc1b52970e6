// Every engine against a walk over all states and inputs by the simulator.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <queue>
#include <random>
#include <set>

#include "proof/campaign/campaign.h"
#include "proof/campaign/random_runs.h"
#include "proof/correspondence.h"
#include "proof/prover.h"
#include "proof/question.h"
#include "proof/reduction.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/random_module.h"
#include "tests/support/setting.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

using namespace proof;

/// Two signals, each perhaps negated, the second perhaps of the instant before.
struct Expression {
  std::string name[2];
  SignalPlace place[2];
  bool negated[2];
  bool before;
  int op;  ///< and, or, xor

  static Expression random(std::mt19937& random, const SignalNames& names) {
    Expression e{};
    for (int k = 0; k < 2; ++k) {
      std::vector<std::string> all;
      for (auto list :
           {SignalPlace::input, SignalPlace::output, SignalPlace::local, SignalPlace::register_})
        for (const std::string& name : names.names(list)) all.push_back(name);
      e.name[k] = all[random() % all.size()];
      EXPECT_TRUE(names.find(e.name[k], e.place[k]));
      e.negated[k] = random() % 2 == 0;
    }
    e.before = random() % 2 == 0;
    e.op = static_cast<int>(random() % 3);
    return e;
  }
  std::string text() const {
    const auto side = [&](int k) {
      return (negated[k] ? "not " : "") + name[k] + (k == 1 && before ? "'" : "");
    };
    static const char* const ops[] = {" and ", " or ", " xor "};
    return side(0) + ops[op] + side(1);
  }
  bool holds(const SimulationState& state, bool second_before) const {
    const bool a = present(state, 0) != negated[0];
    const bool b = (before ? second_before : present(state, 1)) != negated[1];
    return op == 0 ? a && b : op == 1 ? a || b : a != b;
  }
  bool present(const SimulationState& state, int k) const {
    return shown_state(state, place[k]) == SignalState::one;
  }
};

/// The number of the first instant in which the expression can hold while `assumed` always has; 0
/// for none.
size_t walked(Simulation& simulation, const Expression& e, const Expression* assumed,
              bool with_reset) {
  struct Node {
    SimulationState state;
    bool before, assumed_before;
    size_t instant;
  };
  simulation.load();
  std::queue<Node> open;
  std::map<std::tuple<std::vector<int>, bool, bool, bool>, bool> seen;
  open.push({simulation.state(), false, false, 0});
  const std::vector<RegisterRails> registers = register_rails(simulation.module());
  const size_t rows = simulation.input_rows().size();
  while (!open.empty()) {
    const Node node = open.front();
    open.pop();
    for (unsigned inputs = 0; inputs < 1U << (rows + (with_reset ? 1 : 0)); ++inputs) {
      simulation.restore(node.state);
      for (size_t row = 0; row < rows; ++row)
        simulation.choose_input(row,
                                (inputs >> row & 1) != 0 ? SignalState::one : SignalState::zero);
      simulation.raise_reset((inputs >> rows & 1) != 0);
      simulation.step(nullptr);
      const SimulationState& now = simulation.state();
      if (assumed != nullptr && !assumed->holds(now, node.assumed_before)) continue;
      if (e.holds(now, node.before)) return node.instant + 1;
      std::vector<int> held;
      for (const RegisterRails& reg : registers)
        for (long index : {reg.actual.status_index, reg.actual.value_index})
          held.push_back(now.context[static_cast<size_t>(index)]);
      const bool assumed_now = assumed != nullptr && assumed->present(now, 1);
      if (seen.emplace(std::tuple(held, e.present(now, 1), assumed_now, false), true).second)
        open.push({now, e.present(now, 1), assumed_now, node.instant + 1});
    }
  }
  return 0;
}

/// All states and steps of a module, by the simulator.
struct Explored {
  struct State {
    SimulationState state;
    size_t before;                                                   ///< instants to it
    std::vector<std::pair<std::vector<SignalState>, size_t>> steps;  ///< outputs, and where to
  };
  std::vector<State> states;  ///< the start first, once more where it is reached again
  size_t registers = 0;       ///< their states
  std::set<std::pair<size_t, bool>> shown;  ///< by row of outputs: present, not present

  explicit Explored(Simulation& simulation) {
    const std::vector<RegisterRails> rails = register_rails(simulation.module());
    std::map<std::vector<int>, size_t> known;
    const auto held = [&](const SimulationState& state) {
      std::vector<int> held;
      for (const RegisterRails& reg : rails)
        for (long index : {reg.actual.status_index, reg.actual.value_index})
          held.push_back(state.context[static_cast<size_t>(index)]);
      return held;
    };
    simulation.load();
    states.push_back({simulation.state(), 0, {}});
    std::set<std::vector<int>> distinct{held(simulation.state())};
    const size_t rows = simulation.input_rows().size();
    for (size_t at = 0; at < states.size(); ++at)
      for (unsigned inputs = 0; inputs < 1U << rows; ++inputs) {
        simulation.restore(states[at].state);
        for (size_t row = 0; row < rows; ++row)
          simulation.choose_input(row,
                                  (inputs >> row & 1) != 0 ? SignalState::one : SignalState::zero);
        simulation.step(nullptr);
        const SimulationState& now = simulation.state();
        const auto [to, fresh] = known.emplace(held(now), states.size());
        if (fresh) states.push_back({now, states[at].before + 1, {}});
        distinct.insert(to->first);
        states[at].steps.emplace_back(now.shown_outputs, to->second);
        for (size_t row = 0; row < now.shown_outputs.size(); ++row) {
          const SignalState state = now.shown_outputs[row];
          if (state == SignalState::one) shown.emplace(row, true);
          if (state == SignalState::zero || state == SignalState::bottom) shown.emplace(row, false);
        }
      }
    registers = distinct.size();
  }

  /// Instants to the nearest state from which on all outputs stay as they are; -1 for none.
  long dead() const {
    long nearest = -1;
    for (size_t from = 0; from < states.size(); ++from) {
      std::set<std::vector<SignalState>> outputs;
      std::set<size_t> met{from};
      std::vector<size_t> open{from};
      while (!open.empty()) {
        const size_t at = open.back();
        open.pop_back();
        for (const auto& [seen, to] : states[at].steps) {
          outputs.insert(seen);
          if (met.insert(to).second) open.push_back(to);
        }
      }
      const long before = static_cast<long>(states[from].before);
      if (outputs.size() == 1 && (nearest < 0 || before < nearest)) nearest = before;
    }
    return nearest;
  }
};

/// An engine alone until it answers or has no more to do.
Answer alone(Engine& engine, double seconds = 60) {
  return engine.work(Stop::after(seconds));
}

class Engines : public testing::Test {
 protected:
  std::unique_ptr<Simulation> simulation(const std::string& text) {
    const ZucRead read = read_zuc_file(dir.write("m.zuc", text), "", "");
    EXPECT_NE(read.module, nullptr) << read.problem;
    return std::make_unique<Simulation>(read.module);
  }
  static void judge(const Machine& machine, const Answer& answer, size_t first) {
    if (first == 0) {
      ASSERT_EQ(answer.verdict, Verdict::holds) << answer.engine;
      if (answer.invariant) {
        EXPECT_TRUE(is_invariant(machine, *answer.invariant)) << answer.engine;
      }
      return;
    }
    ASSERT_EQ(answer.verdict, Verdict::fails) << answer.engine;
    EXPECT_EQ(first_bad(machine, answer.run), answer.run.size()) << answer.engine;
    if (answer.shortest) {
      EXPECT_EQ(answer.run.size(), first) << answer.engine;
    }
  }
  /// Each engine alone, on the machine and what is left of it; gives how often induction answered.
  static int judge_each(const Machine& machine, const Reduction& reduction, size_t first) {
    int inductions = 0;
    Correspondence correspondence(machine);
    EXPECT_TRUE(correspondence.find(Stop::after(60)));
    const Machine merged = correspondence.merged();
    for (const Machine* m : {&machine, &reduction.machine(), &merged}) {
      std::vector<std::unique_ptr<Engine>> engines;
      for (auto make : {frames_search, state_walk}) engines.push_back(make(*m));
      if (first != 0) engines.push_back(bounded_search(*m));
      for (const auto& engine : engines) {
        Answer answer = alone(*engine);
        judge(*m, answer, first);
        if (m == &reduction.machine()) judge(machine, reduction.lifted(answer), first);
      }
      // These two may never end.
      for (auto make : {random_search, induction}) {
        const Answer tried = alone(*make(*m), 0.02);
        inductions += tried.verdict == Verdict::holds ? 1 : 0;
        if (tried.verdict != Verdict::unknown) judge(*m, tried, first);
      }
    }
    return inductions;
  }
  TempDir dir;
};

TEST_F(Engines, AnswerWhatAWalkByTheSimulatorAnswers) {
  const auto seed = static_cast<unsigned>(setting("KIVA_SEED", 17));
  SCOPED_TRACE("KIVA_SEED=" + std::to_string(seed));
  std::mt19937 random(seed);
  int held = 0, failed = 0, late = 0, inductions = 0;
  for (int round = 0; round < 150; ++round) {
    const auto module = simulation(random_module(random, false, true));
    const SignalNames names(*module);
    const bool with_reset = round % 4 == 3;
    const Expression e = Expression::random(random, names);
    const Expression assumed = Expression::random(random, names);
    const bool assumes = round % 3 == 2;
    const size_t first = walked(*module, e, assumes ? &assumed : nullptr, with_reset);
    (first == 0 ? held : failed) += 1;
    late += first > 2 ? 1 : 0;
    SCOPED_TRACE(e.text() + (assumes ? " assuming " + assumed.text() : ""));
    Question question(*module, with_reset);
    if (assumes) question.assume(assumed.text());
    const Property property{Property::never, e.text()};
    const Machine machine = question.machine(property);
    const Reduction reduction(machine);
    inductions += judge_each(machine, reduction, first);
    const Answer answer = prove(machine, {});
    judge(machine, answer, first);
    EXPECT_TRUE(answer.shortest);
    if (first != 0) {
      EXPECT_NE(question.shown(property, answer.run), "");
    }
    if (HasFailure()) break;
  }
  EXPECT_GT(held, 5);
  EXPECT_GT(failed, 20);
  EXPECT_GT(late, 0);
  EXPECT_GT(inductions, 5);
}

TEST_F(Engines, SurveysTellWhatAWalkTells) {
  std::mt19937 random(static_cast<unsigned>(setting("KIVA_SEED", 29)));
  int never = 0, dead = 0;
  size_t most = 0;
  for (int round = 0; round < 150; ++round) {
    const auto module = simulation(random_module(random, false, true));
    CampaignMachine question(*module, false);
    question.cover_signals({}, false);
    question.build();
    const Survey found = survey(question.survey(), {});
    const Explored all(*module);
    EXPECT_TRUE(found.all_states);
    EXPECT_EQ(found.states, std::to_string(all.registers));
    size_t goal = 2 * module->input_rows().size();  // they are always reached
    for (size_t row = 0; row < module->output_names().size(); ++row)
      for (bool present : {true, false}) {
        const bool reached = all.shown.contains({row, present});
        EXPECT_EQ(found.goals[goal++] == Survey::Goal::reached, reached) << row << present;
        never += reached ? 0 : 1;
      }
    EXPECT_EQ(found.dead ? static_cast<long>(found.dead->size()) : -1, all.dead());
    dead += found.dead && !found.dead->empty() ? 1 : 0;
    most = std::max(most, all.registers);
    if (HasFailure()) break;
  }
  EXPECT_GT(never, 20);
  EXPECT_GT(dead, 5);
  EXPECT_GT(most, 8u);
}

/// What runs of the campaign's source show when the simulator makes them one by one.
class ByHand {
 public:
  ByHand(Simulation& simulation, const RunSource& source, size_t inputs)
      : simulation_(simulation), source_(source), inputs_(inputs) {}

  CampaignCounts counts(const Expression& never, const Expression& assumed, size_t goals) {
    CampaignCounts counts;
    counts.reached.resize(goals);
    counts.failed.resize(3);
    for (std::uint64_t n = 0; n < source_.runs(); ++n) {
      std::vector<bool> reached(goals, false);
      size_t failed = 0, instant = 0;
      bool never_before = false, assumed_before = false;
      simulation_.load();
      for (const std::vector<bool>& bits : source_.run(n, 1000, inputs_)) {
        ++instant;
        for (size_t row = 0; row < bits.size(); ++row)
          simulation_.choose_input(row, bits[row] ? SignalState::one : SignalState::zero);
        simulation_.step(nullptr);
        const SimulationState& now = simulation_.state();
        if (!assumed.holds(now, assumed_before)) break;
        see(now, reached);
        if (failed == 0 && never.holds(now, never_before)) failed = instant;
        never_before = never.present(now, 1);
        assumed_before = assumed.present(now, 1);
      }
      for (size_t goal = 0; goal < goals; ++goal) counts.reached[goal] += reached[goal];
      if (failed != 0) counts.failed[0].add({1, n, failed});
    }
    return counts;
  }

 private:
  void see(const SimulationState& now, std::vector<bool>& reached) const {
    size_t goal = 0;
    for (const auto* states : {&now.inputs, &now.shown_outputs, &now.shown_registers})
      for (SignalState state : *states) {
        if (state == SignalState::one) reached[goal] = true;
        if (state == SignalState::zero || state == SignalState::bottom) reached[goal + 1] = true;
        goal += 2;
      }
  }
  Simulation& simulation_;
  const RunSource& source_;
  size_t inputs_;
};

TEST_F(Engines, CampaignsCountWhatTheSimulatorShows) {
  std::mt19937 random(static_cast<unsigned>(setting("KIVA_SEED", 23)));
  std::uint64_t failures = 0;
  for (int round = 0; round < 40; ++round) {
    const auto module = simulation(random_module(random, false, true));
    const SignalNames names(*module);
    const Expression never = Expression::random(random, names);
    const Expression assumed = Expression::random(random, names);
    SCOPED_TRACE(never.text() + " assuming " + assumed.text());
    CampaignMachine question(*module, false);
    question.assume(assumed.text());
    question.check({Property::never, never.text()});
    question.cover_signals({}, true);
    question.build();
    std::vector<double> chances(question.inputs());
    for (double& chance : chances) chance = static_cast<double>(random() % 9) / 8;
    const RandomRuns source(random() % 700 + 1, 20, random(), chances);
    const Campaign campaign(question, source);
    const auto one_by_one = [](size_t count, const std::function<void(size_t)>& work) {
      while (count-- > 0) work(count);
    };
    ByHand by_hand(*module, source, question.inputs());
    const CampaignCounts awaited = by_hand.counts(never, assumed, question.goals().size());
    for (auto width : {Campaign::Width::narrow, Campaign::Width::wide}) {
      CampaignCounts sum = campaign.run({1, 2}, one_by_one, width);
      sum.add(campaign.run({0, 2}, one_by_one, width));
      EXPECT_EQ(sum.reached, awaited.reached);
      EXPECT_EQ(sum.failed[0].runs, awaited.failed[0].runs);
      EXPECT_EQ(sum.failed[0].first, awaited.failed[0].first);
      EXPECT_EQ(sum.failed[0].instant, awaited.failed[0].instant);
    }
    failures += awaited.failed[0].runs;
    if (awaited.failed[0].runs > 0) {
      // Throws where the shortened run is not bad at its end.
      const auto& [runs, first, instant] = awaited.failed[0];
      const std::string shown = question.shown(0, source.run(first, instant, question.inputs()));
      EXPECT_LE(std::count(shown.begin(), shown.end(), '\n'), static_cast<long>(instant));
    }
    if (HasFailure()) break;
  }
  EXPECT_GT(failures, 100u);
}

}  // namespace
}  // namespace kiva::test
