// Dumps, read back by the programs of a wave viewer, against the trace in JSON.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

/// By "scope.name" the letter or text at each time.
using Waves = std::map<std::string, std::map<long, std::string>>;

Waves waves_of(const std::string& file) {
  Waves waves;
  std::map<std::string, std::vector<std::string>> named;
  std::map<std::string, std::string> now;
  std::ifstream in(file);
  std::string scope;
  long time = -1;
  const auto hold = [&] {
    for (const auto& [id, value] : now)
      for (const std::string& name : named[id]) waves[name][time] = value;
  };
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line);
    std::string word, kind, size, id, name;
    words >> word;
    if (word == "$scope") {
      words >> kind >> scope;
    } else if (word == "$var") {
      words >> kind >> size >> id >> name;
      named[id].push_back(scope + '.' + name);
    } else if (word.starts_with('#')) {
      hold();
      time = std::stol(word.substr(1));
    } else if (word.starts_with('s')) {
      words >> id;
      now[id] = word.substr(1);
    } else if (!word.empty() && word[0] != '$') {
      now[word.substr(1)] = word.substr(0, 1);
    }
  }
  hold();
  return waves;
}

void expect_same(const Waves& waves, const std::string& trace, const std::string& what) {
  const std::map<std::string, std::string> bits{
      {"one", "1"}, {"zero", "0"}, {"bottom", "z"}, {"top", "x"}, {"unknown", "x"}};
  std::istringstream lines(trace);
  int compared = 0;
  for (std::string line; std::getline(lines, line);) {
    const auto json = nlohmann::json::parse(line);
    const long time = json["instant"];
    for (const char* list : {"outputs", "registers", "locals"})
      for (const auto& [name, shown] : json[list].items()) {
        const std::string word = shown.is_array() ? shown[0] : shown;
        const auto& wave = waves.at(std::string(list) + '.' + name);
        // A time without a change may be left out.
        const auto at = std::prev(wave.upper_bound(time));
        EXPECT_EQ(at->second, bits.at(word)) << what << ' ' << name << '#' << time;
        ++compared;
      }
  }
  EXPECT_GT(compared, 20) << what;
}

TEST(DumpTools, AreReadBackAsTheTrace) {
  const TempDir dir;
  const auto module = source_folder("tests/system/circuits/s27.zuc").string();
  const std::string random = " --random 60 --seed 4 --format ";
  const std::string trace = run_program("kiva-console", module + random + "json").out;
  for (const std::string format : {"vcd", "fst"}) {
    const std::string made = dir.file("made." + format), other = dir.file("other"),
                      back = dir.file("back.vcd");
    const ProgramRun run = run_program("kiva-console", module + random + format + " -o " + made);
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string there = format == "vcd" ? "vcd2fst " + made + " " + other + " && " : "";
    const std::string from = format == "vcd" ? other : made;
    ASSERT_EQ(std::system((there + "fst2vcd -f " + from + " -o " + back + " >/dev/null").c_str()),
              0);
    expect_same(waves_of(back), trace, format);
    if (format == "vcd") expect_same(waves_of(made), trace, "as written");
  }
}

}  // namespace
}  // namespace kiva::test
