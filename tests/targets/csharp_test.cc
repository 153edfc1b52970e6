// The components, all compiled into one program with a stand-in of the framework's classes, and
// run: the trace of each is the simulator's.

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <sstream>

#include "tests/targets/target_case.h"

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

/// What is left of a case for the comparison.
struct Expected {
  std::vector<std::vector<int>> rows;
  std::vector<std::string> values;  ///< of the displayed value by instant; empty for none
};

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

/// Cases that become one program.
class Batch {
 public:
  /// Writes the component and what to do with it; gives what tarn told.
  std::string add(const TargetCase& test) {
    const std::string told = test.write("--csharp");
    const std::string text = read_text(test.file(test.module()->getName() + ".cs"));
    const std::string head = "public partial class ";
    const size_t start = text.find(head) + head.size();
    const std::string name = text.substr(start, text.find('\n', start) - start);
    if (expected_.contains(name)) return told;  // a module that several examples share
    dir_.write(name + ".cs", text);
    runs_ += "    Console.WriteLine(\"class " + name + "\");\n    { var m = new GenEntree." + name +
             "();\n    m.SendEventList += Console.WriteLine; m." + name + "_reset_automaton();\n";
    for (const TargetCase::Instant& instant : test.instants()) {
      runs_ += "    m." + name + "_automaton(\"" + events_of(test, instant) + "\");\n";
      expected_[name].rows.push_back(test.output_bits(instant));
      expected_[name].values.push_back(instant.values.size() > 1 ? instant.values[1] : "");
    }
    runs_ += "    }\n";
    return told;
  }

  void run() const {
    dir_.write("framework.cs", framework);
    if (expected_.contains("thermostat")) dir_.write("part.cs", thermostat_part);
    dir_.write("run.cs",
               "using System;\nclass Run {\n  static void Main() {\n" + runs_ + "  }\n}\n");
    run_tool("mcs -warnaserror -out:run.exe *.cs", dir_.path());
    std::istringstream lines(run_tool("mono run.exe", dir_.path()));
    std::map<std::string, std::vector<std::string>> seen;
    std::string name;
    for (std::string line; std::getline(lines, line);)
      if (line.starts_with("class "))
        name = line.substr(6);
      else
        seen[name].push_back(line);
    for (const auto& [module, want] : expected_) compare(module, seen[module], want);
  }

 private:
  static void compare(const std::string& name, const std::vector<std::string>& lines,
                      const Expected& want) {
    ASSERT_EQ(lines.size(), want.rows.size()) << name;
    for (size_t i = 0; i < lines.size(); ++i) {
      const size_t end = std::min(lines[i].find(' '), lines[i].size());
      std::vector<int> row;
      for (char c : lines[i].substr(0, end)) row.push_back(c - '0');
      ASSERT_EQ(row, want.rows[i]) << name << ", instant " << i + 1;
      const bool displayed = !row.empty() && row.back() == 1;
      if (displayed && !want.values[i].empty() && want.values[i] != "--") {
        EXPECT_NEAR(std::strtod(lines[i].c_str() + end, nullptr), std::stod(want.values[i]), 0.001);
      }
    }
  }

  TempDir dir_;
  std::map<std::string, Expected> expected_;  // by class
  std::string runs_;
};

TEST(CSharpTools, RunsAsTheSimulatorDoes) {
  Batch batch;
  std::string told;
  for_each_case(false, [&](const TargetCase& test) { told += batch.add(test); });
  batch.run();
  for (const char* line : {"C#: signal \"in\" is written as \"in_1\": a keyword there\n",
                           "C#: signal \"A.b\" is written as \"A_b\": no name there\n",
                           "C#: signal \"2x\" is written as \"v_2x\": no name there\n"})
    EXPECT_NE(told.find(line), std::string::npos) << told;
}

TEST(CSharpTools, RandomProgramsRunAsTheSimulatorDoes) {
  for_random_cases(6, [](const TargetCase& test) {
    Batch batch;
    batch.add(test);
    batch.run();
  });
}

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
  const auto folder = std::filesystem::path(test.file("")).parent_path();
  run_tool("mcs -warnaserror -out:run.exe *.cs", folder);
  EXPECT_EQ(run_tool("LC_ALL=C mono run.exe", folder), "1111111" + want + "\n");
}

}  // namespace
}  // namespace kiva::test
