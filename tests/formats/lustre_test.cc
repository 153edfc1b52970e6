// The text in Lustre, read by its own rules: its traces and values are the simulator's.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "tarn/formats/target_rules.h"
#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tests/formats/expression_text.h"
#include "tests/formats/target_case.h"

namespace kiva::test {
namespace {

const std::vector<std::string> keywords{
    "and",  "assert", "bool", "const",   "current", "div", "else", "false",   "fby",   "function",
    "if",   "in",     "int",  "let",     "merge",   "mod", "node", "not",     "or",    "operator",
    "pre",  "real",   "step", "returns", "struct",  "tel", "then", "true",    "type",  "var",
    "when", "with",   "xor",  "is",      "body",    "end", "enum", "include", "quote", "package"};

struct LustreVariable {
  std::string name, type;
};

class LustreNode {
 public:
  explicit LustreNode(const std::string& text) : words_(text) {
    while (words_.accept("const")) {
      const std::string name = words_.name(keywords);
      if (words_.accept("=")) {
        equations.define(name, read_expression(words_, keywords));
      } else {
        words_.expect(":");
        externals.push_back({name, words_.next()});
      }
      words_.expect(";");
    }
    words_.expect("node");
    name = words_.name(keywords);
    inputs = read_list();
    words_.expect("returns");
    outputs = read_list();
    words_.expect(";");
    std::vector<LustreVariable> variables = outputs;
    if (words_.accept("var"))
      while (words_.peek() != "let") {
        read_declaration(variables);
        words_.expect(";");
      }
    words_.expect("let");
    while (!words_.accept("tel")) {
      const std::string left = words_.name(keywords);
      words_.expect("=");
      equations.define(left, read_expression(words_, keywords));
      words_.expect(";");
      ++definitions_;
    }
    if (!words_.at_end()) words_.fail("more");
    for (const LustreVariable& variable : variables)
      if (!equations.defines(variable.name)) throw std::runtime_error("no value: " + variable.name);
    if (definitions_ != variables.size()) throw std::runtime_error("not declared");
  }

  std::string name;
  std::vector<LustreVariable> inputs, outputs, externals;
  Equations equations;

 private:
  std::vector<LustreVariable> read_list() {
    std::vector<LustreVariable> list;
    words_.expect("(");
    while (!words_.accept(")")) {
      if (!list.empty()) words_.expect(";");
      read_declaration(list);
    }
    return list;
  }
  void read_declaration(std::vector<LustreVariable>& list) {
    const size_t first = list.size();
    do {
      list.push_back({words_.name(keywords), ""});
      if (!declared_.insert(list.back().name).second) words_.fail("declared twice");
    } while (words_.accept(","));
    words_.expect(":");
    const std::string type = words_.next();
    for (size_t i = first; i < list.size(); ++i) list[i].type = type;
  }

  Words words_;
  std::set<std::string> declared_;
  size_t definitions_ = 0;
};

double number(const std::string& text) {
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  return end != text.c_str() && *end == 0 ? value : NAN;
}

void check_lustre(const TargetCase& test) {
  SCOPED_TRACE(test.name());
  test.write("--lustre");
  LustreNode node(read_text(test.file(test.module()->getName() + ".lus")));
  // What a user supplies for the values of the thermostat.
  node.equations.functions = {{"lower_of", [](const auto& a) { return a[0] < a[1] ? a[0] : a[1]; }},
                              {"factory_setting", [](const auto&) { return 19.0; }},
                              {"to_fahrenheit", [](const auto& a) { return a[0] * 9 / 5 + 32; }}};
  std::vector<size_t> valued;
  for (size_t i = 0; i < test.inputs().size(); ++i)
    if (test.inputs()[i]->isValued(test.module())) valued.push_back(i);
  std::vector<std::vector<int>> seen;
  for (const TargetCase::Instant& instant : test.instants()) {
    std::vector<int> bits = test.rails_by_signal(instant);
    bits.push_back(0);  // of an input that is of no use
    size_t bit = 0, value = 0;
    for (const LustreVariable& input : node.inputs)
      node.equations.set(input.name, input.type == "bool"
                                         ? bits.at(bit++)
                                         : number(instant.texts[valued.at(value++)]));
    for (const LustreVariable& constant : node.externals) node.equations.set(constant.name, 25);
    for (const char* zero : {"zero_celsius", "zero_fahrenheit"}) node.equations.set(zero, 0);
    std::vector<int> row;
    for (const LustreVariable& output : node.outputs) {
      const double shown = node.equations.value(output.name);
      if (output.type == "bool") {
        row.push_back(shown != 0);
      } else if (row.back() && instant.values.back() != "--") {
        EXPECT_NEAR(shown, std::stod(instant.values.back()), 0.001);
      }
    }
    seen.push_back(test.statuses_first(row));
    node.equations.step();
  }
  test.expect_trace(seen);
}

TEST(Lustre, RunsAsTheSimulatorDoes) {
  for_each_case(true, check_lustre);
}

TEST(Lustre, RandomProgramsRunAsTheSimulatorDoes) {
  for_random_cases(6, check_lustre);
}

TEST(Lustre, ANodeWithoutInputHasOneOfNoUse) {
  const TargetCase test(
      "m.zuc",
      std::string("module: useless  0 1\noutput: O ;\nlocal: R ;\nregister:\nO R 1;"
                  "\nconnexion: S T U;\nequation_def:\n2\n0: -1:-3:-3,1\n1: 2:0:0,-1\n"
                  "expressions:\n0 0 0:1,-1,(2 )\nend:\n"),
      "\n\n\n");
  check_lustre(test);
  const std::string text = read_text(test.file("useless.lus"));
  EXPECT_NE(text.find("(useless : bool)"), std::string::npos) << text;
}

TEST(Lustre, AKeywordIsNoNameForData) {
  const TargetCase test = named_case("toggle.zuc");
  Compilation::target_rules() = TargetRules::working();
  Compilation::constantTable().addConstant(make_kept<ConstantDecl>("int", "node", nullptr));
  std::ostringstream out;
  EXPECT_THROW(test.module()->LUSTRE_put(out, 0), IllegalOperationException);
  Compilation::target_rules() = TargetRules::told();
  Compilation::GDataConstantTable() = nullptr;
}

TEST(Lustre, ZeroAndOperatorsAreTheLanguages) {
  EXPECT_EQ(zero_lustre("bool"), "false");
  EXPECT_EQ(zero_lustre("int"), "0");
  EXPECT_EQ(zero_lustre("real"), "0.0");
  EXPECT_EQ(zero_lustre("length"), "zero_length");
  EXPECT_EQ(DataExpr::LUSTRE_opname(DataExpr::Not), "not");
  EXPECT_EQ(DataExpr::LUSTRE_opname(DataExpr::Neq), " <> ");
  EXPECT_ANY_THROW(DataExpr::LUSTRE_opname(DataExpr::Supe + 1));
  DataTypeTable types;
  types.addType("length");
  std::ostringstream out;
  types.LUSTRE_put(out);
  EXPECT_EQ(out.str(), "const length zero_length;\n");
}

}  // namespace
}  // namespace kiva::test
