#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <utility>

#include "pert_exp/Bddexpression.h"
#include "pert_exp/table_capacity.h"
#include "tests/pert_exp/plain_dating.h"
#include "tests/support/process_end.h"

namespace kiva::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Inputs x, y and variables a, b, c, at the indices 0 to 4.
struct Wood : testing::Test {
  Bddexpression* equation(const bdd& var, const bdd& f) {
    return new Bddexpression(&wood, var, f, 0, 0);
  }
  void expect_coherent() {
    std::ostringstream out;
    wood.coherence_dependances_check(out);
    EXPECT_EQ(out.str(), "");
  }

  Bddexpressionwood wood;
  bdd x = wood.New_var_last("x"), y = wood.New_var_last("y");
  bdd a = wood.New_var_last("a"), b = wood.New_var_last("b"), c = wood.New_var_last("c");
};

TEST_F(Wood, LearningFillsTheTables) {
  EXPECT_EQ(wood.exp_number(), 0);
  EXPECT_EQ(wood.Nb_level(), 0);
  Bddexpression* e = new Bddexpression("sum", &wood, b, wood.Bdd_or(x, a), 7, 9, 5);
  EXPECT_EQ(wood.exp_by_index(3), e);
  EXPECT_EQ(wood.Exp_table()[3], e);
  EXPECT_EQ(wood.Set_of_exp(), index_set{3});
  EXPECT_EQ(wood.set_of_amont_dependances(0), index_set{3});
  EXPECT_EQ(wood.set_of_amont_dependances(2), index_set{3});
  EXPECT_EQ(wood.Set_of_index_used_variables(), (index_set{0, 2, 3}));
  EXPECT_EQ(wood.Nb_level(), 7);
  EXPECT_EQ(wood.getLateDate(3), 9);
  EXPECT_EQ(wood.getLateDate(b), 9);
  EXPECT_EQ(e->getLateDate(), 9);
  EXPECT_EQ(e->getAbstraction(), 0);
  EXPECT_EQ(e->getUserType(), 5);
  EXPECT_EQ(e->my_name(), "sum");
  EXPECT_EQ(e->my_bddname(), "b");
  EXPECT_EQ(e->set_of_index_used_variables(), (index_set{0, 2, 3}));
  // A late date that stands when an equation comes raises the level too.
  wood.setLateDate(c, 20);
  new Bddexpression(4, &wood, index_set{}, "data", 0, 1);
  EXPECT_EQ(wood.Nb_level(), 20);
  EXPECT_EQ(wood.getLateDate(4), 1);
  wood.learn_expression(e);
  EXPECT_EQ(wood.exp_number(), 2);
  expect_coherent();
}

TEST_F(Wood, ASecondEquationReplacesTheFirst) {
  std::unique_ptr<Bddexpression> first(equation(b, wood.Bdd_and(x, a)));
  Bddexpression* second = equation(b, wood.Bdd_and(y, a));
  EXPECT_EQ(wood.exp_by_bdd(b), second);
  EXPECT_EQ(wood.set_of_amont_dependances(0), index_set{});
  EXPECT_EQ(wood.set_of_amont_dependances(1), index_set{3});
  EXPECT_EQ(wood.set_of_amont_dependances(2), index_set{3});
  EXPECT_EQ(wood.exp_number(), 1);
  EXPECT_EQ(first->my_bdd_exp(), wood.Bdd_and(x, a));
  expect_coherent();
}

TEST_F(Wood, RefusedEquations) {
  std::unique_ptr<Bddexpression> e;
  const Outcome outcome = run_captured([&] {
    wood.learn_expression(nullptr);
    e.reset(equation(wood.Bdd_one(), x));
  });
  const std::string report = "INTERNAL ERROR in Bddexpressionwood::learn_expression():\n";
  EXPECT_EQ(outcome.err,
            report + "no expression !!!\n" + report + "no left member in expression\n");
  Bddexpressionwood small;
  const Outcome foreign =
      run_captured([&] { small.learn_expression(new Bddexpression("far", &wood, c, x, 0, 0)); });
  EXPECT_EQ(foreign.err, report + "bdd variable doesn't exist in Bdd manager\n");
  EXPECT_EQ(wood.exp_number(), 1);
  EXPECT_EQ(small.exp_number(), 0);
}

