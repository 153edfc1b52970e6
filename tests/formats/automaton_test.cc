// Texts of boolean automata: C, BLIF and VHDL run in their own tools as the automaton steps, a
// module of the source language compiles to the same machine, and all texts are told to the letter.

#include <gtest/gtest.h>

#include <sstream>

#include "tarn/b_automaton/equivalence.h"
#include "tarn/b_automaton/module_automaton.h"
#include "tarn/formats/target_rules.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/b_automaton/automata.h"
#include "tests/formats/target_case.h"
#include "tests/support/process_end.h"

namespace kiva::test {
namespace {

/// Stimuli of an automaton, and its outputs.
struct Run {
  explicit Run(const b_automaton& automaton) {
    std::mt19937 random(7);
    std::vector<int> state = initial_state(automaton);
    for (int instant = 0; instant < 40; ++instant) {
      stimuli.push_back(bits(random(), automaton.nb_inputs()));
      const std::vector<int> values = step(automaton, state, stimuli.back());
      outputs.push_back(outputs_of(automaton, values));
      state = next_state_of(automaton, values);
    }
  }
  std::vector<std::vector<int>> stimuli, outputs;
};

std::string digits(const std::vector<int>& row, const std::string& separator = "") {
  std::string text;
  for (size_t k = 0; k < row.size(); ++k)
    text += (k == 0 ? "" : separator) + std::to_string(row[k]);
  return text;
}

void check_c(const b_automaton& automaton, const TempDir& dir) {
  const Run run(automaton);
  std::ostringstream body, header, main;
  automaton.C_put(body, header, 0, "m");
  dir.write("m.c", body.str());
  dir.write("m.h", header.str());
  std::string arguments;
  for (int k = 0; k < automaton.nb_inputs(); ++k) arguments += "i[" + std::to_string(k) + "], ";
  for (int k = 0; k < automaton.nb_outputs(); ++k)
    arguments += (k == 0 ? "o + " : ", o + ") + std::to_string(k);
  main << "#include <stdio.h>\n#include \"m.h\"\nint stimuli[][" << automaton.nb_inputs()
       << "] = {";
  for (const std::vector<int>& row : run.stimuli) main << "{" << digits(row, ",") << "},";
  main << "};\nint main(void) {\n  int o[" << automaton.nb_outputs()
       << "], *i = stimuli[0];\n  m_reset_automaton(" << arguments << ");\n  for (int t = 0; t < "
       << run.stimuli.size() << "; ++t) {\n    i = stimuli[t];\n    m_automaton(" << arguments
       << ");\n    for (int k = 0; k < " << automaton.nb_outputs()
       << "; ++k) putchar('0' + o[k]);\n    putchar('\\n');\n  }\n}\n";
  dir.write("main.c", main.str());
  EXPECT_EQ(rows_of_bits(run_tool("gcc -std=c11 -o c main.c m.c && ./c", dir.path())), run.outputs);
}

void check_blif(const b_automaton& automaton, const TempDir& dir) {
  const Run run(automaton);
  std::ostringstream text, bench;
  automaton.BLIF_put(text, 0, "m");
  dir.write("m.blif", text.str());
  bench << "module bench;\n  reg clock = 0;\n  reg [0:" << automaton.nb_inputs() - 1
        << "] i;\n  wire [0:" << automaton.nb_outputs() - 1 << "] o;\n  m dut(clock";
  for (int k = 0; k < automaton.nb_inputs(); ++k) bench << ", i[" << k << "]";
  for (int k = 0; k < automaton.nb_outputs(); ++k) bench << ", o[" << k << "]";
  bench << ");\n  initial begin\n";
  for (const std::vector<int>& row : run.stimuli)
    bench << "    i = " << automaton.nb_inputs() << "'b" << digits(row)
          << "; #1 $display(\"%b\", o); clock = 1; #1 clock = 0;\n";
  dir.write("bench.v", bench.str() + "    $finish;\n  end\nendmodule\n");
  run_tool("berkeley-abc -q 'read_blif m.blif; short_names; write_verilog abc.v'", dir.path());
  EXPECT_EQ(rows_of_bits(run_tool("iverilog -o b bench.v abc.v && vvp -n b", dir.path())),
            run.outputs);
}

void check_vhdl(const b_automaton& automaton, const TempDir& dir) {
  const Run run(automaton);
  std::ostringstream text, bench;
  automaton.VHDL_put(text, 0, "m");
  dir.write("m.vhdl", text.str());
  bench << "entity bench is end bench;\narchitecture run of bench is\n"
           "  signal reset, clk : bit := '0';\n  signal i : bit_vector(0 to "
        << automaton.nb_inputs() - 1 << ");\n  signal o : bit_vector(0 to "
        << automaton.nb_outputs() - 1 << ");\nbegin\n  dut : entity work.m port map (";
  for (int k = 0; k < automaton.nb_inputs(); ++k) bench << "i(" << k << "), ";
  bench << "reset, clk";
  for (int k = 0; k < automaton.nb_outputs(); ++k) bench << ", o(" << k << ")";
  bench << ");\n  process begin\n    wait for 1 ns; reset <= '1'; wait for 1 ns;\n";
  for (const std::vector<int>& row : run.stimuli)
    bench << "    i <= bit_vector'(\"" << digits(row)
          << "\"); wait for 1 ns; clk <= '1'; wait for 1 ns; i <= not i; wait for 1 ns;\n"
             "    clk <= '0'; wait for 1 ns; report \"row\" & to_string(o);\n";
  dir.write("bench.vhdl", bench.str() + "    wait;\n  end process;\nend run;\n");
  EXPECT_EQ(rows_of_bits(run_tool("ghdl -a --std=08 m.vhdl bench.vhdl && "
                                  "ghdl --elab-run --std=08 bench 2>&1 | sed 's/.*row//'",
                                  dir.path())),
            run.outputs);
}

TEST(AutomatonTools, TextsRunAsTheAutomatonSteps) {
  std::mt19937 random(8);
  for (int round = 0; round < 4; ++round) {
    const TempDir dir;
    const auto automaton = random_automaton(random, 4, 3, 3, 4);
    check_c(*automaton, dir);
    check_blif(*automaton, dir);
    check_vhdl(*automaton, dir);
  }
}

TEST(Automaton, ItsSourceTextCompilesToTheSameMachine) {
  std::mt19937 random(9);
  for (int round = 0; round < 6; ++round) {
    const TempDir dir;
    const auto automaton = random_automaton(random, 3, 2, 2, 2);
    std::ostringstream text;
    Compilation::target_rules() = TargetRules::working();
    automaton->ZU_put(text, 0, "m");
    Compilation::target_rules() = TargetRules::told();
    dir.write("m.zu", text.str());
    run_tool(KIVA_PROGRAMS "/tarn -q m.zu", dir.path(), false);
    const ZucRead read = read_zuc_file(dir.file("m.zuc"), "", "");
    ASSERT_NE(read.module, nullptr) << read.problem << '\n' << text.str();
    const auto compiled = automaton_of(read.module);
    for (int k = 0; k < 2; ++k) {
      compiled->change_nom_input(k, compiled->nom_input(k).substr(2));
      compiled->change_nom_output(k, compiled->nom_output(k).substr(2));
    }
    const auto both = observateur_equivalence(automaton.get(), compiled.get());
    ASSERT_TRUE(both->sort().empty());
    EXPECT_TRUE(walk_output(*both, 0, [](const OutputWalk&) {}).holds) << text.str();
  }
}

/// A register, an output that another equation reads, a constant, a negation.
std::unique_ptr<b_automaton> told_automaton() {
  return make_automaton(
      {.state = {"s", "r"},
       .next_state = {"snext", "rnext"},
       .inputs = {"a", "b"},
       .outputs = {"o", "p"},
       .locals = {"l"},
       .equations =
           {{"l", "a xor s"}, {"o", "not l"}, {"p", "o and r"}, {"snext", "l"}, {"rnext", "1"}},
       .init = {0, 1}});
}

TEST(Automaton, TextsToTheLetter) {
  const auto automaton = told_automaton();
  std::ostringstream text;
  const auto put = [&](const std::string& title, auto writer) {
    std::ostringstream body, header;
    writer(body, header);
    text << "==== " << title << '\n' << body.str();
    if (!header.str().empty()) text << "---- header\n" << header.str();
  };
  using S = std::ostream&;
  const Outcome told = run_captured([&] {
    put("listing", [&](S body, S) { body << *automaton; });
    put("BAC", [&](S body, S) { automaton->BAC_put(body), body << '\n'; });
    put("BLIF", [&](S body, S) { automaton->BLIF_put(body, 0, "m"); });
    put("C", [&](S body, S header) { automaton->C_put(body, header, 0, "m"); });
    put("board", [&](S body, S) { automaton->INO_put_grafcet(body, 0, "m", {"p"}); });
    put("Esterel", [&](S body, S) { automaton->ESTEREL_put(body, 0, "m"); });
    put("LaTeX", [&](S body, S) { automaton->LATEX_put(body, 0, "m"); });
    put("document", [&](S body, S) { automaton->DOC_put(body, 0, "m"); });
    put("source", [&](S body, S) { automaton->ZU_put(body, 0, "m"); });
    put("Lustre", [&](S body, S) { automaton->LUSTRE_put(body, 0, "m"); });
    put("SystemC", [&](S body, S header) { automaton->SYSTEMC_put(body, header, 0, "m"); });
    put("VHDL", [&](S body, S) { automaton->VHDL_put(body, 1, "m"); });
    put("C#", [&](S body, S) { automaton->CSHARP_put(body, 0, "m"); });
  });
  EXPECT_EQ(told.err, "nb_var locale detecte: 1\n");
  expect_told("automaton.txt", text.str());
}

}  // namespace
}  // namespace kiva::test
