// Benches of languages in which a module is an object with a step: C and C++. They run the instants
// twice, the second time with a fresh object.

#include <ostream>

#include "tarn/targets/benches/benches.h"
#include "tarn/targets/languages/c_family.h"
#include "tarn/targets/languages/step_family.h"

namespace kiva {

namespace {

class StepBench {
 public:
  StepBench(const BenchJob& job, std::ostream& out, bool cpp)
      : job_(job), text_(job.text), m_(job.text.module_name()), out_(out), cpp_(cpp) {}

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
    put_instants();
    put_main();
  }

 private:
  std::string type(const char* part) const { return m_ + (cpp_ ? "::" : "_") + part; }

  void put_instants() const {
    out_ << "static void run(void)\n{\n  " << (cpp_ ? m_ : type("t")) << " m;\n  " << type("in")
         << " in;\n  " << type("out") << " out;\n"
         << (cpp_ ? "" : "  " + m_ + "_init(&m);\n");
    for (size_t n = 0; n < job_.instants.size(); ++n) put_instant(n);
    out_ << "}\n\n";
  }

  void put_instant(size_t n) const {
    const BenchInstant& instant = job_.instants[n];
    const std::string given = job_.given(instant), awaited = job_.awaited(instant, '-');
    out_ << (cpp_ ? "  in = {};\n" : "");
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
    out_ << (cpp_ ? "  out = m.step(in);\n" : "  " + m_ + "_step(&m, &in, &out);\n");
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

  void put_main() const {
    out_ << "int main(void)\n{\n  run();\n  if (faults == 0) run(); // and again\n"
         << "  if (faults == 0) printf(\"" << job_.instants.size() << " instants agree\\n\");\n"
         << "  (void)check_value;\n  return faults == 0 ? 0 : 1;\n}\n";
  }

  const BenchJob& job_;
  const TargetText& text_;
  const std::string& m_;
  std::ostream& out_;
  bool cpp_;
};

}  // namespace

std::string c_step_bench_run(const BenchJob& job) {
  return "gcc -o " + job.name + ' ' + job.name + ".c " + job.file + " && ./" + job.name;
}

void put_c_step_bench(const BenchJob& job, std::ostream& out) {
  StepBench(job, out, false).put();
}

std::string cpp_bench_run(const BenchJob& job) {
  return "g++ -std=c++20 -o " + job.name + ' ' + job.name + ".cpp && ./" + job.name;
}

void put_cpp_bench(const BenchJob& job, std::ostream& out) {
  StepBench(job, out, true).put();
}

}  // namespace kiva
