// The functions for SystemC, wrapped by a small model each and linked into one program, whose
// traces are the simulator's.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/targets/target_case.h"
#include "tests/targets/thermostat_data.h"

namespace kiva::test {
namespace {

/// What all models have: ports of bits and of values, and a reaction on each edge of the clock.
constexpr const char* const support = R"(
#include <systemc.h>
#include <cmath>
#include <cstdio>
struct Model : sc_module {
  sc_in<bool> clk{"clk"};
  sc_vector<sc_in<int>> i;
  sc_vector<sc_in<double>> iv;
  sc_vector<sc_out<int>> o;
  sc_vector<sc_out<double>> ov;
  SC_HAS_PROCESS(Model);
  Model(sc_module_name name, int in, int out)
      : sc_module(name), i("i", in), iv("iv", in), o("o", out), ov("ov", out) {
    SC_METHOD(step);
    sensitive << clk.pos();
    dont_initialize();
  }
  virtual void react(int* bits, double* values) = 0;
  void step() {
    std::vector<int> bits(o.size() + 1);
    std::vector<double> values(o.size() + 1);
    react(bits.data(), values.data());
    for (size_t n = 0; n < o.size(); ++n) o[n].write(bits[n]), ov[n].write(values[n]);
  }
};
template <class M>
struct Bench {
  sc_signal<bool> clk;
  sc_vector<sc_signal<int>> i{sc_gen_unique_name("in"), M::inputs};
  sc_vector<sc_signal<int>> o{sc_gen_unique_name("out"), M::outputs};
  sc_vector<sc_signal<double>> iv{sc_gen_unique_name("in"), M::inputs};
  sc_vector<sc_signal<double>> ov{sc_gen_unique_name("out"), M::outputs};
  M model{sc_gen_unique_name("model")};
  Bench() {
    model.clk(clk), model.i(i), model.iv(iv), model.o(o), model.ov(ov);
  }
  void instant(const char* bits, std::vector<double> values) {
    for (int n = 0; n < M::inputs; ++n) i[n].write(bits[n] - '0'), iv[n].write(values[n]);
    sc_start(1, SC_NS);
    clk.write(true);
    sc_start(1, SC_NS);
    clk.write(false);
    sc_start(1, SC_NS);
    for (int n = 0; n < M::outputs; ++n) std::putchar('0' + o[n].read());
    for (int n = 0; n < M::outputs; ++n) std::printf(" %.3f", ov[n].read());
    std::putchar('\n');
  }
};
)";

/// The name in front of an ending in a text.
std::string name_before(const std::string& text, const std::string& ending) {
  const size_t end = text.find(ending);
  const size_t start = text.rfind(' ', end) + 1;
  return text.substr(start, end - start);
}

/// The wires and the inputs.
std::string input_row(const TargetCase& test, const TargetCase::Instant& instant) {
  std::ostringstream out;
  if (!test.finalised()) out << instant.set << !instant.set << instant.reset << !instant.reset;
  for (int bit : test.input_bits(instant)) out << bit;
  return out.str();
}

/// The class `wrap`NUMBER around the reaction of a case.
std::string model(const TargetCase& test, size_t number, const std::string& header) {
  const size_t wires = test.finalised() ? 0 : 4;
  const size_t hidden = test.finalised() ? 0 : 2;
  const size_t rails = test.finalised() ? 1 : 2;
  const std::string m = name_before(header, "_reset_automaton");
  std::string before, arguments, after;
  const auto add = [&](const std::string& text) {
    arguments += (arguments.empty() ? "" : ", ") + text;
  };
  const size_t inputs = wires + test.inputs().size() * rails;
  for (size_t n = 0; n < inputs; ++n) {
    add("i[" + std::to_string(n) + "].read()");
    if (n >= wires && n < wires + test.inputs().size() &&
        test.inputs()[n - wires]->isValued(test.module()))
      add("iv[" + std::to_string(n) + "].read()");
  }
  const size_t outputs = hidden + test.outputs().size() * rails;
  for (size_t n = 0; n < outputs; ++n) {
    add("&bits[" + std::to_string(n) + "]");
    if (n >= hidden && n < hidden + test.outputs().size() &&
        test.outputs()[n - hidden]->isValued(test.module()))
      add("&values[" + std::to_string(n) + "]");
  }
  std::ostringstream out;
  const std::string wrap = "wrap" + std::to_string(number);
  out << "struct " << wrap << " : Model {\n  static constexpr int inputs = " << inputs
      << ", outputs = " << outputs << ";\n  " << wrap
      << "(sc_module_name name) : Model(name, inputs, outputs) { " << m
      << "_reset_automaton(); }\n  void react(int* bits, double* values) override {\n"
      << "    (void)bits, (void)values;\n    " << m << "_automaton(" << arguments
      << ");\n  }\n};\n";
  return out.str();
}

/// The calls that give the stimuli.
std::string instants(const TargetCase& test, size_t number) {
  const size_t wires = test.finalised() ? 0 : 4;
  std::ostringstream out;
  for (const TargetCase::Instant& instant : test.instants()) {
    const std::string bits = input_row(test, instant);
    out << "  bench" << number << ".instant(\"" << bits << "\", {";
    for (size_t n = 0; n < bits.size(); ++n)
      out << (n >= wires && n < wires + instant.texts.size()
                  ? value_literal(instant.texts[n - wires])
                  : "0")
          << ", ";
    out << "});\n";
  }
  return out.str();
}

/// Compares the lines that the case's model printed, and takes them off.
void check_rows(const TargetCase& test, std::istream& lines) {
  SCOPED_TRACE(test.name());
  std::vector<std::vector<int>> seen;
  for (const TargetCase::Instant& instant : test.instants()) {
    std::string line;
    std::getline(lines, line);
    std::istringstream words(line);
    std::string bits;
    words >> bits;
    if (!test.finalised()) bits.erase(0, 2);
    seen.push_back(rows_of_bits(bits).at(0));
    for (size_t n = 0; n < instant.values.size(); ++n) {
      double value = 0;
      words >> value;
      if (instant.outputs[n] == SignalState::one && instant.values[n] != "--") {
        EXPECT_NEAR(value, std::stod(instant.values[n]), 0.001);
      }
    }
  }
  test.expect_trace(seen);
}

/// Links models of the cases into one program and runs it. The modules differ in name.
void check_systemc(const std::vector<const TargetCase*>& cases) {
  const TempDir folder;
  std::string headers, models, benches, runs;
  for (size_t n = 0; n < cases.size(); ++n) {
    const TargetCase& test = *cases[n];
    test.write("--systemc");
    const std::string m = test.module()->getName();
    const std::string header = read_text(test.file(m + "_sc.h"));
    folder.write(m + "_sc.h", header);
    folder.write(m + "_sc.cpp", read_text(test.file(m + "_sc.cpp")));
    folder.write(m + "_typedecl.h", m == "thermostat" ? thermostat_types : "");
    headers += "#include \"" + m + "_sc.h\"\n";
    models += model(test, n, header);
    const std::string number = std::to_string(n);
    benches += "  Bench<wrap" + number + "> bench" + number + ";\n";
    runs += instants(test, n);
  }
  const bool data = headers.find("\"thermostat_sc.h\"") != std::string::npos;
  folder.write("data.cpp",
               data ? std::string("#include \"thermostat_sc.h\"\n") + thermostat_functions : "");
  folder.write("main.cpp", support + headers + models + "int sc_main(int, char**) {\n" + benches +
                               runs + "  return 0;\n}\n");
  run_tool(
      "g++ -std=c++17 -Wall -Wextra -c *_sc.cpp data.cpp && "
      "g++ -std=c++17 -o run main.cpp *_sc.o data.o -lsystemc",
      folder.path());
  std::istringstream lines(run_tool("SYSTEMC_DISABLE_COPYRIGHT_MESSAGE=1 ./run", folder.path()));
  for (const auto& test : cases) check_rows(*test, lines);
}

TEST(SystemCTools, RunsAsTheSimulatorDoes) {
  const auto cases = all_cases(true);
  std::vector<const TargetCase*> all;
  for (const auto& test : cases) all.push_back(test.get());
  check_systemc(all);
}

TEST(SystemCTools, RandomProgramsRunAsTheSimulatorDoes) {
  for_random_cases(2, [](const TargetCase& test) { check_systemc({&test}); });
}

}  // namespace
}  // namespace kiva::test
