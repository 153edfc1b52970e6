// VHDL, simulated with bits and with std_logic, whatever the inputs do between the edges of the
// clock, and again after a reset; Verilog, with a reset too; BLIF, turned into Verilog by one tool
// and held equivalent, latches and first values included, to what another has read.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/targets/runner.h"

namespace kiva::test {

Bits bits_of(const TargetCase& test) {
  Bits bits;
  for (const TargetCase::Instant& instant : test.instants()) {
    std::string row;
    for (int bit : test.rails_by_signal(instant)) row += std::to_string(bit);
    for (int bit : data_tests(instant)) row += std::to_string(bit);
    bits.inputs.push_back(row);
  }
  bits.outputs = test.finalised() ? test.outputs().size() : 2 * test.outputs().size() + 2;
  return bits;
}

namespace {

/// "i(0), i(1), ..., o(0), ..." with other brackets, and with what stands between the two.
std::string ports(const Bits& bits, const std::string& between, char open, char close) {
  std::string text;
  const auto add = [&](const std::string& port) { text += (text.empty() ? "" : ", ") + port; };
  const auto add_all = [&](char name, size_t count) {
    for (size_t n = 0; n < count; ++n) add(name + (open + std::to_string(n)) + close);
  };
  add_all('i', bits.inputs.at(0).size());
  if (!between.empty()) add(between);
  add_all('o', bits.outputs);
  return text;
}

}  // namespace

Seen run_vhdl(const std::filesystem::path& folder, const std::string& file,
              const std::string& entity, bool altera, const Bits& bits) {
  const size_t inputs = bits.inputs.at(0).size();
  std::string stimuli;
  for (const std::string& row : bits.inputs) stimuli += "    & \"" + row + "\"\n";
  const std::string bit = altera ? "std_logic" : "bit";
  const auto vector = [&](size_t size) {
    return bit + "_vector(0 to " + std::to_string(size) + " - 1)";
  };
  std::ofstream(folder / "bench.vhdl")
      << "library ieee; use ieee.std_logic_1164.all; use std.textio.all;\n"
      << "entity bench is end bench;\narchitecture run of bench is\n  signal reset, clk : " << bit
      << " := '0';\n  signal i : " << vector(inputs) << ";\n  signal o : " << vector(bits.outputs)
      << ";\n  constant bits : " << vector(inputs * bits.inputs.size()) << " := \"\"\n"
      << stimuli << "    ;\nbegin\n  dut : entity work." << entity << " port map ("
      << ports(bits, "reset, clk", '(', ')') << R"();
  process
    variable text : line;
  begin
    for round in 1 to 2 loop
      reset <= '0'; wait for 1 ns; reset <= '1'; wait for 1 ns;
      for k in 0 to )"
      << bits.inputs.size() << R"( - 1 loop
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
  return read_seen(run_tool(
      "ghdl -a --std=08 '" + file + "' bench.vhdl && ghdl --elab-run --std=08 bench", folder));
}

namespace {

/// A bench around a module of Verilog, which has the ports `control`; with a reset, twice.
void write_bench(const std::filesystem::path& folder, const std::string& module,
                 const std::string& control, const Bits& bits) {
  const size_t inputs = bits.inputs.at(0).size();
  std::ofstream out(folder / "bench.v");
  out << "module bench;\n  reg clk = 0, reset = 0;\n  reg [0:" << inputs
      << "] i;\n  wire [0:" << bits.outputs << "] o;\n  " << module << " dut(" << control
      << ports(bits, "", '[', ']') << ");\n  initial begin\n";
  for (int round = 0; round < (control.ends_with("reset, ") ? 2 : 1); ++round) {
    for (const std::string& row : bits.inputs)
      out << "    i = " << inputs + 1 << "'b" << row
          << "0; #1 $display(\"%b\", o[0:" << bits.outputs - 1 << "]); clk = 1; #1 clk = 0;\n";
    out << "    reset = 1; #1 reset = 0;\n";
  }
  out << "    $finish;\n  end\nendmodule\n";
}

}  // namespace

Seen run_blif(const std::filesystem::path& folder, const std::string& module, bool has_state,
              const Bits& bits) {
  write_bench(folder, module, has_state ? "clk, " : "", bits);
  run_tool("berkeley-abc -q 'read_blif " + module + ".blif; short_names; write_verilog abc.v'",
           folder);
  return read_seen(run_tool("iverilog -o bench bench.v abc.v && vvp -n bench", folder));
}

namespace {

/// The first word behind `start` in a text.
std::string word_behind(const std::string& text, const std::string& start) {
  const size_t at = text.find(start) + start.size();
  return text.substr(at, text.find_first_of(" (\n", at) - at);
}

Seen run_vhdl_case(const TargetCase& test, bool altera) {
  test.write(altera ? "--vhdl-altera" : "--vhdl");
  const std::string file = test.module()->getName() + ".vhdl";
  return run_vhdl(test.folder(), file, word_behind(read_text(test.file(file)), "entity "), altera,
                  bits_of(test));
}

Seen run_blif_case(const TargetCase& test) {
  const std::string told = test.write("--blif");
  if (test.name() == "thermostat") {
    EXPECT_NE(told.find("BLIF: cold: computed from data"), std::string::npos) << told;
  }
  const std::string m = test.module()->getName();
  const bool has_state = !test.module()->getRegisterList().empty();
  run_tool(
      "yosys -q -p 'read_blif " + m + ".blif; check -assert; simplemap t:$ff; write_blif y.blif'",
      test.folder());
  const std::string verdict = run_tool(
      "berkeley-abc -q '" + std::string(has_state ? "dsec " : "cec ") + m + ".blif y.blif'",
      test.folder());
  EXPECT_NE(verdict.find("Networks are equivalent"), std::string::npos) << verdict;
  return run_blif(test.folder(), m, has_state, bits_of(test));
}

const Registered vhdl({.option = "vhdl", .random_programs = 10, .run = one_by_one([](auto& test) {
                                                                  return run_vhdl_case(test, false);
                                                                })});
const Registered altera({.option = "vhdl-altera",
                         .random_programs = 1,
                         .run = one_by_one([](auto& test) { return run_vhdl_case(test, true); })});
Seen run_verilog(const TargetCase& test) {
  test.write("--verilog");
  const std::string file = test.module()->getName() + ".v";
  write_bench(test.folder(), word_behind(read_text(test.file(file)), "module "), "clk, reset, ",
              bits_of(test));
  return read_seen(run_tool(
      "iverilog -g2005 -Wall -Wno-timescale -o bench bench.v '" + file + "' && vvp -n bench",
      test.folder()));
}

const Registered verilog({.option = "verilog",
                          .random_programs = 10,
                          .run = one_by_one(run_verilog)});
const Registered blif({.option = "blif", .random_programs = 8, .run = one_by_one(run_blif_case)});

TEST(VhdlTools, AModuleWithoutOutputsIsAnalysed) {
  const TargetCase quiet("quiet.zuc",
                         std::string("module: quiet  0 1\ninput: I ;\nconnexion: S R T;\n"
                                     "equation_def:\n1\n0: -1:-3:-3,1\nexpressions:\nend:\n"),
                         "I\n");
  quiet.write("--vhdl");
  run_tool("ghdl -a --std=93 quiet.vhdl", quiet.folder());
}

}  // namespace
}  // namespace kiva::test
