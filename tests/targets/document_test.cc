// Documents and the debugging trace.

#include <gtest/gtest.h>

#include "forms/forms.h"
#include "tarn/model/compilation.h"
#include "tarn/targets/targets.h"
#include "tests/support/process_end.h"
#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

TEST(LatexTools, TakesWhatTarnWrites) {
  for (const char* name : {"names.zuc", "elevator.zu", "thermostat.zuc", "open.zuc", "s1423.zuc"}) {
    const TargetCase test = named_case(name);
    SCOPED_TRACE(name);
    test.write("--latex");
    const std::string m = test.module()->getName();
    const auto folder = test.folder();
    run_tool("pdflatex -interaction=nonstopmode -halt-on-error '" + m + ".tex'", folder);
    EXPECT_TRUE(std::filesystem::exists(test.file(m + ".pdf")));
    EXPECT_EQ(read_text(test.file(m + ".log")).find("Overfull"), std::string::npos);
  }
}

TEST(Documents, WorkingTexts) {
  const TargetCase test = named_case("toggle.zuc");
  test.write("--doc");
  expect_told("toggle_working.txt", read_text(test.file("toggle.txt")));
  test.write("--no-comments --latex");
  expect_told("toggle_working.tex", read_text(test.file("toggle.tex")));
}

/// Keeps the last text displayed.
class Screen : public message_presenter {
 public:
  void alert(const std::string&) override {}
  void message(const std::string&) override {}
  void big_message(const std::string&, int) override {}
  void display(const std::string& title, const std::string& text, int columns) override {
    shown = title + "|" + text + "|" + std::to_string(columns);
  }
  std::string shown;
};

TEST(Documents, TheDebuggingTraceIsShown) {
  const TargetCase test = named_case("toggle.zuc");
  const TempDir dir;
  Screen screen;
  message_presenter* before = set_message_presenter(&screen);
  Module::OutputDir() = dir.path().string();
  const Outcome outcome = run_captured([&] { test.module()->printDebug(); });
  const std::string shown = screen.shown;
  Module::OutputDir() = dir.file("missing");
  const Outcome failure = run_captured([&] { test.module()->printDebug(); });
  Module::OutputDir() = "";
  set_message_presenter(before);
  const std::string path = dir.file("toggle.dbg");
  EXPECT_EQ(outcome.err, "enter debug put \nend of debug put\nDebugging trace: " + path + "\n");
  EXPECT_EQ(shown, "Debugging trace|" + read_text(path) + "|130");
  expect_told("toggle.dbg", read_text(path));
  EXPECT_NE(failure.err.find("Cannot open output file: "), std::string::npos);
  EXPECT_EQ(failure.err.find("Debugging trace"), std::string::npos);
  EXPECT_EQ(screen.shown, shown);
}

}  // namespace
}  // namespace kiva::test
