// Variables, names, nodes and what the manager says when it is called wrongly.

#include <gmock/gmock.h>

#include <climits>
#include <functional>
#include <set>
#include <sstream>

#include "tests/bdd/truth_model.h"
#include "tests/support/process_end.h"

namespace kiva::test {

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class Manager : public ::testing::Test {
 protected:
  bdd a() { return m.New_var_last("a"); }
  bdd b() { return m.New_var_last("b"); }
  bddpp_manager m;
};

/// Ids and indices are inverse permutations, and each name finds its variable.
void expect_sound_tables(bddpp_manager& m, const std::vector<std::string>& names_in_order) {
  ASSERT_EQ(m.Nb_bdd_vars(), static_cast<long>(names_in_order.size()));
  for (long index = 0; index < m.Nb_bdd_vars(); ++index) {
    const std::string& name = names_in_order[static_cast<std::size_t>(index)];
    EXPECT_EQ(m.Name_var_by_index(index), name);
    EXPECT_EQ(m.idtoindex(m.indextoid(index)), index);
    EXPECT_EQ(m.Index_var_by_name(name), index);
    EXPECT_EQ(m.Bdd_var_by_name(name), m.Bdd_var_by_index(index));
    EXPECT_EQ(m.Id_var_by_bdd(m.Bdd_var_by_name(name)), m.indextoid(index));
    EXPECT_EQ(m.Bdd_is_var(m.Bdd_var_by_index(index)), 1);
  }
}

std::string text_of(const g_longlong& key) {
  std::ostringstream out;
  out << key;
  return out.str();
}

std::string error_of(const std::function<void()>& call) {
  return run_captured(call).err;
}

/// The error text of a call that must end the process with status 1.
std::string fatal_error_of(const std::function<void()>& call) {
  const Outcome outcome = run_captured(call);
  EXPECT_TRUE(outcome.ended);
  EXPECT_EQ(outcome.exit_status, 1);
  return outcome.err;
}

}  // namespace

TEST_F(Manager, GrowsBeyondSixteenVariablesBothWays) {
  for (const bool at_front : {false, true}) {
    bddpp_manager grown;
    std::vector<std::string> order;
    for (int i = 0; i < 16; ++i) {
      grown.New_var_last(name_of(i));
      order.push_back(name_of(i));
    }
    const bdd f = grown.Bdd_xor(grown.Bdd_var_by_id(3), grown.Bdd_var_by_id(15));
    EXPECT_EQ(grown.Max_bdd_vars(), 16);
    if (at_front)
      grown.New_var_before(5, "new");
    else
      grown.New_var_last("new");
    order.insert(at_front ? order.begin() + 5 : order.end(), "new");
    EXPECT_EQ(grown.Max_bdd_vars(), 32);
    expect_sound_tables(grown, order);
    EXPECT_EQ(grown.Bdd_is_correct(f), 1);
    EXPECT_EQ(grown.Bdd_xor(grown.Bdd_var_by_name("x3"), grown.Bdd_var_by_name("x15")), f);
  }
}

TEST_F(Manager, InsertsVariablesAnywhere) {
  const PrintedSeed seed;
  SCOPED_TRACE(seed.text());
  std::mt19937 random(seed.value);
  std::vector<std::string> order{"x0"};
  m.New_var_last("x0");
  for (int i = 1; i < 200; ++i) {
    const long at = static_cast<long>(random() % order.size());
    if (i % 2 == 0) {
      EXPECT_EQ(m.Bdd_if_index(m.New_var_before(at, name_of(i))), at);
      order.insert(order.begin() + at, name_of(i));
    } else {
      EXPECT_EQ(m.Bdd_if_index(m.New_var_after(m.Bdd_var_by_index(at), name_of(i))), at + 1);
      order.insert(order.begin() + at + 1, name_of(i));
    }
  }
  expect_sound_tables(m, order);
  const long total = m.Bdd_total_size();
  EXPECT_EQ(m.New_var_last("x7"), m.Bdd_var_by_name("x7"));
  EXPECT_EQ(m.New_var_before(0l, "x7"), m.Bdd_var_by_name("x7"));
  EXPECT_EQ(m.Bdd_total_size(), total);
  expect_sound_tables(m, order);

  bddpp_manager copy(&m);
  expect_sound_tables(copy, order);
  EXPECT_EQ(copy.Max_bdd_vars(), m.Max_bdd_vars());
  EXPECT_EQ(copy.Bdd_var_by_id(0).node()->global_id(), 2);
  EXPECT_EQ(copy.Bdd_total_size(), 202);
}

