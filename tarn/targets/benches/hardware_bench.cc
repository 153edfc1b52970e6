// Benches of circuits: VHDL, Verilog, and BLIF, which a tool turns into Verilog. What an instant
// gives and awaits are strings of bits; "-" and "x" stand for an output that nothing is awaited of.

#include <algorithm>
#include <ostream>

#include "tarn/targets/benches/benches.h"

namespace kiva {

namespace {

struct Sizes {
  size_t inputs, outputs;
};

Sizes sizes_of(const BenchJob& job) {
  return {job.text.input_rails().size(), job.text.output_rails().size()};
}

// VHDL ---------------------------------------------------------------------------------------

void put_vhdl_ports(const BenchJob& job, std::ostream& out) {
  size_t number = 0;
  for (long index : job.text.input_rails())
    out << job.text.name(index) << " => i(" << number++ << "), ";
  out << "clk => clk, rst => rst";
  number = 0;
  for (long index : job.text.output_rails())
    out << ", " << job.text.name(index) << " => o(" << number++ << ')';
}

void put_vhdl_rows(const BenchJob& job, std::ostream& out) {
  const auto put_bits = [&](const char* name, auto bits_of) {
    out << "  constant " << name << " : string := \"\"";
    for (const BenchInstant& instant : job.instants) out << "\n    & \"" << bits_of(instant) << '"';
    out << ";\n";
  };
  put_bits("given", [&](const BenchInstant& instant) { return job.given(instant); });
  put_bits("awaited", [&](const BenchInstant& instant) { return job.awaited(instant, '-'); });
}

void put_vhdl_process(const BenchJob& job, std::ostream& out,
                      const Sizes& size) {  // house: one text
  out << R"(  process
    variable text : line;
    variable faults : natural := 0;
    procedure give(instant : natural) is
    begin
      for n in 0 to )"
      << size.inputs << R"( - 1 loop
        if given(instant * )"
      << size.inputs << R"( + n + 1) = '1' then i(n) <= '1'; else i(n) <= '0'; end if;
      end loop;
      wait for 1 ns;
    end;
    procedure check(instant, n : natural; name : string) is
      constant want : character := awaited(instant * )"
      << size.outputs << R"( + n + 1);
    begin
      if want = '-' or (want = '1') = (o(n) = '1') then return; end if;
      faults := faults + 1;
      write(text, "instant " & integer'image(instant + 1) & ": expected ");
      if want = '0' then write(text, string'("not ")); end if;
      write(text, name & ", is ");
      if o(n) = '1' then write(text, string'("present")); else write(text, string'("absent")); end if;
      writeline(output, text);
    end;
  begin
    for round in 1 to 2 loop  -- the second one behind a reset
      rst <= '1'; clk <= '1'; wait for 1 ns; clk <= '0'; rst <= '0'; wait for 1 ns;
      for instant in 0 to )"
      << job.instants.size() << R"( - 1 loop
        give(instant);  -- the outputs follow
)";
  size_t number = 0;
  for (long index : job.text.output_rails())
    out << "        check(instant, " << number++ << ", \"" << job.text.name(index) << "\");\n";
  out << "        clk <= '1'; wait for 1 ns;  -- the registers move\n        clk <= '0'; wait for "
         "1 ns;\n"
         "      end loop;\n      exit when faults > 0;\n    end loop;\n    assert faults = 0 "
         "report \"the text differs\" "
         "severity failure;\n    write(text, string'(\""
      << job.instants.size() << " instants agree\"));\n    writeline(output, text);\n    wait;\n"
      << "  end process;\n";
}

void put_vhdl(const BenchJob& job, std::ostream& out, const char* bit) {
  const Sizes size = sizes_of(job);
  out << bench_comment(job, "-- ", "")
      << "library ieee;\nuse ieee.std_logic_1164.all;\nuse std.textio.all;\n\nentity " << job.name
      << " is end " << job.name << ";\n\narchitecture run of " << job.name
      << " is\n  signal rst, clk : " << bit << " := '0';\n  signal i : " << bit << "_vector(0 to "
      << size.inputs << ") := (others => '0');\n  signal o : " << bit << "_vector(0 to "
      << size.outputs << ");\n";
  put_vhdl_rows(job, out);
  out << "begin\n  dut : entity work." << job.text.module_name() << " port map (";
  put_vhdl_ports(job, out);
  out << ");\n";
  put_vhdl_process(job, out, size);
  out << "end run;\n";
}

// Verilog ------------------------------------------------------------------------------------

/// A bench around an instance with these ports; it moves `clk` and, with one, resets and runs
/// again.
void put_verilog(const BenchJob& job, std::ostream& out, const std::string& module,
                 const std::string& ports, bool resets) {
  const Sizes size = sizes_of(job);
  out << bench_comment(job, "// ", "") << "module " << job.name
      << ";\n  reg clk = 0, rst = 0;\n  reg [0:" << size.inputs
      << "] i;\n  wire [0:" << size.outputs << "] o;\n  integer faults = 0;\n  " << module
      << " dut(" << ports << ");\n"
      << R"(
  task check(input integer instant, input is, input awaited, input [8*256-1:0] name);
    if (awaited !== 1'bx && is !== awaited) begin
      faults = faults + 1;
      $display("instant %0d: expected %0s%0s, is %0s", instant, awaited ? "" : "not ", name,
               is ? "present" : "absent");
    end
  endtask

  task step(input integer instant, input [0:)"
      << size.inputs << "] given, input [0:" << size.outputs << R"(] awaited);
    begin
      i = given;
      #1;
)";
  size_t number = 0;
  for (long index : job.text.output_rails()) {
    out << "      check(instant, o[" << number << "], awaited[" << number << "], \""
        << job.text.name(index) << "\");\n";
    ++number;
  }
  out << "      clk = 1;\n      #1 clk = 0;\n    end\n  endtask\n\n  initial begin\n";
  for (int round = 0; round < (resets ? 2 : 1); ++round) {
    if (round > 0)
      out << "    if (faults == 0) begin  // and again\n    rst = 1;\n    clk = 1;\n    #1 clk = "
             "0;\n    rst = 0;\n";
    for (size_t n = 0; n < job.instants.size(); ++n)
      out << "    step(" << n + 1 << ", " << size.inputs + 1 << "'b" << job.given(job.instants[n])
          << "0, " << size.outputs + 1 << "'b" << job.awaited(job.instants[n], 'x') << "0);\n";
    if (round > 0) out << "    end\n";
  }
  out << "    if (faults != 0) $fatal(1, \"the text differs\");\n    $display(\""
      << job.instants.size() << " instants agree\");\n    $finish(0);\n  end\nendmodule\n";
}

std::string verilog_run(const std::string& bench, const std::string& extension,
                        const std::string& file) {
  return "iverilog -g2012 -o " + bench + ' ' + bench + extension + ' ' + file + " && vvp -n " +
         bench;
}

std::string numbered(const std::string& name, size_t count) {
  std::string text;
  for (size_t n = 0; n < count; ++n) text += ", " + name + '[' + std::to_string(n) + ']';
  return text;
}

}  // namespace

std::string vhdl_bench_run(const BenchJob& job) {
  return "ghdl -a --std=08 " + job.file + ' ' + job.name + ".vhdl && ghdl --elab-run --std=08 " +
         job.name;
}

void put_vhdl_bench(const BenchJob& job, std::ostream& out) {
  put_vhdl(job, out, "bit");
}

void put_vhdl_altera_bench(const BenchJob& job, std::ostream& out) {
  put_vhdl(job, out, "std_logic");
}

std::string verilog_bench_run(const BenchJob& job) {
  return verilog_run(job.name, ".sv", job.file);
}

void put_verilog_bench(const BenchJob& job, std::ostream& out) {
  std::string ports = ".clk(clk), .rst(rst)";
  size_t number = 0;
  for (long index : job.text.input_rails())
    ports += ", ." + job.text.name(index) + "(i[" + std::to_string(number++) + "])";
  number = 0;
  for (long index : job.text.output_rails())
    ports += ", ." + job.text.name(index) + "(o[" + std::to_string(number++) + "])";
  put_verilog(job, out, job.text.module_name(), ports, true);
}

namespace {

/// By a tool that reads the netlist and writes it as Verilog.
std::string netlist_run(const BenchJob& job, const std::string& read) {
  // The module's name may be a word of Verilog.
  return "berkeley-abc -q '" + read + "; short_names; write_verilog " + job.name +
         "_net.v' && sed -i 's/^module [^(]*/module " + job.name + "_net /' " + job.name +
         "_net.v && " + verilog_run(job.name, ".v", job.name + "_net.v");
}

}  // namespace

std::string blif_bench_run(const BenchJob& job) {
  return netlist_run(job, "read_blif " + job.file);
}

std::string aiger_bench_run(const BenchJob& job) {
  return netlist_run(job, "read_aiger " + job.beside);
}

void put_blif_bench(const BenchJob& job, std::ostream& out) {
  const Sizes size = sizes_of(job);
  std::string ports = std::string(job.text.state().empty() ? "" : ", clk") +
                      numbered("i", size.inputs) + numbered("o", size.outputs);
  ports.erase(0, std::min<size_t>(2, ports.size()));
  put_verilog(job, out, job.name + "_net", ports, false);
}

}  // namespace kiva
