// C and SystemC: all cases of a run are linked into one program, the C compiler without warnings;
// the functions for SystemC are called by models on the edges of a clock.

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "tests/targets/runner.h"

namespace kiva::test {
namespace {

/// What a user writes for the values of the thermostat.
constexpr const char* thermostat_types = "typedef double celsius;\ntypedef double fahrenheit;\n";
constexpr const char* thermostat_functions = R"(
const celsius zero_celsius = 0, ceiling = 25;
const fahrenheit zero_fahrenheit = 0;
celsius lower_of(celsius a, celsius b) { return a < b ? a : b; }
celsius factory_setting(void) { return 19; }
fahrenheit to_fahrenheit(celsius value) { return value * 9 / 5 + 32; }
)";

/// The name under which the header declares the reaction.
std::string reaction_name(const std::string& header) {
  const size_t end = header.rfind("_automaton(");
  const size_t start = header.rfind(' ', end) + 1;
  return header.substr(start, end - start);
}

/// A value as a literal; what is no number is none.
std::string value_literal(const std::string& text) {
  char* end = nullptr;
  std::strtod(text.c_str(), &end);
  return end != text.c_str() && *end == 0 ? text : "NAN";
}

/// The function `react`NUMBER(instant), which gives the stimuli to the reaction and prints the
/// outputs' bits, then the value of one that carries some.
std::string react(const TargetCase& test, const std::string& m, size_t number) {  // house: one text
  const auto is_valued = [&](const Signal* signal) { return signal->isValued(test.module()); };
  std::string stimuli, values, arguments, declarations, prints, value_prints;
  const auto add = [&](const std::string& text) {
    arguments += (arguments.empty() ? "" : ", ") + text;
  };
  const size_t wires = test.finalised() ? 0 : 4;
  for (const TargetCase::Instant& instant : test.instants()) {
    std::vector<int> bits;
    if (wires > 0) bits = {instant.set, !instant.set, instant.reset, !instant.reset};
    for (int bit : test.input_bits(instant)) bits.push_back(bit);
    stimuli += "{";
    for (int bit : bits) stimuli += std::to_string(bit) + ",";
    stimuli += "0},";
    values += "{";
    for (const std::string& text : instant.texts) values += value_literal(text) + ",";
    values += "0},";
  }
  const size_t inputs = test.inputs().size(), rails = test.finalised() ? 1 : 2;
  for (size_t n = 0; n < wires + rails * inputs; ++n) {
    add("i[t][" + std::to_string(n) + "]");
    if (n >= wires && n < wires + inputs && is_valued(test.inputs()[n - wires]))
      add("v[t][" + std::to_string(n - wires) + "]");
  }
  const size_t hidden = test.finalised() ? 0 : 2, outputs = test.outputs().size();
  for (size_t n = 0; n < hidden + rails * outputs; ++n) {
    const std::string bit = "o[" + std::to_string(n) + "]";
    add("&" + bit);
    if (n >= hidden) prints += "putchar('0' + " + bit + ");";
    if (n < hidden || n >= hidden + outputs || !is_valued(test.outputs()[n - hidden])) continue;
    const std::string value = "value" + std::to_string(n);
    declarations +=
        test.outputs()[n - hidden]->getValueType(test.module()) + " " + value + " = 0; ";
    add("&" + value);
    value_prints += "printf(\" %.3f\", " + value + ");";
  }
  std::ostringstream out;
  out << "static void react" << number << "(int t)\n{\n  static const int i[]["
      << wires + rails * inputs + 1 << "] = {" << stimuli << "};\n  static const double v[]["
      << inputs + 1 << "] = {" << values << "};\n  int o[" << hidden + rails * outputs + 1
      << "] = {0}; (void)i; (void)v; (void)o;\n  " << declarations << "\n  if (t == 0) " << m
      << "_reset_automaton();\n  " << m << "_automaton(" << arguments << ");\n  " << prints
      << value_prints << "putchar('\\n');\n}\n";
  return out.str();
}

/// The parts of a program over all cases.
struct Program {
  TempDir dir;
  std::string headers, reactions, starts;

