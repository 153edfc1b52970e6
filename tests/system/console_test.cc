// The console as a user has it: the shipped examples, real circuits, and wrong input.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

std::string console_arguments(const std::filesystem::path& module,
                              const std::filesystem::path& stimuli) {
  return "--format json '" + module.string() + "' '" + stimuli.string() + "'";
}

TEST(Console, ReplaysEveryExample) {
  int replayed = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(source_folder("examples"))) {
    if (entry.path().extension() != ".trace") continue;
    auto module = entry.path();
    module.replace_extension(".zuc");
    if (!std::filesystem::exists(module)) continue;  // made from source text
    auto stimuli = module;
    stimuli.replace_extension(".stimuli");
    if (std::filesystem::exists(module.parent_path() / "data")) continue;  // needs its server
    const ProgramRun run = run_program("kiva-console", console_arguments(module, stimuli));
    EXPECT_EQ(run.status, 0) << module << run.err;
    EXPECT_EQ(run.out, read_text(entry.path().string())) << module;
    ++replayed;
  }
  EXPECT_GE(replayed, 6);
}

/// Compares the outputs of a whole run with those that another simulator gave.
void replay_circuit(const std::filesystem::path& folder, const std::string& name) {
  const ProgramRun run = run_program(
      "kiva-console", console_arguments(folder / (name + ".zuc"), folder / (name + ".stimuli")));
  ASSERT_EQ(run.status, 0) << run.err;
  std::istringstream ours(run.out);
  std::ifstream theirs(folder / (name + ".expected"));
  std::string our_line, their_line;
  int instants = 0;
  while (std::getline(theirs, their_line)) {
    ASSERT_TRUE(std::getline(ours, our_line)) << name << " ends after " << instants;
    const auto a = nlohmann::json::parse(our_line), b = nlohmann::json::parse(their_line);
    ASSERT_EQ(a["instant"], b["instant"]);
    ASSERT_EQ(a["outputs"], b["outputs"]) << name << " instant " << b["instant"];
    ++instants;
  }
  EXPECT_FALSE(std::getline(ours, our_line)) << name;
  EXPECT_GT(instants, 0);
}

TEST(Console, AgreesWithALogicSimulatorOnRealCircuits) {
  for (const char* name : {"s27", "planet", "s1423"})
    replay_circuit(source_folder("tests/system/circuits"), name);
}

TEST(Console, AgreesWithALogicSimulatorOnLargeCircuits) {
  const auto folder = source_folder("../shared/circuits");
  if (!std::filesystem::exists(folder)) GTEST_SKIP() << "the large circuits are not here";
  for (const char* name : {"b04_opt", "s5378", "s38417"}) replay_circuit(folder, name);
}

TEST(Console, ShowsTheOutputsAlone) {
  const auto counter = source_folder("examples/counter/counter.zuc");
  EXPECT_EQ(
      run_program("kiva-console", "--format outputs '" + counter.string() + "'", "inc\n\n").out,
      "# instant  outputs present, with their values | other outputs by state\n"
      "     1  b0 | zero: b1 b2 carry\n"
      "     2  b0 | zero: b1 b2 carry\n");
}

class ConsoleInput : public testing::Test {
 protected:
  const TempDir dir;
  const std::string module = source_folder("examples/toggle/toggle.zuc").string();
};

TEST_F(ConsoleInput, ComesFromAFileOrTheStandardInput) {
  const std::string stimuli = dir.write("s", "T\n\n");
  const ProgramRun from_file = run_program("kiva-console", module + " " + stimuli);
  EXPECT_EQ(from_file.status, 0);
  EXPECT_EQ(run_program("kiva-console", module, "T\n\n").out, from_file.out);
  EXPECT_EQ(run_program("kiva-console", module + " -", "T\n\n").out, from_file.out);
  const ProgramRun to_file =
      run_program("kiva-console", "-o '" + dir.file("trace") + "' " + module + " " + stimuli);
  EXPECT_EQ(to_file.out, "");
  EXPECT_EQ(read_text(dir.file("trace")), from_file.out);
}

