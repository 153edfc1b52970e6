// A module with values from end to end: its server is written, compiled and started, and starts the
// console; and the console whose server is not there.

#include <gmock/gmock.h>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;

/// A copy of the example in a folder of the test's own, and the script that runs it there.
class ValuedExample : public testing::Test {
 protected:
  ValuedExample() {
    std::filesystem::copy(example, dir.path(), std::filesystem::copy_options::recursive);
  }
  ProgramRun run_with_server(const std::string& arguments, const std::string& input = "") {
    const auto script =
        std::filesystem::relative(source_folder("scripts/with_server"), KIVA_PROGRAMS);
    return run_program(script.string(),
                       "'" KIVA_PROGRAMS "' '" + work + "' '" + module + "' " + arguments, input);
  }

  const std::filesystem::path example = source_folder("examples/thermostat");
  TempDir dir;
  std::string module = dir.file("thermostat.zuc");
  /// No part of the name is a command, or ends a folder of the search path.
  const std::string work = dir.file("work:$(touch HIT)`touch HIT`\";touch HIT;\"");
};

TEST_F(ValuedExample, GivesItsTrace) {
  const ProgramRun run = run_with_server("--format json '" + dir.file("thermostat.stimuli") + "'");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, read_text(dir.file("thermostat.trace")));
  EXPECT_THAT(run.err, HasSubstr("the output \"display\" is present without a value\n"));
  EXPECT_FALSE(std::filesystem::exists("HIT") || std::filesystem::exists(work + "/HIT"));
  const std::string talk = read_text(work + "/exchange.log");
  for (const char* line : {"BUFFER RECEIVED:CONST,ceiling\nTRANSMIT:25\n",
                           "BUFFER RECEIVED:MC,factory_setting,\nTRANSMIT:19\n",
                           "BUFFER RECEIVED:UOP, -,0.5,celsius\nTRANSMIT: -0.5\n",
                           "BUFFER RECEIVED:BOP,broken,celsius, < ,18.5,celsius\nTRANSMIT:--\n"})
    EXPECT_THAT(talk, HasSubstr(line));
}

TEST_F(ValuedExample, GivesTheValuesOfCompiledSource) {
  const std::string source = dir.write("warm.zu", R"(data:
Type: celsius, fahrenheit;
Method: fahrenheit to_fahrenheit(celsius);
Constant: celsius limit := 19;
celsius margin := 0.5;
end data
module warm: Input: t: celsius; Output: o: celsius, f: fahrenheit;
loop { present t { { if #t > limit emit o(#t + margin) } >> emit f(to_fahrenheit(#t)) } >> pause }
end
)");
  for (const char* options : {"", "--keep-wires "}) {
    const ProgramRun compiled =
        run_program("tarn", options + ("-d '" + dir.path().string() + "' '" + source + "'"));
    ASSERT_EQ(compiled.status, 0) << compiled.err;
    module = dir.file("warm.zuc");
    const ProgramRun run = run_with_server("--format outputs", "t=30\n\nt=3\n");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, testing::EndsWith("     1  o=30.5 f=86\n"
                                           "     2  - | bottom: o f\n"
                                           "     3  f=37.4 | bottom: o\n"));
  }
}

TEST_F(ValuedExample, HandsOnInputStatusAndComplaints) {
  ProgramRun run = run_with_server("--format json", "measured=17\n\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 2);
  EXPECT_THAT(run.out, HasSubstr("[\"one\",\"62.6\"]"));

  run = run_with_server("--format text", "measured=17\nunknown\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("standard input:2: error: the module has no input \"unknown\"\n"));
  // A console that never asks for a connection does not leave its server behind.
  run = run_with_server("it\\'s\\ not\\ here");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "it's not here: error: cannot be read\n");

  dir.write("data/kiva_data_user_celsius.h", "broken\n");
  run = run_with_server("--format text");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("kiva_data_user_celsius.h:1:1: error:"));
}

TEST_F(ValuedExample, HasNoInstantWithoutItsServer) {
  const std::string stimuli =
      " --format json '" + module + "' '" + dir.file("thermostat.stimuli") + "'";
  // Nobody listens on port 1.
  for (const auto& [server, complaint] :
       {std::pair{"", "no evaluation server is given, while the reply to \"CONST,ceiling\" was"},
        {"--server 127.0.0.1 1", "server 127.0.0.1:1: Connection refused, while a connection was"},
        {"--server 'no such host' 1",
         "server no such host:1: there is no such host, while its address was"}}) {
    const ProgramRun run = run_program("kiva-console", server + stimuli);
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kiva-console: error: " + std::string(complaint) + " awaited\n");
  }
}

}  // namespace
}  // namespace kiva::test
