// The floors hold themselves: an include goes down, or stays on its floor.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

/// Floors from the ground up; a file may include its own floor and those before it.
const std::vector<std::string> floors = {
    "base",       "bdd",           "pert_exp", "forms",        "tarn/session",
    "tarn/model", "tarn/zuc",      "tarn/zu",  "tarn/formats", "tarn/b_automaton", "tarn/classic",
    "engine",     "SIMULATOR_ZUC", "programs"};

/// Place of the most particular floor that holds the path; -1 for none.
int floor_of(const std::string& path) {
  int found = -1;
  for (size_t i = 0; i < floors.size(); ++i)
    if (path.starts_with(floors[i] + "/") &&
        (found < 0 || floors[i].size() > floors[static_cast<size_t>(found)].size()))
      found = static_cast<int>(i);
  return found;
}

TEST(Floors, IncludesGoDown) {
  const std::regex include(R"re(^\s*#\s*include\s*"([^"]+)")re");
  const std::filesystem::path root = source_folder("");
  int checked = 0;
  for (const char* top :
       {"base", "bdd", "pert_exp", "forms", "tarn", "engine", "SIMULATOR_ZUC", "programs"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / top)) {
      const std::string extension = entry.path().extension();
      if (extension != ".h" && extension != ".cc" && extension != ".l" && extension != ".y")
        continue;
      const std::string file = entry.path().lexically_relative(root).string();
      const int own = floor_of(file);
      ASSERT_GE(own, 0) << file << " stands on no floor";
      std::ifstream in(entry.path());
      for (std::string line; std::getline(in, line);) {
        std::smatch match;
        if (!std::regex_search(line, match, include)) continue;
        const std::string included = match[1];
        EXPECT_FALSE(included.starts_with("tests/") || included.starts_with("bench/"))
            << file << ": " << included;
        if (included.find('/') == std::string::npos) continue;  // generated beside the build
        EXPECT_LE(floor_of(included), own) << file << " includes " << included;
        ++checked;
      }
    }
  }
  EXPECT_GT(checked, 100);
}

TEST(Floors, OnlyTheWindowKnowsItsToolkit) {
  const std::regex toolkit(R"re(^\s*#\s*include\s*<(Q[A-Z][A-Za-z]*|Qt[A-Z].*|FL/.*)>)re");
  const std::filesystem::path root = source_folder("");
  for (const char* top : {"base", "bdd", "pert_exp", "forms", "tarn", "engine"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / top)) {
      if (!entry.is_regular_file()) continue;
      const std::string file = entry.path().lexically_relative(root).string();
      if (file.starts_with("forms/fltk/")) continue;
      const std::string text = read_text(entry.path().string());
      std::istringstream lines(text);
      for (std::string line; std::getline(lines, line);)
        EXPECT_FALSE(std::regex_search(line, toolkit)) << file << ": " << line;
    }
  }
}

}  // namespace
}  // namespace kiva::test
