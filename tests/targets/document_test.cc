// Documents and the debugging trace.

#include <gtest/gtest.h>

#include "forms/forms.h"
#include "tarn/model/compilation.h"
#include "tarn/targets/targets.h"
#include "tests/support/process_end.h"
#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

/// Signs that mark text up, and names that fill lines.
const std::string long_names =
    ";; 50% & \u00e9 \u2192 <x> _y_ {z} ^ ~ \\ #1 \"q\" --\n;;\n;; Second.\n\nmodule " +
    std::string(80, 'm') + ":\nInput: b,  ;; what it means\n  ;; above it\n  " +
    std::string(90, 'i') +
    ",\n  it_is_a_name_of_many_words_that_no_column_of_any_table_has_room_for_on_one_line;\n"
    "Output: BB,\n  " +
    std::string(90, 'o') +
    ";\n\n;; @never b and BB\nautomaton\nstate: S1 / BB;\nstate: " + std::string(90, 's') + " / " +
    std::string(90, 'o') +
    ";\ntransition:\ninitial-> S1;\nS1 [b and "
    "it_is_a_name_of_many_words_that_no_column_of_any_table_has_room_for_on_one_line and not " +
    std::string(90, 'i') + "] -> " + std::string(90, 's') + ";\nend\n";

/// Runs pdflatex, which has nothing to say of lines that are too long.
void expect_pages(const TargetCase& test, const std::string& name, const std::string& pages) {
  SCOPED_TRACE(name);
  run_tool("pdflatex -interaction=nonstopmode -halt-on-error '" + name + ".tex'", test.folder());
  EXPECT_TRUE(std::filesystem::exists(test.file(name + ".pdf")));
  const std::string log = read_text(test.file(name + ".log"));
  EXPECT_EQ(log.find("Overfull"), std::string::npos);
  EXPECT_NE(log.find(pages), std::string::npos);
}

TEST(LatexTools, TakesWhatTarnWrites) {
  const std::string tarn = "'" KIVA_PROGRAMS "/tarn' -q --latex ",
                    examples = KIVA_SOURCE "/examples/";
  for (const char* name : {"names.zuc", "elevator.zu", "thermostat.zuc", "open.zuc", "s1423.zuc"}) {
    const TargetCase test = named_case(name);
    SCOPED_TRACE(name);
    test.write("--latex");
    expect_pages(test, test.module()->getName(), "");
  }
  const TargetCase test = named_case("toggle.zuc");
  run_tool(tarn + examples + "lift/lift.zu && " + tarn + examples + "stopwatch/stopwatch.zu",
           test.folder());
  expect_pages(test, "lift", "(2 pages");
  expect_pages(test, "stopwatch", "(4 pages");
  test.add_file("long.zu", long_names);
  run_tool(tarn + "long.zu", test.folder());
  expect_pages(test, std::string(80, 'm'), "");
}

TEST(Documents, TellWhatTheSourceTells) {
  const TargetCase test = named_case("toggle.zuc");
  test.add_file("long.zu", long_names);
  run_tool("'" KIVA_PROGRAMS "/tarn' -q --latex --html -o long long.zu", test.folder());
  const auto count = [](const std::string& text, const std::string& part) {
    size_t times = 0;
    for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++times;
    return times;
  };
  const std::string page = read_text(test.file("long.html")),
                    tex = read_text(test.file("long.tex"));
  for (const char* part :
       {"<p>50% &amp; \u00e9", "<p>Second.", "<td>what it means</td>", "<td>above it</td>",
        "<td>never</td><td>b and BB</td><td>long.zu:13</td>", "FNV-1a", "</svg>"})
    EXPECT_EQ(count(page, part), 1u) << part;
  for (const char* part : {"50\\% \\& \u00e9 $\\to$ ", "above it", "never & b and BB & long.zu:13",
                           "\\end{tikzpicture}"})
    EXPECT_EQ(count(tex, part), 1u) << part;
  run_tool("'" KIVA_PROGRAMS "/tarn' -q --html --no-comments -o bare long.zu", test.folder());
  const std::string bare = read_text(test.file("bare.html"));
  for (const char* part : {"Second.", "above it", "FNV-1a", "long.zu:1 "})
    EXPECT_EQ(count(bare, part), 0u) << part;
}

TEST(Documents, WorkingTexts) {
  const TargetCase test = named_case("toggle.zuc");
  test.write("--doc");
  expect_told("toggle_working.txt", read_text(test.file("toggle.txt")));
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
