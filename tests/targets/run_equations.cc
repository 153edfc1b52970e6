// Lustre, SMV and Esterel, for which there is no tool here, and documents: the texts are read by
// their own rules into named equations, with "->" and "pre" for what a register is, and evaluated.

#include <gtest/gtest.h>

#include <cmath>
#include <regex>
#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/targets/frame/target_rules.h"
#include "tests/support/process_end.h"
#include "tests/targets/expression_text.h"
#include "tests/targets/runner.h"

namespace kiva::test {
namespace {

struct Variable {
  std::string name, type;
};

/// What all readers find.
struct EquationText {
  std::vector<Variable> inputs, outputs, externals;
  Equations equations;
};

/// Reads a text; throws where it breaks the language's rules.
class TextReader {
 public:
  TextReader(const std::string& text, const std::string& name_signs,
             const std::vector<std::string>& keywords)
      : words(text, name_signs), keywords(keywords) {}

 protected:
  std::string new_name() {
    const std::string name = words.name(keywords);
    if (!declared.insert(name).second) words.fail("declared twice: " + name);
    return name;
  }
  std::string known_name() {
    const std::string name = words.name(keywords);
    if (!declared.contains(name)) words.fail("not declared: " + name);
    return name;
  }
  Expression expression() { return read_expression(words, keywords); }
  void expect_all(const std::vector<std::string>& all) {
    for (const std::string& word : all) words.expect(word);
  }
  void end() {
    if (!words.at_end()) words.fail("more");
    for (const std::string& name : declared)
      if (!free.contains(name) && !result.equations.defines(name)) words.fail("no value: " + name);
  }

  Words words;
  const std::vector<std::string>& keywords;
  std::set<std::string> declared, free;  ///< names, and those of them that nothing defines
  EquationText result;
};

const std::vector<std::string> lustre_keywords{
    "and",  "assert", "bool", "const",   "current", "div", "else", "false",   "fby",   "function",
    "if",   "in",     "int",  "let",     "merge",   "mod", "node", "not",     "or",    "operator",
    "pre",  "real",   "step", "returns", "struct",  "tel", "then", "true",    "type",  "var",
    "when", "with",   "xor",  "is",      "body",    "end", "enum", "include", "quote", "package"};

class LustreReader : TextReader {
 public:
  explicit LustreReader(const std::string& text) : TextReader(text, "", lustre_keywords) {}

  EquationText read() {
    while (words.accept("const")) {
      const std::string name = words.name(keywords);
      if (words.accept("=")) {
        result.equations.define(name, expression());
      } else {
        words.expect(":");
        result.externals.push_back({name, words.next()});
      }
      words.expect(";");
    }
    words.expect("node");
    words.name(keywords);
    read_list(result.inputs);
    for (const Variable& input : result.inputs) free.insert(input.name);
    words.expect("returns");
    read_list(result.outputs);
    words.expect(";");
    if (words.accept("var"))
      for (std::vector<Variable> locals; words.peek() != "let"; words.expect(";"))
        read_declaration(locals);
    words.expect("let");
    while (!words.accept("tel")) {
      const std::string left = known_name();
      if (free.contains(left)) words.fail("defines an input");
      words.expect("=");
      result.equations.define(left, expression());
      words.expect(";");
    }
    end();
    return std::move(result);
  }

 private:
  void read_list(std::vector<Variable>& list) {
    words.expect("(");
    while (!words.accept(")")) {
      if (!list.empty()) words.expect(";");
      read_declaration(list);
    }
  }
  void read_declaration(std::vector<Variable>& list) {
    const size_t first = list.size();
    do list.push_back({new_name(), ""});
    while (words.accept(","));
    words.expect(":");
    const std::string type = words.next();
    for (size_t i = first; i < list.size(); ++i) list[i].type = type;
  }
};

const std::vector<std::string> smv_keywords{
    "MODULE", "VAR",  "ASSIGN", "DEFINE",  "INIT",  "TRANS", "SPEC", "TRUE",  "FALSE", "boolean",
    "init",   "next", "in",     "process", "array", "of",    "self", "case",  "esac",  "union",
    "mod",    "xor",  "A",      "E",       "F",     "G",     "H",    "O",     "S",     "T",
    "U",      "V",    "X",      "Y",       "Z",     "AF",    "AG",   "AX",    "EF",    "EG",
    "EX",     "word", "bool",   "min",     "max",   "abs",   "main", "signed"};

/// One module, and a main module that runs an instance of it with free inputs.
class SmvReader : TextReader {
 public:
  explicit SmvReader(const std::string& text) : TextReader(text, "$#", smv_keywords) {}

