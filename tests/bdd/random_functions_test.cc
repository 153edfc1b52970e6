// Random sequences of operations on functions of up to ten variables, against truth tables and
// against plain recursions in a second manager.

#include <gtest/gtest.h>

#include <functional>

#include "tests/bdd/plain_recursion.h"
#include "tests/bdd/truth_model.h"

namespace kiva::test {

namespace {

constexpr int N = 10;

/// A pool of functions, each held as a handle and as a table; variables join the order at random
/// places while the operations run.
class Fuzz {
 public:
  explicit Fuzz(unsigned seed) : random(seed) { add_variable(); }

  void add_variable() {
    const long n = m.Nb_bdd_vars();
    const long place = n == 0 ? 0 : pick(n);
    const bdd v = n == 0         ? m.New_var_last(name_of(n))
                  : pick(2) == 0 ? m.New_var_before(place, name_of(n))
                                 : m.New_var_after(m.Bdd_var_by_index(place), name_of(n));
    add(v, variable_table<N>(static_cast<int>(n)));
  }

  void step() {
    if (m.Nb_bdd_vars() < N && pick(25) == 0) add_variable();
    const auto& [f, f_table] = any();
    const auto& [g, g_table] = any();
    const auto& [h, h_table] = any();
    const int id = static_cast<int>(pick(m.Nb_bdd_vars()));
    const bdd v = m.Bdd_var_by_id(id);
    const table<N> high = cofactor<N>(f_table, id, 1), low = cofactor<N>(f_table, id, 0);
    switch (pick(13)) {
      case 0:
        return add(m.Bdd_and(f, g), f_table & g_table);
      case 1:
        return add(m.Bdd_or(f, m.Bdd_not(g)), f_table | ~g_table);
      case 2:
        return add(m.Bdd_xor(f, g), f_table ^ g_table);
      case 3:
      case 4:
        return add(m.Bdd_ite(f, g, h), choice<N>(f_table, g_table, h_table));
      case 5:
        return add(m.Bdd_exist(f, v), high | low);
      case 6:
        return add(m.Bdd_forall(f, v), high & low);
      case 7:
        return add(m.Bdd_compose(f, v, g), choice<N>(g_table, high, low));
      case 8:
        return reduce(f, f_table);
      case 9:
        return evaluate(f, f_table);
      case 10:
      case 11: {
        const table<N> fresh = random_table<N>(random, m.Nb_bdd_vars());
        return add(build<N>(m, fresh), fresh);
      }
      default:
        return add(m.Bdd_xnor(f, m.Bdd_ite(1, m.idtoindex(id), g, h)),
                   ~(f_table ^ choice<N>(variable_table<N>(id), g_table, h_table)));
    }
  }

  /// Handles are equal exactly where tables are, and every diagram is in canonical form.
  void check_all() {
    for (const auto& [f, f_table] : pool) {
      ASSERT_EQ(m.Bdd_is_correct(f), 1);
      for (const auto& [g, g_table] : pool) ASSERT_EQ(f == g, f_table == g_table);
    }
  }

 private:
  struct function {
    bdd handle;
    table<N> value;
  };

  long pick(long n) { return static_cast<long>(random() % static_cast<unsigned long>(n)); }
  function any() { return pool[static_cast<std::size_t>(pick(static_cast<long>(pool.size())))]; }

  void add(const bdd& handle, const table<N>& value) {
    ASSERT_EQ(table_of<N>(handle, m.Bdd_node_one()), value) << "step " << steps;
    ++steps;
    if (pool.size() < 60)
      pool.push_back({handle, value});
    else
      pool[static_cast<std::size_t>(pick(60))] = {handle, value};
  }

  std::vector<int> random_literals() {
    std::vector<int> literals(static_cast<std::size_t>(m.Nb_bdd_vars()));
    for (int& literal : literals) literal = static_cast<int>(pick(3));
    return literals;
  }
  table<N> under(table<N> value, const std::vector<int>& literals) {
    for (long index = 0; index < m.Nb_bdd_vars(); ++index) {
      const int literal = literals[static_cast<std::size_t>(index)];
      if (literal != 2) value = cofactor<N>(value, static_cast<int>(m.indextoid(index)), literal);
    }
    return value;
  }
  void reduce(const bdd& f, const table<N>& value) {
    const std::vector<int> literals = random_literals();
    add(m.Bdd_reduce(f, m.Literals_to_bdd(literals.data())), under(value, literals));
  }
  void evaluate(const bdd& f, const table<N>& value) {
    const std::vector<int> literals = random_literals();
    const table<N> rest = under(value, literals);
    ASSERT_EQ(m.Bdd_eval_for_literal(f, literals.data()), rest.all() ? 1 : rest.none() ? 0 : 2);
  }

