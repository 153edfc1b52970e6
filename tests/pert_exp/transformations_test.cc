// Transformations of woods: small ones worked out by hand, and random ones whose values before and
// after must agree.

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <sstream>

#include "pert_exp/Bddexpression.h"
#include "tests/pert_exp/plain_dating.h"
#include "tests/support/process_end.h"

namespace kiva::test {

namespace {

using testing::ElementsAre;
using testing::StartsWith;

std::string incoherence(const Bddexpressionwood& wood) {
  std::ostringstream out;
  wood.coherence_dependances_check(out);
  for (long index : wood.Set_of_exp()) {
    const Bddexpression& e = *wood.exp_by_index(index);
    if (e.getAbstraction() == 0 &&
        e.set_of_var_dependances() != wood.my_bdd_manager()->set_of_index_depend_on(e.my_bdd_exp()))
      out << "dependences of " << e.my_bddname() << " are not those of its function\n";
  }
  return out.str();
}

/// Dates from nothing.
void redate(Bddexpressionwood& wood) {
  for (long index : wood.Set_of_exp()) wood.exp_by_index(index)->setEarlyDate(0);
  wood.update_nb_level(0);
  wood.compute_dates();
}

/// The value of every variable: those without function from the bits of `assignment`, by place in
/// `free`; the others by one pass in the order of evaluation.
std::map<std::string, int> evaluated(Bddexpressionwood& wood, const std::vector<std::string>& free,
                                     unsigned assignment) {
  std::vector<int> literals(static_cast<size_t>(wood.Nb_bdd_vars()), 2);
  for (size_t i = 0; i < free.size(); ++i)
    literals[static_cast<size_t>(wood.Index_var_by_name(free[i]))] = assignment >> i & 1;
  for (long index : wood.earliest_sort()) {
    const Bddexpression& e = *wood.exp_by_index(index);
    if (e.getAbstraction() == 0)
      literals[static_cast<size_t>(index)] =
          wood.my_bdd_manager()->Bdd_eval_for_literal(e.my_bdd_exp(), literals.data());
  }
  std::map<std::string, int> values;
  for (long index : wood.Set_of_exp())
    values[wood.Name_var_by_index(index)] = literals[static_cast<size_t>(index)];
  return values;
}

/// Inputs, equations in a random order of dependence and of user types, some of them constant, some
/// of one variable, some abstract (these stand among the free variables).
struct Random_wood {
  explicit Random_wood(unsigned seed, bool abstract = true)
      : random(seed) {  // house: one draw after the other
    const long inputs = 2 + pick(3);
    const long equations = 3 + pick(9);
    std::vector<std::string> names;
    for (long i = 0; i < inputs; ++i) names.push_back(numbered("i", i));
    for (long i = 0; i < equations; ++i) names.push_back(numbered("e", i));
    std::vector<std::string> by_index = names;
    std::shuffle(by_index.begin(), by_index.end(), random);
    for (const std::string& name : by_index) wood.New_var_last(name);
    free.assign(names.begin(), names.begin() + inputs);
    for (long i = 0; i < equations; ++i) {
      const long known = inputs + i;
      const bdd var = wood.Bdd_var_by_name(names[static_cast<size_t>(known)]);
      const auto any = [&] {
        const bdd f = wood.Bdd_var_by_name(names[static_cast<size_t>(pick(known))]);
        return pick(2) == 0 ? f : wood.Bdd_not(f);
      };
      const int type = 1 + static_cast<int>(pick(12));
      const long kind = pick(10);
      if (kind == 0 && abstract && free.size() < 7) {
        index_set deps;
        for (long k = pick(3); k > 0; --k) deps.insert(wood.Bdd_if_index(any()));
        auto* e = new Bddexpression(wood.Bdd_if_index(var), &wood, deps, "data", 0, 0);
        e->setUserType(type);
        free.push_back(names[static_cast<size_t>(known)]);
        continue;
      }
      const bdd f = kind <= 2   ? (pick(2) == 0 ? wood.Bdd_one() : wood.Bdd_zero())
                    : kind <= 4 ? any()
                    : kind <= 7 ? wood.Bdd_and(any(), any())
                                : wood.Bdd_ite(any(), any(), any());
      new Bddexpression(numbered("n", i), &wood, var, f, 0, 0, type);
    }
    for (int type = 1; type <= 12; ++type) {
      if (pick(4) == 0) keep.push_back(type);
    }
    redate(wood);
  }
  long pick(long n) { return static_cast<long>(random() % static_cast<unsigned long>(n)); }
  unsigned assignments() const { return 1u << free.size(); }