  EquationText read() {
    words.expect("MODULE");
    const std::string module = words.name(keywords);
    const std::vector<std::string> parameters = read_names();
    for (const std::string& name : parameters) {
      if (!free.insert(name).second || !declared.insert(name).second) words.fail("twice: " + name);
      result.inputs.push_back({name, "bool"});
    }
    std::map<std::string, Expression> first;
    std::string section;
    while (words.peek() != "MODULE") {
      for (const char* heading : {"VAR", "ASSIGN", "DEFINE"})
        if (words.accept(heading)) section = heading;
      if (words.peek() == "MODULE") break;
      if (section == "VAR") {
        new_name();
        expect_all({":", "boolean"});
      } else if (section == "DEFINE") {
        const std::string name = new_name();
        words.expect(":=");
        result.equations.define(name, expression());
      } else {
        read_assignment(first);
      }
      words.expect(";");
    }
    expect_all({"MODULE", "main", "VAR"});
    for (const std::string& name : parameters) expect_all({name, ":", "boolean", ";"});
    expect_all({"m" + module, ":", module});
    if (read_names() != parameters) words.fail("no instance");
    words.expect(";");
    if (!parameters.empty()) words.expect("ASSIGN");
    for (const std::string& name : parameters)
      expect_all({name, ":=", "{", "FALSE", ",", "TRUE", "}", ";"});
    end();
    if (!first.empty()) words.fail("never moves: " + first.begin()->first);
    return std::move(result);
  }

 private:
  std::vector<std::string> read_names() {
    std::vector<std::string> names;
    words.expect("(");
    while (!words.accept(")")) {
      if (!names.empty()) words.expect(",");
      names.push_back(words.name(keywords));
    }
    return names;
  }
  void read_assignment(std::map<std::string, Expression>& first) {
    const std::string what = words.next();
    words.expect("(");
    const std::string name = known_name();
    expect_all({")", ":="});
    Expression value = expression();
    if (what == "init" && first.emplace(name, value).second) return;
    if (what != "next" || !first.contains(name)) words.fail("no assignment");
    // The next value has a name, so that it is known when it becomes the value.
    result.equations.define("next " + name, value);
    result.equations.define(name, delayed(first.at(name), "next " + name));
    first.erase(name);
  }
};

const std::vector<std::string> esterel_keywords{
    "abort",   "and",  "await",  "call",    "case",    "constant", "do",   "each",   "else",
    "emit",    "end",  "every",  "exit",    "false",   "function", "halt", "if",     "in",
    "input",   "loop", "mod",    "module",  "not",     "nothing",  "or",   "output", "pause",
    "present", "run",  "signal", "suspend", "sustain", "then",     "tick", "trap",   "true",
    "type",    "upto", "var",    "when",    "with",    "my_pre"};

/// Emissions under conditions and delays. A signal is present when one of its emissions is made.
class EsterelReader : TextReader {
 public:
  explicit EsterelReader(const std::string& text) : TextReader(text, "", esterel_keywords) {}

  EquationText read() {
    words.expect("module");
    words.name(keywords);
    words.expect(":");
    if (words.accept("input")) read_names(&result.inputs, ";");
    for (const Variable& input : result.inputs) free.insert(input.name);
    if (words.accept("output")) read_names(&result.outputs, ";");
    const bool locals = words.accept("signal");
    if (locals) read_names(nullptr, "in");
    parallel(false);
    if (locals) expect_all({"end", "signal"});
    expect_all({"end", "module"});
    for (const std::string& name : declared) {
      if (free.contains(name)) continue;
      result.equations.define(name, [emissions = emissions_[name]](const Meaning& m) {
        size_t made = 0;
        for (const Expression& emission : emissions) made += emission(m) != 0 ? 1 : 0;
        return made > 0;
      });
    }
    end();
    return std::move(result);
  }

