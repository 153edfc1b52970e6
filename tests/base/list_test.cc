#include "base/list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <random>
#include <sstream>
#include <string>

#include "base/exhaustif.h"
#include "base/g_longlong.h"
#include "base/memory.h"

namespace kiva::test {

namespace {

template <class T>
std::string text_of(const T& value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

std::string listed(const std::list<std::list<long>>& value) {
  std::ostringstream out;
  kiva::operator<<(out, value);
  return out.str();
}

}  // namespace

TEST(List, PositionsCountFromOne) {
  std::list<std::string> list{"a", "b", "a"};
  EXPECT_EQ(item_where(list, std::string("a")), 1);
  EXPECT_EQ(item_where(list, std::string("c")), 0);
  EXPECT_TRUE(item_in(list, std::string("b")));
  EXPECT_EQ(read_number(list, 0), "");
  EXPECT_EQ(read_number(list, 3), "a");
  EXPECT_EQ(read_number(list, 4), "");
  replace_number(list, 2, std::string("x"));
  replace_number(list, 4, std::string("y"));
  sup_number(list, 0);
  sup_number(list, 1);
  EXPECT_EQ(list, (std::list<std::string>{"x", "a"}));
}

TEST(List, ArraysAndText) {
  EXPECT_EQ(array_convert(std::list<long>{}), nullptr);
  const std::unique_ptr<long[]> array(array_convert(std::list<long>{3, 1, 2}));
  EXPECT_TRUE(std::equal(array.get(), array.get() + 3, std::list<long>{3, 1, 2}.begin()));
  EXPECT_EQ(listed({{1, 2}, {}, {3}}), "((1, 2), (), (3))");
}

TEST(List, SetsOfBothKinds) {
  const std::set<long> a{1, 2, 5}, b{2, 3};
  EXPECT_EQ(set_union(a, b), (std::set<long>{1, 2, 3, 5}));
  EXPECT_EQ(set_inter(a, b), (std::set<long>{2}));
  EXPECT_EQ(priv(a, b), (std::set<long>{1, 5}));
  const index_set c(a), d(b);
  EXPECT_EQ(set_union(c, d).to_set(), set_union(a, b));
  EXPECT_EQ(set_inter(c, d).to_set(), set_inter(a, b));
  EXPECT_EQ(priv(c, d).to_set(), priv(a, b));
}

TEST(IndexSet, AnswersLikeASet) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  index_set tried;
  std::set<long> model;
  for (int step = 0; step < 2000; ++step) {
    const long member = static_cast<long>(random() % 60);
    if (random() % 2 != 0)
      EXPECT_EQ(tried.insert(member), model.insert(member).second);
    else
      EXPECT_EQ(tried.erase(member), model.erase(member) != 0);
    EXPECT_EQ(tried.contains(member), model.count(member) != 0);
  }
  EXPECT_EQ(tried.to_set(), model);
}

TEST(SortAll, KeepsEqualsInOrderOfArrival) {
  struct entry {
    long value;
    int arrival;
  };
  std::vector<entry> entries;
  std::mt19937 random(7);
  for (int i = 0; i < 300; ++i) entries.push_back({static_cast<long>(random() % 20), i});
  sort_all(entries.data(), static_cast<long>(entries.size()),
           [](const entry& a, const entry& b) { return internal_inf(a.value, b.value); });
  EXPECT_TRUE(std::is_sorted(entries.begin(), entries.end(), [](const entry& a, const entry& b) {
    return a.value != b.value ? a.value < b.value : a.arrival < b.arrival;
  }));
  sort_all(static_cast<long*>(nullptr), 0, internal_inf);
}

TEST(Exhaustif, GivesAllPermutationsInOrder) {
  for (int n = 1; n <= 6; ++n) {
    exhaustif_class walk(n);
    std::vector<int> expected(static_cast<std::size_t>(n));
    std::iota(expected.begin(), expected.end(), 0);
    do {
      const std::vector<int> before = expected;
      EXPECT_TRUE(std::equal(expected.begin(), expected.end(), walk.order()));
      if (std::next_permutation(expected.begin(), expected.end())) {
        EXPECT_EQ(walk.next(), 1);
        const auto changed = std::mismatch(before.begin(), before.end(), expected.begin()).first;
        EXPECT_EQ(walk.last_number(), changed - before.begin());
      } else {
        EXPECT_EQ(walk.next(), 0);
        break;
      }
    } while (true);
  }
}

TEST(Exhaustif, SkipsToAPositionAndCompares) {
  exhaustif_class walk(3);
  EXPECT_EQ(walk.next(0), 1);
  EXPECT_EQ(text_of(walk), "3,0 (1, 0, 2)");
  const int same[] = {1, 0, 2};
  EXPECT_EQ(walk, exhaustif_class(3, same));
  EXPECT_NE(walk, exhaustif_class(3));
  EXPECT_EQ(exhaustif_class(0).next(), 0);
}

TEST(Longlong, PrintsShiftsAndCompares) {
  EXPECT_EQ(text_of(g_longlong(-1l)), "-1 *2E32 + 4294967295");
  EXPECT_EQ(text_of(g_longlong(0, 1) << 31), "0 *2E32 + 2147483648");
  EXPECT_EQ(text_of(g_longlong(1, 3) << 31), "-2147483647 *2E32 + 2147483648");
  g_longlong value(-2, 1);
  value.rshift(1);
  EXPECT_EQ(text_of(value), "-1 *2E32 + 0");
  EXPECT_EQ(g_longlong(5l) | 0xFFFFFFFF0ul, g_longlong(0, 0xFFFFFFF5ul));
  EXPECT_LT(g_longlong(-1, 0), g_longlong(0, 0));
  EXPECT_LT(g_longlong(0, 1), g_longlong(0, 0x80000000ul));
  g_longlong from_int;
  from_int = -7;
  EXPECT_EQ(from_int, g_longlong(-7l));
}

TEST(Memory, GrowsWithWhatIsTouched) {
  diff_used_mem();
  const std::vector<char> block(64 << 20, 'x');
  EXPECT_GT(diff_used_mem(), 32 << 20);
  EXPECT_GT(used_mem(), static_cast<long>(block.size()));
}

}  // namespace kiva::test
