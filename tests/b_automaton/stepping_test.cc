// Steps, enumerated cases, sensitivity, loops and cleaning, against all values of the inputs.

#include <gmock/gmock.h>

#include <sstream>

#include "tests/b_automaton/automata.h"
#include "tests/support/process_end.h"

namespace kiva::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// The product of literals from index `from` on.
bdd cube_of(const b_automaton& automaton, long from, const std::vector<int>& values) {
  bddpp_manager* manager = automaton.manager_associe();
  bdd cube = manager->Bdd_one();
  for (size_t k = 0; k < values.size(); ++k) {
    const bdd variable = manager->Bdd_var_by_index(from + static_cast<long>(k));
    cube = manager->Bdd_and(cube, values[k] == 1 ? variable : manager->Bdd_not(variable));
  }
  return cube;
}

TEST(Stepping, UnknownInputsMatterOnlyWhereTheyAreRead) {
  const auto automaton = make_automaton({.inputs = {"a", "b", "unread"},
                                         .outputs = {"o", "p"},
                                         .equations = {{"o", "a or b"}, {"p", "a and b"}}});
  std::vector<int> literals = {1, 2, 2, 2, 2}, result(5);
  const Outcome outcome = run_captured(
      [&] { EXPECT_EQ(automaton->evaluation_etat_suivant(literals.data(), 1, result.data()), 0); });
  EXPECT_THAT(result, ElementsAre(1, 2, 2, 1, 2));
  EXPECT_EQ(outcome.err,
            "ERROR IN EVALUATION: \n\np= a.b\n the variable p left member of equation p  depends "
            "on b because the variable b not defined\n");
  literals[1] = 0;
  EXPECT_EQ(automaton->evaluation_etat_suivant(literals.data(), 1, result.data()), 1);
  EXPECT_EQ(result[4], 0);
}

TEST(Stepping, CasesAreThoseOfAllInputs) {
  std::mt19937 random(3);
  for (int round = 0; round < 60; ++round) {
    const auto automaton = random_automaton(random, 3, 4, 2, 3);
    bddpp_manager* manager = automaton->manager_associe();
    const std::vector<int> state = bits(random(), 3);
    std::vector<bdd> conditions(200), next(200), outputs(200);
    const bdd cube = cube_of(*automaton, 0, state);
    const int n =
        automaton->evaluation_etats_suivants(cube, conditions.data(), next.data(), outputs.data());
    ASSERT_LE(n, 200);
    for (unsigned point = 0; point < 16; ++point) {
      const std::vector<int> in = bits(point, 4);
      const bdd at = cube_of(*automaton, automaton->input_index(0), in);
      const std::vector<int> values = step(*automaton, state, in);
      const bdd next_here = cube_of(*automaton, 0, next_state_of(*automaton, values));
      const bdd outputs_here =
          cube_of(*automaton, automaton->output_index(0), outputs_of(*automaton, values));
      int holding = 0;
      for (int k = 0; k < n; ++k) {
        if (!manager->Bdd_imply(at, conditions[static_cast<size_t>(k)])) continue;
        ++holding;
        EXPECT_EQ(next[static_cast<size_t>(k)], next_here);
        EXPECT_EQ(outputs[static_cast<size_t>(k)], outputs_here);
      }
      EXPECT_EQ(holding, 1) << "conditions are disjoint and cover everything";
      bdd outputs_of_cube;
      EXPECT_EQ(automaton->evaluation_etat_suivant(manager->Bdd_and(cube, at), 0, &outputs_of_cube),
                next_here);
      EXPECT_EQ(outputs_of_cube, outputs_here);
    }
    EXPECT_EQ(automaton->wood_associee()->get_common_bdd_manager(), 0);
  }
}