TEST_F(Manager, LooksVariablesUp) {
  const bdd var = a();
  EXPECT_EQ(error_of([&] { EXPECT_EQ(m.Bdd_var_by_id(1), m.Bdd_zero()); }),
            "calling bddpp_manager::Bdd_var_by_id() with id= 1 :out of range!\n");
  EXPECT_EQ(error_of([&] { EXPECT_FALSE(m.Bdd_var_by_index(-2).initialised()); }),
            "calling bddpp_manager::Bdd_var_by_index() with index= -2 :out of range!\n");
  EXPECT_EQ(error_of([&] { EXPECT_EQ(m.Bdd_var_by_index(-1), m.Bdd_one()); }), "");
  EXPECT_EQ(error_of([&] { EXPECT_EQ(m.Bdd_var_by_name("b"), m.Bdd_zero()); }), "");
  EXPECT_EQ(error_of([&] { EXPECT_EQ(m.Bdd_if_id(bdd()), -3); }),
            "Error in bddpp_manager::Bdd_if_id(): bad Bdd manager or bdd not initialized!\n");
  bddpp_manager other;
  EXPECT_EQ(error_of([&] { EXPECT_EQ(other.Bdd_if_index(var), -3); }),
            "Error in bddpp_manager::Bdd_if_index(): bad Bdd manager or bdd not initialized!\n");
  EXPECT_EQ(m.Bdd_if_index(m.Bdd_zero()), -1);
  EXPECT_EQ(m.Name_var_by_bdd(m.Bdd_zero()), "0");
  EXPECT_EQ(m.Name_var_by_bdd(m.Bdd_one()), "1");
  EXPECT_EQ(m.Name_var_by_bdd(m.Bdd_not(var)), "a");
  const std::string error = fatal_error_of([&] { m.Name_var_by_bdd(bdd()); });
  EXPECT_THAT(error, HasSubstr("error in bddpp_manager::Name_var_by_bdd()\nbdd defined by: adr "
                               "manager= "));
  EXPECT_THAT(error, HasSubstr(", is not correct ...\n(typebdd = -3)\n"));
}

TEST_F(Manager, RenamesForThePrintedNameOnly) {
  const bdd var = a();
  m.New_var_last("_c");
  m.New_var_last("");
  m.Rename_var("b", "a");
  EXPECT_EQ(m.Name_var_by_id(0), "b");
  EXPECT_EQ(m.Bdd_var_by_name("a"), var);
  EXPECT_EQ(m.Id_var_by_name("b"), -1);
  EXPECT_EQ(error_of([&] { m.Rename_var("_c", "b"); }),
            "in bdd_manager::Rename_var(): WARNING _c ALREADY DEFINED !\n"
            "renaming process aborted ...\n");
  EXPECT_EQ(error_of([&] { m.Rename_var("d", "a"); }),
            "in bdd_manager::Rename_var(): WARNING a NOT FOUND !\n"
            "renaming process aborted ...\n");
  m.No_begin_underscore_name();
  EXPECT_EQ(m.Name_var_by_id(1), "v_c");
  m.Replace_char_in_all_names('_', '.');
  EXPECT_EQ(m.Name_var_by_id(1), "v.c");
  EXPECT_EQ(m.Name_var_by_id(2), "");
  m.Rename_var("z", "v.c");
  m.Change_name_by_index(0, "z");
  // Two bear the name: the first by id is renamed, then the other.
  m.Rename_var("y", "z");
  EXPECT_EQ(m.Name_var_by_id(0), "y");
  m.Change_name_by_id(0, "z2");
  m.Rename_var("x", "z");
  EXPECT_EQ(m.Name_var_by_id(1), "x");
  m.New_var_last("late");
  m.Rename_var("later", "late");
  EXPECT_EQ(m.Name_var_by_id(3), "later");
}

