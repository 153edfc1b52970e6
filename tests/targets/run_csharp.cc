// C#: all components of a run are compiled into one program with a stand-in of the framework's
// classes.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/targets/runner.h"

namespace kiva::test {
namespace {

/// Events are separated by blanks, each a name, or a name, "=" and a value; of an event that is
/// fired, whether it is present, and the value.
constexpr const char* framework = R"(using System;
using System.Collections.Generic;
namespace Vanto.Beans {
  public class BeanAttribute : Attribute { public string Category; }
}
namespace Vanto.Util {
  public class MyEvent {
    public string nameEvt, evtValeur = "", present = "";
    public MyEvent(string name, string state) { nameEvt = name; present = state; }
    public MyEvent(string name, string type, string value, string state) : this(name, state) {
      evtValeur = value;
    }
  }
  public class GrammaireA {
    public List<MyEvent> deserialize(string s) {
      var list = new List<MyEvent>();
      foreach (string word in s.Split(new char[] {' '}, StringSplitOptions.RemoveEmptyEntries)) {
        int at = word.IndexOf('=');
        var e = new MyEvent(at < 0 ? word : word.Substring(0, at), "True");
        if (at >= 0) e.evtValeur = word.Substring(at + 1);
        list.Add(e);
      }
      return list;
    }
    public string serialize(List<MyEvent> events) {
      string bits = "", values = "";
      foreach (MyEvent e in events) {
        bits += e.present == "True" ? "1" : "0";
        if (e.evtValeur != "") values += " " + e.evtValeur;
      }
      return bits + values;
    }
  }
  public class Logger { public static void Info(string text) { } }
}
)";

/// What a user writes for the values of the thermostat.
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

std::string events_of(const TargetCase& test, const TargetCase::Instant& instant) {
  std::string events;
  for (size_t i = 0; i < test.inputs().size(); ++i) {
    if (pair_of(instant.inputs[i]).status == 0) continue;
    events += test.inputs()[i]->getOriginalName();
    if (instant.texts[i] != "--") events += "=" + instant.texts[i];
    events += " ";
  }
  return events;
}

/// The components of all cases in one program, which prints a line between two.
std::vector<Seen> run_csharp(const Cases& cases) {
  const TempDir dir;
  dir.write("framework.cs", framework);
  std::string runs;
  for (size_t n = 0; n < cases.size(); ++n) {
    const TargetCase& test = *cases[n];
    test.write("--csharp");
    std::string text = read_text(test.file(test.module()->getName() + ".cs"));
    const std::string head = "public partial class ";
    const size_t start = text.find(head) + head.size();
    const std::string name = text.substr(start, text.find('\n', start) - start);
    if (name == "thermostat") dir.write("part.cs", thermostat_part);
    dir.write(name + ".cs", text);
    runs += "    { var m = new GenEntree." + name + "(); m.SendEventList += Console.WriteLine; m." +
            name + "_reset_automaton();\n";
    for (const TargetCase::Instant& instant : test.instants())
      runs += "    m." + name + "_automaton(\"" + events_of(test, instant) + "\");\n";
    runs += "    Console.WriteLine(\"end\"); }\n";
  }
  dir.write("run.cs", "using System;\nclass Run {\n  static void Main() {\n" + runs + "  }\n}\n");
  run_tool("mcs -warnaserror -out:run.exe *.cs", dir.path());
  std::istringstream lines(run_tool("LC_ALL=C mono run.exe", dir.path()));
  std::vector<Seen> seen;
  std::string trace;
  for (std::string line; std::getline(lines, line);) {
    if (line != "end") {
      trace += line + '\n';
      continue;
    }
    seen.push_back(read_seen(trace));
    trace.clear();
  }
  return seen;
}

const Registered csharp({.option = "csharp", .open = false, .run = run_csharp});

TEST(CSharpTools, ValuesOfBuiltInTypes) {
  const std::vector<std::pair<std::string, std::string>> kinds = {
      {"int", "-5"},   {"byte", "200"},   {"float", "1.5"}, {"long", "5000000000"},
      {"short", "-7"}, {"string", "hey"}, {"bool", "True"}};
  // An input, an output that copies it, and a trigger for each type.
  std::string inputs, outputs, locals, types, nodes, equations, bindings, values, events, want;
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
    events += "i" + number + "=" + kinds[i].second + " ";
    want += " " + kinds[i].second;
  }
  const TargetCase test("kinds.zuc",
                        "module: kinds  0 1\ninput: " + inputs + ";\noutput: " + outputs +
                            ";\nlocal: " + locals +
                            ";\nconnexion: SETkinds RESETkinds RTLkinds;\n"
                            "equation_def:\n8\n0: -1:-3:-3,1\n" +
                            nodes + "expressions:\n" + equations + "end:\nbinding:\n" + bindings +
                            "end:\nevaltable:\n" + values + "end:\ndata:\ntype:\n" + types +
                            "method:\nconstant:\nend:\n",
                        "");
  ASSERT_NE(test.module(), nullptr);
  test.write("--csharp");
  test.add_file("framework.cs", framework);
  test.add_file("run.cs",
                "class Run { static void Main() {\n  var m = new GenEntree.kinds();\n"
                "  m.SendEventList += System.Console.WriteLine;\n  m.kinds_automaton(\"" +
                    events + "\");\n} }\n");
  run_tool("mcs -warnaserror -out:run.exe *.cs", test.folder());
  EXPECT_EQ(run_tool("LC_ALL=C mono run.exe", test.folder()), "1111111" + want + "\n");
}

}  // namespace
}  // namespace kiva::test
