// The text in C, compiled and run: its trace is the simulator's.

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "tests/targets/target_case.h"
#include "tests/targets/thermostat_data.h"

namespace kiva::test {
namespace {

/// The name under which the header declares the reaction.
std::string reaction_name(const std::string& header) {
  const size_t end = header.rfind("_automaton(");
  const size_t start = header.rfind(' ', end) + 1;
  return header.substr(start, end - start);
}

/// A program that runs the reaction over the stimuli and prints the outputs' bits, then the values.
std::string harness(const TargetCase& test, const std::string& header_file) {
  const std::string m = reaction_name(read_text(test.file(header_file)));
  std::ostringstream out;
  out << "#include <math.h>\n#include <stdio.h>\n#include \"" << header_file
      << "\"\nint main(void)\n{\n"
      << "  int o[" << 2 * test.outputs().size() + 2 << "] = {0};\n";
  std::string pointers, prints;
  size_t bit = 0;
  const auto add_bit = [&](bool shown) {
    pointers += ", &o[" + std::to_string(bit) + "]";
    if (shown) prints += "putchar('0' + o[" + std::to_string(bit) + "]);";
    ++bit;
  };
  if (!test.finalised())
    for (int rail = 0; rail < 2; ++rail) add_bit(false);
  for (const Signal* output : test.outputs()) {
    add_bit(true);
    if (!output->isValued(test.module())) continue;
    const std::string value = "value" + std::to_string(bit);
    out << "  " << output->getValueType(test.module()) << ' ' << value << " = 0;\n";
    pointers += ", &" + value;
    prints += "printf(\" %.3f\", " + value + ");";
  }
  if (!test.finalised())
    for (size_t i = 0; i < test.outputs().size(); ++i) add_bit(true);

  out << "  " << m << "_reset_automaton();\n";
  for (const TargetCase::Instant& instant : test.instants()) {
    std::string arguments;
    const auto add = [&](const std::string& text) {
      arguments += (arguments.empty() ? "" : ", ") + text;
    };
    if (!test.finalised())
      for (bool wire : {instant.set, !instant.set, instant.reset, !instant.reset})
        add(wire ? "1" : "0");
    const std::vector<int> bits = test.input_bits(instant);
    for (size_t i = 0; i < bits.size(); ++i) {
      add(std::to_string(bits[i]));
      if (i < test.inputs().size() && test.inputs()[i]->isValued(test.module()))
        add(value_literal(instant.texts[i]));
    }
    const std::string outputs =
        arguments.empty() ? pointers.substr(pointers.empty() ? 0 : 2) : pointers;
    out << "  " << m << "_automaton(" << arguments << outputs << ");\n  " << prints
        << "putchar('\\n');\n";
  }
  out << "  return 0;\n}\n";
  return out.str();
}

void check_c(const TargetCase& test) {
  SCOPED_TRACE(test.name());
  test.write("--c");
  const std::string m = test.module()->getName();
  const bool valued = m == "thermostat";
  test.add_file("C_data_user_" + m + ".h", valued ? thermostat_types : "");
  test.add_file("data.c", valued ? std::string("#include \"thermostat.h\"\n") + thermostat_functions
                                 : "extern int unused;\n");
  test.add_file("harness.c", harness(test, m + ".h"));
  const std::filesystem::path folder = std::filesystem::path(test.file("")).parent_path();
  run_tool("gcc -std=c11 -Wall -Wextra -o run harness.c data.c '" + m + ".c'", folder);
  const std::string out = run_tool("./run", folder);
  if (!valued) {
    test.expect_trace(rows_of_bits(out));
    return;
  }
  // heat, display and the displayed value.
  std::istringstream lines(out);
  std::vector<std::vector<int>> seen;
  for (const TargetCase::Instant& instant : test.instants()) {
    std::string line;
    std::getline(lines, line);
    const size_t end = line.find(' ');
    seen.push_back(rows_of_bits(line.substr(0, end)).at(0));
    if (instant.outputs[1] == SignalState::one && instant.values[1] != "--") {
      EXPECT_NEAR(std::strtod(line.c_str() + end, nullptr), std::stod(instant.values[1]), 0.001);
    }
  }
  test.expect_trace(seen);
}

TEST(CTools, RunsAsTheSimulatorDoes) {
  for_each_case(true, check_c);
}

TEST(CTools, RandomProgramsRunAsTheSimulatorDoes) {
  for_random_cases(12, check_c);
}

TEST(CTools, TwoModulesLinkIntoOneProgram) {
  const TempDir dir;
  const std::string sources = KIVA_SOURCE "/examples/";
  run_tool(KIVA_PROGRAMS "/tarn -q --c '" + sources + "watchdog/watchdog.zu' '" + sources +
               "crossing/crossing.zu'",
           dir.path());
  dir.write("C_data_user_watchdog.h", "#include <stdbool.h>\n");
  dir.write("C_data_user_crossing.h", "");
  dir.write("main.cc",
            "extern \"C\" {\n#include \"watchdog.h\"\n#include \"crossing.h\"\n}\n"
            "int main() { watchdog_reset_automaton(); crossing_reset_automaton(); }\n");
  run_tool("gcc -std=c11 -Wall -Wextra -c watchdog.c crossing.c && g++ main.cc *.o", dir.path());
}

TEST(C, AModuleThatWasSavedHasTheInterfaceItHad) {
  for (const char* name : {"elevator", "reflex"}) {
    const TempDir direct, read;
    const std::string source = std::string(KIVA_SOURCE "/examples/") + name + "/" + name + ".zu";
    run_tool(KIVA_PROGRAMS "/tarn -q --zuc --c '" + source + "'", direct.path());
    run_tool(std::string(KIVA_PROGRAMS "/tarn -q --c -d '") + read.path().string() + "' " + name +
                 ".zuc",
             direct.path());
    const std::string file = std::string(name) + ".h";
    EXPECT_EQ(read_text(direct.file(file)), read_text(read.file(file)));
    EXPECT_NE(read_text(direct.file(file)), "");
  }
}

}  // namespace
}  // namespace kiva::test
