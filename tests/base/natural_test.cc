#include "base/natural.h"

#include <gtest/gtest.h>

namespace kiva::test {
namespace {

TEST(Naturals, AreExactBeyondAWord) {
  Natural sum;
  EXPECT_EQ(sum.decimal(), "0");
  for (unsigned k = 0; k < 130; ++k) {  // 2^130 - 1, by carries over two words
    Natural power = 1;
    sum += power <<= k;
  }
  EXPECT_EQ(sum.decimal(), "1361129467683753853853498429727072845823");
  sum += 1;
  EXPECT_EQ(sum.decimal(), "1361129467683753853853498429727072845824");
  EXPECT_EQ((sum <<= 64).decimal(), "25108406941546723055343157692830665664409421777856138051584");
}

}  // namespace
}  // namespace kiva::test
