// The shipped programs from source text: compiled, held to what their stimuli await and to the
// traces that were reasoned out from the language; what they ask for is proved.

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

/// What the compiler says but for two things that it tells of sound automata: the runs of their
/// states, and spare bits of their code.
std::string warnings(const std::string& err) {
  std::istringstream lines(err);
  std::string others;
  for (std::string line; std::getline(lines, line);)
    if (!line.starts_with("Run detecte:") && !line.starts_with("detecting useless register"))
      others += line + "\n";
  return others;
}

/// Compiles one program, runs it over its stimuli, and compares its outputs instant by instant.
void replay(const std::filesystem::path& source, const std::string& options) {
  const std::string name = source.stem().string();
  SCOPED_TRACE(name + " " + options);
  const TempDir dir;
  const ProgramRun compiled =
      run_program("tarn", options + " --module " + name + " -d '" + dir.path().string() + "' '" +
                              source.string() + "'");
  ASSERT_EQ(compiled.status, 0) << compiled.err;
  EXPECT_EQ(warnings(compiled.err), "");
  EXPECT_EQ(compiled.out, dir.file(name + ".zuc") + "\n") << "a module is named as its file";

  auto beside = source;
  const std::string stimuli = beside.replace_extension(".stimuli").string();
  const ProgramRun run = run_program(
      "kiva-console", "--format json '" + dir.file(name + ".zuc") + "' '" + stimuli + "'");
  ASSERT_EQ(run.status, 0) << run.err;
  std::istringstream ours(run.out);
  if (!std::filesystem::exists(beside.replace_extension(".trace"))) return;
  std::ifstream expected(beside);
  std::string our_line, expected_line;
  int instants = 0;
  while (std::getline(expected, expected_line)) {
    ASSERT_TRUE(std::getline(ours, our_line)) << "ends after " << instants;
    const auto a = nlohmann::json::parse(our_line), b = nlohmann::json::parse(expected_line);
    EXPECT_EQ(a["instant"], b["instant"]);
    EXPECT_EQ(a["outputs"], b["outputs"]) << "instant " << b["instant"];
    ++instants;
  }
  EXPECT_FALSE(std::getline(ours, our_line)) << "more instants than the trace";
  EXPECT_GT(instants, 0);
}

TEST(SourceExamples, ShowTheTracesThatTheLanguageGives) {
  int replayed = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(source_folder("examples"))) {
    if (entry.path().extension() != ".zu") continue;
    for (const char* options : {"", "--keep-wires", "--keep-rtl --forget-locals"})
      replay(entry.path(), options);
    ++replayed;
  }
  EXPECT_GE(replayed, 24);
}

TEST(SourceExamples, KeepWhatTheyPromise) {
  int proved = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(source_folder("examples"))) {
    const std::string source = entry.path().string();
    if (!source.ends_with(".zu") || read_text(source).find(";; @") == std::string::npos) continue;
    EXPECT_EQ(run_program("tarn", "--prove '" + source + "'").status, 0) << source;
    ++proved;
  }
  EXPECT_GE(proved, 8);
}

TEST(SourceExamples, RunAModuleThatHasBeenCompiledBefore) {
  const TempDir dir;
  const auto examples = source_folder("examples");
  std::filesystem::copy(examples / "egg_timer", dir.path());
  const std::string folder = dir.path().string();
  const ProgramRun part =
      run_program("tarn", "-q -d '" + folder + "' '" + dir.file("countdown.zu") + "'");
  ASSERT_EQ(part.status, 0) << part.err;
  std::filesystem::remove(dir.file("countdown.zu"));
  replay(dir.file("egg_timer.zu"), "");
}

/// The example without the modules that it runs, which stand in files beside it: as source text, or
/// compiled before.
TEST(SourceExamples, RunModulesOfOtherFiles) {
  for (const std::string name : {"edges", "washing_machine"}) {
    const TempDir dir;
    std::filesystem::copy(source_folder("examples") / name, dir.path());
    std::string rest = read_text(dir.file(name + ".zu"));
    std::string sources, compiled;
    const auto next_module = [&rest] { return rest.find("\nend\n"); };
    for (size_t end = next_module(); end + 5 < rest.size(); end = next_module()) {
      const std::string module = rest.substr(0, end + 5);
      rest = rest.substr(end + 5);
      const size_t begin = module.find("\nmodule ") + 8;
      const std::string called = module.substr(begin, module.find(':', begin) - begin);
      sources += " '" + dir.write(called + ".zu", module) + "'";
      compiled += " '" + dir.file(called + ".zuc") + "'";
    }
    ASSERT_FALSE(sources.empty());
    dir.write(name + ".zu", rest);
    replay(dir.file(name + ".zu"), sources);
    ASSERT_EQ(run_program("tarn", "-q -d '" + dir.path().string() + "'" + sources).status, 0);
    replay(dir.file(name + ".zu"), compiled);
  }
}

}  // namespace
}  // namespace kiva::test
