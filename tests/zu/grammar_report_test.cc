// The numbered list of productions (productions.txt, a line each from number 1 on) against the
// parser generator's own report. Others know them by number, so neither order nor number may
// change.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/temp_dir.h"

namespace kiva::test {

namespace {

/// The report's rules, as lines "left: right".
std::string reported(const std::string& report) {
  std::string rules;
  std::istringstream lines(report.substr(report.find("\nGrammar\n")));
  std::string left;
  for (std::string line; std::getline(lines, line) && line.find("Terminals") != 0;) {
    std::istringstream words(line);
    size_t number = 0;
    std::string word;
    if (!(words >> number >> word)) continue;
    if (word != "|") left = word;
    rules += left;
    while (words >> word && word != "\"end") {  // the name of the end of input has blanks
      if (word == "ε" || word == "%empty") continue;
      rules += " " + (word.front() == '\'' ? word.substr(1, word.size() - 2) : word);
    }
    rules += word == "\"end" ? " end\n" : "\n";
  }
  return rules;
}

TEST(ZuGrammar, ProductionsHaveTheirNumbers) {
  // What comes later stands behind them.
  const std::string told = read_text(KIVA_ZU_PRODUCTIONS);
  EXPECT_EQ(reported(read_text(KIVA_PARSE_ZU_REPORT)).substr(0, told.size()), told);
}

// Whatever else is ambiguous is decided by levels of precedence.
TEST(ZuGrammar, OneConflictBehindTheHeadOfAModule) {
  const std::string report = read_text(KIVA_PARSE_ZU_REPORT);
  const std::string conflicts = report.substr(0, report.find("Grammar\n"));
  EXPECT_NE(conflicts.find("conflicts: 1 shift/reduce\n"), std::string::npos);
  EXPECT_EQ(conflicts.find("conflicts:"), conflicts.rfind("conflicts:"));
}

}  // namespace

}  // namespace kiva::test
