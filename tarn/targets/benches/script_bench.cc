// Benches of Python, JavaScript and JSON: a table of instants, run twice, each time with a fresh
// object. What JSON holds is run by a few lines of Python.

#include <filesystem>
#include <ostream>

#include "tarn/targets/benches/benches.h"

namespace kiva {

namespace {

/// The table: a pair of strings of bits an instant, "-" for an output that nothing is awaited of.
void put_rows(const BenchJob& job, std::ostream& out, const char* open, const char* close) {
  for (const BenchInstant& instant : job.instants)
    out << "  " << open << '"' << job.given(instant) << "\", \"" << job.awaited(instant, '-') << '"'
        << close << ",\n";
}

std::string names(const BenchJob& job, const std::vector<long>& rails) {
  std::string list;
  for (long index : rails) list += (list.empty() ? "\"" : ", \"") + job.text.name(index) + '"';
  return '[' + list + ']';
}

void put_python(const BenchJob& job, std::ostream& out, const std::string& make,
                const std::string& get) {
  out << "INPUTS = " << names(job, job.text.input_rails())
      << "\nOUTPUTS = " << names(job, job.text.output_rails()) << "\nROWS = [\n";
  put_rows(job, out, "(", ")");
  out << "]\nfaults = 0\nfor again in range(2):\n    m = " << make << R"(
    for instant, (given, awaited) in enumerate(ROWS, 1):
        shown = m.step(**{name: bit == "1" for name, bit in zip(INPUTS, given)})
        for name, bit in zip(OUTPUTS, awaited):
            if bit != "-" and )"
      << get << R"( != (bit == "1"):
                faults += 1
                print(f"instant {instant}: expected {'' if bit == '1' else 'not '}{name}, is "
                      f"{'absent' if bit == '1' else 'present'}")
    if faults:
        sys.exit(1)
print(")"
      << job.instants.size() << " instants agree\")\n";
}

std::string stem(const std::string& file) {
  return std::filesystem::path(file).stem().string();
}

}  // namespace

std::string python_bench_run(const BenchJob& job) {
  return "python3 " + job.name + ".py";
}

void put_python_bench(const BenchJob& job, std::ostream& out) {
  out << bench_comment(job, "# ", "") << "import sys\n\nfrom " << stem(job.file) << " import "
      << job.text.module_name() << "\n\n";
  put_python(job, out, job.text.module_name() + "()", "getattr(shown, name)");
}

std::string json_bench_run(const BenchJob& job) {
  return python_bench_run(job);
}

void put_json_bench(const BenchJob& job, std::ostream& out) {
  out << bench_comment(job, "# ", "") << R"(import json
import sys


class Module:
    def __init__(self, file):
        with open(file, encoding="ascii") as text:
            self.read = json.load(text)
        self.state = {r["name"]: r["initial"] for r in self.read["registers"]}

    def step(self, **inputs):
        values = dict(self.state, **inputs)
        nodes = {node["number"]: node for node in self.read["nodes"]}

        def value(number):
            positive = abs(number) == 1 or value_of(abs(number))
            return positive == (number > 0)

        def value_of(number):
            if number not in known:
                node = nodes[number]
                known[number] = value(node["then"] if values[node["if"]] else node["else"])
            return known[number]

        known = {}
        sys.setrecursionlimit(100000)
        for equation in self.read["equations"]:
            values[equation["name"]] = value(equation["function"])
        self.state = {r["name"]: values[r["next"]] for r in self.read["registers"]}
        return values


)";
  put_python(job, out, "Module(\"" + job.file + "\")", "shown[name]");
}

std::string javascript_bench_run(const BenchJob& job) {
  return "node " + job.name + ".mjs";
}

void put_javascript_bench(const BenchJob& job, std::ostream& out) {
  out << bench_comment(job, "// ", "") << "import { " << job.text.module_name() << " } from \"./"
      << job.file << "\";\n\nconst inputs = " << names(job, job.text.input_rails())
      << ";\nconst outputs = " << names(job, job.text.output_rails()) << ";\nconst rows = [\n";
  put_rows(job, out, "[", "]");
  out << "];\nlet faults = 0;\nfor (let again = 0; again < 2 && faults === 0; ++again) {\n"
      << "  const m = new " << job.text.module_name() << R"(();
  rows.forEach(([given, awaited], instant) => {
    const shown = m.step(Object.fromEntries(inputs.map((name, k) => [name, given[k] === "1"])));
    outputs.forEach((name, k) => {
      if (awaited[k] === "-" || shown[name] === (awaited[k] === "1")) return;
      ++faults;
      console.log(`instant ${instant + 1}: expected ${awaited[k] === "1" ? "" : "not "}${name}, ` +
                  `is ${shown[name] ? "present" : "absent"}`);
    });
  });
}
if (faults === 0) console.log(")"
      << job.instants.size() << " instants agree\");\nprocess.exitCode = faults === 0 ? 0 : 1;\n";
}

}  // namespace kiva
