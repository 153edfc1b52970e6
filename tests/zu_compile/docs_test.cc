// The statements of the language against their table: each has its section in the documentation,
// whose examples run as they say, and stands in the random programs.

#include <gtest/gtest.h>

#include <sstream>

#include "tarn/zu/statement.h"
#include "tarn/zu/statement_table.h"
#include "tarn/zu/warnings.h"
#include "tests/support/temp_dir.h"
#include "tests/zu_compile/compiled.h"
#include "tests/zu_compile/program.h"

namespace kiva::test {
namespace {

/// A program of the page, and the lines "given: ... | signal: states" under it.
struct Example {
  std::string section, text;
  std::vector<std::string> traces;
};

/// Those with traces, and those that are a whole file.
std::vector<Example> examples() {
  std::vector<Example> found;
  std::istringstream page(read_text(KIVA_SOURCE "/docs/language.md"));
  std::string section;
  Example block;
  bool whole = false;
  for (std::string line; std::getline(page, line) || !block.text.empty();) {
    if (page && line.starts_with("    ")) {
      if (block.text.empty()) whole = line == "    data:";
      if (line.starts_with("    ;; given:")) {
        block.traces.push_back(line.substr(7));
      } else {
        block.text += line.substr(4) + "\n";
      }
      continue;
    }
    if (whole || !block.traces.empty()) {
      block.section = section;
      found.push_back(block);
    }
    block = {};
    whole = false;
    if (line.starts_with("#")) section = line;
  }
  return found;
}

std::string in_module(const std::string& text) {
  return text.find("module main") != std::string::npos
             ? text
             : "module main: Input: x, y; Output: o, p; Local: L;\n" + text + "end\n";
}

bool holds(const Statement& tree, bool (*makes)(const Statement&)) {
  if (makes(tree)) return true;
  for (const Statement* child : tree.children())
    if (holds(*child, makes)) return true;
  return false;
}

TEST(Docs, ExamplesRunAsTheySay) {
  int traced = 0;
  for (const Example& example : examples())
    for (const std::string& line : example.traces) {
      std::istringstream fields(line);
      std::string stimuli;
      for (std::string field; std::getline(fields, field, '|');) {
        std::istringstream words(field);
        std::string name, states;
        std::getline(words >> std::ws, name, ':');
        if (name == "given") {
          std::getline(words, stimuli);
          continue;
        }
        words >> states;
        EXPECT_EQ(trace(in_module(example.text), name == "end" ? "RTL" : name, stimuli), states)
            << example.text << line << " of " << name;
        ++traced;
      }
    }
  EXPECT_GT(traced, 50);
}

TEST(Docs, EachStatementHasItsSection) {
  for (const StatementRow& row : statement_table()) {
    int shown = 0;
    for (const Example& example : examples()) {
      if (example.section.find("`" + std::string(row.name) + "`") == std::string::npos) continue;
      const Compiled c(in_module(example.text));
      ASSERT_TRUE(c.ok()) << c.report() << example.text;
      EXPECT_TRUE(holds(*c.module()->getStatement(), row.makes)) << row.name << example.text;
      ++shown;
    }
    EXPECT_GT(shown, 0) << row.name;
  }
}

TEST(Docs, RandomProgramsHoldEachStatement) {
  // That need values or further modules.
  const std::set<std::string> apart{"if", "run"};
  std::set<std::string> missing;
  for (const StatementRow& row : statement_table())
    if (!apart.contains(row.name)) missing.insert(row.name);
  for (unsigned seed = 0; seed < 300; ++seed) {
    std::mt19937 random(seed);
    std::vector<Program> programs{random_program(random, 12), random_automaton(random, 3),
                                  random_mealy(random, 3)};
    while (!programs.empty()) {
      const Program p = programs.back();
      programs.pop_back();
      missing.erase(p.kind->name);
      programs.insert(programs.end(), p.parts.begin(), p.parts.end());
    }
  }
  EXPECT_TRUE(missing.empty()) << *missing.begin();
}

TEST(Docs, EachWarningHasItsRowInTheDocumentation) {
  const std::string page = read_text(KIVA_SOURCE "/docs/messages.md");
  for (const WarningRow& row : warning_table())
    EXPECT_NE(page.find("| `" + std::string(row.name) + "` | "), std::string::npos) << row.name;
}

}  // namespace
}  // namespace kiva::test
