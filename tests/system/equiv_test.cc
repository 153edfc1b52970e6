// The compiler as a comparer of modules, and as an evaluator of expressions.

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;

class Equiv : public testing::Test {
 protected:
  /// Compiles source text; gives the compiled module's file.
  std::string compile(const std::string& source, const std::string& module,
                      const std::string& folder, const std::string& options = "") {
    const std::filesystem::path to = dir.path() / folder;
    std::filesystem::create_directory(to);
    const ProgramRun run =
        run_program("tarn", "-q " + options + " -d " + to.string() + " " + source);
    EXPECT_EQ(run.status, 0) << run.err;
    return (to / (module + ".zuc")).string();
  }
  ProgramRun compare(const std::string& a, const std::string& b) {
    return run_program("tarn", "--equiv " + a + " " + b);
  }
  /// The last line of the console's outputs over stimuli.
  std::string last_outputs(const std::string& module, const std::string& stimuli) {
    const ProgramRun run = run_program("kiva-console", module + " - --format outputs", stimuli);
    EXPECT_EQ(run.status, 0) << run.err;
    const std::string text = run.out.substr(0, run.out.find_last_not_of('\n') + 1);
    const std::string line = text.substr(text.rfind('\n') + 1);
    return line.substr(0, line.find('|'));
  }
  std::string file(const std::string& name, const std::string& text) {
    return dir.write(name, text);
  }

  TempDir dir;
};

TEST_F(Equiv, AModuleCompiledTwoWaysIsTheSame) {
  for (const char* name :
       {"elevator", "washing_machine", "stopwatch", "reflex", "vending_machine"}) {
    const std::string source =
        (source_folder("examples") / name / (std::string(name) + ".zu")).string();
    const std::string plain = compile(source, name, "plain");
    const std::string kept = compile(source, name, "kept", "--keep-wires --keep-rtl");
    const ProgramRun run = compare(plain, kept);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out,
              plain + " and " + kept + " give the same outputs in every reachable instant\n");
    EXPECT_EQ(run.err, "");
  }
}

TEST_F(Equiv, ARunFromSourceIsARunOfTheCompiledModule) {
  const std::string edge =
      "module edge: Input: i; Output: e;\n"
      "present i { wait not i } >> loop { wait i >> emit e >> wait not i }\nend\n";
  const std::string main =
      "module twice: Input: x, y; Output: p, q;\n"
      "run edge [x \\ i, p \\ e] || run edge [y \\ i, q \\ e]\nend\n";
  const std::string both = file("both.zu", edge + main), alone = file("alone.zu", main);
  const std::string compiled = compile(file("edge.zu", edge), "edge", "edge");
  const std::string from_source = compile(both, "twice", "source", "--module twice");
  const std::string from_module = compile(alone + " " + compiled, "twice", "module");
  EXPECT_EQ(compare(from_source, from_module).status, 0);
}

TEST_F(Equiv, StimuliTellMutantsApart) {
  const std::string source = (source_folder("examples") / "elevator" / "elevator.zu").string();
  const std::string sound = compile(source, "elevator", "sound");
  const std::string text = read_text(sound);
  int apart = 0;
  // Mutants: a node's else edge complemented.
  size_t at = text.find("equation_def:"), mutant = 0;
  for (int step = 0; step < 200 && apart < 6; ++step) {
    at = text.find(",-1\n", at + 1);
    if (at == std::string::npos) break;
    if (step % 7 != 3) continue;
    std::string changed = text;
    changed.replace(at, 4, ",1\n");
    const std::string other = file("mutant" + std::to_string(mutant++) + ".zuc", changed);
    const ProgramRun run = compare(sound, other);
    if (run.status != 1) continue;
    ++apart;
    EXPECT_TRUE(run.out.starts_with("# instant ")) << run.out;
    EXPECT_NE(last_outputs(sound, run.out), last_outputs(other, run.out)) << run.out;
    const std::string shorter = run.out.substr(0, run.out.rfind('\n', run.out.size() - 2) + 1);
    EXPECT_EQ(last_outputs(sound, shorter), last_outputs(other, shorter)) << "a shortest way";
  }
  EXPECT_GE(apart, 3);
}

