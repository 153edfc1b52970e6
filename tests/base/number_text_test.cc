#include "base/number_text.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "tests/support/process_end.h"

namespace kiva::test {

TEST(NumberText, Decimal) {
  EXPECT_EQ(Stol(""), 0);
  EXPECT_EQ(Stol("-"), 0);
  EXPECT_EQ(Stol("-0042"), -42);
  EXPECT_EQ(Stol(std::to_string(LONG_MIN)), LONG_MIN);
  EXPECT_EQ(Stoll(std::to_string(LLONG_MAX)), LLONG_MAX);
  EXPECT_EQ(Stoi("4294967297"), 1) << "wraps at its width";
  EXPECT_DOUBLE_EQ(Stod("-12,125", ','), -12.125);
  EXPECT_DOUBLE_EQ(Stod("3", '.'), 3);
  EXPECT_DOUBLE_EQ(Stod("", '.'), 0);
}

TEST(NumberText, HexadecimalAndBinary) {
  EXPECT_EQ(Stouhex("fF"), 255u);
  EXPECT_EQ(Stouhex("1x0"), 0x100u);
  EXPECT_EQ(Stouhex("ffffffffffffffff"), ULONG_MAX);
  EXPECT_EQ(Stoubin("11"), 3u);

  EXPECT_EQ(Stoshex("F"), -1);
  EXPECT_EQ(Stoshex("7F"), 127);
  EXPECT_EQ(Stoshex("80"), -128);
  EXPECT_EQ(Stoshex("a0"), -96);
  EXPECT_EQ(Stoshex("80000000"), INT_MIN);
  EXPECT_EQ(Stoshex("7fffffff"), INT_MAX);
  EXPECT_EQ(Stoshex("ffffffffffffffff"), -1);
  EXPECT_EQ(Stoshex("f00000000"), -(1l << 32));
  EXPECT_EQ(Stoshex(""), 0);
  EXPECT_EQ(Stosbin("11"), -1);
  EXPECT_EQ(Stosbin("011"), 3);
  EXPECT_EQ(Stosbin("10000000"), -128);

  EXPECT_EQ(Stoloruhex("0x", "0x1F"), 31);
  EXPECT_EQ(Stoloruhex("0x", "a0x1F"), 31);
  EXPECT_EQ(Stoloruhex("0x", "31"), 31);
  EXPECT_EQ(Stohex("1Fh", "h"), 31);
  const Outcome decimal = run_captured([] { EXPECT_EQ(Stohex("12", "h"), 12); });
  EXPECT_EQ(decimal.err, "Decimal Conversion 12\n");
}

TEST(NumberText, Checks) {
  EXPECT_FALSE(checkuint(""));
  EXPECT_FALSE(checkint(""));
  EXPECT_FALSE(checkint("-"));
  EXPECT_FALSE(beginbynumber(""));
  EXPECT_TRUE(checkhex(""));
  EXPECT_TRUE(checkbin(""));
  EXPECT_TRUE(checkuint("0129"));
  EXPECT_FALSE(checkuint("-1"));
  EXPECT_TRUE(checkint("-19"));
  EXPECT_FALSE(checkint("1-"));
  EXPECT_TRUE(checkhex("09afAF"));
  EXPECT_FALSE(checkhex("g"));
  EXPECT_TRUE(checkhexintel("1Fh"));
  EXPECT_FALSE(checkhexintel("1F"));
  EXPECT_FALSE(checkhexintel("h"));
  EXPECT_TRUE(checkbin("0110"));
  EXPECT_FALSE(checkbin("2"));
  EXPECT_TRUE(beginbynumber("1a"));
  EXPECT_FALSE(beginbynumber("a1"));
}

TEST(NumberText, ToText) {
  EXPECT_EQ(bin8toS(0x1A5), "10100101");
  EXPECT_EQ(hex1toS(0x1F), "f");
  EXPECT_EQ(hex2toS(0x0A), "0a");
  EXPECT_EQ(hex4toS(0xBEEF), "beef");
  EXPECT_EQ(hex8toS(0x12345678A), "2345678a");
  EXPECT_EQ(dtoS(1.005, 1), "1.0");
  EXPECT_EQ(dtoS(-2, 3), "-2.000");
  EXPECT_EQ(dtoS(1e300, 0).size(), 301u);
  EXPECT_EQ(long2S(-5), "-5");
  EXPECT_EQ(unslong2S(ULONG_MAX), "18446744073709551615");
  EXPECT_EQ(ctoS('x'), "x");
  EXPECT_EQ(unslongbyS(0), "A");
  EXPECT_EQ(unslongbyS(8), "BA");
  EXPECT_EQ(unslongbyS(0x1FF), "HHH");
  const std::unique_ptr<char[]> array(Stoa("abc"));
  EXPECT_STREQ(array.get(), "abc");
}

}  // namespace kiva::test
