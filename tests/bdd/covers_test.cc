// Covers and implicants against truth tables, and against the same lists built as they are defined:
// pair by pair, with no sharing and no sketch.

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

#include "bdd/tdd.h"
#include "tests/bdd/truth_model.h"
#include "tests/support/process_end.h"

namespace kiva::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAreArray;

/// A product over N variables as its table: a subcube.
template <int N>
table<N> subcube(int care, int values) {
  table<N> t;
  for (int m = 0; m < 1 << N; ++m) t[m] = (m & care) == values;
  return t;
}

template <int N>
bool within(const table<N>& a, const table<N>& b) {
  return (a & ~b).none();
}

/// All maximal subcubes of f, by trying each.
template <int N>
std::vector<table<N>> maximal_subcubes(const table<N>& f) {
  std::vector<table<N>> primes;
  for (int care = 0; care < 1 << N; ++care) {
    for (int values = care;; values = (values - 1) & care) {
      const table<N> cube = subcube<N>(care, values);
      bool prime = within<N>(cube, f);
      for (int i = 0; prime && i < N; ++i) {
        const int bit = 1 << i;
        if ((care & bit) != 0) prime = !within<N>(subcube<N>(care & ~bit, values & ~bit), f);
      }
      if (prime) primes.push_back(cube);
      if (values == 0) break;
    }
  }
  return primes;
}

/// The lists as they are defined.
struct Plain_covers {
  bddpp_manager& m;

  void implicants(const bdd& f, const bdd& cube, std::vector<bdd>& out) {
    if (m.Bdd_is_zero_tautologic(f)) return;
    if (m.Bdd_is_one_tautologic(f)) {
      for (bdd& old : out) {
        if (!m.Bdd_imply(old, cube)) continue;
        old = cube;
        return;
      }
      out.push_back(cube);
      return;
    }
    const bdd v = m.Bdd_if(f), t = m.Bdd_then(f), e = m.Bdd_else(f);
    implicants(t, m.Bdd_and(cube, v), out);
    implicants(e, m.Bdd_and(cube, m.Bdd_not(v)), out);
    implicants(m.Bdd_and(e, t), cube, out);
  }
  std::vector<bdd> primes(const bdd& f) {
    if (m.Bdd_is_tautology(f)) return {f};
    std::vector<bdd> out, kept;
    implicants(f, m.Bdd_one(), out);
    for (size_t i = 0; i < out.size(); ++i) {
      for (size_t j = i + 1; j < out.size(); ++j) {
        if (m.Bdd_imply(out[j], out[i])) out[j] = m.Bdd_zero();
      }
      if (!m.Bdd_is_zero_tautologic(out[i])) kept.push_back(out[i]);
    }
    return kept;
  }
  bdd or_without(const std::vector<bdd>& list, size_t skipped) {
    bdd sum = m.Bdd_zero();
    for (size_t i = 0; i < list.size(); ++i) {
      if (i != skipped) sum = m.Bdd_or(sum, list[i]);
    }
    return sum;
  }
  std::vector<bdd> sop_1(const bdd& f) {
    if (m.Bdd_is_tautology(f)) return {f};
    std::vector<bdd> out, kept;
    for (bdd r = f; !m.Bdd_is_zero_tautologic(r); r = m.Bdd_and(r, m.Bdd_not(out.back())))
      out.push_back(m.Bdd_satisfy(r));
    for (bdd& p : out) {
      for (long index : m.set_of_index_depend_on(bdd(p))) {
        const bdd wider = m.Bdd_exist(p, m.Bdd_var_by_index(index));
        if (m.Bdd_is_one_tautologic(m.Bdd_reduce(f, wider))) p = wider;
      }
    }
    for (size_t i = 0; i < out.size(); ++i) {
      if (or_without(out, i) == f) out[i] = m.Bdd_zero();
      if (!m.Bdd_is_zero_tautologic(out[i])) kept.push_back(out[i]);
    }
    return kept;
  }
  std::vector<bdd> sop_2(const bdd& f) {
    std::vector<bdd> all = primes(f), out, other;
    bdd g = m.Bdd_zero();
    for (size_t i = 0; i < all.size(); ++i) {
      if (or_without(all, i) == f) {
        other.push_back(all[i]);
      } else {
        out.push_back(all[i]);
        g = m.Bdd_or(g, all[i]);
      }
    }
    for (bdd last; g != f && g != last;) {
      last = g;
      const auto p =
          std::find_if(other.begin(), other.end(), [&](const bdd& q) { return m.Bdds_excl(g, q); });
      if (p == other.end()) break;
      out.push_back(*p);
      g = m.Bdd_or(g, *p);
    }
    for (const bdd& p : other) {
      if (g == f) break;
      const bdd h = m.Bdd_or(g, p);
      if (h == g) continue;
      out.push_back(p);
      g = h;
    }
    return out;
  }
};

