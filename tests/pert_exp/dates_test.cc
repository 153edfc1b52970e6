#include <gmock/gmock.h>

#include <limits>

#include "tests/pert_exp/plain_dating.h"
#include "tests/support/process_end.h"

namespace kiva::test {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A wood of abstract equations over variables 0 .. n - 1.
struct Dates : testing::Test {
  void variables(long count) {
    for (long index = 0; index < count; ++index) wood.New_var_last(numbered("v", index));
  }
  Bddexpression* equation(long index, const index_set& reads, long early = 0, long late = 0) {
    return new Bddexpression(index, &wood, reads, "data", early, late);
  }
  std::vector<long> early_dates() {
    std::vector<long> dates;
    for (long index = 0; index < wood.Nb_bdd_vars(); ++index) {
      const Bddexpression* e = wood.Exp_table()[index];
      dates.push_back(e == nullptr ? -99 : e->getEarlyDate());
    }
    return dates;
  }
  std::vector<long> late_dates() {
    std::vector<long> dates;
    for (long index = 0; index < wood.Nb_bdd_vars(); ++index) {
      dates.push_back(wood.getLateDate(index));
    }
    return dates;
  }

  Bddexpressionwood wood;
};

TEST_F(Dates, ChainBehindAnInput) {
  variables(3);
  equation(2, {1});
  equation(1, {0});
  EXPECT_EQ(wood.compute_dates(std::list<long>{}), 3) << "none has a date yet: all get one";
  EXPECT_THAT(early_dates(), ElementsAre(-99, 1, 2));
  EXPECT_THAT(late_dates(), ElementsAre(2, 1, 0));
  EXPECT_THAT(wood.earliest_sort(), ElementsAre(1, 2));
  EXPECT_THAT(wood.latest_sort(), ElementsAre(1, 2));
  EXPECT_THAT(wood.loop_detection(), IsEmpty());

  // Dated already: a new reader changes nothing until its index is named or the level reset.
  variables(4);
  equation(3, {2});
  EXPECT_EQ(PERT(&wood), 3);
  EXPECT_THAT(early_dates(), ElementsAre(-99, 1, 2, 0));
  EXPECT_EQ(wood.compute_dates({2, 3}), 4);
  EXPECT_THAT(early_dates(), ElementsAre(-99, 1, 2, 3));
  EXPECT_THAT(late_dates(), ElementsAre(3, 2, 1, 0));
}

TEST_F(Dates, ACycleThroughReadersAloneIsListed) {
  variables(3);
  const index_set reads{0}, read_by{0};
  new Bddexpression(0, &wood, nullptr, nullptr, 0, 0);
  new Bddexpression(1, &wood, &reads, &read_by, 0, 0);
  EXPECT_THAT(wood.loop_detection(), ElementsAre(0, 1));
}

TEST_F(Dates, LargeDatesOfAnAcyclicWoodAreNoCycle) {
  variables(3);
  equation(1, {0}, 50, 0);
  equation(2, {1}, 51, 0);
  EXPECT_EQ(wood.Nb_level(), 51);
  EXPECT_THAT(wood.loop_detection(), IsEmpty());
}

TEST_F(Dates, SortsHoldEveryEquationWhateverTheDates) {
  constexpr long largest = std::numeric_limits<long>::max(), least = -largest - 1;
  variables(6);
  equation(0, {}, largest, least);
  equation(1, {}, -1, 3);
  equation(2, {}, 0, largest);
  equation(3, {}, least, 3);
  equation(5, {}, 0, -1);
  wood.update_nb_level(1);
  EXPECT_THAT(wood.earliest_sort(), ElementsAre(3, 1, 2, 5, 0));
  EXPECT_THAT(wood.latest_sort(), ElementsAre(2, 1, 3, 5, 0));
  wood.update_nb_level(0);
  wood.compute_dates();
  EXPECT_THAT(wood.earliest_sort(), SizeIs(wood.exp_number()));
}

TEST_F(Dates, IndicesOutsideTheTablesAreReportedAndSkipped) {
  variables(2);
  equation(1, {0});
  wood.add_amont_dependance(0, 7);
  const Outcome whole = run_captured([&] { wood.compute_dates(); });
  EXPECT_EQ(whole.err, "ERREUR dans compute_date(): nombre de variables trop grand :7>= 2\n");
  EXPECT_THAT(early_dates(), ElementsAre(-99, 1));
  const Outcome listed = run_captured([&] { wood.compute_dates({0, 9, -1}); });
  const std::string report =
      "ERREUR dans compute_date(list ident): numero de variables trop grand :";
  EXPECT_EQ(listed.err, report + "7>= 2\n" + report + "9>= 2\n" + report + "-1>= 2\n");
}

TEST_F(Dates, AHundredThousandEquationsInAChain) {
  constexpr long length = 100000;
  variables(length);
  // Against the order of the indices: each early date has a whole chain before it.
  for (long index = length - 2; index >= 0; --index) equation(index, {index + 1});
  EXPECT_EQ(wood.compute_dates(), length);
  EXPECT_EQ(wood.earliest_sort().front(), length - 2);
  EXPECT_EQ(wood.latest_sort().back(), 0);
  EXPECT_EQ(wood.down_critical_path(length - 1, 0, 0), length - 1);
  EXPECT_EQ(wood.up_critical_path(0, 0, 1), length);
  EXPECT_THAT(wood.up_dependances(0, 0, {}), SizeIs(length - 1));
  EXPECT_THAT(wood.down_dependances(length - 1, 0, {}), SizeIs(length - 1));

  // The same, closed to a cycle at the far end.
  equation(length - 1, {length - 2});
  wood.update_nb_level(0);
  EXPECT_GT(wood.compute_dates(), 2 * length);
  EXPECT_THAT(wood.loop_detection(), ElementsAre(length - 2, length - 1));
}

TEST_F(Dates, ACycleDatedFarBelowZeroEnds) {
  constexpr long least = std::numeric_limits<long>::min();
  variables(3);
  equation(0, {1}, least, least);
  equation(1, {0}, least, least);
  equation(2, {1}, least, least);
  wood.update_nb_level(0);
  EXPECT_GT(wood.compute_dates(), 2 * wood.Nb_bdd_vars());
  EXPECT_THAT(wood.loop_detection(), ElementsAre(0, 1));
  for (long index : {0, 1}) {
    wood.exp_by_index(index)->setEarlyDate(least);
    wood.exp_by_index(index)->setLateDate(least);
  }
  wood.update_nb_level(1);
  EXPECT_GT(wood.compute_dates({0, 1}), 2 * wood.Nb_bdd_vars());
}

TEST_F(Dates, AReconvergentLadderBesideACycleEnds) {
  // Each step is reached by one and by two steps back, the short way first: the plain recursion
  // would raise the far end once for each way through.
  constexpr long steps = 2000;
  variables(steps + 2);
  for (long index = 0; index + 2 < steps; ++index) equation(index, {index + 1, index + 2});
  equation(steps - 2, {steps - 1});
  equation(steps - 1, {steps});
  equation(steps, {steps + 1});
  equation(steps + 1, {steps});
  EXPECT_GT(wood.compute_dates(), 2 * wood.Nb_bdd_vars());
  EXPECT_THAT(wood.loop_detection(), ElementsAre(steps, steps + 1));
  wood.update_nb_level(0);
  wood.compute_dates();
}

struct Random_case {
  const char* name;
  Shape shape;
};

void PrintTo(const Random_case& shape, std::ostream* out) {
  *out << shape.name;
}

/// Random woods against the recursion written plainly.
struct Random_woods : testing::TestWithParam<Random_case> {
  void expect_same(Bddexpressionwood& wood, const Plain_wood& plain) {
    EXPECT_EQ(wood.Nb_level(), plain.level);
    for (long index = 0; index < plain.size(); ++index) {
      const Bddexpression* e = wood.Exp_table()[index];
      ASSERT_EQ(e != nullptr, plain.deps[index].has_value());
      EXPECT_EQ(e == nullptr ? 0 : e->getEarlyDate(), plain.early[index]) << "early of " << index;
      EXPECT_EQ(wood.getLateDate(index), plain.late[index]) << "late of " << index;
    }
  }
};

TEST_P(Random_woods, AreDatedAsByTheRecursion) {
  for (unsigned seed = 1; seed <= 4000 && !HasFailure(); ++seed) {
    SCOPED_TRACE(numbered("seed ", seed));
    std::mt19937 random(seed);
    Plain_wood plain = random_wood(random, GetParam().shape);
    Bddexpressionwood wood;
    fill(wood, plain);
    EXPECT_EQ(wood.compute_dates(), plain.compute_dates());
    expect_same(wood, plain);

    const std::list<long> cycles = plain.on_cycles();
    if (!GetParam().shape.extra_readers) {
      EXPECT_EQ(wood.loop_detection(), plain.level > plain.size() ? cycles : std::list<long>());
      if (GetParam().shape.dates == Shape::undated && !cycles.empty()) {
        EXPECT_FALSE(wood.loop_detection().empty());
      }
    }

    // Dated again from what the first dating left.
    plain.level = 0;
    wood.update_nb_level(0);
    EXPECT_EQ(wood.compute_dates(), plain.compute_dates());
    expect_same(wood, plain);
  }
}

TEST_P(Random_woods, ArePropagatedFromAListAsByTheRecursion) {
  for (unsigned seed = 1; seed <= 4000 && !HasFailure(); ++seed) {
    SCOPED_TRACE(numbered("seed ", seed));
    std::mt19937 random(seed);
    Plain_wood plain = random_wood(random, GetParam().shape);
    const auto below = [&random](long end) {
      return std::uniform_int_distribution<long>(0, end - 1)(random);
    };
    plain.level = 1 + below(plain.size());
    Bddexpressionwood wood;
    fill(wood, plain);
    std::list<long> indices;
    for (long n = below(4); n >= 0; --n) indices.push_back(below(plain.size()));
    EXPECT_EQ(wood.compute_dates(indices), plain.compute_dates(indices));
    expect_same(wood, plain);

    const long index = below(plain.size()), date = below(2 * plain.size() + 3) - 2;
    wood.early_propagation(index, date);
    plain.early_propagation(index, date);
    wood.late_propagation(index, date);
    plain.late_propagation(index, date);
    expect_same(wood, plain);
  }
}

/// Heaviest chains are defined on these alone.
struct Acyclic_woods : Random_woods {};

TEST_P(Acyclic_woods, HaveTheChainsOfTheirDefinition) {
  for (unsigned seed = 1; seed <= 1000 && !HasFailure(); ++seed) {
    SCOPED_TRACE(numbered("seed ", seed));
    std::mt19937 random(seed);
    const Plain_wood plain = random_wood(random, GetParam().shape);
    Bddexpressionwood wood;
    fill(wood, plain);
    const Outcome outcome = run_captured([&] {
      for (long index = 0; index < plain.size(); ++index) {
        for (long depth : {0, 1}) {
          EXPECT_EQ(wood.down_critical_path(index, depth, 3), plain.down_path(index, 3));
          EXPECT_EQ(wood.up_critical_path(index, depth, 3), plain.up_path(index, 3));
        }
      }
    });
    EXPECT_EQ(outcome.err, "");
  }
}

constexpr Random_case acyclic[] = {
    {"acyclic", {10, true, Shape::undated, false}},
    {"acyclic_dated", {10, true, Shape::small_dates, true}},
    {"acyclic_near_bound", {10, true, Shape::dates_about_the_bound, false}},
    {"acyclic_any_dates", {8, true, Shape::any_dates, true}},
};
constexpr Random_case cyclic[] = {
    {"cyclic", {9, false, Shape::undated, false}},
    {"cyclic_dated", {8, false, Shape::small_dates, true}},
    {"cyclic_near_bound", {8, false, Shape::dates_about_the_bound, false}},
    {"cyclic_any_dates", {7, false, Shape::any_dates, true}},
};
const auto case_name = [](const auto& info) { return std::string(info.param.name); };

INSTANTIATE_TEST_SUITE_P(Acyclic, Random_woods, testing::ValuesIn(acyclic), case_name);
INSTANTIATE_TEST_SUITE_P(Cyclic, Random_woods, testing::ValuesIn(cyclic), case_name);
INSTANTIATE_TEST_SUITE_P(Acyclic, Acyclic_woods, testing::ValuesIn(acyclic), case_name);

TEST_F(Dates, ReportOfTheLevels) {
  variables(3);
  equation(1, {0});
  equation(2, {0, 1});
  wood.compute_dates();
  std::ostringstream out;
  wood.stat(out);
  const std::string text = out.str();
  EXPECT_THAT(text, AllOf(HasSubstr("wood Bddexpression statistics:\n  - adress: "),
                          HasSubstr("  - variables number used : 3\n"),
                          HasSubstr("  - arrays's length  : 4\n"),
                          HasSubstr("  - expression ids set (1, 2)\n  - nb levels 3\n")));
  EXPECT_THAT(text, HasSubstr("      level: 1\n"
                              "        early date: (1)\n"
                              "        late date: (1)\n"
                              "      level: 2\n"
                              "        early date: (2)\n"
                              "        late date: (0)\n"
                              "   earliest date sorting:(1, 2)\n"
                              "   latest date sorting:(1, 2)\n"));
  EXPECT_THAT(text, testing::Not(HasSubstr("INTERNAL ERROR")));
  wood.my_bdd_manager()->New_var_last("unknown to the tables");
  out.str("");
  wood.stat(out);
  EXPECT_THAT(out.str(),
              HasSubstr("INTERNAL ERROR: bdd variables number doesn't corresponding !!!\n"));

  out.str("");
  wood.stat_early_dep(out, 2);
  EXPECT_EQ(out.str(),
            "v2 (2) -->\n"
            "| v0 (0) -->\n"
            "| v1 (1) -->\n"
            "| | v0 (0) -->\n");
}

}  // namespace

}  // namespace kiva::test