 private:
  void read_names(std::vector<Variable>* list, const std::string& close) {
    do {
      const std::string name = new_name();
      if (list != nullptr) list->push_back({name, "bool"});
    } while (words.accept(","));
    words.expect(close);
  }
  void parallel(bool in_loop) {
    do statement(in_loop);
    while (words.accept("||"));
  }
  void emit(bool in_loop, const Expression& condition) {
    words.expect("emit");
    emissions_[known_name()].push_back(
        [=](const Meaning& m) { return (in_loop || m.first_instant) && condition(m) != 0; });
  }
  void statement(bool in_loop) {
    if (words.accept("[")) {
      parallel(in_loop);
      words.expect("]");
    } else if (words.accept("loop")) {
      parallel(true);
      expect_all({"each", "tick"});
    } else if (words.peek() == "emit") {
      emit(in_loop, [](const Meaning&) { return 1; });
    } else if (words.accept("present")) {
      words.expect("[");
      const Expression condition = expression();
      expect_all({"]", "then"});
      emit(in_loop, condition);
      expect_all({"end", "present"});
    } else if (words.accept("run")) {
      expect_all({"my_pre", "[", "signal"});
      const std::string from = known_name();
      expect_all({"/", "S", ","});
      emissions_[known_name()].push_back(delayed([](const Meaning&) { return 0; }, from));
      expect_all({"/", "preS", "]"});
    } else if (!words.accept("nothing")) {
      words.fail("no statement");
    }
  }

  std::map<std::string, std::vector<Expression>> emissions_;
};

/// The tables and equations of a document, as a reader would take them. Names stand in <b>; what
/// has others is a test on data, which is given.
class HtmlReader {
 public:
  explicit HtmlReader(std::string text) : text_(std::move(text)) {
    replace("<wbr>", "");
    replace("\n", " ");
    const std::pair<const char*, const char*> signs[] = {{"\u00ac", " not "},
                                                         {"\u2227", "and"},
                                                         {"\u2228", "or"},
                                                         {"\u2295", "<>"},
                                                         {"\u2194", "="}};
    for (const auto& [sign, word] : signs) replace(sign, word);
  }

  EquationText read() {
    EquationText result;
    const std::regex row(
        "<tr><td><b>(.*?)</b></td><td>(.*?)</td>(?:<td><b>(.*?)</b></td>)?.*?</tr>");
    for_each(row, "Interface", [&](const std::smatch& cells) {
      (cells[2] == "output" ? result.outputs : result.inputs).push_back({name(cells[1]), "bool"});
    });
    for_each(row, "Registers", [&](const std::smatch& cells) {
      const double first = cells[2] == "1" ? 1 : 0;
      result.equations.define(name(cells[1]),
                              delayed([first](const Meaning&) { return first; }, name(cells[3])));
    });
    const std::regex equation("<p class=.is.><b>(.*?)</b> = (.*?)</p>");
    for_each(equation, "Equations", [&](const std::smatch& sides) {
      std::string right = sides[2];
      const std::regex bold("<b>(.*?)</b>");
      std::smatch found;
      std::string plain;
      while (std::regex_search(right, found, bold)) {
        plain += found.prefix().str() + name(found[1]);
        right = found.suffix();
      }
      plain += right;
      if (std::regex_search(plain, std::regex("&[lg]t;")))
        return result.inputs.push_back({name(sides[1]), "bool"});
      Words words(plain);
      result.equations.define(name(sides[1]), read_expression(words, none_));
    });
    return result;
  }

