// Targets that have a bench: it agrees with the simulator over all cases, in the target's own
// tools. Of languages whose tools start slowly all benches of a run are built into one program.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/targets/runner.h"

namespace kiva::test {
namespace {

/// Writes text and bench, and gives the command that runs it.
std::string write_bench(const TargetCase& test, const std::string& target,
                        const std::string& option = "") {
  test.add_file("bench.stimuli", test.bench_stimuli());
  const std::string told = test.write(option + " --bench " + target + " bench.stimuli");
  const std::string start = "run it: ";
  const size_t at = told.find(start);
  EXPECT_NE(at, std::string::npos) << told;
  return told.substr(at + start.size(), told.size() - at - start.size() - 1);
}

std::string agreement(const TargetCase& test) {
  return std::to_string(test.instants().size()) + " instants agree\n";
}

/// What a user of scripts writes for the values of the thermostat.
const std::vector<std::pair<std::string, std::string>> scripts = {
    {"thermostat_data.py",
     "ceiling = 25\nbroken = float('nan')\ndef lower_of(a, b): return a if a < b else b\n"
     "def factory_setting(): return 19\ndef to_fahrenheit(value): return value * 9 / 5 + 32\n"},
    {"thermostat_data.mjs",
     "export const ceiling = 25, broken = NaN;\nexport const lower_of = (a, b) => a < b ? a : b;\n"
     "export const factory_setting = () => 19;\n"
     "export const to_fahrenheit = (value) => value * 9 / 5 + 32;\n"}};

std::function<void(const Cases&)> by_its_command(const std::string& target,
                                                 const std::string& option = "") {
  return [=](const Cases& cases) {
    for (const TargetCase* test : cases) {
      SCOPED_TRACE(test->name() + ", --bench " + target);
      const std::string command = write_bench(*test, target, option);
      for (const auto& [file, text] : scripts) test->add_file(file, text);
      EXPECT_TRUE(run_tool(command, test->folder()).ends_with(agreement(*test)));
    }
  };
}

/// A program over the benches of all cases.
struct Program {
  TempDir dir;
  std::vector<std::string> modules;
  std::string awaited;

