// Declarations, compositions and observers: what a composition computes is what its parts compute,
// stepped by hand.

#include <gmock/gmock.h>

#include <iostream>
#include <sstream>

#include "tests/b_automaton/automata.h"
#include "tests/support/process_end.h"

namespace kiva::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Automaton, NumbersItsVariablesByKind) {
  auto toggle = make_automaton({.state = {"s"},
                                .next_state = {"n"},
                                .inputs = {"t", "u"},
                                .outputs = {"q"},
                                .locals = {},
                                .equations = {{"x", "t xor s"}, {"n", "x"}, {"q", "x or u"}},
                                .init = {1}});
  EXPECT_EQ(toggle->next_state_index(0), 1);
  EXPECT_EQ(toggle->num_input("u"), 1);
  EXPECT_EQ(toggle->ident_associe("u"), 3);
  EXPECT_EQ(toggle->ident_associe("q"), 4);
  EXPECT_EQ(toggle->num_local("x"), 0) << "an identifier that was added";
  EXPECT_EQ(toggle->num_local("s"), -1) << "one that was there";
  EXPECT_EQ(toggle->num_output("x"), -1);
  EXPECT_EQ(toggle->nb_equ_def(), 3);
  EXPECT_THAT(toggle->identify_undef_variables(), ElementsAre("s", "t", "u"));
  EXPECT_EQ(toggle->bddtoString(toggle->bdd_etat_init(), 1), "s");
  toggle->reverse_output(0);
  EXPECT_EQ(toggle->bddtoString(toggle->bdd_exp_ident_associe("q"), 1), "!u.!x");
  toggle->change_nom_input(0, "tick");
  EXPECT_EQ(toggle->bddtoString(toggle->bdd_exp_ident_associe("x"), 1), "s.!tick+!s.tick");

  const Outcome outcome = run_captured([&] {
    EXPECT_EQ(toggle->nom_output(1), "?");
    EXPECT_EQ(toggle->nom_local(-1), "?");
    EXPECT_EQ(toggle->valeur_initiale_state_var(1), 2);
    toggle->reverse_output(3);
  });
  EXPECT_EQ(outcome.err,
            "dans b_automaton::nom_output() : indice hors limite !\n"
            "dans b_automaton::nom_local() : indice hors limite !\n"
            "Warning: call of b_automaton::valeur_initiale_state_var() with an id out of range "
            "...\n"
            "dans b_automaton::reverse_output() : indice hors limite !\n");
  const auto stateless = make_automaton({.outputs = {"q"}, .equations = {{"q", "1"}}});
  EXPECT_EQ(stateless->bdd_etat_init(), stateless->manager_associe()->Bdd_one());
}

TEST(Automaton, BadDeclarationsAreToldBeforeAnythingIsMade) {
  using L = std::list<std::string>;
  Outcome outcome = run_captured([] { b_autom_dec(L{"s"}, L{}, L{}, L{}, L{}); });
  EXPECT_TRUE(outcome.ended);
  EXPECT_EQ(outcome.err, "Parameters error in b_autom_dec::b_autom_dec(lists)\n");
  using S = std::set<std::string>;
  outcome = run_captured([] { b_autom_dec(L{"s"}, L{}, S{}, S{}, S{}); });
  EXPECT_EQ(outcome.err, "Parameters error in b_autom_dec::b_autom_dec(sets)\n");
  outcome = run_captured([] { b_autom_dec(L{"s"}, L{"n"}, L{"x"}, L{"x"}, L{}); });
  EXPECT_TRUE(outcome.ended);
  EXPECT_THAT(outcome.err, HasSubstr("the name \"x\" stands twice"));
}

TEST(Composition, StepsAsItsPartsDo) {
  std::mt19937 random(1);
  for (int round = 0; round < 30; ++round) {
    // What reads a shared output would read both.
    const auto a = random_automaton(random, 3, 2, 2, 2, false);
    const auto b = random_automaton(random, 2, 3, 2, 1, false);
    b->change_nom_input(2, "b2");
    b->change_nom_output(1, "p1");
    // a's output 1 drives b's input 0; input a1 and output o0 are shared; a's input a0 stands alone
    // under its name, as b's is internal.
    const b_automaton_connector wire{0, 1, 1, 0};
    b_automaton* const parts[] = {a.get(), b.get()};
    const std::string instances[] = {"A", "B"};
    b_automaton both(2, parts, instances, 1, &wire);
    ASSERT_THAT(both.sort(), testing::IsEmpty());
    EXPECT_THAT(both.inputs_list(), ElementsAre("a0", "a1", "b2"));
    EXPECT_THAT(both.outputs_list(), ElementsAre("o0", "p1"));
    EXPECT_THAT(both.locals_list(), ElementsAre("B_a0", "A_o1", "A_l0", "A_l1", "B_l0"));
    std::vector<int> state_a = initial_state(*a), state_b = initial_state(*b);
    std::vector<int> state = initial_state(both);
    for (int instant = 0; instant < 40; ++instant) {
      const std::vector<int> in = bits(random(), 3);
      const std::vector<int> values_a = step(*a, state_a, {in[0], in[1]});
      const std::vector<int> out_a = outputs_of(*a, values_a);
      const std::vector<int> values_b = step(*b, state_b, {out_a[1], in[1], in[2]});
      const std::vector<int> out_b = outputs_of(*b, values_b);
      const std::vector<int> values = step(both, state, in);
      EXPECT_THAT(outputs_of(both, values), ElementsAre(out_a[0] | out_b[0], out_b[1]));
      state_a = next_state_of(*a, values_a);
      state_b = next_state_of(*b, values_b);
      state = next_state_of(both, values);
      std::vector<int> parted = state_a;
      parted.insert(parted.end(), state_b.begin(), state_b.end());
      ASSERT_EQ(state, parted);
    }
  }
}

