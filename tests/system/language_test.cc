// Programs in the language of whoever runs them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "tests/support/plain_blanks.h"
#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

using ::testing::HasSubstr;

class French : public ::testing::Test {
 protected:
  French() { setenv("LC_ALL", "fr_FR.UTF-8", 1); }
  ~French() override { setenv("LC_ALL", "C.UTF-8", 1); }

  static ProgramRun run(const std::string& program, const std::string& arguments,
                        const std::string& input = "") {
    ProgramRun run = run_program(program, arguments, input);
    return {run.status, plain_blanks(run.out), plain_blanks(run.err)};
  }
  static std::string out_in(const char* locale, const std::string& program,
                            const std::string& arguments) {
    setenv("LC_ALL", locale, 1);
    std::string out = run(program, arguments).out;
    setenv("LC_ALL", "fr_FR.UTF-8", 1);
    return out;
  }

  TempDir dir_;
  const std::string wrong_ =
      dir_.write("wrong.zu", "module m:\nInput: alarm;\nOutput: o;\nemit alram >> )\nend\n");
};

TEST_F(French, SentencesAreFrenchAndTheHeadOfALineIsNot) {
  const ProgramRun told = run("tarn", wrong_);
  EXPECT_EQ(told.status, 1);
  EXPECT_THAT(told.err, HasSubstr("wrong.zu:4:1: error: « alram » n’est pas déclaré"));
  EXPECT_THAT(told.err,
              HasSubstr("wrong.zu:4:15: error: attendu après « >> » : une instruction\n"));
}

TEST_F(French, OnATerminalTheHeadIsFrenchToo) {
  const TempDir here;
  const std::string command = "script -qec \"'" KIVA_PROGRAMS "/tarn' '" + wrong_ + "'\" '" +
                              here.file("shown") + "' >/dev/null </dev/null";
  if (std::system("command -v script >/dev/null") != 0) GTEST_SKIP() << "script is missing";
  EXPECT_NE(std::system(command.c_str()), 0);
  EXPECT_THAT(plain_blanks(read_text(here.file("shown"))),
              HasSubstr(":4:1: erreur : « alram » n’est pas déclaré"));
}

TEST_F(French, FilesStayEnglish) {
  const std::string sarif = dir_.file("found.sarif");
  run("tarn", "--sarif " + sarif + ' ' + wrong_);
  EXPECT_THAT(read_text(sarif), HasSubstr("is not declared"));
  for (const char* program : {"tarn", "kiva-console", "kiva-campaign"})
    EXPECT_EQ(run(program, "--print-man").out, out_in("C", program, "--print-man"));
}

TEST_F(French, HelpIsFrench) {
  for (const char* program : {"tarn", "kiva-console", "kiva-campaign"}) {
    const std::string french = run(program, "--help").out;
    std::istringstream lines(out_in("C", program, "--help"));
    for (std::string line; std::getline(lines, line);) {
      // The words of a long option stand below it.
      const bool words = line.size() > 30 && (line.substr(28, 2) == "  " || line[0] != ' ');
      EXPECT_TRUE(!words || french.find(line) == std::string::npos) << line;
    }
  }
}

TEST_F(French, WhatRunsAndProofsSayIsFrench) {
  const std::string lamp = dir_.write(
      "lamp.zu", "module lamp:\nInput: i;\nOutput: o;\nloop { wait i >> emit o }\nend\n");
  ASSERT_EQ(run("tarn", "-q -d " + dir_.path().string() + ' ' + lamp).status, 0);
  EXPECT_THAT(run("tarn", "--never o " + lamp).out,
              HasSubstr("# never o : échoue à l’instant 2\n"));
  EXPECT_THAT(run("tarn", "--never 'o and not i' " + lamp).out,
              HasSubstr("# never o and not i : vrai : "));
  const std::string module = dir_.file("lamp.zuc");
  const ProgramRun checked = run("kiva-console", "--coverage " + module, "i -> o\n");
  EXPECT_THAT(checked.err, HasSubstr(":1: instant 1 : attendu : o, observé : absent"));
  EXPECT_THAT(checked.err, HasSubstr("couverture de lamp en 1 instants\n"));
  const ProgramRun campaign =
      run("kiva-campaign", "--runs 8 --never o --out " + dir_.path().string() + ' ' + module);
  EXPECT_THAT(campaign.err, HasSubstr("never-1: o : échoue dans 8 exécutions sur 8, d’abord dans"));
  EXPECT_THAT(run("kiva-console", "--random x " + module).err, HasSubstr("Pour en savoir plus"));
}

}  // namespace
}  // namespace kiva::test