  Program(const Cases& cases, const std::string& target, const std::string& bench_end) {
    for (const TargetCase* test : cases) {
      write_bench(*test, target);
      for (const auto& file : std::filesystem::directory_iterator(test->folder())) {
        const std::string name = file.path().filename().string();
        if (file.path().extension() == ".zuc" || name.starts_with("tarn.err")) continue;
        dir.write(name.ends_with(bench_end) ? name + ".bench" : name,
                  read_text(file.path().string()));
        if (name.ends_with(bench_end))
          modules.push_back(name.substr(0, name.size() - bench_end.size()));
      }
      awaited += agreement(*test);
    }
  }
  /// Text for each module, "@" for its name.
  std::string for_all(const std::string& text) const {
    std::string all;
    for (const std::string& module : modules)
      for (char c : text) all += c == '@' ? module : std::string{c};
    return all;
  }
  void expect_agreement(const std::string& command) const {
    EXPECT_EQ(run_tool(command, dir.path()), awaited);
  }
};

/// What a user writes for the values of the thermostat.
constexpr const char* types =
    "#include <math.h>\n#define broken NAN\ntypedef double celsius;\ntypedef double fahrenheit;\n";
constexpr const char* functions = R"(
const celsius zero_celsius = 0, ceiling = 25;
const fahrenheit zero_fahrenheit = 0;
celsius lower_of(celsius a, celsius b) { return a < b ? a : b; }
celsius factory_setting(void) { return 19; }
fahrenheit to_fahrenheit(celsius value) { return value * 9 / 5 + 32; }
)";

/// The text's own command, and compilers that let nothing pass.
void prove_step(const Cases& cases, const std::string& target, const std::string& compilers) {
  for (const TargetCase* test : cases) {
    SCOPED_TRACE(test->name() + ", --bench " + target);
    std::string command = write_bench(*test, target);
    if (test->name() == "thermostat") {
      test->add_file("thermostat_types.h", types);
      const std::string end = target == "c" ? ".c" : ".cpp";
      test->add_file(
          "data" + end,
          "#include \"thermostat" + std::string(end == ".c" ? ".h" : ".hpp") + "\"\n" + functions);
      command.insert(command.find("_bench ") + 7, "data" + end + " ");
    }
    EXPECT_TRUE(run_tool(command, test->folder()).ends_with(agreement(*test)));
    run_tool("m=" + test->module()->getName() + "; " + compilers, test->folder());
  }
}

void prove_c_functions(const Cases& cases) {
  const Program program(cases, "c-functions", "_bench.c");
  for (const std::string& m : program.modules)
    // Every other has its own true and false before the text's.
    program.dir.write("C_data_user_" + m + ".h", m == "thermostat"   ? types
                                                 : m.size() % 2 == 0 ? ""
                                                                     : "#include <stdbool.h>\n");
  if (program.for_all("@ ").find("thermostat") != std::string::npos)
    program.dir.write("data.c", "#include \"thermostat.h\"\n" + std::string(functions));
  program.dir.write("all.c", program.for_all("#define main @_main\n#include \"@_bench.c.bench\"\n"
                                             "#undef main\n") +
                                 "int main(void) {\n" +
                                 program.for_all("if (@_main() != 0) return 1;\n") +
                                 "return 0; }\n");
  program.expect_agreement("gcc -std=c11 -Wall -Wextra *.c -lm -o run && ./run");
}

/// One bench a process: what has run once in SystemC cannot be built again.
void prove_systemc(const Cases& cases) {
  const Program program(cases, "systemc", "_bench.cpp");
  program.dir.write("thermostat_types.h", types);
  std::string texts;  // into one file: the library's headers take seconds each
  for (const auto& file : std::filesystem::directory_iterator(program.dir.path()))
    if (const std::string name = file.path().filename(); name.ends_with("_sc.cpp"))
      texts += "#include \"" + name + "\"\n";
  program.dir.write("all.cpp",
                    "#include <stdio.h>\n#include <string.h>\n" + texts +
                        program.for_all("namespace @_space {\n#define sc_main run_all\n"
                                        "#include \"@_bench.cpp.bench\"\n#undef sc_main\n}\n") +
                        "int sc_main(int count, char** words) {\n" +
                        program.for_all("if (count == 2 && strcmp(words[1], \"@\") == 0) "
                                        "return @_space::run_all(0, nullptr);\n") +
                        "return 2; }\n" +
                        (texts.find("thermostat") != std::string::npos ? functions : ""));
  program.expect_agreement(
      "g++ -std=c++17 -Wall -Wextra all.cpp -lsystemc -o run && "
      "export SYSTEMC_DISABLE_COPYRIGHT_MESSAGE=1 && for m in " +
      program.for_all("@ ") + "; do ./run $m || exit; done");
}

constexpr const char* thermostat_part = R"(
namespace GenEntree {
  public struct celsius {
    public double v;
    public static implicit operator celsius(double x) { celsius c; c.v = x; return c; }
    public static celsius operator +(celsius a, celsius b) { return a.v + b.v; }
    public static celsius operator -(celsius a) { return -a.v; }
    public static bool operator <(celsius a, celsius b) { return a.v < b.v; }
    public static bool operator >(celsius a, celsius b) { return a.v > b.v; }
    public static celsius To(string s) {
      double x;
      var any = System.Globalization.NumberStyles.Float;
      var plain = System.Globalization.CultureInfo.InvariantCulture;
      return double.TryParse(s, any, plain, out x) ? x : double.NaN;
    }
  }
  public struct fahrenheit {
    public double v;
    public override string ToString() {
      return v.ToString(System.Globalization.CultureInfo.InvariantCulture);
    }
  }
  public partial class thermostat {
    private celsius zero_celsius = 0, ceiling = 25;
    private fahrenheit zero_fahrenheit = new fahrenheit();
    private celsius lower_of(celsius a, celsius b) { return a < b ? a : b; }
    private celsius factory_setting() { return 19; }
    private fahrenheit to_fahrenheit(celsius c) {
      var f = new fahrenheit();
      f.v = c.v * 9 / 5 + 32;
      return f;
    }
  }
}
)";