TEST_F(Wood, AbstractEquationsKeepTheirDependences) {
  const index_set reads{0, 1}, read_by{2, 99};
  Bddexpression* e = new Bddexpression(3, &wood, &reads, &read_by, "f(x, y)", 1, 2);
  EXPECT_EQ(e->getAbstraction(), 1);
  EXPECT_FALSE(e->my_bdd_exp().initialised());
  EXPECT_EQ(e->my_exp_def(), "f(x, y)");
  EXPECT_EQ(e->my_index_var(), 3);
  e->build_normal_dependances();
  EXPECT_EQ(e->set_of_var_dependances(), reads);
  EXPECT_EQ(wood.set_of_amont_dependances(0), index_set{3});
  EXPECT_EQ(wood.set_of_amont_dependances(3), index_set{2});
  Bddexpression* named = new Bddexpression("n", &wood, c, x, "g()", 0, 0, 3);
  EXPECT_EQ(named->getAbstraction(), 1);
  EXPECT_EQ(named->set_of_var_dependances(), index_set{});
  std::ostringstream out;
  wood.coherence_dependances_check(out);
  EXPECT_EQ(out.str(),
            "incoherence sur table des amonts pour la variable b: calcule: () trouve(2)\n");
}

TEST_F(Wood, ForgettingKeepsWhatIsRead) {
  equation(a, wood.Bdd_and(x, y));
  equation(b, a);
  wood.setLateDate(b, 4);
  const Outcome outcome = run_captured([&] {
    wood.forget_expression_by_bddid(2);
    wood.forget_expression_by_bddid(0);
  });
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(wood.exp_number(), 2);
  wood.forget_expression_by_bddid(3);
  EXPECT_EQ(wood.getLateDate(3), 0);
  EXPECT_EQ(wood.exp_by_index(3), nullptr);
  wood.forget_expression_by_bddid(2);
  EXPECT_EQ(wood.exp_number(), 0);
  EXPECT_THAT(wood.set_of_amont_dependances(0), IsEmpty());
  for (const bool absolute : {false, true}) {
    const Outcome outside = run_captured([&] {
      if (absolute) {
        wood.absolute_forget_expression_by_bddid(5);
      } else {
        wood.forget_expression_by_bddid(-1);
      }
    });
    EXPECT_EQ(outside.err, "Error in Bddexpressionwood::forget_expression_by_bddid(): " +
                               std::string(absolute ? "5" : "-1") + " value not found ...\n");
  }
}

TEST_F(Wood, TheSetOfEquationsFollowsChangesInAnyOrder) {
  for (const bdd& var : {b, a, c}) equation(var, x);
  EXPECT_EQ(wood.Set_of_exp(), (index_set{2, 3, 4}));
  wood.forget_expression_by_bddid(2);
  wood.forget_expression_by_bddid(4);
  EXPECT_EQ(wood.Set_of_exp(), index_set{3});
  EXPECT_EQ(wood.exp(0), wood.exp_by_bdd(b));
  wood.forget_expression_by_bddid(3);
  EXPECT_EQ(wood.exp_number(), 0);
  equation(y, x);
  EXPECT_EQ(wood.Set_of_exp(), index_set{1});

  // A slot that a holder of the table emptied.
  const std::unique_ptr<Bddexpression> taken(std::exchange(wood.Exp_table()[1], nullptr));
  const Outcome outcome = run_captured([&] {
    EXPECT_EQ(wood.Set_of_index_used_variables(), index_set{});
    EXPECT_THAT(wood.earliest_sort(), IsEmpty());
  });
  EXPECT_EQ(outcome.err,
            "internal error in Bddexpressionwood::Set_of_index_used_variables(): expression not "
            "found!!!\n");
}

