#include <gmock/gmock.h>

#include "pert_exp/Bddexpression.h"
#include "tests/pert_exp/plain_dating.h"
#include "tests/support/process_end.h"

namespace kiva::test {

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string down_warning =
    "WARNING in Bddexpressionwood::down_critical_path():\n"
    "   possible infinite recursion due to a signals cycle\n";

/// Inputs x, y and variables a, b, c of a wood with real functions.
struct Paths : testing::Test {
  Bddexpression* equation(const bdd& var, const bdd& f) {
    return new Bddexpression(&wood, var, f, 0, 0);
  }
  long index(const bdd& var) { return wood.Index_var_by_bdd(var); }

  Bddexpressionwood wood;
  bdd x = wood.New_var_last("x"), y = wood.New_var_last("y");
  bdd a = wood.New_var_last("a"), b = wood.New_var_last("b"), c = wood.New_var_last("c");
};

TEST_F(Paths, DependancesStartFromWhatIsKnown) {
  equation(a, wood.Bdd_and(x, y));
  equation(b, wood.Bdd_or(a, x));
  equation(c, b);
  EXPECT_EQ(wood.up_dependances(4, 0, {}), (index_set{0, 1, 2, 3}));
  // What is known is not walked again: a hides x and y behind it, but b reads x itself.
  EXPECT_EQ(wood.up_dependances(4, 0, {2}), (index_set{0, 2, 3}));
  EXPECT_EQ(wood.down_dependances(1, 0, {9}), (index_set{2, 3, 4, 9}));
  EXPECT_EQ(wood.up_dependances(0, 0, {1}), (index_set{1}));
  EXPECT_EQ(wood.up_dependances(99, 0, {1}), (index_set{1}));
}

TEST_F(Paths, DependancesCutAtTheDepth) {
  equation(a, x);
  equation(b, a);
  const Outcome outcome = run_captured([&] {
    EXPECT_EQ(wood.down_dependances(0, 5, {}), (index_set{2}));
    EXPECT_EQ(wood.up_dependances(3, 4, {}), (index_set{0, 2}));
  });
  EXPECT_EQ(outcome.err,
            "WARNING in Bddexpressionwood::down_dependances():\n"
            "   possible infinite recusion due to a signals cycle\n"
            "WARNING in Bddexpressionwood::up_dependances():\n"
            "   possible infinite recursion due to a signals cycle\n");
}

TEST_F(Paths, DependancesOfACycleEnd) {
  equation(a, b);
  equation(b, wood.Bdd_and(a, x));
  const Outcome outcome = run_captured([&] {
    EXPECT_EQ(wood.up_dependances(2, 0, {}), (index_set{0, 2, 3}));
    EXPECT_EQ(wood.down_dependances(0, 0, {}), (index_set{2, 3}));
  });
  EXPECT_EQ(outcome.err, "");
}

TEST_F(Paths, EachReaderAtTheDepthLimitIsWarnedOf) {
  equation(a, x);
  equation(b, x);
  const Outcome outcome = run_captured([&] { EXPECT_EQ(wood.down_critical_path(0, 5, 4), 4); });
  EXPECT_EQ(outcome.err, down_warning + down_warning);
}

TEST_F(Paths, AChangeThatClosesACycleWarns) {
  equation(a, x);
  Bddexpression* eb = equation(b, a);
  const Outcome quiet = run_captured([&] { eb->setBddExp(wood.Bdd_and(a, y)); });
  EXPECT_EQ(quiet.err, "");
  const Outcome outcome =
      run_captured([&] { wood.exp_by_bdd(a)->append_or_exp(wood.Bdd_and(x, b)); });
  EXPECT_FALSE(outcome.ended);
  // a is x or b: the absorbed product leaves nothing to warn of.
  EXPECT_EQ(outcome.err, "");
  const Outcome cyclic = run_captured([&] { wood.exp_by_bdd(a)->append_or_exp(b); });
  EXPECT_FALSE(cyclic.ended);
  EXPECT_THAT(cyclic.err, StartsWith(down_warning));
  EXPECT_EQ(wood.exp_by_bdd(a)->my_bdd_exp(), wood.Bdd_or(x, b));
  // Functions stay as they were set.
  EXPECT_EQ(eb->my_bdd_exp(), wood.Bdd_and(a, y));
}

TEST_F(Paths, ASelfDependenceEndsTheProcess) {
  Bddexpression* ea = equation(a, x);
  ea->setName("first");
  const Outcome outcome = run_captured([&] { ea->append_and_exp(wood.Bdd_not(a)); });
  EXPECT_TRUE(outcome.ended);
  EXPECT_EQ(outcome.exit_status, 1);
  EXPECT_THAT(outcome.err,
              AllOf(HasSubstr("ERROR: detected self-dependance about variable : 2 !!!\n"
                              "in associated wood:\n"),
                    HasSubstr("a reads (x, a)")));
}

TEST_F(Paths, ASelfDependenceBehindACycleIsFound) {
  equation(a, wood.Bdd_and(b, c));
  equation(b, a);
  equation(c, wood.Bdd_and(c, x));
  const Outcome outcome = run_captured([&] { wood.up_critical_path(2, 0, 1); });
  EXPECT_EQ(outcome.exit_status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("about variable : 4 !!!\n"));
}

TEST_F(Paths, DatesSetWithTheFunctionLeaveTheWarningOut) {
  equation(a, b);
  Bddexpression* eb = equation(b, x);
  const Outcome outcome = run_captured([&] { eb->setBddExp(wood.Bdd_and(a, b), 4, 6); });
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(eb->getEarlyDate(), 4);
  EXPECT_EQ(wood.getLateDate(3), 6);
  EXPECT_EQ(wood.set_of_amont_dependances(2), (index_set{3}));
  EXPECT_EQ(wood.set_of_amont_dependances(0), index_set{});
}

TEST_F(Paths, ALongChainChangesWithoutDeepRecursion) {
  Bddexpressionwood long_wood;
  constexpr long length = 100000;
  for (long i = 0; i < length; ++i) long_wood.New_var_last(numbered("v", i));
  for (long i = 1; i < length; ++i) {
    new Bddexpression(&long_wood, long_wood.Bdd_var_by_index(i), long_wood.Bdd_var_by_index(i - 1),
                      0, 0);
  }
  const Outcome outcome = run_captured([&] {
    long_wood.exp_by_index(1)->append_not_exp();
    new Bddexpression(&long_wood, long_wood.Bdd_var_by_index(0), long_wood.Bdd_one(), 0, 0);
    long_wood.exp_by_index(0)->setBddExp(long_wood.Bdd_var_by_index(length - 1));
  });
  EXPECT_THAT(outcome.err, StartsWith(down_warning));
}

}  // namespace

}  // namespace kiva::test
