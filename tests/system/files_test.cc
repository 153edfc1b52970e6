// What programs do with files: nothing that they read is overwritten, nothing lies about, and what
// cannot be written is an error.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <set>
#include <thread>
#include <tuple>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

class Files : public testing::Test {
 protected:
  Files() {
    const auto counter = source_folder("examples/counter");
    for (const char* extension : {".zuc", ".stimuli"})
      std::filesystem::copy(counter / (std::string("counter") + extension), dir.path());
    original = read_text(module);
  }
  std::string names() const {
    std::set<std::string> sorted;
    for (const auto& entry : std::filesystem::directory_iterator(dir.path()))
      sorted.insert(entry.path().filename());
    std::string all;
    for (const std::string& name : sorted) all += name + ' ';
    return all;
  }
  TempDir dir;
  const std::string folder = dir.path().string();
  const std::string module = dir.file("counter.zuc"), stimuli = dir.file("counter.stimuli");
  std::string original;
};

TEST_F(Files, WhatIsReadIsNotOverwrittenUnasked) {
  std::filesystem::create_symlink("counter.zuc", dir.file("link.zuc"));
  for (const auto& [program, arguments, good] :
       {std::tuple{"tarn", "-d " + folder + " " + module, false},
        {"tarn", "-q -d " + folder + " " + dir.file("link.zuc"), false},
        {"tarn", "-q -o link -d " + folder + " " + module, false},
        {"tarn", "-q --log " + module + " --c -d " + folder + " " + module, false},
        {"kiva-console", "-o " + module + " " + module + " " + stimuli, false},
        {"kiva-console", "-o " + stimuli + " " + module + " " + stimuli, false},
        {"kiva-console", "--log " + dir.file("link.zuc") + " " + module + " " + stimuli, false},
        {"tarn", "-q --in-place -d " + folder + " " + module, true}}) {
    const ProgramRun run = run_program(program, arguments);
    EXPECT_EQ(run.status, good ? 0 : 1) << arguments;
    EXPECT_EQ(run.err.find("is read here, and would be overwritten\n") == std::string::npos, good)
        << run.err;
    EXPECT_EQ(read_text(module) == original, !good) << arguments;
    EXPECT_EQ(names(), "counter.stimuli counter.zuc link.zuc ") << arguments;
  }
}

TEST_F(Files, ATraceOfTheReaderIsWrittenOnlyWhereAskedFor) {
  for (const auto& [program, rest] : {std::pair<std::string, std::string>{"kiva-console", ""},
                                      {"tarn", "--c -q -d " + folder + " "}}) {
    EXPECT_EQ(run_program(program, rest + module).status, 0);
    EXPECT_FALSE(std::filesystem::exists(module + ".log"));
    EXPECT_EQ(run_program(program, rest + "--log " + dir.file("log") + " " + module).status, 0);
    EXPECT_NE(read_text(dir.file("log")).find("2 --> definition nom declaration\n"),
              std::string::npos);
    std::filesystem::remove(dir.file("log"));
    EXPECT_EQ(run_program(program, rest + "--log /dev/full " + module).status, 1);
  }
}

TEST_F(Files, AFullStandardOutputIsAnError) {
  for (const std::string& command :
       {"/tarn' -d " + folder + " -o x " + module, std::string("/tarn' --help"),
        "/tarn' --eval b0 " + module, "/tarn' --equiv " + module + " " + module,
        std::string("/kiva-console' --help"), "/kiva-console' " + module + " " + stimuli,
        "/kiva-console' -o /dev/full " + module + " " + stimuli})
    for (const char* output : {" >/dev/full", " >&-"})
      EXPECT_EQ(
          WEXITSTATUS(std::system(
              ("'" KIVA_PROGRAMS + command + output + " 2>'" + dir.file("err") + "'").c_str())),
          1)
          << command << output;
}

TEST_F(Files, AStandardInputThatCannotBeReadIsAnError) {
  for (const auto& [command, place] : {std::pair{"kiva-console' " + module, "standard input:1"},
                                       {std::string("tarn' --fmt -"), "<stdin>"}}) {
    const std::string call = "'" KIVA_PROGRAMS "/" + command + " <" + folder + " >'" +
                             dir.file("out") + "' 2>'" + dir.file("err") + "'";
    EXPECT_EQ(WEXITSTATUS(std::system(call.c_str())), 1);
    EXPECT_EQ(read_text(dir.file("err")),
              std::string(place) + ": error: cannot be read to its end\n");
  }
}

TEST_F(Files, AnInterruptLeavesTheOlderFileAlone) {
  const std::string out = dir.write("out", "old");
  int pipe_ends[2];
  ASSERT_EQ(pipe(pipe_ends), 0);
  const pid_t child = fork();
  if (child == 0) {
    dup2(pipe_ends[0], STDIN_FILENO);
    close(pipe_ends[1]);
    execl(KIVA_PROGRAMS "/kiva-console", "kiva-console", "-o", out.c_str(), module.c_str(),
          nullptr);
    _exit(99);
  }
  while (names().find(".part") == std::string::npos)
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  kill(child, SIGTERM);
  int status = 0;
  waitpid(child, &status, 0);
  close(pipe_ends[0]);
  close(pipe_ends[1]);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
  EXPECT_EQ(names(), "counter.stimuli counter.zuc out ");
  EXPECT_EQ(read_text(out), "old");
}

}  // namespace
}  // namespace kiva::test