TEST_F(Wood, AbsoluteForgettingLeavesReadersAndDate) {
  equation(a, x);
  equation(b, a);
  wood.setLateDate(b, 4);
  wood.absolute_forget_expression_by_bddid(2);
  EXPECT_EQ(wood.exp_number(), 2);
  wood.absolute_forget_expression_by_bddid(3);
  EXPECT_EQ(wood.Set_of_exp(), index_set{2});
  EXPECT_EQ(wood.getLateDate(3), 4);
  EXPECT_EQ(wood.set_of_amont_dependances(2), index_set{3});
}

TEST_F(Wood, ChangedFunctionsKeepTheReadersInStep) {
  Bddexpression* e = equation(c, x);
  e->append_and_exp(wood.Bdd_not(y));
  EXPECT_EQ(e->my_bdd_exp(), wood.Bdd_and(x, wood.Bdd_not(y)));
  EXPECT_EQ(wood.set_of_amont_dependances(1), index_set{4});
  e->append_or_exp(y);
  EXPECT_EQ(e->my_bdd_exp(), wood.Bdd_or(x, y));
  wood.append_not_expression(4);
  EXPECT_EQ(e->my_bdd_exp(), wood.Bdd_nor(x, y));
  e->setBddExp(a);
  EXPECT_EQ(e->set_of_var_dependances(), index_set{2});
  EXPECT_EQ(wood.set_of_amont_dependances(0), index_set{});
  EXPECT_EQ(wood.set_of_amont_dependances(2), index_set{4});
  Bddexpression* data = new Bddexpression(3, &wood, index_set{4}, "data", 0, 0);
  data->setBddExp(x);
  EXPECT_EQ(data->getAbstraction(), 0);
  EXPECT_EQ(wood.set_of_amont_dependances(4), index_set{});
  EXPECT_EQ(wood.set_of_amont_dependances(0), index_set{3});
  // A variable that the tables have not seen yet is entered on the way.
  bdd late = wood.my_bdd_manager()->New_var_last("late");
  e->append_or_exp(late);
  EXPECT_EQ(wood.Nb_bdd_vars(), 6);
  EXPECT_EQ(wood.set_of_amont_dependances(5), index_set{4});
  expect_coherent();
}

TEST_F(Wood, WithoutWoodOrWithOneAtTheWrongCall) {
  Bddexpression alone;
  const Outcome outcome = run_captured([&] {
    alone.setBddExp(x, 1, 2);
    alone.append_or_exp(x);
    alone.append_not_exp();
    alone.setLateDate(3);
  });
  const std::string aborted = "   no wood defined! Aborted  ...\n";
  EXPECT_EQ(outcome.err, "In Bddexpression::setBddExp(): \n" + aborted +
                             "In Bddexpression::append_or_exp(): \n" + aborted +
                             "In Bddexpression::append_not_exp(): \n" + aborted +
                             "internal error in Bddexpression::setLateDate(): no wood found!\n");
  EXPECT_FALSE(alone.my_bdd_exp().initialised());
  EXPECT_EQ(alone.my_index_var(), -3);
  alone.setBddVar(wood.my_bdd_manager(), a);
  alone.setBddExp(wood.my_bdd_manager(), wood.Bdd_and(x, y));
  EXPECT_EQ(alone.set_of_var_dependances(), (index_set{0, 1}));
  EXPECT_EQ(alone.getAbstraction(), 0);
  Bddexpression* attached = equation(a, x);
  run_captured([&] { attached->setBddExp(wood.my_bdd_manager(), y); });
  EXPECT_EQ(attached->my_bdd_exp(), x);
}

