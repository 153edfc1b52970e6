#include "pert_exp/cycle_solution.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "pert_exp/wood.h"

namespace kiva::test {
namespace {

constexpr int outside = 2;
constexpr int members = 4;

/// Equations of the last variables over all, as truth tables: bit n is the value where variable i
/// has bit i of n.
struct Equations {
  std::vector<unsigned> tables;

  explicit Equations(std::mt19937& random) {
    for (int i = 0; i < members; ++i) {
      // Two that each reads, so that cycles of every form come up.
      const int a = static_cast<int>(random() % (outside + members));
      const int b = static_cast<int>(random() % (outside + members));
      const int c = static_cast<int>(random() % outside);
      const unsigned gate = random() % 256;
      unsigned table[2] = {0, 0};
      for (unsigned n = 0; n < 64; ++n)
        if ((gate >> ((n >> a & 1) | (n >> b & 1) << 1 | (n >> c & 1) << 2) & 1) != 0)
          table[n / 32] |= 1u << (n % 32);
      tables.push_back(table[0]);
      tables.push_back(table[1]);
    }
  }
  bool value(int i, unsigned n) const { return (tables[2 * i + n / 32] >> (n % 32) & 1) != 0; }

  /// By hand: 0, 1, or 2 for not settled, of each member under the outside variables.
  std::vector<int> settled(unsigned inputs) const {
    std::vector<int> known(members, 2);
    for (bool more = true; more;) {
      more = false;
      for (int i = 0; i < members; ++i) {
        bool can_be[2] = {false, false};
        for (unsigned m = 0; m < 1u << members; ++m) {
          bool fits = true;
          for (int k = 0; k < members; ++k)
            fits = fits && (known[k] == 2 || known[k] == static_cast<int>(m >> k & 1));
          if (fits) can_be[value(i, inputs | m << outside)] = true;
        }
        if (known[i] != 2 || (can_be[0] && can_be[1])) continue;
        known[i] = can_be[1] ? 1 : 0;
        more = true;
      }
    }
    return known;
  }
};

TEST(CycleSolution, SettlesWhatEveryCompletionAgreesOn) {
  std::mt19937 random(20261125);
  int open_ones = 0, settled_ones = 0;
  for (int run = 0; run < 1500; ++run) {
    const Equations equations(random);
    Bddexpressionwood wood;
    std::vector<bdd> variables;
    for (int i = 0; i < outside + members; ++i)
      variables.push_back(wood.New_var_last("v" + std::to_string(i)));
    for (int i = 0; i < members; ++i) {
      bdd f = wood.Bdd_zero();
      for (unsigned n = 0; n < 1u << (outside + members); ++n)
        if (equations.value(i, n))
          f = wood.Bdd_or(f, wood.my_bdd_manager()->Minterm(static_cast<int>(n), outside + members,
                                                            variables.data()));
      new Bddexpression(&wood, variables[outside + i], f, 0, 0);
    }
    CycleSolution solution(wood, {});
    ASSERT_TRUE(solution.solve());
    solution.put();
    wood.compute_dates();
    for (unsigned inputs = 0; inputs < 1u << outside; ++inputs) {
      const std::vector<int> expected = equations.settled(inputs);
      std::vector<int> literals(outside + members, 2);
      for (int i = 0; i < outside; ++i) literals[i] = static_cast<int>(inputs >> i & 1);
      bddpp_manager& manager = *wood.my_bdd_manager();
      for (long index : wood.earliest_sort())
        literals[index] =
            manager.Bdd_eval_for_literal(wood.exp_by_index(index)->my_bdd_exp(), literals.data());
      bool open = false;
      for (const bdd& unsettled : solution.unsettled())
        open = open || manager.Bdd_eval_for_literal(unsettled, literals.data()) == 1;
      const bool all = std::count(expected.begin(), expected.end(), 2) == 0;
      (all ? settled_ones : open_ones) += 1;
      EXPECT_EQ(open, !all) << "run " << run << ", inputs " << inputs;
      if (!all) continue;
      EXPECT_EQ(std::vector<int>(literals.begin() + outside, literals.end()), expected)
          << "run " << run << ", inputs " << inputs;
    }
    EXPECT_TRUE(wood.loop_detection().empty());
    solution.restore();
    EXPECT_EQ(CycleSolution(wood, {}).cycles(), solution.cycles());
  }
  EXPECT_GT(open_ones, 500);
  EXPECT_GT(settled_ones, 500);
}

}  // namespace
}  // namespace kiva::test
