// Expression text: what is accepted, what it means, what is refused and how; and the checker.

#include <gmock/gmock.h>

#include <sstream>

#include "base/list.h"
#include "bdd/bddpp.h"
#include "bdd/expression_parser.h"
#include "bdd/expressions_checker.h"
#include "tests/support/process_end.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;

class ExpressionText : public testing::Test {
 protected:
  ExpressionText() {
    for (const char* name : {"a", "b", "c", "Or", "x@1", "7"}) m.New_var_last(name);
  }
  /// What the text means, with the texts of the manager's own sums; "" where it is refused.
  std::string meaning(const std::string& text) {
    int error = -1;
    bdd f;
    outcome = run_captured([&] { f = m.Parse_expression(text, &priority, &error); });
    EXPECT_EQ(m.Nb_bdd_vars(), 6) << "no variable is made";
    EXPECT_EQ(error == 0, outcome.err.empty()) << text << outcome.err;
    if (error != 0) {
      EXPECT_EQ(f, m.Bdd_zero());
      EXPECT_EQ(priority, 0);
    }
    return error != 0 ? "" : m.Print_sop_to_String("+", ".", "!", "", f, 1);
  }

  bddpp_manager m;
  int priority = -5;
  Outcome outcome;
};

TEST_F(ExpressionText, MeansWhatItSays) {
  for (const auto& [text, expected] :
       std::vector<std::pair<std::string, std::string>>{{"", "0"},
                                                        {"a", "a"},
                                                        {"  a", "a"},
                                                        {"not not a", "a"},
                                                        {"!~a", "a"},
                                                        {"a.b", "a.b"},
                                                        {"a & b AND c", "a.b.c"},
                                                        {"a+b", "a+b"},
                                                        {"a | b OR c", "a+b+c"},
                                                        {"not a and b", "!a.b"},
                                                        {"not (a and b)", "!b+!a"},
                                                        {"a or b and c", "a+b.c"},
                                                        {"a or b xor 1", "!a.!b"},
                                                        {"1 xor a or b", "b+!a"},
                                                        {"a xnor a", "1"},
                                                        {"[a)and(b]", "a.b"},
                                                        {"Or or x@1", "Or+x@1"},
                                                        {"7 and 1", "7"},
                                                        {"a XNOR 0", "!a"}})
    EXPECT_EQ(meaning(text), expected) << text;
}

TEST_F(ExpressionText, PrioritiesStandInFront) {
  for (const auto& [text, expected] : std::vector<std::pair<std::string, int>>{
           {"a", 0}, {"<7> a", 7}, {"<1>a", 1}, {"< other >a", -1}, {"<default> a", -1}}) {
    EXPECT_EQ(meaning(text), "a") << text;
    EXPECT_EQ(priority, expected) << text;
  }
  int error = 0;
  const Outcome told =
      run_captured([&] { EXPECT_EQ(m.Parse_expression("<7>a", &error), m.Bdd_zero()); });
  EXPECT_NE(error, 0);
  EXPECT_EQ(told.err, "PARSING ERROR about expression: \"<7>a\": unknown symbols '<' and '>' \n");
}

TEST_F(ExpressionText, RefusalsAreTold) {
  const auto report = [](const std::string& text, const std::string& first) {
    return first + "PARSING ERROR about expression: \"" + text + "\"";
  };
  const std::string unknown = "parsing error in expression: name ";
  for (const auto& [text, first] : std::vector<std::pair<std::string, std::string>>{
           {"d", unknown + "\"d\" not identificated ...\n"},
           {"a and OR2", unknown + "\"OR2\" not identificated ...\n"},
           {"a or ", unknown + "\" \" not identificated ...\n"},
           {"<0>a", "parsing error in expression: \"0\" is not a correct priority value ...\n"},
           {"<b>a", unknown + "\"b\" is not a correct priority value ...\n"}}) {
    EXPECT_EQ(meaning(text), "") << text;
    EXPECT_EQ(outcome.err, report(text, first) + "\n");
  }
  for (const char* text : {"a b", "[a", "a)(", "and", "a >", "<7 a", "<7>", "a ", "<>a", "a ! b"}) {
    EXPECT_EQ(meaning(text), "") << text;
    EXPECT_THAT(outcome.err, HasSubstr("syntax error, unexpected ")) << text;
    EXPECT_TRUE(outcome.err.ends_with(report(text, "") + "\n")) << text;
  }
  // Before any parsing.
  EXPECT_EQ(meaning("a / b"), "");
  EXPECT_EQ(outcome.err, report("a / b", "") + ": / char detection!\n");
  EXPECT_EQ(meaning("((a)"), "");
  EXPECT_EQ(outcome.err, report("((a)", "") + ": bad parenthesing!\n");
}

TEST_F(ExpressionText, DepthHasALimit) {
  const auto nested = [](int depth) {
    return std::string(static_cast<size_t>(depth), '[') + "a" +
           std::string(static_cast<size_t>(depth), ']');
  };
  EXPECT_EQ(meaning(nested(9000)), "a");
  EXPECT_EQ(meaning(nested(20000)), "");
  EXPECT_THAT(outcome.err, HasSubstr("memory exhausted\n"));
}

TEST_F(ExpressionText, RulesAndTokensHaveTheirNumbers) {
  const std::string report = read_text(KIVA_PARSE_EXPRESSION_REPORT);
  for (const char* line :
       {"    1 bdd_final: bdd_expression_gen", "   12 bdd_terme: bdd_terme TOKEN_AND bdd_facteur",
        "   20 bdd_variable: TOKEN_STRING\n\n", "TOKEN_OR (258)", "TOKEN_NOT (264)",
        "TOKEN_ONE (271)"})
    EXPECT_THAT(report, HasSubstr(line));
}

TEST(ExpressionsChecker, FindsWhereATextGoesWrong) {
  expressions_checker checker;
  checker.add_operator("+", 2);
  checker.add_operator("not", 1);
  checker.add_factor("(", ")");
  checker.add_factor("[", "]");
  checker.add_variable("a");
  checker.add_variable("b");
  const auto check = [&](const std::string& text) {
    int position = -1;
    run_captured([&] { position = checker.check(text); });
    return position;
  };
  for (const char* right : {"a+b", "not not a", "(a + [b)] + a", "( a )+b"})
    EXPECT_EQ(check(right), 0) << right;
  EXPECT_EQ(check("a++b"), 7) << "a, + and the second +, each with a blank";
  for (const char* wrong :
       {"", "a b", "a +", "(a", "a)", "+a", "c", "a not b", "3 + a", "()", "(a+)"})
    EXPECT_NE(check(wrong), 0) << wrong;
  checker.accept_numbers();
  EXPECT_EQ(check("3 + a"), 0);
  EXPECT_NE(check("c + a"), 0) << "a name is no number";
  EXPECT_NE(check(std::string(100000, '(')), 0);
  const Outcome traced = run_captured([&] { checker.check("a"); });
  EXPECT_EQ(traced.err, "tok=a state=2\ntok= state=3\n");
}

}  // namespace
}  // namespace kiva::test