TEST_F(ConsoleInput, IsRefusedWithFileLineAndReason) {
  ProgramRun run = run_program("kiva-console", "--format json " + module, "T\nX\nT\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "standard input:2: error: the module has no input \"X\"\n");
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1) << "nothing runs after it";

  const std::string broken = dir.write("broken.zuc", "module: m 0 0\nconnexion: S R;\n");
  run = run_program("kiva-console", broken);
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find(broken + ":2: error: syntax error, unexpected TOKEN_SEP, "
                                  "expecting TOKEN_IDENT\n"),
            std::string::npos);
  for (const std::string& unusable :
       {dir.file("none.zuc"), dir.path().string(), module + " " + dir.file("none.stimuli"),
        "-o " + dir.path().string() + " " + module}) {
    run = run_program("kiva-console", unusable);
    EXPECT_EQ(run.status, 1) << unusable;
    EXPECT_NE(run.err, "") << unusable;
    EXPECT_EQ(run.out, "") << unusable;
  }
}

TEST_F(ConsoleInput, HoldsARunAgainstWhatIsAwaited) {
  const std::string stimuli = dir.write("s", "# a toggle\nT\n\nT\n");
  const std::string both = module + " " + stimuli;
  const ProgramRun plain = run_program("kiva-console", "--format json " + both);
  EXPECT_EQ(run_program("kiva-console", "--update " + both).status, 0);
  EXPECT_EQ(read_text(stimuli), "# a toggle\nT -> Q\n-> Q\nT -> !Q\n");
  EXPECT_EQ(run_program("kiva-console", both).status, 0);
  const std::string trace = dir.write("trace", plain.out);
  EXPECT_EQ(run_program("kiva-console", "--expect " + trace + " " + both).status, 0);
  EXPECT_EQ(run_program("kiva-console", "--expect /dev/zero " + module, "T\n").err,
            "/dev/zero:1: instant 1: the line is longer than 16 MiB\n");

  dir.write("s", "T -> !Q\n");
  const ProgramRun differs =
      run_program("kiva-console", "--expect " + trace + " -o " + dir.file("out") + " " + both);
  EXPECT_EQ(differs.status, 1);
  EXPECT_EQ(differs.err, stimuli + ":1: instant 1: expected not Q, is present; present: Q\n" +
                             trace + ":2: the run ends before this instant of the trace\n");
  EXPECT_NE(read_text(dir.file("out")), "") << "the trace is whole all the same";
}

TEST_F(ConsoleInput, RunsUntilAndAtRandomAndTellsWhy) {
  EXPECT_EQ(run_program("kiva-console", "--until 'not Q' " + module, "T\n\nT\nT\n").status, 0);
  const ProgramRun never = run_program("kiva-console", "--until 'instant > 9' " + module, "T\n");
  EXPECT_EQ(never.status, 1);
  EXPECT_EQ(never.err, "kiva-console: error: --until: in none of 1 instants holds instant > 9\n");

  const std::string saved = dir.file("saved"), covered = dir.file("covered");
  const std::string random = "--random 40 --seed 9 --bias T=0.3 " + module;
  const ProgramRun drawn = run_program(
      "kiva-console", "--coverage-file " + covered + " --save-stimuli " + saved + " " + random);
  EXPECT_EQ(run_program("kiva-console", module + " " + saved).out, drawn.out);
  const ProgramRun again =
      run_program("kiva-console", "--coverage --coverage-file " + covered + " " + random);
  EXPECT_EQ(again.out, drawn.out);
  EXPECT_NE(again.err.find("coverage of toggle in 80 instants\n"), std::string::npos) << again.err;
  EXPECT_EQ(run_program("kiva-console", "--bias X=1 " + random).status, 1);
  EXPECT_EQ(run_program("kiva-console", "--random 3 --bias T=1 " + module).out,
            run_program("kiva-console", module, "T\nT\nT\n").out);
  EXPECT_EQ(run_program("kiva-console", "--format none " + random).out, "");
  const auto digest = [&](const std::string& runs) {
    return run_program("kiva-console", "--format digest " + module + " " + runs).out;
  };
  EXPECT_EQ(digest(saved), digest("--random 40 --seed 9 --bias T=0.3"));
  EXPECT_NE(digest(saved), digest("--random 40 --seed 8 --bias T=0.3"));

  const ProgramRun why = run_program("kiva-console", "--why Q@3 " + module, "T\n\nT\n");
  EXPECT_EQ(why.out, "T = One\nR = One\n");
  EXPECT_EQ(run_program("kiva-console", "--why Q@4 " + module, "T\n").status, 1);
}