TEST(Stepping, SensitivityCubesDecideTheCone) {
  std::mt19937 random(4);
  for (int round = 0; round < 40; ++round) {
    const auto automaton = random_automaton(random, 2, 4, 2, 3);
    bddpp_manager* manager = automaton->manager_associe();
    const bdd state = cube_of(*automaton, 0, bits(random(), 2));
    std::list<bdd> own, cone, whole;
    run_captured([&] {
      own = automaton->sensibilite_entrees(state, automaton->output_index(0), true);
      cone = automaton->sensibilite_entrees(state, automaton->output_index(0));
      whole = automaton->old_sensibilite_entrees(state);
    });
    EXPECT_LE(cone.size(), own.size());
    for (const std::list<bdd>* cubes : {&own, &cone, &whole}) {
      bdd covered = manager->Bdd_zero();
      for (const bdd& cube : *cubes) {
        EXPECT_TRUE(manager->Bdds_excl(covered, cube));
        covered = manager->Bdd_or(covered, cube);
        if (cubes == &cone) continue;
        // The output has one value in all of it.
        int seen[2] = {0, 0};
        for (unsigned point = 0; point < 64; ++point) {
          const std::vector<int> s = bits(point, 2), in = bits(point >> 2, 4);
          const bdd at = manager->Bdd_and(cube_of(*automaton, 0, s),
                                          cube_of(*automaton, automaton->input_index(0), in));
          if (manager->Bdd_imply(at, manager->Bdd_and(cube, state)))
            ++seen[outputs_of(*automaton, step(*automaton, s, in))[0]];
        }
        EXPECT_TRUE(seen[0] == 0 || seen[1] == 0);
      }
      EXPECT_EQ(covered, manager->Bdd_one());
    }
  }
}

TEST(Stepping, LoopsSplitOnInputsOrStay) {
  // Each runs through the other, but never both ways at once.
  const AutomatonText arbiter{
      .inputs = {"c", "i"},
      .outputs = {"x", "y"},
      .equations = {{"x", "c and i or not c and y"}, {"y", "not c and i or c and x"}}};
  const auto splits = make_automaton(arbiter);
  EXPECT_EQ(splits->sort().size(), 2u);
  std::ostringstream dump;
  const Outcome outcome = run_captured([&] { EXPECT_NE(splits->make_sortable(1, 1, dump), 0); });
  EXPECT_EQ(outcome.err, "call make_sortable process \n   terminated ...\n");
  EXPECT_TRUE(dump.str().starts_with("sorted and expanded wood:\n"));
  EXPECT_TRUE(splits->sort().empty());
  EXPECT_EQ(splits->nb_locals(), 4);
  for (unsigned point = 0; point < 4; ++point) {
    const std::vector<int> in = bits(point, 2);
    EXPECT_THAT(outputs_of(*splits, step(*splits, {}, in)), ElementsAre(in[1], in[1]));
  }
  const auto stays = make_automaton(
      {.inputs = {"i"}, .outputs = {"x"}, .equations = {{"x", "i xor y"}, {"y", "not x"}}});
  EXPECT_EQ(stays->make_sortable(0, 0, dump), 0);
}

TEST(Cleaning, DropsWhatNoOutputNeeds) {
  const auto automaton = make_automaton(
      {.state = {"s", "dead"},
       .next_state = {"n", "deadn"},
       .inputs = {"a", "b"},
       .outputs = {"o"},
       .equations = {{"o", "s"}, {"n", "l"}, {"l", "a"}, {"deadn", "k"}, {"k", "b and dead"}},
       .init = {0, 0}});
  std::vector<int> marks;
  const Outcome outcome = run_captured([&] { marks = automaton->useless_clean(); });
  EXPECT_THAT(marks, ElementsAre(1, 0, 1, 0, 1, 0, 1, 1, 0));
  EXPECT_THAT(outcome.out, HasSubstr("useless_clean report:\n variable: dead\n variable: deadn\n"
                                     " variable: b\n variable: k\n"));
  EXPECT_THAT(outcome.out, HasSubstr("1 useless latches identified ... cancelling\n"));
  std::ostringstream blif;
  automaton->BLIF_restrict_put(blif, 0, "m", marks);
  EXPECT_EQ(blif.str(),
            ".model m\n.inputs a\n.outputs o\n.latch n s 0\n\n.names s o\n1 1\n.names a l\n1 1\n"
            ".names l n\n1 1\n\n.end\n\n");
}

TEST(Cleaning, ForgetsInputs) {
  const AutomatonText text{
      .inputs = {"a"}, .outputs = {"o", "p"}, .equations = {{"o", "a"}, {"p", "a xor a"}}};
  for (const bool forall : {true, false}) {
    const auto automaton = make_automaton(text);
    if (forall)
      automaton->forget_forall_inputs();
    else
      automaton->forget_exist_inputs();
    EXPECT_EQ(automaton->bddtoString(automaton->bdd_exp_ident_associe("o"), 1), forall ? "0" : "1");
  }
}

}  // namespace
}  // namespace kiva::test
