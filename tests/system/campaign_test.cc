// kiva-campaign against kiva-console, and its parts against the whole.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

using nlohmann::json;

class Campaign : public testing::Test {
 protected:
  std::string compiled(const std::string& source) {
    EXPECT_EQ(run_program("tarn", "-q --map -d " + dir.path().string() + " " + source).status, 0);
    return dir.file(std::filesystem::path(source).stem().string() + ".zuc");
  }
  TempDir dir;
};

TEST_F(Campaign, ReachesWhatTheConsoleReaches) {
  for (const char* name : {"double_click", "elevator", "reflex", "stopwatch", "traffic_light",
                           "vending_machine", "washing_machine", "watchdog"}) {
    SCOPED_TRACE(name);
    const std::filesystem::path folder = source_folder("examples") / name;
    const std::string stem = (folder / name).string(), covered = dir.file("covered");
    const std::string module = compiled(stem + ".zu");
    std::filesystem::remove(covered);
    ASSERT_EQ(run_program("kiva-console", "-o " + dir.file("trace") + " --coverage-file " +
                                              covered + " " + module + " " + stem + ".stimuli")
                  .status,
              0);
    const ProgramRun run =
        run_program("kiva-campaign", "--stimuli " + folder.string() + " " + module);
    ASSERT_EQ(run.status, 0) << run.err;
    const json one = json::parse(read_text(covered)), many = json::parse(run.out)["coverage"];
    for (const auto& [signal, runs] : many["signals"].items())
      for (int k : {0, 1}) EXPECT_EQ(runs[k] > 0, one["signals"][signal][k] > 0) << signal;
    for (const auto& [kind, goals] : one["reached"].items()) {
      EXPECT_EQ(goals.size(), many[kind].size());
      for (const auto& [goal, count] : goals.items())
        EXPECT_EQ(many[kind][goal] > 0, count > 0) << goal;
    }
  }
}

TEST_F(Campaign, PartsAddUpToTheWhole) {
  const std::string module =
      compiled((source_folder("examples") / "watchdog/watchdog.zu").string());
  const std::string asked =
      " --runs 1000 --instants 30 --seed 5 --bias kick=0.1"
      " --never bark --always 'not kick' --against " +
      module + " " + module;
  const std::string out = " --out " + dir.path().string();
  const ProgramRun whole = run_program("kiva-campaign", "--threads 1" + out + asked);
  EXPECT_EQ(whole.status, 1);
  EXPECT_EQ(run_program("kiva-campaign", "--threads 3" + out + asked).out, whole.out);
  const std::string shown = read_text(dir.file("never-1.stimuli"));
  EXPECT_NE(shown.find("-> bark"), std::string::npos) << shown;
  EXPECT_EQ(run_program("kiva-console", module + " " + dir.file("never-1.stimuli")).status, 0);
  std::filesystem::remove(dir.file("never-1.stimuli"));
  std::string shards;
  for (const std::string k : {"3", "1", "4", "2"}) {
    shards += ' ' + dir.file(k);
    run_program("kiva-campaign", "--shard " + k + "/4 -o " + dir.file(k) + asked);
    EXPECT_EQ(read_text(dir.file("never-1.stimuli")), "") << "a shard does not know the first";
  }
  EXPECT_EQ(run_program("kiva-campaign", out + " --merge" + shards).out, whole.out);
  EXPECT_EQ(read_text(dir.file("never-1.stimuli")), shown);

  const auto refused = [&](const std::string& files, const std::string& reason) {
    const ProgramRun run = run_program("kiva-campaign", "--merge " + files);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find(reason), std::string::npos) << run.err;
  };
  refused(dir.file("1") + ' ' + dir.file("3"), "of 4 shards, 2 and 4 are missing");
  refused(shards + ' ' + dir.file("2"), "is shard 2, which stands here twice");
  refused(module, "is no result of a campaign");
  run_program("kiva-campaign",
              "--seed 6 --shard 2/4 -o " + dir.file("2") + " --runs 1000 --instants 30 " + module);
  refused(shards, "is of another campaign: \"properties\" differs");
}

TEST_F(Campaign, RefusesWhatItCannotUse) {
  const std::string module = (source_folder("examples") / "toggle/toggle.zuc").string();
  std::filesystem::create_directory(dir.file("runs"));
  dir.write("runs/a.stimuli", "T -> Q\n");
  dir.write("runs/b.stimuli", "T -> Q\n\nT -> Q\nT\n");
  const ProgramRun differs =
      run_program("kiva-campaign",
                  "--out " + dir.path().string() + " --stimuli " + dir.file("runs") + " " + module);
  EXPECT_EQ(differs.status, 1);
  EXPECT_EQ(differs.err,
            "expected-1: by the stimuli: fails in 1 of 2 runs, first in b.stimuli, "
            "instant 3\n");
  EXPECT_EQ(run_program("kiva-console", module + " " + dir.file("expected-1.stimuli")).status, 1);
  dir.write("runs/b.stimuli", "T\nT:top\n");
  const struct {
    std::string arguments, says;
    int status = 1;
  } cases[] = {
      {"--stimuli " + dir.file("runs"),
       "b.stimuli:2: error: in a campaign, inputs are one or zero"},
      {"--stimuli " + dir.file("none"), "cannot be read as a folder"},
      {"--runs 9 --never 'Q and'", "--never: character"},
      {"--runs 9 --bias X=1", "--bias: \"X=1\" does not begin with an input's name"},
      {"--runs 9 --against " + (source_folder("examples") / "mini/mini.zuc").string(),
       "is read before anything"},
      {"", "--runs", 2},
      {"--runs 9 --shard 5/4", "there is no shard 5 of 4", 2},
      {"--runs 9 --shard auto", "neither SLURM_ARRAY_TASK_ID nor", 2},
  };
  for (const auto& [arguments, says, status] : cases) {
    const ProgramRun run = run_program("kiva-campaign", arguments + " " + module);
    EXPECT_EQ(run.status, status) << arguments;
    EXPECT_NE(run.err.find(says), std::string::npos) << arguments << ": " << run.err;
  }
}

}  // namespace
}  // namespace kiva::test