template <int N>
table<N> union_of(const std::vector<table<N>>& tables) {
  table<N> all;
  for (const table<N>& t : tables) all |= t;
  return all;
}

template <int N>
void check_covers(bddpp_manager& m, const bdd& f) {
  const table<N> truth = table_of<N>(f, m.Bdd_node_one());
  const auto tables = [&](const std::vector<bdd>& list) {
    std::vector<table<N>> all;
    for (const bdd& p : list) {
      EXPECT_EQ(m.Bdd_is_cube(p), 1);
      all.push_back(table_of<N>(p, m.Bdd_node_one()));
    }
    return all;
  };
  const std::vector<table<N>> primes = maximal_subcubes<N>(truth);
  const auto is_prime = [&](const table<N>& t) {
    return std::find(primes.begin(), primes.end(), t) != primes.end();
  };

  const auto disjoint = tables(m.Bdd_sop(f, 0));
  size_t minterms = 0;
  for (const table<N>& t : disjoint) minterms += t.count();
  ASSERT_EQ(union_of<N>(disjoint), truth);
  ASSERT_EQ(minterms, truth.count()) << "products overlap";

  const auto expanded = tables(m.Bdd_sop(f, 1)), from_primes = tables(m.Bdd_sop(f, 2));
  ASSERT_EQ(union_of<N>(expanded), truth);
  ASSERT_EQ(union_of<N>(from_primes), truth);
  if (truth.any()) {
    for (size_t i = 0; i < expanded.size(); ++i) {
      auto others = expanded;
      others.erase(others.begin() + static_cast<long>(i));
      ASSERT_TRUE(is_prime(expanded[i]));
      ASSERT_NE(union_of<N>(others), truth) << "redundant product";
    }
    for (const table<N>& t : from_primes) ASSERT_TRUE(is_prime(t));
    ASSERT_THAT(tables(m.Bdd_prime_implicants(f)), UnorderedElementsAreArray(primes));
  }
  std::vector<bdd> essential, other;
  m.Bdd_essential_implicants(f, essential, other);
  for (const auto& [list, expected] : {std::pair{&essential, true}, std::pair{&other, false}}) {
    for (const table<N>& t : tables(*list)) {
      auto rest = primes;
      std::erase(rest, t);
      ASSERT_EQ(union_of<N>(rest) != truth, expected);
    }
  }
  const bdd one = m.Bdd_one_implicant(f);
  ASSERT_EQ(m.Bdd_is_cube(one), 1);
  ASSERT_TRUE(within<N>(table_of<N>(one, m.Bdd_node_one()), truth));
  ASSERT_EQ(m.Bdd_is_zero_tautologic(one), m.Bdd_is_zero_tautologic(f));
}

void check_order(bddpp_manager& m, const bdd& f) {
  Plain_covers plain{m};
  ASSERT_EQ(m.Bdd_prime_implicants(f), plain.primes(f));
  ASSERT_EQ(m.Bdd_sop(f, 1), plain.sop_1(f));
  ASSERT_EQ(m.Bdd_sop(f, 2), plain.sop_2(f));
}

class Covers : public ::testing::Test {
 protected:
  bddpp_manager m;
  bdd a = m.New_var_last("a"), b = m.New_var_last("b"), c = m.New_var_last("c");
  bdd n(const bdd& f) { return m.Bdd_not(f); }
};

}  // namespace