  std::mt19937 random;
  Bddexpressionwood wood;
  std::vector<std::string> free;
  std::list<int> keep;
};

bool kept(const Bddexpression& e, const std::list<int>& keep) {
  return std::find(keep.begin(), keep.end(), e.getUserType()) != keep.end();
}

bool read_by_abstract(const Bddexpressionwood& wood, long index) {
  const index_set& readers = wood.set_of_amont_dependances(index);
  return std::any_of(readers.begin(), readers.end(),
                     [&](long reader) { return wood.exp_by_index(reader)->getAbstraction() != 0; });
}

/// Transforms, and checks that what is left has its values, on the assignments that `holds` admits,
/// and that nothing went that had to stay. Where `constants_go` holds, equations of a kept type may
/// go if their value never changes.
template <class Transform, class Holds>
void check_values(Random_wood& world, Transform transform, Holds holds, bool constants_go = false) {
  Bddexpressionwood& wood = world.wood;
  std::vector<std::map<std::string, int>> before;
  for (unsigned a = 0; a < world.assignments(); ++a)
    before.push_back(evaluated(wood, world.free, a));
  std::vector<std::string> must_stay;
  for (long index : wood.Set_of_exp()) {
    const Bddexpression& e = *wood.exp_by_index(index);
    const std::string name = wood.Name_var_by_index(index);
    const bool constant = std::all_of(before.begin(), before.end(), [&](const auto& values) {
      return values.at(name) == before.front().at(name);
    });
    if ((kept(e, world.keep) && !(constant && constants_go)) || e.getAbstraction() != 0 ||
        read_by_abstract(wood, index))
      must_stay.push_back(name);
  }
  transform();
  ASSERT_EQ(incoherence(wood), "");
  for (const std::string& name : must_stay)
    ASSERT_NE(wood.exp_by_index(wood.Index_var_by_name(name)), nullptr) << name << " went";
  redate(wood);
  for (unsigned a = 0; a < world.assignments(); ++a) {
    if (!holds(a)) continue;
    for (const auto& [name, value] : evaluated(wood, world.free, a))
      ASSERT_EQ(value, before[a][name]) << name << " under " << a;
  }
}

const auto always = [](unsigned) { return true; };

/// Runs body(world) on random woods.
template <class Body>
void on_random_woods(int runs, Body body) {
  const unsigned seed = std::random_device()();
  for (int run = 0; run < runs; ++run) {
    SCOPED_TRACE("seed " + std::to_string(seed + static_cast<unsigned>(run)));
    Random_wood world(seed + static_cast<unsigned>(run));
    body(world);
    if (testing::Test::HasFatalFailure()) return;
  }
}

/// Inputs x, y and variables a to d, at the indices 0 to 5.
struct Transformations : testing::Test {
  /// In place of the one that stood there.
  Bddexpression* equation(const bdd& var, const bdd& f, int type = 0) {
    const std::unique_ptr<Bddexpression> old(wood.exp_by_bdd(var));
    return new Bddexpression(wood.Name_var_by_bdd(var), &wood, var, f, 0, 0, type);
  }
  Bddexpression* abstract(const bdd& var, const index_set& reads) {
    return new Bddexpression(wood.Bdd_if_index(var), &wood, reads, "data", 0, 0);
  }
  const bdd& function(const bdd& var) { return wood.exp_by_bdd(var)->my_bdd_exp(); }
  bool stands(const bdd& var) { return wood.exp_by_bdd(var) != nullptr; }
  const index_set& readers(const bdd& var) {
    return wood.set_of_amont_dependances(wood.Bdd_if_index(var));
  }
  bdd n(const bdd& f) { return wood.Bdd_not(f); }
  bdd both(const bdd& f, const bdd& g) { return wood.Bdd_and(f, g); }