TEST_F(Wood, LookUps) {
  Bddexpression* ea = new Bddexpression("one", &wood, a, x, 0, 0);
  Bddexpression* eb = new Bddexpression("two", &wood, b, x, 0, 0);
  Bddexpression* ec = new Bddexpression("two", &wood, c, x, 0, 0);
  const Outcome found = run_captured([&] {
    EXPECT_EQ(wood.exp_by_index(0), nullptr);
    EXPECT_EQ(wood.exp_by_bddname("a"), ea);
    EXPECT_EQ(wood.exp_by_bdd(wood.Bdd_and(b, c)), eb);
    EXPECT_EQ(wood.exp_by_name("two"), eb);
    eb->setName("three");
    EXPECT_EQ(wood.exp_by_name("two"), ec);
    EXPECT_EQ(wood.exp(2), ec);
    EXPECT_EQ(wood.Index_exp_by_name("three"), 3);
    EXPECT_EQ(wood.Index_exp_by_bdd(c), 4);
    EXPECT_EQ(wood.Index_exp_by_bddname("b"), 3);
    EXPECT_EQ(wood.Bddname_exp_by_index(2) + wood.Name_exp_by_index(2), "aone");
    EXPECT_EQ(wood.Bddname_exp_by_bdd(b) + wood.Name_exp_by_bdd(b), "bthree");
  });
  EXPECT_EQ(found.err, "");
  const Outcome missing = run_captured([&] {
    EXPECT_EQ(wood.exp_by_index(5), nullptr);
    EXPECT_EQ(wood.exp_by_name("z"), nullptr);
    EXPECT_EQ(wood.exp(3), nullptr);
    EXPECT_EQ(wood.Index_exp_by_bdd(x), -1);
    EXPECT_EQ(wood.Name_exp_by_index(-1), "");
  });
  EXPECT_EQ(missing.err,
            "ERROR in Bddexpressionwood::exp_by_index : id `5' not found!\n"
            "ERROR in Bddexpressionwood::exp_by_name : `z' not found!\n"
            "ERROR in Bddexpressionwood::exp(): 3 bad number ...\npossible: (2, 3, 4)\n"
            "ERROR in Bddexpressionwood::Index_exp_by_bdd : bdd not found!\n"
            "ERROR: in Bddexpressionwood::Name_exp_by_index(): index -1 not found!\n");
}

TEST_F(Wood, AnInsertionMovesTheTablesAlong) {
  Bddexpression* ea = equation(a, wood.Bdd_and(x, y));
  const index_set reads{2};
  Bddexpression* eb = new Bddexpression(3, &wood, &reads, nullptr, 0, 8);
  const bdd n = wood.New_var_before_by_bdd(y, "n");
  EXPECT_EQ(wood.Index_var_by_bdd(n), 1);
  EXPECT_EQ(wood.exp_by_bdd(a), ea);
  EXPECT_EQ(wood.exp_by_index(4), eb);
  EXPECT_EQ(wood.exp_by_index(1), nullptr);
  EXPECT_EQ(wood.Set_of_exp(), (index_set{3, 4}));
  EXPECT_EQ(ea->set_of_var_dependances(), (index_set{0, 2}));
  EXPECT_EQ(eb->set_of_var_dependances(), index_set{3});
  EXPECT_EQ(wood.getLateDate(4), 8);
  expect_coherent();
  // After the last place, beside it, and under a name that exists: the last inserts nothing.
  const Outcome outcome = run_captured([&] {
    wood.New_var_after_by_bdd(c, "last");
    wood.New_var_after_by_index(0, "second");
    wood.New_var_before_by_index(0, "last");
  });
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(wood.Nb_bdd_vars(), 8);
  EXPECT_EQ(wood.exp_by_bddname("b"), eb);
  EXPECT_EQ(wood.exp_by_bddname("last"), nullptr);
  expect_coherent();

  wood.my_bdd_manager()->New_var_last("unseen");
  const Outcome behind = run_captured([&] { wood.New_var_before_by_index(0, "front"); });
  EXPECT_EQ(behind.err,
            "Internal error in update_bdd_vars(nouv_index):\n"
            "awaited 9 variables, found: 8\n");
}

