#include <gtest/gtest.h>
#include "bdd/bddpp.h"
namespace kiva::test {
TEST(Operators, Basics) {
  bddpp_manager m;
  bdd a = m.New_var_last("a"), b = m.New_var_last("b"), c = m.New_var_last("c");
  EXPECT_EQ(m.Bdd_and(a, m.Bdd_not(a)), m.Bdd_zero());
  EXPECT_EQ(m.Bdd_xor(m.Bdd_xor(a, b), b), a);
  EXPECT_EQ(m.Bdd_or(m.Bdd_and(a, b), m.Bdd_and(b, a)), m.Bdd_and(b, a));
  EXPECT_EQ(m.Bdd_compose(m.Bdd_and(a, b), a, c), m.Bdd_and(c, b));
  int l[3] = {1, 2, 2};
  EXPECT_EQ(m.Bdd_eval_for_literal(m.Bdd_or(a, b), l), 1);
  EXPECT_EQ(m.Bdd_eval_for_literal(m.Bdd_and(a, b), l), 2);
  EXPECT_EQ(m.Bdd_exist(m.Bdd_and(a, b), a), b);
  EXPECT_EQ(m.Bdd_satisfy(m.Bdd_xor(a, b)), m.Bdd_and(a, m.Bdd_not(b)));
  bddpp_manager n;
  bdd d = Bdd_isomorphe_by_name(&n, &m, m.Bdd_xor(c, a));
  EXPECT_EQ(d, n.Bdd_xor(n.Bdd_var_by_name("a"), n.Bdd_var_by_name("c")));
}
TEST(Operators, Parity) {
  bddpp_manager m;
  bdd p = m.Bdd_zero();
  for (int i = 0; i < 256; i++) p = m.Bdd_xor(p, m.New_var_last(std::to_string(i)));
  std::vector<int> l(256, 2);
  EXPECT_EQ(m.Bdd_size(p), 257);
  EXPECT_EQ(m.Bdd_eval_for_literal(p, l.data()), 2);
  EXPECT_EQ(m.Bdd_is_correct(p), 1);
}
}  // namespace kiva::test