void prove_csharp(const Cases& cases) {
  const Program program(cases, "csharp", "_bench.cs");
  std::string own;
  for (const std::string& m : program.modules) {
    if (m == "thermostat") program.dir.write("part.cs", thermostat_part);
    program.dir.write(m + "_bench.cs", own + read_text(program.dir.file(m + "_bench.cs.bench")));
    own = "#define OWN_FRAMEWORK\n";
  }
  program.dir.write("all.cs", "class All { static int Main() { int bad = 0;\n" +
                                  program.for_all("bad += @_bench.Main();\n") +
                                  "return bad; } }\n");
  program.expect_agreement("mcs -warnaserror -main:All -out:run.exe *.cs && LC_ALL=C mono run.exe");
}

/// With either kind of reset; then by tools that find fault with more, beside the BLIF.
void prove_circuit(const Cases& cases, const std::string& target, const std::string& tools) {
  by_its_command(target, "--async-reset")(cases);
  by_its_command(target)(cases);
  for (const TargetCase* test : cases) {
    SCOPED_TRACE(test->name());
    test->write("--blif");
    run_tool("m=" + test->module()->getName() + "; " + tools, test->folder());
  }
}

/// The text is held equivalent, latches and first values included, to what another tool has read.
void prove_blif(const Cases& cases) {
  by_its_command("blif")(cases);
  for (const TargetCase* test : cases) {
    SCOPED_TRACE(test->name());
    const std::string m = test->module()->getName();
    run_tool("yosys -q -p 'read_blif " + m + ".blif; check -assert; simplemap t:$ff; " +
                 "write_blif y.blif'",
             test->folder());
    const bool has_state = read_text(test->file(m + ".blif")).find(".latch") != std::string::npos;
    const std::string verdict = run_tool(
        "berkeley-abc -q '" + std::string(has_state ? "dsec " : "cec ") + m + ".blif y.blif'",
        test->folder());
    EXPECT_NE(verdict.find("Networks are equivalent"), std::string::npos) << verdict;
  }
}

const Registered c_functions({.option = "c-functions",
                              .random_programs = 6,
                              .prove = prove_c_functions});
const Registered c({.option = "c", .random_programs = 12, .prove = [](const Cases& cases) {
                      const std::string strict =
                          " -Wall -Wextra -Wpedantic -Wconversion -Wstrict-prototypes -Werror "
                          "-fsyntax-only $m.c && ";
                      prove_step(cases, "c",
                                 "gcc -std=c99" + strict + "clang -std=c2x" + strict +
                                     "g++ -fsyntax-only -x c++ $m.h");
                    }});
const Registered cpp({.option = "cpp", .random_programs = 6, .prove = [](const Cases& cases) {
                        prove_step(cases, "cpp",
                                   "clang++ -std=c++20 -Wall -Wextra -Wpedantic -Werror "
                                   "-fsyntax-only *_bench.cpp");
                      }});
const Registered systemc({.option = "systemc", .random_programs = 2, .prove = prove_systemc});
const Registered csharp({.option = "csharp", .open = false, .prove = prove_csharp});
constexpr const char* synthesised =
    "ghdl --synth --std=93c $m.vhdl -e >net.vhdl 2>log || cat log >&2";
const Registered vhdl({.option = "vhdl", .random_programs = 10, .prove = [](const Cases& cases) {
                         prove_circuit(cases, "vhdl", synthesised);
                       }});
const Registered altera({.option = "vhdl-altera",
                         .random_programs = 1,
                         .prove = [](const Cases& cases) {
                           prove_circuit(cases, "vhdl-altera", synthesised);
                         }});
