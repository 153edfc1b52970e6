#include "base/Stringpp.h"

#include <gmock/gmock.h>

#include <vector>

#include "base/json_text.h"
#include "base/printable_text.h"
#include "tests/support/process_end.h"

namespace kiva::test {

namespace {

std::string latin(int code) {
  return std::string(1, static_cast<char>(code));
}

using strings = std::vector<std::string>;

strings all_tokens(std::string text, char sep) {
  strings tokens;
  while (!text.empty()) tokens.push_back(next_Stringtoken(text, sep, text));
  return tokens;
}

}  // namespace

TEST(TextForATerminal, HoldsNothingThatItObeys) {
  EXPECT_EQ(printable("\x1b[m\n\x7f\xc2\x9b\xc3\xa9"), "\\x1b[m\\n\\x7f\\xc2\\x9b\xc3\xa9");
  EXPECT_EQ(JsonText::quoted("\x1b\x7f\xc2\x9b\xc3\xa9"), "\"\\u001b\\u007f\\u009b\xc3\xa9\"");
}

TEST(Stringpp, LettersOfIso8859) {
  strings letters;
  int count = 0;
  for (int code = 128; code < 256; ++code)
    count += check_ISO_8859_1_alphabetical_letter(static_cast<char>(code)) ? 1 : 0;
  EXPECT_EQ(count, 1 + 23 + 30 + 5 + 1);
  for (int code : {180, 191, 215, 216, 247, 248, 254})
    EXPECT_FALSE(check_ISO_8859_1_alphabetical_letter(static_cast<char>(code))) << code;
  for (char c : std::string("@AZaz")) {
    EXPECT_EQ(check_ISO_8859_1_alphabetical_letter(c), c != '@');
    EXPECT_TRUE(est_lc(c));
  }
  for (char c : std::string("[{`/:-. ") + latin(233)) EXPECT_FALSE(est_lc(c)) << c;
}

TEST(Stringpp, VariableNames) {
  for (const char* name : {"a", "a_b", "Ab9", "a__9"}) {
    EXPECT_TRUE(checkvarname(name)) << name;
    EXPECT_TRUE(checkvarname_with_pre_underscore(name)) << name;
  }
  for (const char* name : {"", "_", "a_", "9a", "a-b", "a@", "__a_"}) {
    EXPECT_FALSE(checkvarname(name)) << name;
    EXPECT_FALSE(checkvarname_with_pre_underscore(name)) << name;
  }
  EXPECT_FALSE(checkvarname("_a"));
  EXPECT_TRUE(checkvarname_with_pre_underscore("_a"));
}

TEST(Stringpp, PartsStayInsideTheText) {
  EXPECT_EQ(my_at("abcd", 1, 3), "bc");
  EXPECT_EQ(my_at("abcd", -5, 99), "abcd");
  EXPECT_EQ(my_at("abcd", 3, 3), "");
  EXPECT_EQ(my_at("abcd", 4, 9), "");
  EXPECT_EQ(my_after("abcd", 1), "bcd");
  EXPECT_EQ(my_after("abcd", 7), "");
  EXPECT_EQ(my_before("abcd", 1), "a");
  EXPECT_EQ(my_before("abcd", -1), "");
  EXPECT_EQ(find("abab", "ba"), 1);
  EXPECT_EQ(find("abab", "c"), -1);
  EXPECT_EQ(char_occurences("abab", 'b'), 2);
}

TEST(Stringpp, TokensInText) {
  EXPECT_TRUE(contains_token("a+bc", "bc"));
  EXPECT_FALSE(contains_token("bcd", "bc"));
  EXPECT_TRUE(contains_token("bcd bc;", "bc"));
  EXPECT_FALSE(contains_token("bc" + latin(233), "bc"));
  EXPECT_TRUE(contains_token("xbc", "bc")) << "only what follows counts";

  EXPECT_EQ(substitute_token("a ab", "a", "x"), "x ab");
  EXPECT_EQ(substitute_token("a+a@a a_", "a", "aa"), "aa+a@a a_");
  EXPECT_EQ(substitute_token("aaa aa", "aa", "b"), "aaa b");
  EXPECT_EQ(substitute_token("abc", "", "x"), "abc");
}

TEST(Stringpp, Editing) {
  EXPECT_EQ(upcase("aZ9" + latin(233)), "AZ9" + latin(233));
  EXPECT_EQ(downcase("aZ9"), "az9");
  EXPECT_EQ(upcase_accent("e" + latin(233) + latin(248) + latin(247) + latin(253)),
            "E" + latin(201) + latin(248) + latin(247) + latin(221));
  EXPECT_EQ(cancel_begin_end_spaces("  a b "), "a b");
  EXPECT_EQ(cancel_begin_end_spaces("   "), "");
  EXPECT_EQ(clever_substitute_space("  a  b ", '_'), "a__b");
  EXPECT_EQ(clever_substitute_space("  ", '_'), "");
  EXPECT_EQ(substitute_string("aaaa", "aa", "aab"), "aabaab");
  EXPECT_EQ(substitute_string("abc", "", "x"), "abc");
  EXPECT_EQ(substitute_char("a.b.", '.', '_'), "a_b_");
  EXPECT_EQ(substitute_char("a.b.", '.', "::"), "a::b::");
  EXPECT_EQ(bdelete("\"ab\""), "ab");
  EXPECT_EQ(bdelete("ab"), "");
  EXPECT_EQ(latex_String_filter("_a_"), "\\_a\\_");
}

TEST(Stringpp, NextToken) {
  std::string rest;
  EXPECT_EQ(next_Stringtoken("  a&b", ' ', rest), "a");
  EXPECT_EQ(rest, "&b");
  EXPECT_EQ(next_Stringtoken(" ", ' ', rest), " ");
  EXPECT_EQ(rest, "");
  EXPECT_EQ(next_Stringtoken("", ' ', rest), "");
  // The separator may be an identifier character itself.
  EXPECT_EQ(all_tokens("xxabxc", 'x'), (strings{"ab", "c"}));
  EXPECT_EQ(all_tokens("a@1 + (b_2) ", ' '), (strings{"a@1", "+", "(", "b_2", ")", " "}));
}

TEST(Stringpp, Records) {
  std::string rest;
  EXPECT_EQ(next_record("a/b/c", '/', rest), "a");
  EXPECT_EQ(rest, "b/c");
  EXPECT_EQ(last_record("a/b/c", '/', rest), "a/b");
  EXPECT_EQ(rest, "c");
  EXPECT_EQ(next_record("abc", '/', rest), "abc");
  EXPECT_EQ(rest, "");
  char found = 'x';
  EXPECT_EQ(next_record("a;b,c", ",;", rest, found), "a");
  EXPECT_EQ(found, ';');
  EXPECT_EQ(next_record(rest, ",;", rest, found), "b");
  EXPECT_EQ(rest, "c");
  EXPECT_EQ(next_record(rest, ",;", rest, found), "c");
  EXPECT_EQ(found, '\0');
}

TEST(Stringpp, FileNames) {
  EXPECT_EQ(supress_filename_extension("a.b/c.zuc"), "a.b/c");
  EXPECT_EQ(supress_filename_extension("a.b/c"), "a.b/c");
  EXPECT_EQ(supress_filename_extension("../c"), "../c");
  EXPECT_EQ(supress_filename_extension("a..b"), "a..b");
  EXPECT_EQ(supress_filename_extension("a.."), "a.");
  EXPECT_EQ(supress_filename_extension("abc"), "abc");
}

TEST(Stringpp, RelativeDirectories) {
  const auto path = [](const std::string& from, const std::string& to) {
    std::string result;
    run_captured([&] { result = relative_directory_path(from, to); });
    return result;
  };
  EXPECT_EQ(path("/a/b/c", "/a/d/e"), "../../b/c");
  EXPECT_EQ(path("/a/b", "/a"), "b");
  EXPECT_EQ(path("/a", "/a/b"), "../");
  EXPECT_EQ(path("/a/b", "/a/b"), ".");
  EXPECT_EQ(path(my_current_directory() + "/x", ""), "x");
  const Outcome traced = run_captured([] { relative_directory_path("/a", "/b"); });
  EXPECT_THAT(traced.err, ::testing::AllOf(::testing::StartsWith("demarrage "),
                                           ::testing::HasSubstr("\nintermediaire: "),
                                           ::testing::HasSubstr("\n--> ../a\n")));
}

}  // namespace kiva::test