TEST_F(Manager, FindsOrMakesNodes) {
  const bdd x = a(), y = b();
  bdd_node* one = m.Bdd_node_one();
  EXPECT_EQ(one->global_id(), 1);
  EXPECT_EQ(m.Bdd_total_size(), 4);
  int link = 1;
  EXPECT_EQ(m.Find_or_create_bdd_node(-1, 1, 1, one, one, link), one);
  EXPECT_EQ(m.Find_or_create_bdd_node(-2, 1, 1, one, one, link), nullptr);
  EXPECT_EQ(m.Find_or_create_bdd_node(2, 1, -1, one, one, link), nullptr);
  EXPECT_EQ(m.Find_or_create_bdd_node(0, 1, 1, one, one, link), one);
  const int before = x.node()->nbrefs();
  EXPECT_EQ(m.Find_or_create_bdd_node(0, -1, 1, one, one, link), x.node());
  EXPECT_EQ(link, -1) << "the complement of the then edge moves to the handle";
  EXPECT_EQ(x.node()->nbrefs(), before);

  link = 1;
  const int refs_of_y = y.node()->nbrefs();
  bdd_node* made = m.Find_or_create_bdd_node(0, -1, 1, y.node(), one, link);
  EXPECT_EQ(link, -1);
  EXPECT_EQ(made->else_link_type(), -1);
  EXPECT_EQ(made->global_id(), 4);
  EXPECT_EQ(made->nbrefs(), 1);
  EXPECT_EQ(y.node()->nbrefs(), refs_of_y + 1);
  EXPECT_EQ(m.Find_or_create_bdd_node(0, 1, -1, y.node(), one, link), made);
  EXPECT_EQ(made->nbrefs(), 2);
  EXPECT_EQ(m.Bdd_total_size(), 5);

  const std::string error =
      error_of([&] { EXPECT_EQ(m.Find_or_create_bdd_node(1, 1, 1, one, made, link), nullptr); });
  EXPECT_EQ(error,
            "FATAL ERROR: Bad call of bddpp_manager::Find_or_create_bdd_node():\n"
            "  index 1 is not less than and  its else node index (0)\n");
}

TEST_F(Manager, KeysAreOrderedAndPrinted) {
  EXPECT_EQ(text_of(m.Bdd_node_one()->signature()), "-1 *2E32 + 4294967295");
  std::vector<bdd> vars;
  for (int i = 0; i < 5000; ++i) vars.push_back(m.New_var_last(name_of(i)));
  // 12 bits of variable, 20 of then, 20 of else, 1 of polarity; the constant has id 1.
  const auto key = [](std::uint64_t var, std::uint64_t then_id, std::uint64_t else_id, bool plus) {
    const std::uint64_t word = var << 41 | then_id << 21 | else_id << 1 | (plus ? 1 : 0);
    return g_longlong(static_cast<std::int32_t>(word >> 32), word & 0xFFFFFFFFu);
  };
  for (std::uint64_t i : {0ul, 1ul, 2047ul}) {
    EXPECT_EQ(vars[i].node()->signature(), key(i, 1, 1, false));
  }
  EXPECT_LT(vars[2048].node()->signature().high(), 0);
  EXPECT_EQ(vars[4096 + 7].node()->signature(), vars[7].node()->signature());
  EXPECT_EQ(m.Bdd_is_correct(vars[4999]), 1);
  const bdd f = m.Bdd_or(vars[3], m.Bdd_not(vars[9]));
  EXPECT_EQ(f.node()->signature(), key(3, 1, 11, false));

  std::set<const bdd_node*> seen;
  std::array<long, 4> last{-1, 0, 0, 0};
  for (const bdd_node* node : m.internal_bdd_node_map()) {
    const std::array<long, 4> now{node->var_id(), node->then_node()->global_id(),
                                  node->else_node()->global_id(), node->else_link_type()};
    EXPECT_LT(last, now);
    last = now;
    seen.insert(node);
  }
  EXPECT_EQ(static_cast<long>(seen.size()), m.Bdd_total_size() - 2);
  EXPECT_EQ(bdd_node().var_index(), -3);
}