const Registered verilog(
    {.option = "verilog", .random_programs = 10, .prove = [](const Cases& cases) {
       prove_circuit(
           cases, "verilog",
           "verilator --lint-only -Wall -Wno-SYMRSVDWORD $m.sv && yosys -q -p "
           "\"read_verilog -sv $m.sv; "
           "synth -flatten; check -assert; delete -input w:rst; setundef -zero "
           "-undriven; opt -full; formalff -clk2ff; opt -full; simplemap; delete "
           "-input w:clk; write_blif "
           "y.blif\" && "
           "for n in $m y; do berkeley-abc -q \"read_blif $n.blif; short_names; "
           "write_blif $n.short.blif\"; done && { timeout 20 berkeley-abc -q \"$(grep -q latch "
           "$m.blif && echo dsec || echo cec) $m.short.blif y.short.blif\" >log; "
           // Machines of thousands of states are held by their benches alone.
           "test $? = 124 || grep -q 'are equivalent' log; }");
     }});
const Registered python({.option = "python",
                         .random_programs = 10,
                         .prove = by_its_command("python")});
const Registered javascript({.option = "javascript",
                             .random_programs = 10,
                             .prove = by_its_command("javascript")});
const Registered json({.option = "json", .random_programs = 4, .prove = by_its_command("json")});
const Registered aiger({.option = "aiger", .random_programs = 8, .prove = by_its_command("aiger")});
const Registered blif({.option = "blif", .random_programs = 8, .prove = prove_blif});

TEST(BenchTools, WhatIsNotAsAwaitedIsTold) {
  const TargetCase test = named_case("watchdog.zu");
  test.add_file("wrong.stimuli", "tick -> !bark\ntick -> bark\nkick -> !bark\n");
  for (const Runner& runner : runners()) {
    if (!runner.prove) continue;
    SCOPED_TRACE(runner.option);
    const std::string told = test.write("--bench " + runner.option + " wrong.stimuli");
    const std::string command = told.substr(told.find("run it: ") + 8);
    const std::string out =
        run_tool("! { " + command.substr(0, command.size() - 1) + "; }", test.folder(), false);
    EXPECT_TRUE(out.find("instant 2: expected bark, is absent\n") != std::string::npos &&
                out.find("instants agree") == std::string::npos)
        << out;
  }
}

TEST(BenchTools, AllAreCheckedByOneCommand) {
  const TargetCase test = named_case("watchdog.zu");
  const std::string command =
      KIVA_PROGRAMS "/tarn --check-targets " KIVA_SOURCE "/examples/watchdog/watchdog.zu";
  const auto rows = [](const std::string& table, const std::string& end) {
    long count = 0;
    for (size_t at = 0; (at = table.find(end + "\n", at)) != std::string::npos; ++at) ++count;
    return count;
  };
  const long proved = std::ranges::count_if(
      runners(), [](const Runner& runner) { return static_cast<bool>(runner.prove); });
  EXPECT_EQ(rows(run_tool(command, test.folder()), " 100  yes"), proved);
  EXPECT_EQ(rows(run_tool("PATH=/none " + command, test.folder()), " 0  not installed"), proved);
  // A module may have the name that a bench gives to what it runs.
  test.add_file("m.zu", "module m:\nInput: a;\nOutput: o;\nloop { wait a >> emit o }\nend\n");
  EXPECT_EQ(rows(run_tool(KIVA_PROGRAMS "/tarn --check-targets m.zu", test.folder()), " 100  yes"),
            proved);
  // A tool that says nothing of agreement has not agreed.
  test.add_file("python3", "#!/bin/sh\necho 1.0\n");
  EXPECT_NE(run_tool("! { chmod +x python3; PATH=$PWD:/bin " + command + "; }", test.folder())
                .find("0  no: 1.0\n"),
            std::string::npos);
}

TEST(BenchTools, TheDocumentationsExampleRunsAsItSays) {
  std::istringstream page(read_text(KIVA_SOURCE "/docs/targets.md"));
  std::string line, stimuli, command, told;
  while (std::getline(page, line) && line != "    $ cat watchdog.stimuli") {
  }
  while (std::getline(page, line) && !line.starts_with("    $ ")) stimuli += line.substr(4) + "\n";
  command = line.substr(6);
  while (std::getline(page, line) && !line.empty()) told += line.substr(4) + "\n";
  const TempDir dir;
  dir.write("watchdog.stimuli", stimuli);
  dir.write("watchdog.zu", read_text(KIVA_SOURCE "/examples/watchdog/watchdog.zu"));
  EXPECT_EQ(run_tool(KIVA_PROGRAMS "/" + command + " 2>&1", dir.path()), told);
  EXPECT_EQ(
      run_tool(told.substr(told.find("run it: ") + 8, told.rfind('\n') - told.find("run it: ") - 8),
               dir.path()),
      "4 instants agree\n");
}

