// The entity, simulated: its trace is the simulator's, with bits and with std_logic, whatever the
// inputs do between the edges of the clock, and again after a reset.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

/// What stands on the input ports in an instant.
std::string port_bits(const TargetCase& test, const TargetCase::Instant& instant) {
  std::ostringstream out;
  if (!test.finalised()) out << instant.set << !instant.set << instant.reset << !instant.reset;
  const std::vector<int> bits = test.input_bits(instant);
  const size_t count = test.inputs().size();
  for (size_t n = 0; n < count; ++n) {
    out << bits[n];
    if (!test.finalised()) out << bits[count + n];
  }
  for (int bit : data_tests(instant)) out << bit;
  return out.str();
}

/// The first word behind `start` in a text.
std::string word_behind(const std::string& text, const std::string& start) {
  const size_t at = text.find(start) + start.size();
  return text.substr(at, text.find_first_of(" \n", at) - at);
}

/// A bench that gives the stimuli twice, with a reset before each, and prints the outputs.
std::string bench(const std::string& entity, bool altera, const std::vector<std::string>& stimuli,
                  size_t outputs) {
  const size_t inputs = stimuli.at(0).size();
  std::string ports;
  for (size_t n = 0; n < inputs; ++n) ports += "i(" + std::to_string(n) + "), ";
  ports += "reset, clk";
  for (size_t n = 0; n < outputs; ++n) ports += ", o(" + std::to_string(n) + ")";
  std::string bits;
  for (const std::string& row : stimuli) bits += "    & \"" + row + "\"\n";
  const std::string vector = altera ? "std_logic_vector" : "bit_vector";
  const auto range = [](size_t size) { return "(0 to " + std::to_string(size) + " - 1)"; };
  std::ostringstream out;
  out << "library ieee; use ieee.std_logic_1164.all; use std.textio.all;\n"
      << "entity bench is end bench;\narchitecture run of bench is\n"
      << "  signal reset, clk : " << (altera ? "std_logic" : "bit") << " := '0';\n"
      << "  signal i : " << vector << range(inputs) << ";\n  signal o : " << vector
      << range(outputs) << ";\n  constant bits : " << vector << range(inputs * stimuli.size())
      << " := \"\"\n"
      << bits << "    ;\nbegin\n  dut : entity work." << entity << " port map (" << ports << ");\n"
      << R"(  process
    variable text : line;
  begin
    for round in 1 to 2 loop
      reset <= '0'; wait for 1 ns; reset <= '1'; wait for 1 ns;
      for k in 0 to )"
      << stimuli.size() << R"( - 1 loop
        i <= bits(k * i'length to (k + 1) * i'length - 1); wait for 1 ns;
        clk <= '1'; wait for 1 ns;
        i <= not i; wait for 1 ns;
        clk <= '0'; wait for 1 ns;
        i <= not i; wait for 1 ns;
        write(text, to_string(o)); writeline(output, text);
      end loop;
    end loop;
    wait;
  end process;
end run;
)";
  return out.str();
}

/// Gives what was told of the text.
std::string check_vhdl(const TargetCase& test, bool altera) {
  SCOPED_TRACE(test.name() + (altera ? ", std_logic" : ""));
  const std::string told = test.write(altera ? "--vhdl-altera" : "--vhdl");
  const std::string file = test.module()->getName() + ".vhdl";
  const std::string entity = word_behind(read_text(test.file(file)), "entity ");
  std::vector<std::string> stimuli;
  for (const TargetCase::Instant& instant : test.instants())
    stimuli.push_back(port_bits(test, instant));
  // Of a module that is not finalised the rails come signal by signal, behind those of the end.
  const size_t hidden = test.finalised() ? 0 : 2;
  const size_t outputs = test.outputs().size() * (test.finalised() ? 1 : 2);
  test.add_file("bench.vhdl", bench(entity, altera, stimuli, hidden + outputs));
  const std::filesystem::path folder = std::filesystem::path(test.file("")).parent_path();
  std::vector<std::vector<int>> rows = rows_of_bits(run_tool(
      "ghdl -a --std=08 '" + file + "' bench.vhdl && ghdl --elab-run --std=08 bench", folder));
  for (std::vector<int>& row : rows) {
    row.erase(row.begin(), row.begin() + static_cast<long>(hidden));
    if (!test.finalised()) row = statuses_first(row);
  }
  const auto half = rows.begin() + static_cast<long>(rows.size() / 2);
  test.expect_trace({rows.begin(), half});
  test.expect_trace({half, rows.end()});
  return told;
}

TEST(VhdlTools, RunsAsTheSimulatorDoes) {
  for_each_case(true, [](const TargetCase& test) {
    check_vhdl(test, false);
    check_vhdl(test, true);
  });
}

TEST(VhdlTools, RandomProgramsRunAsTheSimulatorDoes) {
  for_random_cases(10, [](const TargetCase& test) { check_vhdl(test, false); });
}

TEST(VhdlTools, AModuleWithoutOutputsIsAnalysed) {
  const TargetCase quiet(std::string("quiet.zuc"),
                         "module: quiet  0 1\ninput: I ;\nconnexion: S R T;\n"
                         "equation_def:\n1\n0: -1:-3:-3,1\nexpressions:\nend:\n",
                         "I\n");
  quiet.write("--vhdl");
  run_tool("ghdl -a --std=93 quiet.vhdl", std::filesystem::path(quiet.file("")).parent_path());
}

TEST(VhdlTools, NamesThatMeetOrAreNoneAreTold) {
  const std::string told = check_vhdl(named_case("names.zuc"), false);
  for (const char* line : {"\"signal\" is written as \"signal_1\": a keyword there",
                           "\"reset\" is written as \"reset_1\": the name is taken",
                           "\"O_1\" is written as \"O_1_2\": the name is taken",
                           "\"p__q\" is written as \"p_q\": no name there",
                           "\"z_\" is written as \"z\": no name there"})
    EXPECT_NE(told.find(line), std::string::npos) << line << '\n' << told;
}

}  // namespace
}  // namespace kiva::test
