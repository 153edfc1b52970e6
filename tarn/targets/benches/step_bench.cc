// Benches of languages in which a module is an object: C and C++, with a step, and SystemC, with
// ports. They run the instants twice, the second time with a fresh object or behind a reset.

#include <ostream>

#include "tarn/targets/benches/benches.h"
#include "tarn/targets/languages/c_family.h"
#include "tarn/targets/languages/step_family.h"

namespace kiva {

namespace {

enum class Kind { c, cpp, systemc };

class StepBench {
 public:
  StepBench(const BenchJob& job, std::ostream& out, Kind kind)
      : job_(job), text_(job.text), m_(job.text.module_name()), out_(out), kind_(kind) {}

  void put() const {
    out_ << bench_comment(job_, "// ", "") << "#include <stdio.h>\n#include \"" << job_.beside
         << "\"\n\n";
    out_
        << "static int faults = 0;\n\n"
           "static void check(int instant, const char *name, int is, char awaited)\n{\n"
           "  if (awaited == '-' || is == (awaited == '1')) return;\n  ++faults;\n"
           "  printf(\"instant %d: expected %s%s, is %s\\n\", instant,\n"
           "         awaited == '1' ? \"\" : \"not \", name, is ? \"present\" : \"absent\");\n}\n\n"
           "static void check_value(int instant, const char *name, double is, double awaited)\n{\n"
           "  const double apart = is < awaited ? awaited - is : is - awaited;\n"
           "  if (apart <= 1e-4 * (1 + (is < 0 ? -is : is))) return;\n  ++faults;\n"
           "  printf(\"instant %d: expected %s=%g, is %g\\n\", instant, name, awaited, is);\n"
           "}\n\n";
    if (kind_ == Kind::systemc) put_ports();
    put_instants();
    put_main();
  }

 private:
  std::string type(const char* part) const { return m_ + (kind_ == Kind::cpp ? "::" : "_") + part; }

  /// What an instant's lines need in front of them.
  std::string start() const {
    if (kind_ == Kind::systemc) return "static void run(Ports &in, Ports &out)\n{\n";
    return "static void run(void)\n{\n  " + (kind_ == Kind::cpp ? m_ : type("t")) + " m;\n  " +
           type("in") + " in;\n  " + type("out") + " out;\n" +
           (kind_ == Kind::cpp ? "" : "  " + m_ + "_init(&m);\n");
  }
  std::string step() const {
    if (kind_ == Kind::systemc) return "  pulse(in);\n";
    return kind_ == Kind::cpp ? "  out = m.step(in);\n" : "  " + m_ + "_step(&m, &in, &out);\n";
  }

  void put_instants() const {
    out_ << start();
    for (size_t n = 0; n < job_.instants.size(); ++n) put_instant(n);
    out_ << "}\n\n";
  }

  void put_instant(size_t n) const {
    const BenchInstant& instant = job_.instants[n];
    const std::string given = job_.given(instant), awaited = job_.awaited(instant, '-');
    out_ << (kind_ == Kind::cpp ? "  in = {};\n" : "");
    size_t i = 0;
    for (long index : text_.input_rails())
      out_ << "  in." << text_.name(index) << " = " << (given[i++] == '1' ? "true" : "false")
           << ";\n";
    for (const Signal* input : text_.inputs()) {
      if (!text_.is_valued(input)) continue;
      const auto at = instant.given_values.find(text_.status(input));
      const std::string& type = text_.type(input);
      if (at != instant.given_values.end())
        out_ << "  in." << text_.value_name(input) << " = " << value_literal(type, at->second)
             << ";\n";
    }
    out_ << step();
    size_t o = 0;
    for (long index : text_.output_rails()) {
      if (awaited[o] != '-')
        out_ << "  check(" << n + 1 << ", \"" << text_.name(index) << "\", out."
             << text_.name(index) << ", '" << awaited[o] << "');\n";
      ++o;
    }
    for (const Signal* output : text_.outputs())
      if (const auto at = instant.awaited_values.find(text_.status(output));
          at != instant.awaited_values.end() && is_number_text(at->second))
        out_ << "  check_value(" << n + 1 << ", \"" << text_.name(output) << "\", (double)out."
             << text_.value_name(output) << ", " << at->second << ");\n";
  }

  void put_port(const std::string& type, const std::string& name) const {
    out_ << "  sc_core::sc_signal<" << type << "> " << name << ";\n";
  }

  /// A signal for each port, bound to it.
  void put_ports() const {
    std::vector<std::string> names{"clk", "rst"};
    out_ << "struct Ports {\n  " << m_ << " dut_{\"dut\"};\n";
    for (const auto& rails : {text_.input_rails(), text_.output_rails()})
      for (long index : rails) names.push_back(text_.name(index));
    for (const std::string& name : names) put_port("bool", name);
    for (const auto& signals : {text_.inputs(), text_.outputs()})
      for (const Signal* signal : signals)
        if (text_.is_valued(signal)) {
          const std::string type = text_.type(signal);
          names.push_back(text_.value_name(signal));
          put_port(type == "string" ? "std::string" : StepText::type_text(type), names.back());
        }
    out_ << "  Ports() {\n";
    for (const std::string& name : names) out_ << "    dut_." << name << '(' << name << ");\n";
    out_ << "  }\n};\n\nstatic void pulse(Ports &p)\n{\n  p.clk = true;\n"
            "  sc_core::sc_start(1, sc_core::SC_NS);\n  p.clk = false;\n"
            "  sc_core::sc_start(1, sc_core::SC_NS);\n}\n\n";
  }

  void put_main() const {
    const bool ports = kind_ == Kind::systemc;
    out_ << (ports ? "int sc_main(int, char **)\n{\n  Ports p;\n  run(p, p);\n"
                     "  p.rst = true;\n  pulse(p);\n  p.rst = false;\n  if (faults == 0) run(p, p);"
                   : "int main(void)\n{\n  run();\n  if (faults == 0) run();")
         << " // and again\n  if (faults == 0) printf(\"" << job_.instants.size()
         << " instants agree\\n\");\n  (void)check_value;\n  return faults == 0 ? 0 : 1;\n}\n";
  }

  const BenchJob& job_;
  const TargetText& text_;
  const std::string& m_;
  std::ostream& out_;
  Kind kind_;
};

}  // namespace

std::string c_step_bench_run(const BenchJob& job) {
  return "gcc -o " + job.name + ' ' + job.name + ".c " + job.file + " && ./" + job.name;
}

void put_c_step_bench(const BenchJob& job, std::ostream& out) {
  StepBench(job, out, Kind::c).put();
}

std::string cpp_bench_run(const BenchJob& job) {
  return "g++ -std=c++20 -o " + job.name + ' ' + job.name + ".cpp && ./" + job.name;
}

void put_cpp_bench(const BenchJob& job, std::ostream& out) {
  StepBench(job, out, Kind::cpp).put();
}

std::string systemc_bench_run(const BenchJob& job) {
  return "g++ -std=c++17 -o " + job.name + ' ' + job.name + ".cpp " + job.file +
         " -lsystemc && SYSTEMC_DISABLE_COPYRIGHT_MESSAGE=1 ./" + job.name;
}

void put_systemc_bench(const BenchJob& job, std::ostream& out) {
  StepBench(job, out, Kind::systemc).put();
}

}  // namespace kiva