TEST_F(Equiv, BadUseIsToldInALine) {
  const std::string examples = source_folder("examples").string();
  const std::string toggle = examples + "/toggle/toggle.zuc";
  const std::string thermostat = examples + "/thermostat/thermostat.zuc";
  const std::string open = (source_folder("tests") / "targets/cases/open.zuc").string();
  const std::string source = compile(
      file("m.zu", "module m: Input: T; Output: P; loop { emit P >> pause } end"), "m", "m");
  const auto told = [&](const std::string& a, const std::string& b) {
    const ProgramRun run = compare(a, b);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    return run.err;
  };
  EXPECT_THAT(told(toggle, source), HasSubstr(toggle + " has the output \"Q\", " + source));
  EXPECT_THAT(told(thermostat, thermostat), HasSubstr("carries values"));
  EXPECT_THAT(told(open, open), HasSubstr("is not finalised"));
  EXPECT_THAT(told(toggle, dir.file("none.zuc")), HasSubstr("none.zuc: error: No such file"));
  for (const std::string& other : {std::string(), " " + toggle + " " + toggle})
    EXPECT_EQ(run_program("tarn", "--equiv " + toggle + other).status, 2);
}

TEST_F(Equiv, AnInterruptSaysHowFarItCame) {
  // A counter that is never through, beside one that never carries.
  std::string registers, equations, all = "a";
  for (int k = 0; k < 40; ++k) {
    const std::string n = std::to_string(k);
    registers += (k == 0 ? "b" : ", b") + n + ": 0: n" + n;
    equations += "n" + n + " = b" + n + " xor (" + all + ");\n";
    all += " and b" + n;
  }
  const auto counter = [&](const std::string& name, const std::string& carry) {
    return compile(file(name + ".zu", "module " + name + ": Input: a; Output: c;\nMealy Machine\n" +
                                          "Register: " + registers + ";\n" + equations +
                                          "c = " + carry + ";\nend\n"),
                   name, name);
  };
  const std::string full = counter("full", all), never = counter("never", "0");
  const std::string err = dir.file("err");
  const pid_t child = fork();
  if (child == 0) {
    if (std::freopen(err.c_str(), "w", stderr) == nullptr) _exit(99);
    execl(KIVA_PROGRAMS "/tarn", "tarn", "--equiv", full.c_str(), never.c_str(), nullptr);
    _exit(99);
  }
  // As soon as it takes the signal.
  int status = 0;
  for (bool ready = false; !ready && waitpid(child, &status, WNOHANG) == 0; usleep(2000)) {
    std::ifstream in("/proc/" + std::to_string(child) + "/status");
    for (std::string line; std::getline(in, line);)
      if (line.starts_with("SigCgt:")) ready = (std::stoull(line.substr(7), nullptr, 16) & 2) != 0;
  }
  kill(child, SIGINT);
  waitpid(child, &status, 0);
  EXPECT_EQ(WEXITSTATUS(status), 130);
  EXPECT_THAT(read_text(err), testing::ContainsRegex("tarn: stopped: "));
}

TEST(Eval, PrintsSumsOverInputsAndRegisters) {
  const std::string toggle = (source_folder("examples") / "toggle" / "toggle.zuc").string();
  const auto eval = [&](const std::string& text) {
    return run_program("tarn", "--eval '" + text + "' " + toggle);
  };
  for (const auto& [text, sum] :
       std::vector<std::pair<std::string, std::string>>{{"Q", "T and not R or not T and R"},
                                                        {"Q xor T ", "R"},
                                                        {"not _v_Q", "T and not R or not T and R"},
                                                        {"R.!R", "0"},
                                                        {"[Q + !Q]", "1"}}) {
    const ProgramRun run = eval(text);
    EXPECT_EQ(run.out, sum + "\n") << text;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
  }
  for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>>{
           {"Q xor x", "character 7: \"x\" is no signal of " + toggle},
           {"Q and and T", "character 7: \"and\" cannot stand here"},
           {"(Q or", "character 6: the expression ends too early"},
           {"T / Q", "character 3: \"/\" cannot stand here"},
           {"<3>Q", "a priority has no meaning here"}}) {
    const ProgramRun run = eval(text);
    EXPECT_EQ(run.status, 1) << text;
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(run.err.starts_with("tarn: error: --eval: " + reason)) << run.err;
  }
  EXPECT_EQ(run_program("tarn", "--eval Q x.zu").status, 2);
}

}  // namespace
}  // namespace kiva::test