TEST(CoversOfThreeVariables, InEachOrder) {
  for (int order = 0; order < ThreeVariables::orders; ++order) {
    ThreeVariables world(order);
    for (int mask = 0; mask < ThreeVariables::functions; ++mask) {
      SCOPED_TRACE("order " + std::to_string(order) + ", mask " + std::to_string(mask));
      check_covers<3>(world.m, world.f[mask]);
      check_order(world.m, world.f[mask]);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(CoversOfRandomFunctions, AreCoversAndComeInOrder) {
  const PrintedSeed seed;
  SCOPED_TRACE(seed.text());
  std::mt19937 random(seed.value);
  for (int run = 0; run < 60; ++run) {
    constexpr int N = 6;
    bddpp_manager m;
    for (int i = 0; i < N; ++i) {
      if (i == 0)
        m.New_var_last(name_of(i));
      else
        m.New_var_before(static_cast<long>(random() % static_cast<unsigned>(i)), name_of(i));
    }
    // From sparse to dense.
    table<N> t = random_table<N>(random, N);
    if (run % 3 == 0) t &= random_table<N>(random, N);
    if (run % 3 == 1) t |= random_table<N>(random, N) | random_table<N>(random, N);
    const bdd f = build<N>(m, t);
    check_covers<N>(m, f);
    check_order(m, f);
    if (HasFatalFailure()) return;
  }
}

TEST(CoversOfRandomFunctions, PrimesOfDenseFunctions) {
  // Few zeros among ten variables: tens of thousands of implicants, of which few are prime.
  constexpr int N = 10;
  const PrintedSeed seed;
  SCOPED_TRACE(seed.text());
  std::mt19937 random(seed.value);
  for (const int zeros : {3, 6, 40}) {
    bddpp_manager m;
    for (int i = 0; i < N; ++i) m.New_var_last(name_of(i));
    table<N> t;
    t.set();
    for (int i = 0; i < zeros; ++i) t[random() % (1 << N)] = false;
    const bdd f = build<N>(m, t);
    std::vector<table<N>> found;
    for (const bdd& p : m.Bdd_prime_implicants(f))
      found.push_back(table_of<N>(p, m.Bdd_node_one()));
    EXPECT_THAT(found, UnorderedElementsAreArray(maximal_subcubes<N>(t)));
  }
}

TEST_F(Covers, ArraysGetTheSameLists) {
  const bdd f = m.Bdd_ite(a, b, c);
  std::vector<bdd> out(8, a), other(8, a);
  for (int mode = 0; mode < 4; ++mode) {
    const std::vector<bdd> expected = m.Bdd_sop(f, mode);
    for (const bool by_mode : {true, false}) {
      const int count = by_mode     ? m.Bdd_sop(f, out.data(), mode)
                        : mode == 0 ? m.Bdd_sop_0(f, out.data())
                        : mode == 1 ? m.Bdd_sop_1(f, out.data())
                        : mode == 2 ? m.Bdd_sop_2(f, out.data())
                                    : m.Bdd_sop_3(f, out.data());
      EXPECT_EQ(std::vector<bdd>(out.begin(), out.begin() + count), expected);
    }
  }
  // Three disjoint products widen to two: the third place is freed.
  out.assign(8, a);
  const bdd g = m.Bdd_or(m.Bdd_and(a, b), m.Bdd_or(m.Bdd_and(a, c), m.Bdd_and(n(a), c)));
  ASSERT_EQ(m.Bdd_sop(g, 0).size(), 3u);
  EXPECT_EQ(m.Bdd_sop_1(g, out.data()), 2);
  EXPECT_EQ(out[2], m.Bdd_zero());
  EXPECT_EQ(out[3], a);
  int nb_essential = -1, nb_other = -1;
  m.Bdd_essential_implicants(f, &nb_essential, out.data(), &nb_other, other.data());
  EXPECT_EQ(nb_essential, 2);
  EXPECT_EQ(nb_other, 1);
  EXPECT_EQ(other[0], m.Bdd_and(b, c));
  EXPECT_EQ(m.Bdd_prime_implicants(f, out.data()), 3);
}

TEST_F(Covers, TernaryDiagram) {
  const Tdd diagram(&m, m.Bdd_ite(a, b, c));
  EXPECT_EQ(diagram.value(), a);
  EXPECT_EQ(diagram.then_part()->value(), b);
  EXPECT_EQ(diagram.else_part()->value(), c);
  EXPECT_EQ(diagram.common_part()->value(), b);
  EXPECT_EQ(diagram.common_part()->then_part()->value(), c);
  EXPECT_EQ(diagram.then_part()->then_part()->value(), m.Bdd_one());
  EXPECT_EQ(diagram.then_part()->then_part()->then_part(), nullptr);

  // Times a product, into a list that has entries already.
  const bdd d = m.New_var_last("d");
  std::vector<bdd> out{m.Bdd_and(m.Bdd_and(d, b), m.Bdd_and(n(a), c)), m.Bdd_or(a, d)};
  out.resize(6);
  const Tdd variable(&m, c);
  ASSERT_EQ(variable.Bdd_implicants_loc(d, 2, out.data()), 2);
  EXPECT_EQ(out[0], m.Bdd_and(c, d));
  EXPECT_EQ(out[1], m.Bdd_or(a, d));
  ASSERT_EQ(variable.Bdd_implicants_loc(n(d), 2, out.data()), 3);
  EXPECT_EQ(out[2], m.Bdd_and(c, n(d)));

  const Outcome empty = run_captured([&] {
    const Tdd none(nullptr, bdd());
    EXPECT_EQ(none.manager(), nullptr);
    EXPECT_EQ(none.Bdd_implicants_loc(a, 1, out.data()), 1);
    EXPECT_THAT(none.Bdd_prime_implicants(), IsEmpty());
  });
  EXPECT_EQ(empty.err, "in Tdd::Tdd() : error: bdd manager not yet created !\n");
}

TEST_F(Covers, TheLimitIsTestedBeforeTheWrite) {
  const int most = Max_number_of_terms();
  std::vector<bdd> out(most, a);
  const Tdd diagram(&m, b);
  EXPECT_EQ(diagram.Bdd_implicants_loc(m.Bdd_one(), most - 1, out.data()), most);
  EXPECT_EQ(out.back(), b);
  out.back() = c;
  const bdd narrow = m.Bdd_and(m.Bdd_and(a, b), c);
  out[7] = narrow;
  const Outcome full = run_captured([&] { diagram.Bdd_implicants_loc(a, most, out.data()); });
  EXPECT_FALSE(full.ended) << "a product that replaces another needs no room";
  EXPECT_EQ(out[7], m.Bdd_and(a, b));
  out[7] = a;
  const Outcome passed =
      run_captured([&] { diagram.Bdd_implicants_loc(m.Bdd_one(), most, out.data()); });
  EXPECT_EQ(passed.exit_status, 1);
  EXPECT_EQ(passed.err, "error in Tdd::Bdd_implicants_loc() \nexcessive number of products ...\n");
}

TEST_F(Covers, HandlesOfAnotherManager) {
  bddpp_manager elsewhere;
  const bdd foreign = elsewhere.New_var_last("a");
  for (const bool sop : {true, false}) {
    const Outcome outcome = run_captured([&] {
      if (sop)
        m.Bdd_sop(foreign, 1);
      else
        m.Bdd_one_implicant(foreign);
    });
    EXPECT_EQ(outcome.exit_status, 1);
    EXPECT_THAT(outcome.err, ::testing::StartsWith(std::string("ERROR in bddpp_manager::") +
                                                   (sop ? "Bdd_sop" : "Bdd_one_implicant") +
                                                   "():\n   bdd : adr manager= "));
    EXPECT_THAT(outcome.err, ::testing::EndsWith(", is not allocated or associated with a bad BDD "
                                                 "manager...\n"));
  }
}

TEST(WideCovers, SumsOfManyVariables) {
  // A sum has two to the power of its length in implicants, and as many primes as variables.
  constexpr int count = 400;
  bddpp_manager m;
  std::vector<bdd> variables;
  for (int i = 0; i < count; ++i) variables.push_back(m.New_var_last(name_of(i)));
  bdd sum = m.Bdd_zero(), product = m.Bdd_one();
  for (int i = count; i-- > 0;) {
    sum = m.Bdd_or(variables[i], sum);
    product = m.Bdd_and(variables[i], product);
  }
  EXPECT_EQ(m.Bdd_prime_implicants(sum), variables);
  EXPECT_EQ(m.Bdd_sop(sum, 1), variables);
  EXPECT_EQ(m.Bdd_sop(sum, 2), variables);
  EXPECT_THAT(m.Bdd_sop(product, 1), ElementsAre(product));
  EXPECT_THAT(m.Bdd_sop(product, 2), ElementsAre(product));
  EXPECT_EQ(m.Bdd_one_implicant(product), product);
}

TEST_F(Covers, SimplifyEachPrimeAlone) {
  // a b + not a c + b c, disjoint from not b not c: each prime loses what it can alone.
  const bdd f = m.Bdd_ite(a, b, c);
  const bdd g = m.Bdd_and(n(b), n(c));
  EXPECT_EQ(m.Bdd_simplify3(f, g, 5), m.Bdd_or(b, c));
  EXPECT_EQ(m.Bdd_simplify3(f, m.Bdd_zero(), 0), m.Bdd_one());
  EXPECT_EQ(m.Bdd_simplify3(m.Bdd_zero(), a, 0), m.Bdd_zero());
  EXPECT_EQ(m.Bdd_simplify3(m.Bdd_one(), a, 0), m.Bdd_one());
}

}  // namespace kiva::test
