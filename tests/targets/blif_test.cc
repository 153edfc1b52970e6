// The netlist, read by two tools. One turns it into a program of its own, whose trace is the
// simulator's; what the other has read must be equivalent to it, latches and first values included.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

/// A bench that runs the netlist's Verilog over the stimuli and prints the outputs' bits.
std::string bench(const TargetCase& test, size_t hidden_outputs) {
  const size_t rails = test.finalised() ? 1 : 2;
  const size_t further = data_tests(test.instants().front()).size();
  const size_t inputs = (test.inputs().size() + (test.finalised() ? 0 : 2)) * rails + further;
  const size_t outputs = test.outputs().size() * rails + hidden_outputs;
  std::ostringstream out;
  out << "module bench;\n  reg clock = 0;\n  reg [0:" << inputs << "] i;\n  wire [0:" << outputs
      << "] o;\n  " << test.module()->getName() << " dut(";
  const char* separator = "";
  if (!test.module()->getRegisterList().empty()) out << "clock", separator = ", ";
  for (size_t bit = 0; bit < inputs; ++bit, separator = ", ")
    out << separator << "i[" << bit << "]";
  for (size_t bit = 0; bit < outputs; ++bit) out << ", o[" << bit << "]";
  out << ");\n  initial begin\n";
  for (const TargetCase::Instant& instant : test.instants()) {
    const std::vector<int> bits = test.input_bits(instant);
    const size_t count = test.inputs().size();
    out << "    i = " << inputs + 1 << "'b";
    if (!test.finalised()) out << instant.set << !instant.set << instant.reset << !instant.reset;
    for (size_t n = 0; n < count; ++n) {
      out << bits[n];
      if (!test.finalised()) out << bits[count + n];
    }
    for (int bit : data_tests(instant)) out << bit;
    out << "0; #1 $display(\"%b\", o[" << hidden_outputs << ":" << outputs - 1
        << "]); clock = 1; #1 clock = 0;\n";
  }
  out << "    $finish;\n  end\nendmodule\n";
  return out.str();
}

void check_blif(const TargetCase& test) {
  SCOPED_TRACE(test.name());
  const std::string told = test.write("--blif");
  if (test.name() == "thermostat") {
    EXPECT_NE(told.find("BLIF: cold: computed from data"), std::string::npos) << told;
  }
  const std::filesystem::path folder = std::filesystem::path(test.file("")).parent_path();
  const std::string m = test.module()->getName();
  // Of a module that is not finalised the rails come signal by signal, behind those of the end.
  const size_t hidden = test.finalised() ? 0 : 2;
  test.add_file("bench.v", bench(test, hidden));
  run_tool("berkeley-abc -q 'read_blif " + m + ".blif; short_names; write_verilog abc.v'", folder);
  run_tool("iverilog -o bench bench.v abc.v", folder);
  std::vector<std::vector<int>> rows = rows_of_bits(run_tool("vvp -n bench", folder));
  if (!test.finalised())
    for (std::vector<int>& row : rows) row = statuses_first(row);
  test.expect_trace(rows);

  run_tool(
      "yosys -q -p 'read_blif " + m + ".blif; check -assert; simplemap t:$ff; write_blif y.blif'",
      folder);
  const std::string compare = test.module()->getRegisterList().empty() ? "cec" : "dsec";
  const std::string verdict =
      run_tool("berkeley-abc -q '" + compare + " " + m + ".blif y.blif'", folder);
  EXPECT_NE(verdict.find("Networks are equivalent"), std::string::npos) << verdict;
}

TEST(BlifTools, RunsAsTheSimulatorDoes) {
  for_each_case(true, check_blif);
}

TEST(BlifTools, RandomProgramsRunAsTheSimulatorDoes) {
  for_random_cases(8, check_blif);
}

}  // namespace
}  // namespace kiva::test