  Bddexpressionwood wood;
  bdd x = wood.New_var_last("x"), y = wood.New_var_last("y");
  bdd a = wood.New_var_last("a"), b = wood.New_var_last("b"), c = wood.New_var_last("c"),
      d = wood.New_var_last("d");
};

}  // namespace

TEST_F(Transformations, ReadersWithoutEquationAreDropped) {
  equation(a, wood.Bdd_one());
  equation(c, y);
  wood.add_amont_dependance(2, 3);
  wood.add_amont_dependance(4, 3);
  wood.suppress_locals();
  EXPECT_FALSE(stands(a));
  EXPECT_FALSE(stands(c));
  EXPECT_EQ(readers(a), index_set{});
  EXPECT_EQ(readers(y), index_set{});
}

TEST_F(Transformations, GlobalTautology) {
  equation(a, wood.Bdd_one());
  equation(b, both(a, n(a)));
  equation(c, wood.Bdd_or(a, x));
  EXPECT_NE(wood.global_tautology(), 0);
  equation(d, y);
  EXPECT_EQ(wood.global_tautology(), 0);
}

TEST_F(Transformations, EquationsThatReadThemselves) {
  run_captured([&] {
    equation(a, n(a));
    equation(b, both(a, x));
    equation(c, a);
    equation(d, both(c, x));
  });
  for (const bool suppress : {true, false}) {
    const Outcome outcome = run_captured([&] {
      if (suppress)
        wood.suppress_local(2);
      else
        wood.useless_local(2);
    });
    EXPECT_EQ(outcome.exit_status, 1);
    EXPECT_THAT(outcome.err, StartsWith("ERROR: detected self-dependance about variable : 2 !!!\n"
                                        "in associated wood:\n"));
  }
  const Outcome whole = run_captured([&] {
    wood.suppress_wires();
    EXPECT_EQ(function(d), both(a, x)) << "c was a wire";
    wood.suppress_locals();
  });
  EXPECT_FALSE(whole.ended);
  EXPECT_EQ(function(a), n(a));
  EXPECT_EQ(function(b), both(a, x));
}

TEST_F(Transformations, CleanDropsIsolatedEquations) {
  for (int form = 0; form < 3; ++form) {
    equation(a, wood.Bdd_one());
    equation(b, wood.Bdd_zero());
    equation(c, x);
    equation(d, both(x, y));
    if (form == 0) wood.clean(std::list<long>{5, 3});
    if (form == 1) wood.clean(std::set<long>{3});
    if (form == 2) wood.clean(index_set{3, 4});
    EXPECT_EQ(wood.Set_of_exp(), (index_set{3, 4, 5}));
  }
  const std::unique_ptr<Bddexpression> taken_out(wood.exp_by_index(5));
  wood.Exp_table()[5] = nullptr;
  const Outcome outcome = run_captured([&] { wood.clean(index_set{}); });
  EXPECT_EQ(outcome.err,
            "Warning in Bddexpressionwood::clean():\n"
            "  Expression for id var 5 should be existed ...\n");
}

TEST_F(Transformations, ReductionsThatForgetAVariable) {
  const auto fill = [&] {
    equation(a, wood.Bdd_ite(x, y, n(y)), 3);
    equation(b, both(a, wood.Bdd_or(x, y)));
    equation(c, both(x, b));
  };
  fill();
  wood.reduce_expressions_when_var_forgotten_by_exist_op(0);
  EXPECT_FALSE(stands(a)) << "one for some x";
  EXPECT_FALSE(stands(b));
  EXPECT_EQ(function(c), wood.Bdd_one());
  fill();
  wood.reduce_expressions_when_var_forgotten_by_forall_op(0);
  EXPECT_FALSE(stands(a));
  EXPECT_EQ(function(b), wood.Bdd_zero()) << "c does not read it any more";
  EXPECT_EQ(function(c), wood.Bdd_zero());
  EXPECT_EQ(incoherence(wood), "");
}

TEST_F(Transformations, Propositions) {
  EXPECT_EQ(wood.reduce_proposition_by_assertion(), wood.Bdd_one());
  EXPECT_EQ(wood.reduce_proposition_by_variable(), -1);
  equation(b, both(y, n(x)));
  equation(a, both(b, y));
  equation(c, wood.Bdd_one());
  wood.compute_dates();
  EXPECT_EQ(wood.latest_sort().front(), 3);
  EXPECT_EQ(wood.reduce_proposition_by_assertion(), both(n(x), y));
  EXPECT_EQ(wood.reduce_proposition_by_variable(), 0);
}

TEST_F(Transformations, ShannonExpansion) {
  Bddexpression* e = equation(a, wood.Bdd_ite(x, y, b));
  long then_index = 0, else_index = 0;
  e->Shannon_expand(6, then_index, else_index);
  EXPECT_EQ(then_index, -3);
  EXPECT_EQ(else_index, -3);
  EXPECT_EQ(wood.Nb_bdd_vars(), 6);
  e->Shannon_expand(0, then_index, else_index);
  EXPECT_EQ(wood.Name_var_by_index(then_index), "a_x");
  EXPECT_EQ(wood.Name_var_by_index(else_index), "a_notx");
  const bdd then_var = wood.Bdd_var_by_index(then_index);
  const bdd else_var = wood.Bdd_var_by_index(else_index);
  EXPECT_EQ(function(then_var), y);
  EXPECT_EQ(function(else_var), b);
  EXPECT_EQ(function(a), wood.Bdd_ite(x, then_var, else_var));
  // Names that stand already are nobody's to redefine.
  e->Shannon_expand(0, then_index, else_index);
  EXPECT_EQ(wood.Name_var_by_index(then_index), "a_x_");
  EXPECT_EQ(function(then_var), y);
  abstract(d, {0})->Shannon_expand(0, then_index, else_index);
  EXPECT_EQ(then_index, -3);
  EXPECT_EQ(incoherence(wood), "");
}

TEST_F(Transformations, ATrueContradictionHasNoCaseThatOpensIt) {
  run_captured([&] { equation(d, n(d)); });
  int ok = -1;
  run_captured([&] { wood.loop_breaking(std::set<long>{0, 1}, ok); });
  EXPECT_EQ(ok, 0);
}

TEST_F(Transformations, InclusionCarriesAllThatAnEquationHas) {
  Bddexpressionwood other;
  const bdd p = other.New_var_last("p"), q = other.New_var_last("q"), r = other.New_var_last("r");
  other.New_var_last("unused");
  new Bddexpression("sum", &other, q, other.Bdd_and(p, r), 3, 4, 9);
  const index_set reads{1}, read_by{0};
  auto* data = new Bddexpression(2, &other, &reads, &read_by, "f(q)", 5, 6);
  data->setName("data");
  wood.Include_wood_instance(other, "@1");
  EXPECT_EQ(wood.Index_var_by_name("unused@1"), -1);
  const Bddexpression& e = *wood.exp_by_bddname("q@1");
  EXPECT_EQ(e.my_name(), "sum@1");
  EXPECT_EQ(e.getUserType(), 9);
  EXPECT_EQ(e.getEarlyDate(), 3);
  EXPECT_EQ(e.getLateDate(), 4);
  const Bddexpression& f = *wood.exp_by_bddname("r@1");
  EXPECT_EQ(f.getAbstraction(), 1);
  EXPECT_EQ(f.my_exp_def(), "f(q)");
  EXPECT_EQ(f.set_of_var_dependances(), index_set{wood.Index_var_by_name("q@1")});
  // The same suffix again finds the variables made, and a wood may take in itself.
  const long before = wood.Nb_bdd_vars();
  wood.Include_wood_instance(other, "@1");
  EXPECT_EQ(wood.Nb_bdd_vars(), before);
  EXPECT_EQ(wood.exp_number(), 2);
  other.Include_wood_instance(other, "_self");
  EXPECT_EQ(other.exp_number(), 4);
  EXPECT_EQ(incoherence(wood), "");
}

TEST(RandomTransformations, ConstantsKeepAllValues) {
  on_random_woods(400, [](Random_wood& world) {
    check_values(
        world, [&] { world.wood.constants_propagation(world.keep); }, always);
    for (long index : world.wood.Set_of_exp()) {
      const Bddexpression& e = *world.wood.exp_by_index(index);
      if (e.getAbstraction() != 0) continue;
      // Nothing is left to propagate.
      for (long dep : e.set_of_var_dependances()) {
        const Bddexpression* read = world.wood.exp_by_index(dep);
        ASSERT_FALSE(read != nullptr &&
                     world.wood.my_bdd_manager()->Bdd_is_tautology(read->my_bdd_exp()) != 0);
      }
    }
  });
}

TEST(RandomTransformations, LocalsKeepAllValues) {
  on_random_woods(400, [](Random_wood& world) {
    check_values(
        world, [&] { world.wood.suppress_locals(world.keep); }, always, true);
    for (long index : world.wood.Set_of_exp()) {
      const Bddexpression& e = *world.wood.exp_by_index(index);
      const bool could_go = e.getAbstraction() == 0 && !e.set_of_var_dependances().empty() &&
                            !world.wood.set_of_amont_dependances(index).empty() &&
                            !read_by_abstract(world.wood, index) && !kept(e, world.keep);
      ASSERT_FALSE(could_go) << e.my_bddname();
    }
  });
}

TEST(RandomTransformations, WiresKeepAllValuesAndAreDated) {
  on_random_woods(400, [](Random_wood& world) {
    Bddexpressionwood& wood = world.wood;
    for (long index : wood.Set_of_exp()) wood.exp_by_index(index)->setW(world.pick(4));
    check_values(
        world,
        [&] {
          wood.suppress_wires(world.keep);
          for (long index : wood.Set_of_exp()) {
            ASSERT_EQ(wood.exp_by_index(index)->getEarlyDate(), wood.up_critical_path(index, 1, 1));
            ASSERT_EQ(wood.getLateDate(index), wood.down_critical_path(index, 1, 0));
          }
        },
        always);
  });
}

TEST(RandomTransformations, SingleLocalsAndCleaning) {
  on_random_woods(300, [](Random_wood& world) {
    world.keep.clear();
    for (int step = 0; step < 4; ++step) {
      const long index = world.pick(world.wood.Nb_bdd_vars());
      const bool suppress = world.pick(2) == 0;
      check_values(
          world,
          [&] {
            if (suppress)
              world.wood.suppress_local(index);
            else
              world.wood.useless_local(index);
          },
          always);
    }
    world.wood.clean(index_set(world.wood.Set_of_exp()));
    ASSERT_EQ(incoherence(world.wood), "");
  });
}

TEST(RandomTransformations, ReductionsAgreeWhereTheCubeHolds) {
  on_random_woods(400, [](Random_wood& world) {
    unsigned care = static_cast<unsigned>(world.pick(1l << world.free.size()));
    const unsigned values = static_cast<unsigned>(world.pick(1l << world.free.size())) & care;
    bdd cube = world.wood.Bdd_one();
    for (size_t i = 0; i < world.free.size(); ++i) {
      const bdd v = world.wood.Bdd_var_by_name(world.free[i]);
      if ((care >> i & 1) != 0)
        cube = world.wood.Bdd_and(cube, (values >> i & 1) != 0 ? v : world.wood.Bdd_not(v));
    }
    check_values(
        world, [&] { world.wood.reduce_expressions(cube, world.keep); },
        [&](unsigned assignment) { return (assignment & care) == values; });
  });
}

TEST(RandomTransformations, BrokenLoopsHaveTheValuesOfTheirCases) {
  // Two acyclic woods over one set of variables, in orders of their own; an input chooses.
  const unsigned seed = std::random_device()();
  for (unsigned run = 0; run < 200; ++run) {
    SCOPED_TRACE("seed " + std::to_string(seed + run));
    std::mt19937 random(seed + run);
    const auto pick = [&](long n) {
      return static_cast<long>(random() % static_cast<unsigned long>(n));
    };
    Bddexpressionwood wood, sides[2];
    const long equations = 2 + pick(4);
    const std::vector<std::string> inputs{"x", "y", "z"};
    for (Bddexpressionwood* w : {&wood, &sides[0], &sides[1]}) {
      for (const std::string& name : inputs) w->New_var_last(name);
      for (long i = 0; i < equations; ++i) w->New_var_last(numbered("e", i));
    }
    std::vector<long> order(static_cast<size_t>(equations));
    for (long i = 0; i < equations; ++i) order[static_cast<size_t>(i)] = 3 + i;
    for (Bddexpressionwood& side : sides) {
      std::shuffle(order.begin(), order.end(), random);
      for (long i = 0; i < equations; ++i) {
        const auto any = [&] {
          const long k = pick(2 + i);
          const bdd v = side.Bdd_var_by_index(k < 2 ? 1 + k : order[static_cast<size_t>(k - 2)]);
          return pick(2) == 0 ? v : side.Bdd_not(v);
        };
        const bdd var = side.Bdd_var_by_index(order[static_cast<size_t>(i)]);
        new Bddexpression(&side, var, side.Bdd_ite(any(), any(), any()), 0, 0);
      }
      redate(side);
    }
    run_captured([&] {
      for (long index = 3; index < 3 + equations; ++index) {
        bdd f[2];
        for (int s = 0; s < 2; ++s)
          f[s] = Bdd_isomorphe(wood.my_bdd_manager(), sides[s].my_bdd_manager(),
                               sides[s].exp_by_index(index)->my_bdd_exp());
        const bdd x = wood.Bdd_var_by_name("x");
        new Bddexpression(&wood, wood.Bdd_var_by_index(index), wood.Bdd_ite(x, f[1], f[0]), 0, 0);
      }
    });
    int ok = 0;
    wood.loop_breaking(index_set{0, 1, 2}, ok);
    ASSERT_EQ(ok, 1);
    ASSERT_EQ(incoherence(wood), "");
    for (unsigned in = 0; in < 8; ++in) {
      const auto values = evaluated(wood, inputs, in);
      for (const auto& [name, value] : evaluated(sides[in & 1], inputs, in))
        ASSERT_EQ(values.at(name), value) << name << " under " << in;
    }
  }
}

TEST(RandomTransformations, InstancesHaveTheValuesOfTheOriginal) {
  on_random_woods(150, [](Random_wood& world) {
    Bddexpressionwood apart;
    Bddexpressionwood beside(world.wood.my_bdd_manager());
    std::vector<std::string> free;
    for (const std::string& name : world.free) free.push_back(name + "@7");
    for (Bddexpressionwood* wood : {&apart, &beside}) {
      wood->Include_wood_instance(world.wood, "@7");
      // An input that nothing reads has no copy.
      for (const std::string& name : free) wood->New_var_last(name);
      redate(*wood);
      for (unsigned a = 0; a < world.assignments(); ++a) {
        const auto values = evaluated(*wood, free, a);
        const auto expected = evaluated(world.wood, world.free, a);
        ASSERT_EQ(values.size(), expected.size());
        for (const auto& [name, value] : expected) ASSERT_EQ(values.at(name + "@7"), value);
      }
    }
  });
}

TEST(LargeTransformations, ChainsOfAHundredThousand) {
  constexpr long count = 100000;
  for (const bool constant : {true, false}) {
    // From the last index down, so that each pass over the wood would settle one equation only.
    Bddexpressionwood wood;
    const bdd x = wood.New_var_last("x");
    for (long i = 0; i < count; ++i) wood.New_var_last(numbered("e", i));
    for (long i = count; i > 0; --i) {
      const bdd read = i == count ? (constant ? wood.Bdd_one() : x) : wood.Bdd_var_by_index(i + 1);
      new Bddexpression("", &wood, wood.Bdd_var_by_index(i), read, 0, 0, i % 2 == 0 ? 1 : 2);
    }
    if (constant) {
      wood.constants_propagation();
      EXPECT_EQ(wood.Set_of_exp(), index_set{1});
      EXPECT_EQ(wood.exp_by_index(1)->my_bdd_exp(), wood.Bdd_one());
    } else {
      wood.suppress_wires({1});
      EXPECT_EQ(wood.exp_number(), count / 2 + 1);
      EXPECT_EQ(wood.exp_by_index(2)->my_bdd_exp(), wood.Bdd_var_by_index(4));
      wood.suppress_locals();
      EXPECT_EQ(wood.Set_of_exp(), index_set{1});
      EXPECT_EQ(wood.exp_by_index(1)->my_bdd_exp(), x);
    }
    EXPECT_EQ(incoherence(wood), "");
  }
}

}  // namespace kiva::test
