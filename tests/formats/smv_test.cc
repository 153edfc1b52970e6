// The text in SMV, read by its own rules: its traces are the simulator's.

#include <gtest/gtest.h>

#include "tests/formats/expression_text.h"
#include "tests/formats/target_case.h"

namespace kiva::test {
namespace {

const std::vector<std::string> keywords{
    "MODULE", "VAR",  "ASSIGN", "DEFINE",  "INIT",  "TRANS", "SPEC", "TRUE",  "FALSE", "boolean",
    "init",   "next", "in",     "process", "array", "of",    "self", "case",  "esac",  "union",
    "mod",    "xor",  "A",      "E",       "F",     "G",     "H",    "O",     "S",     "T",
    "U",      "V",    "X",      "Y",       "Z",     "AF",    "AG",   "AX",    "EF",    "EG",
    "EX",     "word", "bool",   "min",     "max",   "abs",   "main", "signed"};

/// A main module that runs one instance of another.
class SmvModel {
 public:
  explicit SmvModel(const std::string& text) : words_(text, "$#") {
    while (!words_.at_end()) read_module();
    if (instances_ != 1) throw std::runtime_error("no instance in main");
    for (const auto& [variable, value] : state_)
      if (!next_.contains(variable)) throw std::runtime_error("never moves: " + variable);
  }
  const std::vector<std::string>& inputs() const { return inputs_; }
  /// One instant: takes the inputs' bits, and gives those of the named definitions.
  std::vector<int> step(const std::vector<int>& bits, const std::vector<std::string>& outputs) {
    for (size_t i = 0; i < inputs_.size(); ++i) definitions_.set(parameters_[i], bits.at(i));
    for (const auto& [variable, value] : state_) definitions_.set(variable, value);
    std::vector<int> row;
    for (const std::string& output : outputs) row.push_back(definitions_.value(output) != 0);
    const Meaning meaning{[this](const std::string& name) { return definitions_.value(name); }, {}};
    std::map<std::string, double> after;
    for (const auto& [variable, tree] : next_) after[variable] = evaluate(*tree, meaning);
    definitions_.step();
    state_ = after;
    return row;
  }

 private:
  void read_module() {
    words_.expect("MODULE");
    const bool is_main = words_.accept("main");
    if (!is_main) module_ = words_.name(keywords);
    if (words_.accept("(")) parameters_ = read_names();
    std::string section;
    while (!words_.at_end() && words_.peek() != "MODULE") {
      for (const char* heading : {"VAR", "ASSIGN", "DEFINE"})
        if (words_.accept(heading)) section = heading;
      if (words_.at_end() || words_.peek() == "MODULE") break;
      if (section == "VAR") {
        is_main ? read_main_variable() : read_variable();
      } else if (section == "ASSIGN") {
        is_main ? read_free_input() : read_assignment();
      } else {
        const std::string name = words_.name(keywords);
        declare(name);
        words_.expect(":=");
        definitions_.define(name, read_expression(words_, keywords));
      }
      words_.expect(";");
    }
    if (is_main && free_ != inputs_.size()) words_.fail("inputs that are not free");
  }
  std::vector<std::string> read_names() {
    std::vector<std::string> names;
    while (!words_.accept(")")) {
      if (!names.empty()) words_.expect(",");
      names.push_back(words_.name(keywords));
    }
    return names;
  }
  void declare(const std::string& name) {
    if (declared_.empty()) declared_.insert(parameters_.begin(), parameters_.end());
    if (!declared_.insert(name).second) words_.fail("declared twice: " + name);
  }
  void read_variable() {
    const std::string name = words_.name(keywords);
    declare(name);
    state_[name] = 0;
    words_.expect(":");
    words_.expect("boolean");
  }
  void read_main_variable() {
    const std::string name = words_.name(keywords);
    words_.expect(":");
    if (words_.accept("boolean")) {
      inputs_.push_back(name);
      return;
    }
    ++instances_;
    words_.expect(module_);
    words_.expect("(");
    if (name != "m" + module_ || read_names() != inputs_ || parameters_.size() != inputs_.size())
      words_.fail("no instance");
  }
  void read_free_input() {
    if (words_.name(keywords) != inputs_.at(free_++)) words_.fail("no input in order");
    for (const char* word : {":=", "{", "FALSE", ",", "TRUE", "}"}) words_.expect(word);
  }
  void read_assignment() {
    const std::string what = words_.next();
    words_.expect("(");
    const std::string name = words_.name(keywords);
    if (!state_.contains(name)) words_.fail("no variable");
    words_.expect(")");
    words_.expect(":=");
    Tree tree = read_expression(words_, keywords);
    if (what == "init") {
      state_[name] = evaluate(*tree, {});
    } else if (what != "next" || !next_.emplace(name, std::move(tree)).second) {
      words_.fail("no assignment");
    }
  }

  Words words_;
  std::string module_;
  std::vector<std::string> parameters_, inputs_;
  std::set<std::string> declared_;
  std::map<std::string, double> state_;
  std::map<std::string, Tree> next_;
  Equations definitions_;
  size_t free_ = 0;
  int instances_ = 0;
};

/// Runs the text of `test` over the instants of `expected`.
void check_trace(const TargetCase& test, const TargetCase& expected) {
  SCOPED_TRACE(test.name());
  const auto changed = written_names(test.write("--smv"));
  const auto written = [&](const std::string& name) {
    return changed.contains(name) ? changed.at(name) : name;
  };
  SmvModel model(read_text(test.file(test.module()->getName() + ".smv")));
  std::vector<std::string> outputs;
  for (const Signal* output : test.outputs()) outputs.push_back(written(output->getOriginalName()));
  const size_t inputs = expected.inputs().size();
  std::vector<std::vector<int>> seen;
  for (const TargetCase::Instant& instant : expected.instants()) {
    std::vector<int> bits = expected.input_bits(instant);
    for (size_t i = inputs; i < model.inputs().size(); ++i)
      bits.push_back(instant.locals.at(model.inputs()[i].substr(4)));  // v_s_cold, v_s_hot
    seen.push_back(model.step(bits, outputs));
  }
  expected.expect_trace(seen);
}

void check_smv(const TargetCase& test) {
  check_trace(test, test);
}

TEST(Smv, RunsAsTheSimulatorDoes) {
  for_each_case(false, check_smv);
}

TEST(Smv, RandomProgramsRunAsTheSimulatorDoes) {
  for_random_cases(6, check_smv);
}

TEST(Smv, AnOpenModuleRunsAsItDoesOnceFinalised) {
  const TargetCase open = named_case("open.zuc");
  open.write("--smv --lustre");
  EXPECT_NE(read_text(open.file("open.lus")).find("_s_SETopen: bool"), std::string::npos)
      << "the other text has to come first";
  TargetCase closed = named_case("open.zuc");
  Module::OutputDir() = std::filesystem::path(closed.file("")).parent_path();
  Module::OutputFile() = "closed";
  closed.module()->finalize(0);
  closed.module()->save();
  Module::OutputDir() = ".";
  Module::OutputFile() = "";
  closed.add_file("closed.stimuli", "\nI\n\nI\nI\n");
  check_trace(open, TargetCase(closed.file("closed.zuc"), closed.file("closed.stimuli")));
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
    check_smv(test);
  }
}

}  // namespace
}  // namespace kiva::test
