// The bench of C#: lists of events in, lists of events out, through a stand-in of the framework's
// classes.

#include <ostream>

#include "tarn/targets/benches/benches.h"

namespace kiva {

namespace {

/// A list is a line an event: a name, or "name=value"; of what the component fires
/// "name|state|value".
constexpr const char* framework = R"(#if !OWN_FRAMEWORK
namespace Vanto.Beans {
  public class BeanAttribute : System.Attribute { public string Category; }
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
      foreach (string line in s.Split(new[] {'\n'}, StringSplitOptions.RemoveEmptyEntries)) {
        int at = line.IndexOf('=');
        var e = new MyEvent(at < 0 ? line : line.Substring(0, at), "True");
        if (at >= 0) e.evtValeur = line.Substring(at + 1);
        list.Add(e);
      }
      return list;
    }
    public string serialize(List<MyEvent> events) {
      string s = "";
      foreach (MyEvent e in events) s += e.nameEvt + "|" + e.present + "|" + e.evtValeur + "\n";
      return s;
    }
  }
  public class Logger { public static void Info(string text) { } }
}
#endif
)";

constexpr const char* checks = R"(  int instant = 0, faults = 0;
  string[] fired;

  // An output by its place: the bit that is awaited, and a value, "" for any.
  void Check(int place, char awaited, string value) {
    string[] parts = fired[place].Split('|');
    string is_ = parts[1] == "True" ? "present" : "absent";
    if (awaited != '-' && (is_ == "present") != (awaited == '1'))
      Tell((awaited == '1' ? "" : "not ") + parts[0], is_);
    else if (value != "" && !Same(parts[2], value)) Tell(parts[0] + "=" + value, parts[2]);
  }
  static bool Same(string a, string b) {
    double x, y;
    var any = System.Globalization.NumberStyles.Float;
    var plain = System.Globalization.CultureInfo.InvariantCulture;
    if (!double.TryParse(a, any, plain, out x) || !double.TryParse(b, any, plain, out y)) return a == b;
    return Math.Abs(x - y) <= 1e-4 * (1 + Math.Abs(x));
  }
  void Tell(string awaited, string is_) {
    ++faults;
    Console.WriteLine("instant " + instant + ": expected " + awaited + ", is " + is_);
  }
)";

std::string quoted(const std::string& text) {
  std::string all = "\"";
  for (char c : text) all += c == '"' || c == '\\' ? std::string{'\\', c} : std::string{c};
  return all + '"';
}

/// The list of an instant's events. They bear the signals' own names.
std::string events_of(const TargetText& text, const BenchInstant& instant) {
  std::string events;
  const auto add = [&](long index, const std::string& name) {
    const auto at = instant.given.find(index);
    if (at == instant.given.end() || !at->second) return;
    const auto value = instant.given_values.find(index);
    events += name + (value == instant.given_values.end() ? "" : "=" + value->second) + "\n";
  };
  for (const Signal* input : text.inputs()) add(text.status(input), input->getOriginalName());
  for (long index : text.further_inputs()) add(index, text.name(index));
  std::string escaped;
  for (char c : quoted(events)) escaped += c == '\n' ? std::string("\\n") : std::string{c};
  return escaped;
}

}  // namespace

std::string csharp_bench_run(const BenchJob& job) {
  return "mcs -out:" + job.name + ".exe " + job.name + ".cs " + job.file + " && LC_ALL=C mono " +
         job.name + ".exe";
}

void put_csharp_bench(const BenchJob& job, std::ostream& out) {
  const TargetText& text = job.text;
  const std::string module = text.module_name();
  out << bench_comment(job, "// ", "")
      << "// A stand-in of the framework's classes comes with it (-d:OWN_FRAMEWORK: without).\n"
      << "using System;\nusing System.Collections.Generic;\n"
      << framework << "\nclass " << job.name << " {\n"
      << checks << "\n  public static int Main() { return new " << job.name
      << "().Run(); }\n  int Run() {\n    var m = new GenEntree." << module
      << "();\n    m.SendEventList += s => fired = s.Split('\\n');\n    m." << module
      << "_reset_automaton();\n";
  for (const BenchInstant& instant : job.instants) {
    out << "    ++instant;\n    m." << module << "_automaton(" << events_of(text, instant)
        << ");\n";
    const std::string bits = job.awaited(instant, '-');
    for (size_t place = 0; place < bits.size(); ++place) {
      const auto value = instant.awaited_values.find(text.output_rails()[place]);
      const bool any_value = value == instant.awaited_values.end();
      if (bits[place] == '-' && any_value) continue;
      out << "    Check(" << place << ", '" << bits[place] << "', "
          << (any_value ? "\"\"" : quoted(value->second)) << ");\n";
    }
  }
  out << "    if (faults == 0) Console.WriteLine(\"" << job.instants.size()
      << " instants agree\");\n    return faults == 0 ? 0 : 1;\n  }\n}\n";
}

}  // namespace kiva