TEST_F(Manager, HandlesCountReferences) {
  const bdd f = m.Bdd_and(a(), b());
  bdd_node* node = f.node();
  const int base = node->nbrefs();
  {
    bdd copy = f;
    EXPECT_EQ(node->nbrefs(), base + 1);
    bdd moved = std::move(copy);
    EXPECT_EQ(node->nbrefs(), base + 1);
    moved = f;
    EXPECT_EQ(node->nbrefs(), base + 1);
    moved = m.Bdd_not(f);
    EXPECT_EQ(node->nbrefs(), base + 1);
    moved = bdd();
    EXPECT_EQ(node->nbrefs(), base);
  }
  EXPECT_EQ(node->nbrefs(), base);
  while (node->nbrefs() < base + 3) node->inc_nbrefs();
  EXPECT_EQ(m.Bdd_not(m.Bdd_not(f)), f);
  EXPECT_FALSE(bdd().initialised());
  EXPECT_EQ(bdd(), bdd());
  EXPECT_NE(m.Bdd_not(f), f);
}

TEST_F(Manager, CollectsNodesWithoutReference) {
  const bdd x = a(), y = b(), z = m.New_var_last("c");
  bdd_node* dead = m.Bdd_and(x, m.Bdd_or(y, z)).node();
  const std::size_t before = m.internal_bdd_node_map().size();
  while (dead->nbrefs() > 0) dead->dec_nbrefs();
  while (y.node()->nbrefs() > 0) y.node()->dec_nbrefs();
  m.Bdd_gc();
  EXPECT_EQ(m.internal_bdd_node_map().size(), before - 1) << "variables stay";
  y.node()->inc_nbrefs();
  const long next_id = m.Bdd_total_size();
  const bdd again = m.Bdd_and(x, m.Bdd_or(y, z));
  EXPECT_EQ(again.node()->global_id(), next_id) << "numbers are never used twice";
  EXPECT_EQ(m.internal_bdd_node_map().size(), before);
  EXPECT_EQ(table_of<3>(again, m.Bdd_node_one()), mask_table(0xAA & (0xCC | 0xF0)));
}