TEST(Composition, HoldsTheInvariantsOfAllItsParts) {
  const auto part = [](const std::string& s, const std::string& n, const std::string& o) {
    return make_automaton({.state = {s},
                           .next_state = {n},
                           .inputs = {"t"},
                           .outputs = {o},
                           .locals = {},
                           .equations = {{n, "t"}, {o, s}},
                           .init = {1},
                           .invariant = s});
  };
  const auto a = part("s", "n", "o"), b = part("r", "m", "p");
  b_automaton* const parts[] = {a.get(), b.get()};
  const std::string instances[] = {"A", "B"};
  const b_automaton both(2, parts, instances, 0, nullptr);
  EXPECT_EQ(both.bddtoString(both.invariant(), 1), "A_s.B_r");
}

TEST(Composition, MergesByNameAndRefusesWhatMeets) {
  const auto source =
      make_automaton({.inputs = {"i"}, .outputs = {"x"}, .equations = {{"x", "not i"}}});
  const auto sink =
      make_automaton({.inputs = {"x"}, .outputs = {"y"}, .equations = {{"y", "not x"}}});
  const auto chain = merge(source.get(), sink.get());
  EXPECT_THAT(chain->inputs_list(), ElementsAre("i"));
  EXPECT_THAT(chain->locals_list(), ElementsAre("inst1_x", "inst0_x"));
  EXPECT_TRUE(chain->sort().empty());
  EXPECT_THAT(outputs_of(*chain, step(*chain, {}, {1})), ElementsAre(1));
  EXPECT_EQ(merge(source.get(), nullptr), nullptr);
  const auto apart = make_automaton({.inputs = {"k"}, .outputs = {"z"}, .equations = {{"z", "k"}}});
  EXPECT_EQ(merge(source.get(), apart.get())->nb_locals(), 0);

  b_automaton* const parts[] = {source.get(), sink.get()};
  const std::string instances[] = {"A", "B"};
  const auto refused = [&](std::vector<b_automaton_connector> wires) {
    return run_captured([&] {
             b_automaton(2, parts, instances, static_cast<int>(wires.size()), wires.data());
           })
        .err;
  };
  EXPECT_THAT(refused({}), HasSubstr("the name \"x\" stands twice")) << "an input and an output";
  EXPECT_THAT(refused({{0, 1, 1, 0}}), HasSubstr("connector 0 leads nowhere"));
  EXPECT_THAT(refused({{0, 0, 1, 0}, {1, 0, 1, 0}}), HasSubstr("the end of two connectors"));
  std::ostringstream text;
  text << b_automaton_connector{0, 1, 2, 3};
  EXPECT_EQ(text.str(), "0, 1 --> 2, 3");
}

TEST(Composition, AnObserverTellsWhetherOutputsAgree) {
  std::mt19937 random(2);
  const auto a = random_automaton(random, 2, 2, 2, 1);
  const auto b = random_automaton(random, 3, 2, 2, 0);
  const auto both = observateur_equivalence(a.get(), b.get());
  ASSERT_TRUE(both->sort().empty());
  EXPECT_THAT(both->outputs_list(), ElementsAre("equiv"));
  EXPECT_EQ(both->nom_state_var(0), "autom1_s0");
  int seen[2] = {0, 0};
  for (unsigned point = 0; point < 128; ++point) {
    const std::vector<int> state = bits(point, 5), in = bits(point >> 5, 2);
    const bool equal = outputs_of(*a, step(*a, {state[0], state[1]}, in)) ==
                       outputs_of(*b, step(*b, {state[2], state[3], state[4]}, in));
    EXPECT_THAT(outputs_of(*both, step(*both, state, in)), ElementsAre(equal ? 1 : 0));
    ++seen[equal];
  }
  EXPECT_GT(seen[0], 0);
  EXPECT_GT(seen[1], 0);
}

}  // namespace
}  // namespace kiva::test