TEST_F(Wood, TheTablesFollowASharedManager) {
  bddpp_manager manager;
  const bdd p = manager.New_var_last("p"), q = manager.New_var_last("q");
  {
    Bddexpressionwood first(&manager), second(&manager);
    EXPECT_NE(first.get_common_bdd_manager(), 0);
    EXPECT_EQ(first.Nb_max_bdd_vars(), 2);
    const bdd r = first.New_var_last("r");
    EXPECT_EQ(first.Nb_max_bdd_vars(), 4);
    EXPECT_EQ(second.Nb_bdd_vars(), 2);
    Bddexpression* e = new Bddexpression(&second, r, manager.Bdd_and(p, q), 0, 0);
    EXPECT_EQ(second.Nb_bdd_vars(), 3);
    EXPECT_EQ(second.exp_by_index(2), e);
    EXPECT_EQ(first.exp_by_index(2), nullptr);
    const Bddexpressionwood copy(second);
    EXPECT_EQ(copy.my_bdd_manager(), &manager);
    EXPECT_EQ(*copy.exp_by_index(2), *e);
  }
  EXPECT_EQ(manager.Bdd_and(q, p), manager.Bdd_and(p, q));
  EXPECT_EQ(manager.Nb_bdd_vars(), 3);
}

TEST_F(Wood, GrowthRebuildsDependencesFromFunctions) {
  Bddexpression* e = equation(a, x);
  e->add_specific_var_dependance(1);
  for (const char* name : {"d", "e", "f"}) wood.New_var_last(name);
  EXPECT_EQ(e->set_of_var_dependances(), (index_set{0, 1}));
  wood.New_var_last("g");
  EXPECT_EQ(wood.Nb_max_bdd_vars(), 16);
  EXPECT_EQ(e->set_of_var_dependances(), index_set{0});
}

TEST_F(Wood, TheCapacityHasALimit) {
  EXPECT_EQ(doubled_capacity(1, 5, "w"), 8);
  EXPECT_EQ(doubled_capacity(536870911, 536870912, "w"), 1073741822);
  const Outcome outcome =
      run_captured([] { doubled_capacity(1, 1073741825, "Bddexpressionwood"); });
  EXPECT_EQ(outcome.err, "in Bddexpressionwood: Nb bdd vars reached!\nprogram aborted ...\n");
  EXPECT_EQ(outcome.exit_status, 1);
}

TEST_F(Wood, ACopyStandsAlone) {
  Bddexpression* ea = new Bddexpression("first", &wood, a, wood.Bdd_xor(x, y), 3, 4, 7);
  ea->setW(6);
  new Bddexpression(3, &wood, index_set{2}, "data", 1, 2);
  Bddexpressionwood copy(wood);
  EXPECT_NE(copy.my_bdd_manager(), wood.my_bdd_manager());
  EXPECT_EQ(copy.Nb_level(), wood.Nb_level());
  EXPECT_EQ(copy.Set_of_exp(), wood.Set_of_exp());
  const Bddexpression* ca = copy.exp_by_name("first");
  EXPECT_EQ(ca->my_wood(), &copy);
  EXPECT_EQ(ca->my_bdd_exp(), copy.Bdd_xor(copy.Bdd_var_by_name("x"), copy.Bdd_var_by_name("y")));
  EXPECT_EQ(ca->getW(), 6);
  EXPECT_EQ(ca->getUserType(), 7);
  EXPECT_EQ(ca->getEarlyDate(), 3);
  EXPECT_EQ(ca->getLateDate(), 4);
  EXPECT_EQ(copy.exp_by_index(3)->my_exp_def(), "data");
  EXPECT_EQ(copy.set_of_amont_dependances(2), index_set{3});
  ea->append_not_exp();
  EXPECT_EQ(ca->my_bdd_exp(), copy.Bdd_xor(copy.Bdd_var_by_name("x"), copy.Bdd_var_by_name("y")));

  Bddexpressionwood other;
  new Bddexpression(&other, other.New_var_last("q"), other.Bdd_one(), 0, 0);
  other = copy;
  EXPECT_EQ(other.exp_number(), 2);
  EXPECT_EQ(other.Index_var_by_name("q"), -1);
  other = *&other;
  EXPECT_EQ(other.exp_number(), 2);
  other.New_var_last("more");
  EXPECT_EQ(other.Nb_bdd_vars(), 6);

  const Bddexpressionwood shell(static_cast<const Bddexpressionwood*>(nullptr));
  EXPECT_EQ(shell.my_bdd_manager(), nullptr);
  EXPECT_EQ(shell.exp_number(), 0);
}