TEST_F(Manager, CollectingOftenNeedsNoMoreMemory) {
  constexpr int variables = 12;
  for (int i = 0; i < variables; ++i) m.New_var_last(name_of(i));
  std::mt19937 random(3);
  std::set<const bdd_node*> places;
  for (int round = 0; round < 200; ++round) {
    bdd f = m.Bdd_zero();
    for (int product = 0; product < 5; ++product) {
      std::vector<int> literals;
      for (int i = 0; i < variables; ++i) literals.push_back(static_cast<int>(random() % 3));
      f = m.Bdd_or(f, m.Literals_to_bdd(literals.data()));
    }
    EXPECT_EQ(m.Bdd_is_correct(f), 1);
    f = bdd();
    for (bdd_node* node : m.internal_bdd_node_map()) {
      places.insert(node);
      while (node->nbrefs() > 0) node->dec_nbrefs();
    }
    m.Bdd_gc();
    ASSERT_EQ(m.internal_bdd_node_map().size(), static_cast<std::size_t>(variables));
  }
  EXPECT_LT(places.size(), 1000u);
  EXPECT_GT(m.Bdd_total_size(), 10'000);
}

// What handles have stays, by place and meaning; the rest goes, and what is made again is
// canonical.
TEST_F(Manager, GivesBackWhatNoHandleHas) {
  constexpr int variables = 10, kept_at_once = 8;
  for (int i = 0; i < variables; ++i) m.New_var_last(name_of(i));
  m.Bdd_assoc_bdd_to_var(m.Bdd_xor(m.Bdd_var_by_id(1), m.Bdd_var_by_id(2)), m.Bdd_var_by_id(0));
  std::mt19937 random(5);
  std::vector<bdd> kept(kept_at_once, m.Bdd_one());
  std::vector<std::vector<std::vector<int>>> sums(kept_at_once);
  const auto sum_of = [&](const std::vector<std::vector<int>>& products) {
    bdd f = m.Bdd_zero();
    for (const auto& literals : products) f = m.Bdd_or(f, m.Literals_to_bdd(literals.data()));
    return f;
  };
  std::size_t most_bytes = 0;
  for (int round = 0; round < 300; ++round) {
    const std::size_t at = random() % kept_at_once;
    sums[at].assign(1 + random() % 12, std::vector<int>(variables));
    for (auto& literals : sums[at]) {
      for (int& literal : literals) literal = static_cast<int>(random() % 3);
    }
    kept[at] = sum_of(sums[at]);
    const std::size_t before = m.internal_bdd_node_map().size();
    const long gone = m.collect_unheld();
    ASSERT_EQ(m.internal_bdd_node_map().size(), before - static_cast<std::size_t>(gone));
    std::set<const bdd_node*> held;
    const std::function<void(const bdd_node*)> hold = [&](const bdd_node* node) {
      if (node->var_id() < 0 || !held.insert(node).second) return;
      hold(node->then_node());
      hold(node->else_node());
    };
    for (const bdd& f : kept) hold(f.node());
    for (int i = 0; i < variables; ++i) hold(m.Bdd_var_by_id(i).node());
    int loop;
    hold(m.Bdd_follow_assoc(m.Bdd_var_by_id(0), &loop).node());
    const auto left = m.internal_bdd_node_map();
    ASSERT_EQ(std::set<const bdd_node*>(left.begin(), left.end()), held);
    const std::size_t other = random() % kept_at_once;
    ASSERT_EQ(sums[other].empty() ? m.Bdd_one() : sum_of(sums[other]), kept[other]);
    ASSERT_EQ(m.Bdd_is_correct(kept[other]), 1);
    if (round == 50) most_bytes = m.table_bytes();
  }
  EXPECT_LE(m.table_bytes(), most_bytes);
}

TEST_F(Manager, TakesNodesOutAndIn) {
  const bdd f = m.Bdd_xor(a(), b());
  const std::size_t before = m.internal_bdd_node_map().size();
  m.Map_suppress(f.node());
  EXPECT_EQ(m.internal_bdd_node_map().size(), before - 1);
  const bdd twin = m.Bdd_xor(a(), b());
  EXPECT_NE(twin.node(), f.node());
  m.Map_integrate(f.node());
  EXPECT_EQ(m.internal_bdd_node_map().size(), before);
  EXPECT_EQ(m.Bdd_xor(a(), b()), f);
}

TEST_F(Manager, NumbersMarksAndSizes) {
  const bdd x = a(), y = b(), z = m.New_var_last("c");
  EXPECT_EQ(m.Bdd_size(m.Bdd_one()), 1);
  EXPECT_EQ(m.Bdd_size(x), 2);
  const bdd f = m.Bdd_ite(x, m.Bdd_and(y, z), m.Bdd_or(y, z));
  EXPECT_EQ(m.Bdd_size(f), 5);
  // Depth first, then before else.
  EXPECT_EQ(f.node()->local_id(), 0);
  EXPECT_EQ(f.node()->then_node()->local_id(), 1);
  EXPECT_EQ(z.node()->local_id(), 2);
  EXPECT_EQ(m.Bdd_node_one()->local_id(), 3);
  EXPECT_EQ(f.node()->else_node()->local_id(), 4);
  EXPECT_EQ(m.Bdd_incremental_id(f.node(), 7), 7) << "marked already";
  m.Bdd_clear_marks(f.node()->else_node());
  EXPECT_FALSE(z.node()->is_marked());
  EXPECT_TRUE(f.node()->is_marked());
  m.Bdd_global_clear_marks();
  std::vector<int> used(static_cast<std::size_t>(m.Bdd_total_size()), 0);
  f.node()->then_node()->Lustre_writing_node_used(used.data(), m.Bdd_node_one());
  EXPECT_EQ(std::count(used.begin(), used.end(), 1), 3);
  EXPECT_EQ(used[static_cast<std::size_t>(z.node()->global_id())], 1);
  EXPECT_TRUE(m.Bdd_node_one()->is_marked());
  EXPECT_EQ(error_of([&] { EXPECT_EQ(m.Bdd_incremental_id(nullptr, 5), 5); }),
            "Warning: call bddpp_manager::Bdd_incremental_id() with null reference!\n");
  EXPECT_EQ(error_of([&] { EXPECT_EQ(m.Bdd_is_correct(bdd()), 0); }),
            "Warning: call  bddpp_manager::Bdd_is_correct() with a null reference!\n");
}

TEST_F(Manager, OperatorsRefuseBadOperands) {
  const bdd x = a(), y = b();
  bddpp_manager other;
  const bdd foreign = other.New_var_last("a");
  const std::string null_or = "ERROR: call bddpp_manager::Bdd_or() with null reference\n";
  const std::string null_and = "ERROR: call bddpp_manager::Bdd_and() with null reference\n";
  EXPECT_EQ(fatal_error_of([&] { m.Bdd_or(x, bdd()); }), null_or);
  EXPECT_EQ(fatal_error_of([&] { m.Bdd_and(bdd(), x); }), null_and);
  EXPECT_EQ(fatal_error_of([&] { m.Bdd_ite(1, 2, x, y); }),
            "ERROR: abnormal index in bddpp_manager::Bdd_ite()\n" + null_and);
  EXPECT_EQ(fatal_error_of([&] { m.Bdd_or(x, foreign); }),
            "ERROR: call bddpp_manager::Bdd_or() with a bdd of another manager\n");
  EXPECT_THAT(fatal_error_of([&] { m.Bdd_compose(foreign, x, y); }), StartsWith("ERROR: call"));
  EXPECT_EQ(fatal_error_of([&] { m.Bdd_cube_reduce(bdd(), x); }),
            "Error in Bdd_cube_reduce(): bdd has a Null pointer!\n");
  EXPECT_EQ(fatal_error_of([&] { m.Bdd_cube_reduce(x, bdd()); }),
            "Error in Bdd_cube_reduce(): assertion has a Null pointer!\n");
  EXPECT_EQ(fatal_error_of([&] { m.Bdd_satisfy(bdd()); }),
            "ERROR: call bddpp_manager::Bdd_OneSat() with null reference\n");
  int literals[2] = {0, 0};
  EXPECT_EQ(fatal_error_of([&] { m.Bdd_to_literals(m.Bdd_one(), literals); }),
            "ERROR in  bddpp_manager::Bdd_node_to_literals() :\n"
            "constant 1 is not a literal ...\n");
  EXPECT_EQ(error_of([&] { m.Bdd_to_literals(bdd(), literals); }),
            "Warning: bddpp_manager::Bdd_node_to_literals() call with a NULL bdd node !\n");
  m.Bdd_to_literals(m.Bdd_zero(), literals);
  EXPECT_EQ(literals[0] + literals[1], 4);
  EXPECT_THAT(fatal_error_of([&] { m.Bdd_eval_for_literal(bdd(), literals); }),
              HasSubstr("\nerror in bddpp_manager::Bdd_eval(): unknown bdd type ...\n"));
  EXPECT_EQ(error_of([&] { EXPECT_EQ(m.Bdd_if(m.Bdd_one()), m.Bdd_zero()); }),
            "\ncalling bddpp_manager::Bdd_if() with bdd index= -1 :out of range!\n");
  EXPECT_EQ(m.Bdd_then(m.Bdd_zero()), m.Bdd_one());
  EXPECT_EQ(m.Bdd_else(m.Bdd_zero()), m.Bdd_one());
  EXPECT_EQ(error_of([&] { EXPECT_EQ(m.Bdd_compose(x, m.Bdd_not(y), x), m.Bdd_zero()); }),
            "Warning in bddpp_manager::Bdd_compose(): second parametre is not a variable!\n");
  EXPECT_EQ(error_of([&] { EXPECT_EQ(m.Bdd_depends_on(x, foreign), 0); }),
            "Error in bddpp_manager::Bdd_node_depends_on():  bad Bdd manager or bdd(s) not "
            "initialized!\n");
  EXPECT_EQ(error_of([&] { EXPECT_TRUE(m.set_of_id_depend_on(foreign).empty()); }),
            "Warning: call  bddpp_manager::set_of_index_depend_on() with a bad manager\n");
  const std::string bad_copy = "ERROR: Bad call of Bdd_isomorphe() !\n";
  const long corr[] = {0, 1};
  EXPECT_EQ(error_of([&] { EXPECT_EQ(Bdd_isomorphe(&other, &m, bdd(), corr), other.Bdd_zero()); }),
            bad_copy);
  EXPECT_EQ(error_of([&] { EXPECT_EQ(Bdd_isomorphe(&other, &m, y, corr), other.Bdd_zero()); }),
            bad_copy);
  EXPECT_EQ(Bdd_isomorphe(&other, nullptr, x), other.Bdd_one());
  EXPECT_EQ(Bdd_isomorphe_by_name(&other, nullptr, x), other.Bdd_one());
  // Nothing of these calls has stayed behind in the manager.
  EXPECT_EQ(m.Bdd_cube_reduce(m.Bdd_and(x, y), y), x);
}

TEST_F(Manager, AssociatesFunctionsWithVariables) {
  const bdd x = a(), y = b(), z = m.New_var_before(0l, "c"), u = m.New_var_last("d");
  int loop = 0;
  EXPECT_EQ(m.Bdd_follow_assoc(x, &loop), x);
  EXPECT_EQ(loop, m.Bdd_if_index(x)) << "a variable without association depends on itself";

  m.Bdd_assoc_bdd_to_var(m.Bdd_and(y, z), x);
  EXPECT_EQ(m.Bdd_follow_assoc(x, &loop), m.Bdd_and(y, z));
  EXPECT_EQ(loop, -1);
  // A later association of y is composed into that of x.
  m.Bdd_assoc_bdd_to_var(m.Bdd_or(z, u), y);
  EXPECT_EQ(m.Bdd_follow_assoc(x, &loop), z) << "z and (z or u)";
  // What is recorded is first rewritten with the associations that it reads.
  m.Bdd_assoc_bdd_to_var(x, u);
  EXPECT_EQ(m.Bdd_follow_assoc(u, &loop), z);
  EXPECT_EQ(m.Bdd_follow_assoc(m.Bdd_and(u, m.Bdd_not(x)), &loop), m.Bdd_zero());
  EXPECT_EQ(loop, -1);
  EXPECT_EQ(m.Bdd_follow_assoc(m.Bdd_xor(z, x), &loop), m.Bdd_zero());
  EXPECT_EQ(loop, m.Bdd_if_index(z));

  m.Bdd_assoc_bdd_to_var(m.Bdd_one(), m.Bdd_one());
  const std::string error = fatal_error_of([&] { m.Bdd_assoc_bdd_to_var(x, m.Bdd_not(y)); });
  EXPECT_THAT(error, StartsWith("error in bddpp_manager::Bdd_assoc_bdd_to_var():\n"
                                "     second parameter is not a var !\nreplace from: "));
  EXPECT_THAT(error, HasSubstr(" by expression: "));
  fatal_error_of([&] { m.Bdd_assoc_bdd_to_var(m.Bdd_zero(), m.Bdd_one()); });
}

TEST_F(Manager, PrintsStructure) {
  const bdd x = a(), y = b();
  std::ostringstream out;
  m.Print_bdd_structure(out, m.Bdd_not(m.Bdd_xor(x, y)));
  EXPECT_EQ(out.str(),
            "if a (node: 0,index: 0)\n"
            "  b (node: 1,index: 1)\n"
            "else (not a)\n"
            "  not(\n"
            "  b (node: 1,index: 1)\n"
            "     )\n");
  out.str("");
  m.Print_bdd_structure(out, m.Bdd_zero());
  EXPECT_EQ(out.str(), "not(\n1 (node: 0,index: -1)\n   )\n");
  const bdd z = m.New_var_last("c"), u = m.New_var_last("d");
  out.str("");
  const bdd shared = m.Bdd_and(z, u);
  m.Print_bdd_structure(out, m.Bdd_ite(x, shared, m.Bdd_and(y, shared)));
  EXPECT_THAT(out.str(), HasSubstr("else (not a)\n  if b (node: "));
  EXPECT_THAT(out.str(), HasSubstr("\n    already found node: 1\n"));
}

}  // namespace kiva::test