// What no run reached is what neither of two did.
TEST_F(ConsoleInput, MergesTheCoverageOfSourceTexts) {
  run_program("tarn",
              "-q --map -d " + dir.path().string() + " " +
                  (source_folder("examples") / "washing_machine/washing_machine.zu").string());
  const auto never = [&](const std::string& options, const std::string& stimuli) {
    std::istringstream told(run_program("kiva-console",
                                        "--coverage " + options + dir.file("washing_machine.zuc"),
                                        stimuli)
                                .err);
    std::set<std::string> lines;
    for (std::string line; std::getline(told, line);)
      if (line.starts_with("    never: ")) lines.insert(line);
    return lines;
  };
  const std::string one = "\nstart\n\nstop\n", other = "\nstart\nfull\nskip\ntick\n\n";
  const std::set<std::string> first = never("", one), second = never("", other);
  std::set<std::string> neither;
  std::ranges::set_intersection(first, second, std::inserter(neither, neither.end()));
  EXPECT_NE(neither, first);
  EXPECT_NE(neither, second);
  const std::string file = "--coverage-file " + dir.file("merged") + " ";
  EXPECT_EQ(never(file, one), first);
  EXPECT_EQ(never(file, other), neither);
  std::ofstream(dir.file("washing_machine.zuc"), std::ios::app) << '\n';
  EXPECT_EQ(never("", one), std::set<std::string>()) << "the map is that of another text";
  for (const auto& [program, words] : {std::pair("tarn", "--cover "),
                                       {"kiva-campaign", "--runs 1 -o /dev/null "},
                                       {"kiva-console", "--coverage "}}) {
    const ProgramRun run = run_program(program, words + dir.file("washing_machine.zuc"), one);
    EXPECT_NE(run.err.find(".map: note: belongs to another text"), std::string::npos) << run.err;
  }

  const std::string steps = dir.file("steps");
  for (const char* stimuli : {"T\n", "\n"})
    run_program("kiva-console", "--coverage-file " + steps + " " + module, stimuli);
  EXPECT_EQ(nlohmann::json::parse(read_text(steps))["steps"].dump(), R"([["0","0"],["0","1"]])");
}

TEST_F(ConsoleInput, WrongUsageEndsWithTwo) {
  for (const char* arguments :
       {"", "a b c", "--format xml m.zuc", "--server localhost m.zuc", "--server h 0 m.zuc",
        "--server h 65536 m.zuc", "--server h port m.zuc", "--server h '' m.zuc", "--nonsense"}) {
    const ProgramRun run = run_program("kiva-console", arguments);
    EXPECT_EQ(run.status, 2) << arguments;
    EXPECT_NE(run.err, "") << arguments;
  }
  EXPECT_EQ(run_program("kiva-console", "--help").status, 0);
}

TEST_F(ConsoleInput, RunsOnWithoutAServer) {
  const ProgramRun run =
      run_program("kiva-console", "--server no.such.host.invalid 4000 " + module, "T\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.err.find("warning: server no.such.host.invalid:4000: there is no such host"),
            std::string::npos);
}

}  // namespace
}  // namespace kiva::test
