#include "base/name_numbers.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

namespace kiva::test {

TEST(NameNumbers, AgreeWithAMapThroughGrowthCopiesAndShortNames) {
  std::mt19937 random(7);
  name_numbers numbers;
  std::map<std::string, long> expected;
  EXPECT_EQ(numbers.find("a"), -1);
  for (int turn = 0; turn < 20000; ++turn) {
    std::string name(random() % 4, 'a');  // the empty name is one too
    for (char& c : name) c = static_cast<char>('a' + random() % 12);
    if (turn == 9000) {
      name_numbers copy = numbers;
      numbers.enter("only in the first");
      numbers = copy;
    }
    const auto entered = numbers.enter(name);
    const auto [at, is_new] = expected.emplace(name, static_cast<long>(expected.size()));
    ASSERT_EQ(entered.number, at->second) << name;
    ASSERT_EQ(entered.is_new, is_new) << name;
  }
  ASSERT_EQ(numbers.size(), static_cast<long>(expected.size()));
  for (const auto& [name, number] : expected) {
    EXPECT_EQ(numbers.find(name), number);
    EXPECT_EQ(numbers.name(number), name);
  }
  EXPECT_EQ(numbers.find("only in the first"), -1);
  EXPECT_EQ(numbers.find("zzzz"), -1);
}

}  // namespace kiva::test