 private:
  void replace(const std::string& from, const std::string& to) {
    for (size_t at = 0; (at = text_.find(from, at)) != std::string::npos; at += to.size())
      text_.replace(at, from.size(), to);
  }
  /// A name of letters for whatever stands in a document.
  std::string name(const std::string& shown) {
    return "n" + std::to_string(names_.emplace(shown, names_.size()).first->second);
  }
  template <class See>
  void for_each(const std::regex& pattern, const std::string& section, See see) {
    const size_t begin = text_.find("<h2>" + section + "</h2>");
    if (begin == std::string::npos) return;
    const std::string part = text_.substr(begin, text_.find("<h2>", begin + 1) - begin);
    for (std::sregex_iterator at(part.begin(), part.end(), pattern), end; at != end; ++at) see(*at);
  }

  std::string text_;
  std::map<std::string, size_t> names_;
  const std::vector<std::string> none_;
};

double number(const std::string& text) {
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  return end != text.c_str() && *end == 0 ? value : NAN;
}

/// The instants of `expected`, which has the signals of the text's module.
Seen run(const TargetCase& expected, EquationText text) {
  Equations& equations = text.equations;
  // What a user supplies for the values of the thermostat.
  equations.functions = {{"lower_of", [](const auto& a) { return a[0] < a[1] ? a[0] : a[1]; }},
                         {"factory_setting", [](const auto&) { return 19.0; }},
                         {"to_fahrenheit", [](const auto& a) { return a[0] * 9 / 5 + 32; }}};
  Seen seen;
  for (const TargetCase::Instant& instant : expected.instants()) {
    std::vector<int> bits = expected.rails_by_signal(instant);
    for (int bit : data_tests(instant)) bits.push_back(bit);
    bits.push_back(0);  // of an input that is of no use
    std::vector<std::string> values;
    for (size_t i = 0; i < expected.inputs().size(); ++i)
      if (expected.inputs()[i]->isValued(expected.module())) values.push_back(instant.texts[i]);
    size_t bit = 0, value = 0;
    for (const Variable& input : text.inputs)
      equations.set(input.name, input.type == "bool" ? bits.at(bit++) : number(values.at(value++)));
    for (const Variable& constant : text.externals) equations.set(constant.name, 25);
    for (const char* zero : {"zero_celsius", "zero_fahrenheit"}) equations.set(zero, 0);
    seen.rows.emplace_back();
    seen.values.push_back(NAN);
    for (const Variable& output : text.outputs) {
      const double shown = equations.value(output.name);
      if (output.type == "bool")
        seen.rows.back().push_back(shown != 0);
      else
        seen.values.back() = shown;
    }
    equations.step();
  }
  return seen;
}

template <class Reader>
EquationText read(const TargetCase& test, const std::string& option, const std::string& suffix) {
  test.write(option);
  return Reader(read_text(test.file(test.module()->getName() + suffix))).read();
}

Seen run_lustre(const TargetCase& test) {
  return run(test, read<LustreReader>(test, "--lustre", ".lus"));
}

Seen run_esterel(const TargetCase& test) {
  return run(test, read<EsterelReader>(test, "--esterel", ".strl"));
}

Seen run_html(const TargetCase& test) {
  return run(test, read<HtmlReader>(test, "--html", ".html"));
}

/// Outputs are definitions, seen from outside under their written names.
Seen run_smv_as(const TargetCase& test, const TargetCase& expected) {
  const auto changed = written_names(test.write("--smv"));
  EquationText text = SmvReader(read_text(test.file(test.module()->getName() + ".smv"))).read();
  for (const Signal* output : test.outputs()) {
    const std::string name = output->getOriginalName();
    text.outputs.push_back({changed.contains(name) ? changed.at(name) : name, "bool"});
  }
  return run(expected, std::move(text));
}

Seen run_smv(const TargetCase& test) {
  return run_smv_as(test, test);
}

const Registered lustre({.option = "lustre", .tools = false, .run = one_by_one(run_lustre)});
const Registered html({.option = "html", .tools = false, .run = one_by_one(run_html)});
const Registered smv({.option = "smv", .tools = false, .open = false, .run = one_by_one(run_smv)});
const Registered esterel({.option = "esterel", .tools = false, .run = one_by_one(run_esterel)});

/// Small texts, in lines that fit, which tell where they come from.
TEST(EquationTexts, AreReadableInEachLanguage) {
  const TempDir dir;
  const std::string tarn =
      "'" KIVA_PROGRAMS "/tarn' -q --esterel --smv --lustre --blif '" KIVA_SOURCE "/examples/";
  for (const std::string name : {"stopwatch", "lift"}) {
    const std::string source = name + "/" + name + ".zu'";
    run_tool(tarn + source, dir.path(), false);
    for (const char* suffix : {".strl", ".smv", ".lus", ".blif"}) {
      SCOPED_TRACE(name + suffix);
      const std::string text = read_text(dir.file(name + suffix));
      EXPECT_LT(text.size(), name == "lift" ? 7000u : 18000u);
      std::istringstream lines(text);
      for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
      EXPECT_NE(text.find(name == "lift" ? " lift.zu:9 state" : " stopwatch.zu:12 wait button"),
                std::string::npos);
    }
    run_tool(tarn + source + " --no-comments", dir.path(), false);
    for (const char* suffix : {".strl", ".smv", ".lus", ".blif"})
      EXPECT_EQ(read_text(dir.file(name + suffix)).find(".zu:"), std::string::npos) << suffix;
  }
}

TEST(Smv, AnOpenModuleRunsAsItDoesOnceFinalised) {
  const TargetCase open = named_case("open.zuc");
  open.write("--smv --lustre");
  EXPECT_NE(read_text(open.file("open.lus")).find("_s_SETopen: bool"), std::string::npos)
      << "the other text has to come first";
  TargetCase closed = named_case("open.zuc");
  Module::OutputDir() = closed.folder();
  Module::OutputFile() = "closed";
  closed.module()->finalize(0);
  closed.module()->save();
  Module::OutputDir() = ".";
  Module::OutputFile() = "";
  closed.add_file("closed.stimuli", "\nI\n\nI\nI\n");
  const TargetCase expected(closed.file("closed.zuc"), closed.file("closed.stimuli"));
  const Seen seen = run_smv_as(open, expected);
  for (size_t i = 0; i < seen.rows.size(); ++i)
    EXPECT_EQ(seen.rows[i], expected.output_bits(expected.instants()[i]));
}

TEST(Smv, AModuleNamedMainIsWrittenUnderAnotherName) {
  for (const std::string name : {"main", "od", "U", "node_1"}) {
    const TargetCase test("m.zuc",
                          "module: " + name +
                              "  0 1\ninput: node_0 m ;\noutput: mmain mod_1 ;\nconnexion: S R T;\n"
                              "equation_def:\n3\n0: -1:-3:-3,1\n1: 0:0:0,-1\n2: 2:0:0,-1\n"
                              "expressions:\n0 0 4:1,-1,(0 )\n0 0 6:2,1,(2 )\nend:\n",
                          "node_0\nm\nnode_0 m\n\n");
    SCOPED_TRACE(name);
    const std::string told = test.write("--smv");
    EXPECT_EQ(told.find("module \"" + name) != std::string::npos, name != "node_1") << told;
    const Seen seen = run_smv(test);
    for (size_t i = 0; i < seen.rows.size(); ++i)
      EXPECT_EQ(seen.rows[i], test.output_bits(test.instants()[i]));
  }
}

TEST(Lustre, ANodeWithoutInputHasOneOfNoUse) {
  const TargetCase test(
      "m.zuc",
      std::string("module: useless  0 1\noutput: O ;\nlocal: R ;\nregister:\nO R 1;"
                  "\nconnexion: S T U;\nequation_def:\n2\n0: -1:-3:-3,1\n1: 2:0:0,-1\n"
                  "expressions:\n0 0 0:1,-1,(2 )\nend:\n"),
      "\n\n\n");
  const Seen seen = run_lustre(test);
  for (size_t i = 0; i < seen.rows.size(); ++i)
    EXPECT_EQ(seen.rows[i], test.output_bits(test.instants()[i]));
  const std::string text = read_text(test.file("useless.lus"));
  EXPECT_NE(text.find("(useless : bool)"), std::string::npos) << text;
}

}  // namespace
}  // namespace kiva::test