/// The compiler finds the types, takes what they allow, and refuses the rest.
TEST(TypescriptTools, TakesTheTypes) {
  const std::string tsc = "tsc --strict --noEmit --target es2020 --module node16 ";
  for (const char* name : {"names.zuc", "thermostat.zuc"}) {
    const TargetCase test = named_case(name);
    SCOPED_TRACE(name);
    test.write("--javascript");
    test.add_file("thermostat_data.d.mts",
                  "export type celsius = number;\nexport type fahrenheit = number;\n");
    const std::string m = test.module()->getName();
    test.add_file("use.mts", "import * as text from \"./" + m + ".mjs\";\nconst m: text." + m +
                                 " = new text." + m +
                                 "();\nconst out: text.Outputs = m.copy().step();\nm.reset();\n");
    EXPECT_EQ(run_tool(tsc + "use.mts", test.folder()), "");
    EXPECT_EQ(
        run_tool("tsc --strict --noEmit --target es2020 --moduleResolution node " + m + ".d.ts",
                 test.folder()),
        "");
    test.add_file("wrong.mts", "import * as text from \"./" + m + ".mjs\";\nnew text." + m +
                                   "().step({no_such_input: true});\n");
    EXPECT_NE(run_tool("! " + tsc + "wrong.mts", test.folder()).find("no_such_input"),
              std::string::npos);
  }
}

/// Others come to the verdicts that proofs here come to, and the outputs are those without.
TEST(AigerTools, PropertiesAreProvedByOthers) {
  const TempDir dir;
  const std::string tarn = "'" KIVA_PROGRAMS "/tarn' -q --aiger ",
                    source = KIVA_SOURCE "/examples/";
  const auto abc = [&](const std::string& commands) {
    return run_tool("berkeley-abc -q '" + commands + "'", dir.path());
  };
  const std::string coffee =
      " --module coffee_machine '" + source + "coffee_machine/coffee_machine.zu'";
  run_tool(tarn + "-o with" + coffee, dir.path());
  run_tool("'" KIVA_PROGRAMS "/tarn' -q -o bare" + coffee + " && " + tarn + "-o without bare.zuc",
           dir.path());
  EXPECT_NE(
      abc("read_aiger with.aig; cone -s -O 5 -R 5; pdr -a").find("Proved = 5. Disproved = 0."),
      std::string::npos);
  EXPECT_NE(
      abc("read_aiger with.aig; cone -s -O 0 -R 5; write_aiger -s w.aig; dsec w.aig without.aig")
          .find("Networks are equivalent"),
      std::string::npos);
  // The ASCII form is read here.
  run_tool("'" KIVA_PROGRAMS "/tarn' -q with.aag -o back", dir.path());
  const std::string proof =
      run_tool("'" KIVA_PROGRAMS
               "/tarn' --never never_pay4_and_not_has4 --never fall_through back.zuc; test $? = 1",
               dir.path());
  EXPECT_NE(proof.find("never_pay4_and_not_has4: holds"), std::string::npos) << proof;
  EXPECT_NE(proof.find("fall_through: fails"), std::string::npos) << proof;

  const std::string lift = " '" + source + "lift/lift.zu'";
  run_tool(tarn + "--never gong --always \"not gong'\"" + lift, dir.path());
  EXPECT_NE(abc("read_aiger lift.aig; cone -s -O 5; bmc3").find("asserted in frame 2"),
            std::string::npos);
  EXPECT_NE(abc("read_aiger lift.aig; cone -s -O 6; bmc3").find("asserted in frame 3"),
            std::string::npos);
  run_tool(tarn + "--never gong --assume \"not call1\"" + lift, dir.path());
  EXPECT_NE(abc("read_aiger lift.aig; cone -s -O 5; bmc3").find("asserted in frame 3"),
            std::string::npos);
  EXPECT_NE(run_tool("! " + tarn + "--never gang" + lift + " 2>&1", dir.path())
                .find("\"gang\" is no signal of the module"),
            std::string::npos);
}

