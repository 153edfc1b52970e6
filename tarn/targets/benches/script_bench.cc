// Benches of Python, JavaScript and JSON: a table of instants, run twice, each time with a fresh
// object. What JSON holds is run by a few lines of Python.

#include <filesystem>
#include <ostream>

#include "base/text_stream.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/languages/script_family.h"

namespace kiva {

namespace {

/// `bits`: without values.
enum class Script { python, javascript, bits };

/// As the language has it; what is none of its own words is the user's.
std::string value_text(const BenchJob& job, const std::string& text, const std::string& type,
                       Script script) {
  const bool python = script == Script::python;
  if (type == "string") return text.starts_with('"') ? text : '"' + text + '"';
  if (text == "true" || text == "True") return python ? "True" : "true";
  if (text == "false" || text == "False") return python ? "False" : "false";
  return is_number_text(text) ? text : ScriptText::users(job.text.module_name()) + '.' + text;
}

/// The values of an instant as an object, by the names of their variables.
std::string values(const BenchJob& job, const std::vector<Signal*>& signals,
                   const std::unordered_map<long, std::string>& of, Script script) {
  std::string all;
  if (script == Script::bits) return "{}";
  for (const Signal* signal : signals) {
    const auto at = of.find(job.text.status(signal));
    if (at == of.end() || !job.text.is_valued(signal)) continue;
    all += (all.empty() ? "\"" : ", \"") + job.text.value_name(signal) +
           "\": " + value_text(job, at->second, job.text.type(signal), script);
  }
  return '{' + all + '}';
}

/// The table: a pair of strings of bits an instant, "-" for an output that nothing is awaited of;
/// then the values given, and those awaited.
std::string rows_text(const BenchJob& job, const char* open, const char* close, Script script) {
  TextStream rows;
  for (const BenchInstant& instant : job.instants)
    rows << "  " << open << '"' << job.given(instant) << "\", \"" << job.awaited(instant, '-')
         << "\", " << values(job, job.text.inputs(), instant.given_values, script) << ", "
         << values(job, job.text.outputs(), instant.awaited_values, script) << close << ",\n";
  return rows.str();
}

/// What imports the user's definitions, where a row names one.
std::string users_import(const BenchJob& job, const std::string& rows, const std::string& before,
                         const std::string& behind) {
  const std::string users = ScriptText::users(job.text.module_name());
  return rows.find(users + '.') == std::string::npos ? "" : before + users + behind;
}

std::string names(const BenchJob& job, const std::vector<long>& rails) {
  std::string list;
  for (long index : rails) list += (list.empty() ? "\"" : ", \"") + job.text.name(index) + '"';
  return '[' + list + ']';
}

void put_python(const BenchJob& job, std::ostream& out, const std::string& rows,
                const std::string& make, const std::string& get) {
  out << "INPUTS = " << names(job, job.text.input_rails())
      << "\nOUTPUTS = " << names(job, job.text.output_rails()) << "\nROWS = [\n"
      << rows << "]\nfaults = 0\nfor again in range(2):\n    m = " << make << R"(
    for instant, (given, awaited, values, awaited_values) in enumerate(ROWS, 1):
        shown = m.step(**{name: bit == "1" for name, bit in zip(INPUTS, given)}, **values)
        for name, bit in zip(OUTPUTS, awaited):
            if bit != "-" and )"
      << get << R"( != (bit == "1"):
                faults += 1
                print(f"instant {instant}: expected {'' if bit == '1' else 'not '}{name}, is "
                      f"{'absent' if bit == '1' else 'present'}")
        for name, value in awaited_values.items():
            is_there = getattr(shown, name)
            number = isinstance(value, (int, float)) and isinstance(is_there, (int, float))
            if is_there != value and not (
                    number and abs(is_there - value) <= 1e-4 * (1 + abs(is_there))):
                faults += 1
                print(f"instant {instant}: expected {name} {value}, is {is_there}")
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
  const std::string rows = rows_text(job, "(", ")", Script::python);
  out << bench_comment(job, "# ", "") << "import sys\n\n"
      << users_import(job, rows, "import ", "\n") << "import " << stem(job.file)
      << " as under_test\n\n";
  // Behind its file's name the class meets no name of the bench.
  put_python(job, out, rows, "under_test." + job.text.module_name() + "()", "getattr(shown, name)");
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
  put_python(job, out, rows_text(job, "(", ")", Script::bits), "Module(\"" + job.file + "\")",
             "shown[name]");
}

std::string javascript_bench_run(const BenchJob& job) {
  return "node " + job.name + ".mjs";
}

void put_javascript_bench(const BenchJob& job, std::ostream& out) {
  const std::string rows = rows_text(job, "[", "]", Script::javascript);
  out << bench_comment(job, "// ", "")
      << users_import(job, rows, "import * as ",
                      " from \"./" + ScriptText::users(job.text.module_name()) + ".mjs\";\n")
      << "import * as underTest from \"./" << job.file
      << "\";\n\nconst inputs = " << names(job, job.text.input_rails())
      << ";\nconst outputs = " << names(job, job.text.output_rails()) << ";\nconst rows = [\n"
      << rows << "];\nlet faults = 0;\nfor (let again = 0; again < 2 && faults === 0; ++again) {\n"
      << "  const m = new underTest." << job.text.module_name() << R"(();
  rows.forEach(([given, awaited, values, awaitedValues], instant) => {
    const bits = Object.fromEntries(inputs.map((name, k) => [name, given[k] === "1"]));
    const shown = m.step({...bits, ...values});
    outputs.forEach((name, k) => {
      if (awaited[k] === "-" || shown[name] === (awaited[k] === "1")) return;
      ++faults;
      console.log(`instant ${instant + 1}: expected ${awaited[k] === "1" ? "" : "not "}${name}, ` +
                  `is ${shown[name] ? "present" : "absent"}`);
    });
    for (const [name, value] of Object.entries(awaitedValues)) {
      const is = shown[name];
      if (is === value || Math.abs(is - value) <= 1e-4 * (1 + Math.abs(is))) continue;
      ++faults;
      console.log(`instant ${instant + 1}: expected ${name} ${value}, is ${is}`);
    }
  });
}
if (faults === 0) console.log(")"
      << job.instants.size() << " instants agree\");\nprocess.exitCode = faults === 0 ? 0 : 1;\n";
}

}  // namespace kiva
