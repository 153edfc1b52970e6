// The generalised cofactor and the and with quantification, against their definitions.

#include <gtest/gtest.h>

#include <random>

#include "bdd/bddpp.h"

namespace kiva::test {
namespace {

TEST(Relational, AgreesWithItsDefinition) {
  std::mt19937 random(6);
  bddpp_manager m;
  std::vector<bdd> vars;
  for (int k = 0; k < 6; ++k) vars.push_back(m.New_var_last("x" + std::to_string(k)));
  const auto function = [&] {
    bdd f = m.Bdd_zero();
    for (size_t k = 0; k < 5; ++k) {
      bdd cube = m.Bdd_one();
      for (const bdd& var : vars)
        if (const auto choice = random() % 4; choice < 2)
          cube = m.Bdd_and(cube, choice == 0 ? var : m.Bdd_not(var));
      f = m.Bdd_xor(f, cube);
    }
    return f;
  };
  for (int round = 0; round < 300; ++round) {
    const bdd f = function(), g = function();
    bdd cube = m.Bdd_one(), expected = m.Bdd_and(f, g);
    for (const bdd& var : vars)
      if (random() % 2 == 0) {
        cube = m.Bdd_and(cube, var);
        expected = m.Bdd_exist(expected, var);
      }
    EXPECT_EQ(m.Bdd_and_exist(f, g, cube), expected);

    if (g == m.Bdd_zero()) continue;
    const bdd within = m.Bdd_constrain(f, g);
    EXPECT_EQ(m.Bdd_and(within, g), m.Bdd_and(f, g));
    // No value that f does not take inside g.
    EXPECT_EQ(within == m.Bdd_one(), m.Bdd_imply(g, f) == 1);
    EXPECT_EQ(within == m.Bdd_zero(), m.Bdds_excl(g, f) == 1);
    const bdd product = m.Bdd_satisfy(g);
    EXPECT_EQ(m.Bdd_constrain(f, product), m.Bdd_cube_reduce(f, product));
  }
}

}  // namespace
}  // namespace kiva::test