  /// `suffix` is that of the text's files, `data_header` that of the user's.
  Program(const Cases& cases, const std::string& option, const std::string& header_suffix,
          const std::string& body_suffix) {
    dir.write("data", "");
    for (size_t n = 0; n < cases.size(); ++n) {
      const TargetCase& test = *cases[n];
      test.write(option);
      const std::string m = test.module()->getName(), number = std::to_string(n);
      const std::string header = read_text(test.file(m + header_suffix));
      dir.write(m + header_suffix, header);
      dir.write(m + body_suffix, read_text(test.file(m + body_suffix)));
      const bool valued = m == "thermostat";
      // Every other has its own true and false before the text's.
      const std::string types = valued       ? thermostat_types
                                : n % 2 == 0 ? ""
                                             : "#include <stdbool.h>\n";
      dir.write("C_data_user_" + m + ".h", types);
      dir.write(m + "_typedecl.h", types);
      headers += "#include \"" + m + header_suffix + "\"\n";
      if (valued)
        dir.write("data", "#include \"" + m + header_suffix + "\"\n" + thermostat_functions);
      reactions += react(test, reaction_name(header), n);
      starts += "  RUN(react" + number + ", " + std::to_string(test.instants().size()) + ")\n";
    }
  }

  std::vector<Seen> run(const Cases& cases) const {
    std::istringstream lines(run_tool("SYSTEMC_DISABLE_COPYRIGHT_MESSAGE=1 ./run", dir.path()));
    std::vector<Seen> seen;
    for (const TargetCase* test : cases) {
      std::string trace, line;
      for (size_t i = 0; i < test->instants().size() && std::getline(lines, line); ++i)
        trace += line + '\n';
      seen.push_back(read_seen(trace));
    }
    return seen;
  }
};

std::vector<Seen> run_c(const Cases& cases) {
  const Program program(cases, "--c", ".h", ".c");
  program.dir.write("all.c", "#include <math.h>\n#include <stdio.h>\n" + program.headers +
                                 program.reactions +
                                 "#define RUN(react, count) for (int t = 0; t < count; ++t) "
                                 "react(t);\nint main(void)\n{\n" +
                                 program.starts + "}\n");
  run_tool("mv data data.c && gcc -std=c11 -Wall -Wextra -o run *.c", program.dir.path());
  return program.run(cases);
}

std::vector<Seen> run_systemc(const Cases& cases) {
  const Program program(cases, "--systemc", "_sc.h", "_sc.cpp");
  program.dir.write("all.cpp", R"(#include <systemc.h>
#include <cmath>
#include <cstdio>
)" + program.headers + program.reactions +
                                   R"(
struct Model : sc_module {
  sc_signal<bool> clk;
  void (*react)(int);
  int t = 0, count;
  SC_HAS_PROCESS(Model);
  Model(sc_module_name name, void (*react)(int), int count)
      : sc_module(name), react(react), count(count) {
    SC_METHOD(step);
    sensitive << clk.posedge_event();
    dont_initialize();
  }
  void step() { react(t++); }
};
#define RUN(react, count) new Model(sc_gen_unique_name("model"), react, count),
int sc_main(int, char**) {
  Model* const models[] = {
)" + program.starts + R"(  };
  for (Model* model : models)
    for (int t = 0; t < 2 * model->count; ++t) {
      model->clk.write(t % 2 == 0);
      sc_start(1, SC_NS);
    }
  return 0;
}
)");
  run_tool(
      "mv data data.cpp && g++ -std=c++17 -Wall -Wextra -c *_sc.cpp data.cpp && "
      "g++ -std=c++17 -o run all.cpp *_sc.o data.o -lsystemc",
      program.dir.path());
  return program.run(cases);
}

const Registered c({.option = "c", .random_programs = 12, .by_signal = false, .run = run_c});
const Registered systemc(
    {.option = "systemc", .random_programs = 2, .by_signal = false, .run = run_systemc});

TEST(CTools, HeadersAreOfCAndOfItsSuccessor) {
  const TargetCase test = named_case("watchdog.zu");
  test.write("--c");
  test.add_file("C_data_user_watchdog.h", "");
  test.add_file("main.cc",
                "extern \"C\" {\n#include \"watchdog.h\"\n}\n"
                "int main() { watchdog_reset_automaton(); }\n");
  run_tool("gcc -c watchdog.c && g++ main.cc watchdog.o", test.folder());
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