  std::mt19937 random;
  bddpp_manager m;
  std::vector<function> pool;
  long steps = 0;
};

/// All that can be seen of a manager's nodes, in key order.
std::vector<std::array<long, 5>> listing(const bddpp_manager& m) {
  std::vector<std::array<long, 5>> rows;
  for (const bdd_node* node : m.internal_bdd_node_map()) {
    rows.push_back({node->var_id(), node->then_node()->global_id(), node->else_node()->global_id(),
                    node->else_link_type(), node->global_id()});
  }
  return rows;
}

}  // namespace

TEST(RandomFunctions, AgreeWithTruthTables) {
  const PrintedSeed seed;
  SCOPED_TRACE(seed.text());
  for (unsigned run = 0; run < 12; ++run) {
    SCOPED_TRACE(run);
    Fuzz fuzz(seed.value + run);
    for (int i = 0; i < 400 && !::testing::Test::HasFatalFailure(); ++i) fuzz.step();
    fuzz.check_all();
    if (::testing::Test::HasFatalFailure()) return;
  }
}

TEST(RandomFunctions, MakeTheNodesOfThePlainRecursion) {  // house: a case an operator
  const PrintedSeed seed;
  SCOPED_TRACE(seed.text());
  std::mt19937 random(seed.value);
  for (int run = 0; run < 6; ++run) {
    bddpp_manager m, plain_manager;
    PlainRecursion plain(plain_manager);
    constexpr int variables = 9;
    std::vector<std::pair<bdd, bdd>> pool;
    for (int i = 0; i < variables; ++i) {
      const long place = i == 0 ? 0 : static_cast<long>(random() % static_cast<unsigned>(i));
      for (bddpp_manager* one : {&m, &plain_manager}) {
        if (i == 0)
          one->New_var_last(name_of(i));
        else
          one->New_var_before(place, name_of(i));
      }
      pool.push_back({m.Bdd_var_by_id(i), plain_manager.Bdd_var_by_id(i)});
    }
    for (int i = 0; i < 3; ++i) {
      const table<variables> fresh = random_table<variables>(random, variables);
      pool.push_back({build<variables>(m, fresh), build<variables>(plain_manager, fresh)});
    }
    std::vector<long> map(variables);
    for (int step = 0; step < 150; ++step) {
      const auto any = [&] { return pool[random() % pool.size()]; };
      const auto [f, plain_f] = any();
      const auto [g, plain_g] = any();
      const auto [h, plain_h] = any();
      const long index = static_cast<long>(random() % variables);
      const bdd v = m.Bdd_var_by_index(index);
      bdd result, expected;
      switch (random() % 9) {
        case 0:
          result = m.Bdd_or(f, g), expected = plain.or_(plain_f, plain_g);
          break;
        case 1:
          result = m.Bdd_and(f, g), expected = plain.and_(plain_f, plain_g);
          break;
        case 2:
          result = m.Bdd_xor(f, g), expected = plain.xor_(plain_f, plain_g);
          break;
        case 3:
          result = m.Bdd_ite(f, g, h), expected = plain.ite(plain_f, plain_g, plain_h);
          break;
        case 4:
          result = m.Bdd_cube_reduce(f, v), expected = plain.cofactor(plain_f, index, 1);
          break;
        case 5:
          if (!m.Bdd_depends_on(f, v)) continue;
          result = m.Bdd_exist(f, v), expected = plain.exist(plain_f, index);
          break;
        case 6:
          result = m.Bdd_compose(f, v, g), expected = plain.compose(plain_f, index, plain_g);
          break;
        case 7:
          for (long& image : map) image = static_cast<long>(random() % variables);
          result = m.Bdd_replace_vars(f, map.data()), expected = plain.replace(plain_f, map);
          break;
        default:
          result = m.Bdd_keep_first_variables(f, index);
          expected = plain.keep_first(plain_f, index);
      }
      ASSERT_EQ(result.node()->global_id(), expected.node()->global_id()) << "step " << step;
      ASSERT_EQ(result.link_type(), expected.link_type());
      ASSERT_EQ(m.Bdd_total_size(), plain_manager.Bdd_total_size()) << "step " << step;
      pool.push_back({result, expected});
    }
    ASSERT_EQ(listing(m), listing(plain_manager));
  }
}

TEST(RandomFunctions, CopiesAcrossManagers) {
  const PrintedSeed seed;
  SCOPED_TRACE(seed.text());
  std::mt19937 random(seed.value);
  bddpp_manager from;
  for (int i = 0; i < N; ++i) {
    if (i == 0)
      from.New_var_last(name_of(i));
    else
      from.New_var_before(static_cast<long>(random() % static_cast<unsigned>(i)), name_of(i));
  }
  std::vector<bdd> pool;
  for (int id = 0; id < N; ++id) pool.push_back(from.Bdd_var_by_id(id));
  for (int i = 0; i < 5; ++i) pool.push_back(build<N>(from, random_table<N>(random, N)));
  for (int i = 0; i < 60; ++i) {
    const auto any = [&] { return pool[random() % pool.size()]; };
    pool.push_back(from.Bdd_ite(any(), any(), from.Bdd_not(any())));
  }

  bddpp_manager same(&from), other, named;
  // `other` has the variables in creation order; `named` lacks most of them at first.
  for (int i = 0; i < N; ++i) other.New_var_last(name_of(i));
  named.New_var_last(name_of(7));
  named.New_var_before(0, name_of(3));
  std::vector<long> corr(N);
  for (int index = 0; index < N; ++index)
    corr[static_cast<std::size_t>(index)] = from.indextoid(index);

  for (const bdd& f : pool) {
    const table<N> value = table_of<N>(f, from.Bdd_node_one());
    EXPECT_EQ(table_of<N>(Bdd_isomorphe(&same, &from, f), same.Bdd_node_one()), value);
    EXPECT_EQ(table_of<N>(Bdd_isomorphe(&other, &from, f, corr.data()), other.Bdd_node_one()),
              value);
    bdd_node* node = Bdd_isomorphe(&other, &from, f.node(), corr.data());
    EXPECT_EQ(table_of<N>(bdd(&other, f.link_type(), node), other.Bdd_node_one()), value);

    const bdd copy = Bdd_isomorphe_by_name(&named, &from, f);
    EXPECT_EQ(named.Bdd_is_correct(copy), 1);
    // Back by name: the same function of the source, although ids and order differ.
    EXPECT_EQ(Bdd_isomorphe_by_name(&from, &named, copy), f);
    EXPECT_EQ(named.Bdd_size(copy) > 1, from.Bdd_size(f) > 1);
  }
  EXPECT_EQ(same.Bdd_total_size() <= from.Bdd_total_size(), true);
}

}  // namespace kiva::test