TEST(BenchTools, ValuesOfBuiltInTypes) {
  const std::vector<std::pair<std::string, std::string>> kinds = {
      {"int", "-5"},   {"byte", "200"},   {"float", "1.5"}, {"long", "5000000000"},
      {"short", "-7"}, {"string", "hey"}, {"bool", "True"}};
  // An input, an output that copies it, and a trigger for each type.
  std::string inputs, outputs, locals, types, nodes, equations, bindings, values, given, awaited;
  for (size_t i = 0; i < kinds.size(); ++i) {
    const std::string& type = kinds[i].first;
    const auto at = [&](size_t group) { return std::to_string(2 * (group * kinds.size() + i)); };
    const std::string number = std::to_string(i), in = at(0);
    inputs += "i" + number + ":" + type + " ";
    outputs += "o" + number + ":" + type + " ";
    locals += "t" + number + " ";
    types += type + ";\n";
    nodes += std::to_string(i + 1) + ": " + in + ":0:0,-1\n";
    for (size_t group : {1, 2}) {
      const long status = std::stol(at(group));
      for (int rail : {0, 1})
        equations += "1 0 " + std::to_string(status + rail) + ":" + std::to_string(i + 1) +
                     (rail == 0 ? ",1,(" : ",-1,(") + in + " )\n";
    }
    const auto pair = [&](size_t group) {
      return "(" + at(group) + ", " + std::to_string(std::stol(at(group)) + 1) + ")";
    };
    bindings += pair(2) + ": value: " + number + " clock: " + pair(1) + ";\n";
    values += number + ": %% " + std::to_string(14) + " " + pair(0) + ";\n";
    given += "i" + number + "=" + kinds[i].second + " ";
    awaited += " o" + number + "=" + kinds[i].second;
  }
  const TargetCase test("kinds.zuc",
                        "module: kinds  0 1\ninput: " + inputs + ";\noutput: " + outputs +
                            ";\nlocal: " + locals +
                            ";\nconnexion: SETkinds RESETkinds RTLkinds;\n"
                            "equation_def:\n8\n0: -1:-3:-3,1\n" +
                            nodes + "expressions:\n" + equations + "end:\nbinding:\n" + bindings +
                            "end:\nevaltable:\n" + values + "end:\ndata:\ntype:\n" + types +
                            "method:\nconstant:\nend:\n",
                        given + "->" + awaited);
  ASSERT_NE(test.module(), nullptr);
  for (const char* target : {"csharp", "python", "javascript"}) by_its_command(target)({&test});
}

TEST(VhdlTools, AModuleWithoutOutputsIsAnalysed) {
  const TargetCase quiet("quiet.zuc",
                         std::string("module: quiet  0 1\ninput: I ;\nconnexion: S R T;\n"
                                     "equation_def:\n1\n0: -1:-3:-3,1\nexpressions:\nend:\n"),
                         "I\n");
  quiet.write("--vhdl");
  run_tool("ghdl -a --std=93 quiet.vhdl", quiet.folder());
}

TEST(C, AModuleThatWasSavedHasTheInterfaceItHad) {
  for (const char* name : {"elevator", "reflex"}) {
    const TempDir direct, read;
    const std::string source = std::string(KIVA_SOURCE "/examples/") + name + "/" + name + ".zu";
    run_tool(KIVA_PROGRAMS "/tarn -q --zuc --c '" + source + "'", direct.path());
    run_tool(std::string(KIVA_PROGRAMS "/tarn -q --c -d '") + read.path().string() + "' " + name +
                 ".zuc",
             direct.path());
    const auto signals = [&](const TempDir& dir) {
      const std::string text = read_text(dir.file(std::string(name) + ".h"));
      const size_t start = text.find("#ifndef");
      return text.substr(start, text.find("_out;") - start);
    };
    EXPECT_EQ(signals(direct), signals(read));
  }
}

}  // namespace
}  // namespace kiva::test
