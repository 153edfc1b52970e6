#include "tests/system/program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <regex>
#include <sstream>

#include "base/translation.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {

namespace {

/// Whatever a program says in any test can be said in French.
void expect_translatable(const std::string& err) {
  static const std::unique_ptr<PhraseBook> french = PhraseBook::of("fr");
  static const std::regex line(R"(^.*?: (?:error|warning|note): (.*)$)");
  std::istringstream lines(err);
  std::smatch parts;
  for (std::string text; std::getline(lines, text);) {
    const bool said = std::regex_match(text, parts, line);
    EXPECT_TRUE(!said || french->knows(parts[1])) << text;
  }
}

}  // namespace

ProgramRun run_program(const std::string& program, const std::string& arguments,
                       const std::string& input) {
  const TempDir dir;
  const std::string in = dir.write("in", input);
  const std::string command = "'" KIVA_PROGRAMS "/" + program + "' " + arguments + " <'" + in +
                              "' >'" + dir.file("out") + "' 2>'" + dir.file("err") + "'";
  const int result = std::system(command.c_str());
  ProgramRun run;
  run.status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
  run.out = read_text(dir.file("out"));
  run.err = read_text(dir.file("err"));
  const char* locale = std::getenv("LC_ALL");
  const bool english = locale == nullptr || !std::string(locale).starts_with("fr");
  if (english && program.find('/') == std::string::npos) expect_translatable(run.err);
  return run;
}

std::filesystem::path source_folder(const std::string& name) {
  return std::filesystem::path(KIVA_SOURCE) / name;
}

}  // namespace kiva::test
