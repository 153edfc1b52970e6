// The symbolic walk against one that takes every state by itself.

#include <gmock/gmock.h>

#include <map>
#include <set>

#include "tarn/b_automaton/equivalence.h"
#include "tests/b_automaton/automata.h"

namespace kiva::test {
namespace {

/// Number of instants up to the first in which output 0 may be 0; 0 where it never is.
size_t first_fault(const b_automaton& automaton) {
  std::set<std::vector<int>> seen = {initial_state(automaton)}, layer = seen;
  for (size_t instant = 1; !layer.empty(); ++instant) {
    std::set<std::vector<int>> after;
    for (const std::vector<int>& state : layer)
      for (unsigned point = 0; point < 1u << automaton.nb_inputs(); ++point) {
        const std::vector<int> values = step(automaton, state, bits(point, automaton.nb_inputs()));
        if (outputs_of(automaton, values)[0] == 0) return instant;
        const std::vector<int> next = next_state_of(automaton, values);
        if (seen.insert(next).second) after.insert(next);
      }
    layer = after;
  }
  return 0;
}

/// The last instant's output 0 under the stimuli.
int replayed(const b_automaton& automaton, const std::vector<std::vector<int>>& stimuli) {
  std::vector<int> state = initial_state(automaton);
  int output = 1;
  for (const std::vector<int>& inputs : stimuli) {
    const std::vector<int> values = step(automaton, state, inputs);
    output = outputs_of(automaton, values)[0];
    state = next_state_of(automaton, values);
  }
  return output;
}

TEST(Walk, FindsTheShortestWayOrNone) {
  std::mt19937 random(5);
  std::map<size_t, int> lengths;
  for (int round = 0; round < 600; ++round) {
    const auto automaton = random_automaton(random, 1 + static_cast<int>(random() % 7), 2, 1, 3);
    const OutputWalk walk = walk_output(*automaton, 0, [](const OutputWalk&) {});
    const size_t expected = first_fault(*automaton);
    ++lengths[expected];
    ASSERT_EQ(walk.holds, expected == 0);
    ASSERT_EQ(walk.stimuli.size(), expected);
    if (expected == 0) continue;
    EXPECT_EQ(replayed(*automaton, walk.stimuli), 0);
  }
  EXPECT_GT(lengths.size(), 4u) << "ways of several lengths";
  EXPECT_GT(lengths[0], 5);
}

/// A counter modulo 2^bits that counts on `a`, with the output "carry" when it wraps.
std::unique_ptr<b_automaton> binary_counter(int bits) {
  AutomatonText text{.inputs = {"a"}, .outputs = {"carry"}};
  std::string all = "a";
  for (int k = 0; k < bits; ++k) {
    const std::string s = "b" + std::to_string(k);
    text.state.push_back(s);
    text.next_state.push_back("n" + s);
    text.equations.emplace_back("n" + s, s + " xor (" + all + ")");
    all += " and " + s;
    text.init.push_back(0);
  }
  text.equations.emplace_back("carry", all);
  return make_automaton(text);
}

/// The same as a ring of one token.
std::unique_ptr<b_automaton> ring_counter(int count) {
  AutomatonText text{.inputs = {"a"}, .outputs = {"carry"}};
  for (int k = 0; k < count; ++k) {
    const std::string s = "r" + std::to_string(k);
    const std::string before = "r" + std::to_string((k + count - 1) % count);
    text.state.push_back(s);
    text.next_state.push_back("n" + s);
    text.equations.emplace_back("n" + s, "a and " + before + " or not a and " + s);
    text.init.push_back(k == 0 ? 1 : 0);
  }
  text.equations.emplace_back("carry", "a and r" + std::to_string(count - 1));
  return make_automaton(text);
}

TEST(Walk, ComparesMachinesWithoutACommonRegister) {
  const auto binary = binary_counter(5);
  const auto ring = ring_counter(32), short_ring = ring_counter(31);
  const auto same = observateur_equivalence(binary.get(), ring.get());
  ASSERT_TRUE(same->sort().empty());
  long told = 0;
  const OutputWalk equal = walk_output(*same, 0, [&](const OutputWalk& w) { told = w.instants; });
  EXPECT_TRUE(equal.holds);
  EXPECT_EQ(equal.instants, 32);
  EXPECT_EQ(equal.states, 32);
  EXPECT_EQ(told, 31);

  const auto other = observateur_equivalence(binary.get(), short_ring.get());
  ASSERT_TRUE(other->sort().empty());
  const OutputWalk apart = walk_output(*other, 0, [](const OutputWalk&) {});
  EXPECT_EQ(apart.stimuli, std::vector<std::vector<int>>(31, {1}));

  // Registers that always agree are no part of the walk.
  const auto again = binary_counter(40);
  const auto pair = observateur_equivalence(again.get(), binary_counter(40).get());
  ASSERT_TRUE(pair->sort().empty());
  const OutputWalk merged = walk_output(*pair, 0, [](const OutputWalk&) {});
  EXPECT_TRUE(merged.holds);
  EXPECT_EQ(merged.registers, 0);
}

}  // namespace
}  // namespace kiva::test
