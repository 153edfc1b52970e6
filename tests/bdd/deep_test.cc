// Diagrams as deep as a large program's: no operation may recurse as deep as the diagram, and none
// may walk its paths.

#include <gtest/gtest.h>

#include <numeric>

#include "tests/bdd/truth_model.h"

namespace kiva::test {

namespace {

constexpr long depth = 200'000;

/// A product, a sum and a parity over all variables; the parity has 2^depth paths.
class DeepDiagrams : public ::testing::Test {
 protected:
  void SetUp() override {
    for (long i = 0; i < depth; ++i) m.New_var_last(name_of(i));
    product = even = m.Bdd_one();
    parity = sum = m.Bdd_zero();
    for (long index = depth; index-- > 0;) {
      const bdd v = m.Bdd_var_by_index(index);
      product = m.Bdd_and(v, product);
      sum = m.Bdd_or(v, sum);
      parity = m.Bdd_xor(v, parity);
      if (index % 2 == 0) even = m.Bdd_and(v, even);
    }
  }
  bdd last() { return m.Bdd_var_by_index(depth - 1); }

  bddpp_manager m;
  bdd product, sum, parity, even;
};

/// A manager deep enough for a parity and nothing else.
class Parity : public ::testing::Test {
 protected:
  void build(int variables) {
    parity = m.Bdd_zero();
    for (int i = 0; i < variables; ++i) parity = m.Bdd_xor(parity, m.New_var_last(name_of(i)));
    literals.assign(static_cast<std::size_t>(variables), 2);
  }
  bddpp_manager m;
  bdd parity;
  std::vector<int> literals;
};

}  // namespace

TEST_F(DeepDiagrams, Operators) {
  EXPECT_EQ(m.Bdd_and(product, even), product);
  EXPECT_EQ(m.Bdd_or(product, sum), sum);
  EXPECT_EQ(m.Bdd_and(product, m.Bdd_not(sum)), m.Bdd_zero());
  EXPECT_EQ(m.Bdd_xor(m.Bdd_xor(parity, sum), sum), parity);
  EXPECT_EQ(m.Bdd_ite(parity, sum, sum), sum);
  EXPECT_EQ(m.Bdd_imply(product, even), 1);
  EXPECT_EQ(m.Bdds_excl(product, parity), 1) << "an even number of ones";
}

TEST_F(DeepDiagrams, CofactorsAndQuantifiers) {
  const bdd short_parity = m.Bdd_cube_reduce(parity, last());
  EXPECT_EQ(m.Bdd_xor(short_parity, m.Bdd_not(last())), parity);
  EXPECT_EQ(m.Bdd_exist(parity, last()), m.Bdd_one());
  EXPECT_EQ(m.Bdd_forall(parity, last()), m.Bdd_zero());
  EXPECT_EQ(m.Bdd_cube_reduce(parity, product), m.Bdd_zero());
  EXPECT_EQ(m.Bdd_reduce(parity, product), m.Bdd_zero());
  EXPECT_EQ(m.Bdd_reduce(sum, even), m.Bdd_one());
}

TEST_F(DeepDiagrams, Substitution) {
  const bdd folded = m.Bdd_compose(parity, last(), m.Bdd_var_by_index(0));
  EXPECT_EQ(m.Bdd_depends_on(folded, m.Bdd_var_by_index(0)), 0);
  EXPECT_EQ(m.Bdd_size(folded), depth - 1);
  std::vector<long> same(depth);
  std::iota(same.begin(), same.end(), 0);
  EXPECT_EQ(m.Bdd_replace_vars(parity, same.data()), parity);
  EXPECT_EQ(m.Bdd_keep_first_variables(sum, depth / 2), m.Bdd_one());
  EXPECT_EQ(m.Bdd_size(m.Bdd_keep_first_variables(product, depth / 2)), depth / 2 + 1);
}

TEST_F(DeepDiagrams, LiteralsAndEvaluation) {
  std::vector<int> literals(depth);
  m.Bdd_to_literals(product, literals.data());
  EXPECT_EQ(std::count(literals.begin(), literals.end(), 1), depth);
  EXPECT_EQ(m.Literals_to_bdd(literals.data()), product);
  EXPECT_EQ(m.Bdd_satisfy(product), product);
  EXPECT_EQ(m.Bdd_is_cube(product), 1);
  EXPECT_EQ(m.Bdd_eval_for_literal(parity, literals.data()), 0);
  literals.assign(depth, 2);
  EXPECT_EQ(m.Bdd_eval_for_literal(parity, literals.data()), 2);
  literals[depth - 1] = 0;
  EXPECT_EQ(m.Bdd_eval_for_literal(product, literals.data()), 0);
  EXPECT_EQ(m.Bdd_eval_for_literal(sum, literals.data()), 2);
}

TEST_F(DeepDiagrams, WalksAndNumbers) {
  EXPECT_EQ(m.Bdd_size(parity), depth + 1);
  EXPECT_EQ(m.Bdd_is_correct(parity), 1);
  EXPECT_EQ(static_cast<long>(m.set_of_id_depend_on(parity).size()), depth);
  EXPECT_EQ(m.Bdd_depends_on(parity, last()), 1);
  EXPECT_EQ(m.exists_common_variables(even, m.Bdd_var_by_index(depth - 2)), 1);
  EXPECT_EQ(m.exists_common_variables(even, last()), 0);
  std::vector<int> present(depth);
  m.Present_variables(even, present.data());
  EXPECT_EQ(std::count(present.begin(), present.end(), 1), depth / 2);
  std::vector<int> used(static_cast<std::size_t>(m.Bdd_total_size()), 0);
  m.Bdd_global_clear_marks();
  parity.node()->Lustre_writing_node_used(used.data(), m.Bdd_node_one());
  EXPECT_EQ(std::count(used.begin(), used.end(), 1), depth + 1);
  EXPECT_EQ(static_cast<long>(m.internal_bdd_node_map().size()), m.Bdd_total_size() - 2);
}

TEST_F(DeepDiagrams, Copies) {
  bddpp_manager same(&m), named;
  EXPECT_EQ(same.Bdd_size(Bdd_isomorphe(&same, &m, parity)), depth + 1);
  EXPECT_EQ(named.Bdd_size(Bdd_isomorphe_by_name(&named, &m, parity)), depth + 1);
  EXPECT_EQ(named.Name_var_by_index(depth - 1), name_of(depth - 1));
  std::vector<long> corr(depth);
  std::iota(corr.begin(), corr.end(), 0);
  EXPECT_EQ(same.Bdd_size(Bdd_isomorphe(&same, &m, m.Bdd_not(sum), corr.data())), depth + 1);
  const bdd copy(&same, 1, Bdd_isomorphe(&same, &m, product.node(), corr.data()));
  EXPECT_EQ(same.Bdd_is_cube(copy), 1);
}

TEST_F(Parity, AllUnknownCostsNodesNotPaths) {
  build(256);
  EXPECT_EQ(m.Bdd_eval_for_literal(parity, literals.data()), 2);
  literals.assign(literals.size(), 1);
  literals[100] = 0;
  EXPECT_EQ(m.Bdd_eval_for_literal(parity, literals.data()), 1);
  // Each of these has some 2^256 paths to walk.
  EXPECT_EQ(m.Bdd_size(parity), 257);
  EXPECT_EQ(m.Bdd_is_correct(parity), 1);
  EXPECT_EQ(m.Bdd_exist(parity, m.Bdd_var_by_index(255)), m.Bdd_one());
  EXPECT_EQ(m.Bdd_compose(parity, m.Bdd_var_by_index(200), m.Bdd_zero()),
            m.Bdd_cube_reduce(parity, m.Bdd_not(m.Bdd_var_by_index(200))));
  EXPECT_EQ(m.Bdd_keep_first_variables(parity, 200), m.Bdd_one());
  bddpp_manager other;
  EXPECT_EQ(other.Bdd_size(Bdd_isomorphe_by_name(&other, &m, parity)), 257);
}

TEST_F(Parity, KnownChainsBelowManyUnknownsAreWalkedOnce) {
  // Unknown variables that each fall into the same known chain, at another place.
  constexpr int half = 20'000;
  for (int i = 0; i < 2 * half; ++i) m.New_var_last(name_of(i));
  bdd chain = m.Bdd_one();
  std::vector<bdd> places;
  for (int i = 2 * half; i-- > half;) {
    chain = m.Bdd_and(m.Bdd_var_by_index(i), chain);
    places.push_back(chain);
  }
  bdd f = m.Bdd_one();
  for (int i = half; i-- > 0;)
    f = m.Bdd_ite(m.Bdd_var_by_index(i), f, places[static_cast<std::size_t>(i)]);
  literals.assign(2 * half, 2);
  std::fill(literals.begin() + half, literals.end(), 1);
  EXPECT_EQ(m.Bdd_eval_for_literal(f, literals.data()), 1);
}

}  // namespace kiva::test