TEST_F(Wood, EqualityOfEquations) {
  const std::unique_ptr<Bddexpression> e(
      new Bddexpression("n", &wood, a, wood.Bdd_and(x, y), 1, 2, 3));
  Bddexpression copy(&wood, *equation(a, x));
  copy = *e;
  EXPECT_EQ(copy, *e);
  copy.setEarlyDate(9);
  EXPECT_EQ(copy, *e);
  copy.setW(2);
  EXPECT_NE(copy, *e);
  copy = *e;
  copy.setUserType(4);
  EXPECT_NE(copy, *e);
}

TEST_F(Wood, IntegrationGoesByName) {
  equation(a, x);
  Bddexpressionwood other;
  // The same names in another order, and one that is new here.
  const bdd oc = other.New_var_last("c"), oz = other.New_var_last("z"),
            oa = other.New_var_last("a"), ox = other.New_var_last("x");
  new Bddexpression("from other", &other, oa, other.Bdd_and(ox, other.Bdd_not(oz)), 2, 5, 7);
  new Bddexpression(0, &other, index_set{2}, "data", 3, 0);
  wood.integrate_wood(&other);
  EXPECT_EQ(wood.exp_number(), 2);
  const bdd z = wood.Bdd_var_by_name("z");
  const Bddexpression* ea = wood.exp_by_bdd(a);
  EXPECT_EQ(ea->my_name(), "from other");
  EXPECT_EQ(ea->my_bdd_exp(), wood.Bdd_and(x, wood.Bdd_not(z)));
  EXPECT_EQ(ea->getUserType(), 7);
  EXPECT_EQ(ea->getEarlyDate(), 2);
  EXPECT_EQ(ea->getLateDate(), 5);
  EXPECT_EQ(wood.exp_by_bdd(c)->set_of_var_dependances(), index_set{2});
  EXPECT_EQ(wood.exp_by_bdd(c)->my_exp_def(), "data");
  EXPECT_EQ(wood.Nb_level(), 5);
  expect_coherent();
  EXPECT_EQ(other.exp_number(), 2);
}

TEST_F(Wood, PrintedForms) {
  equation(a, wood.Bdd_and(x, y));
  new Bddexpression(3, &wood, index_set{2}, "f(a)", 1, 2);
  std::ostringstream out;
  out << wood;
  EXPECT_EQ(out.str(),
            "wood of 2 equations over 5 variables:\n"
            "  2: a reads (x, y), early 0, late 0\n"
            "  3: b reads (a), abstract: \"f(a)\", early 1, late 2\n");
  const Outcome outcome = run_captured([&] { wood.delete_prefixe_names("a"); });
  EXPECT_EQ(outcome.err, "a faire\n");
}

TEST_F(Wood, ManyReadersOfOneVariable) {
  Bddexpressionwood big;
  constexpr long count = 100000;
  const bdd input = big.New_var_last("input");
  for (long index = 1; index <= count; ++index) {
    new Bddexpression(&big, big.New_var_last(numbered("v", index)), input, 0, 0);
  }
  EXPECT_EQ(static_cast<long>(big.set_of_amont_dependances(0).size()), count);
  EXPECT_EQ(big.compute_dates(), 2);
  for (long index = count; index > 0; --index) big.forget_expression_by_bddid(index);
  EXPECT_EQ(big.exp_number(), 0);
  EXPECT_THAT(big.set_of_amont_dependances(0), IsEmpty());
}

}  // namespace

}  // namespace kiva::test
