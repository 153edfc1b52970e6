// The text in Esterel, read by its own rules: its traces are the simulator's.

#include <gtest/gtest.h>

#include <sstream>

#include "tarn/formats/target_rules.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tests/formats/expression_text.h"
#include "tests/formats/target_case.h"
#include "tests/support/process_end.h"

namespace kiva::test {
namespace {

const std::vector<std::string> keywords{
    "abort",   "and",  "await",  "call",    "case",    "constant", "do",   "each",   "else",
    "emit",    "end",  "every",  "exit",    "false",   "function", "halt", "if",     "in",
    "input",   "loop", "mod",    "module",  "not",     "nothing",  "or",   "output", "pause",
    "present", "run",  "signal", "suspend", "sustain", "then",     "tick", "trap",   "true",
    "type",    "upto", "var",    "when",    "with",    "my_pre"};

/// A module of emissions under conditions and of delays. A signal is present when one of its
/// emissions is made; each condition reads the presence of signals.
class EsterelModule {
 public:
  explicit EsterelModule(const std::string& text) : words_(text) {
    words_.expect("module");
    name_ = words_.name({});
    words_.expect(":");
    if (words_.accept("input")) inputs_ = declared(";");
    if (words_.accept("output")) outputs_ = declared(";");
    const bool locals = words_.accept("signal");
    if (locals) declared("in");
    parallel(false);
    if (locals) end("signal");
    end("module");
    if (!words_.at_end()) words_.fail("more");
  }
  const std::vector<std::string>& inputs() const { return inputs_; }

  std::vector<int> step(const std::vector<int>& bits) {
    for (const std::string& signal : signals_) present_.erase(signal);
    for (size_t i = 0; i < inputs_.size(); ++i) present_[inputs_[i]] = bits.at(i) != 0;
    std::vector<int> row;
    for (const std::string& output : outputs_) row.push_back(is_present(output));
    std::set<std::string> after;
    for (const auto& [from, to] : delays_)
      if (is_present(from)) after.insert(to);
    delayed_ = after;
    first_ = false;
    return row;
  }

 private:
  struct Emission {
    std::shared_ptr<ExpressionTree> condition;  ///< null: none
    bool first_only;
  };

  std::vector<std::string> declared(const std::string& close) {
    std::vector<std::string> names;
    do {
      names.push_back(words_.name(keywords));
      if (!signals_.insert(names.back()).second) words_.fail("declared twice");
    } while (words_.accept(","));
    words_.expect(close);
    return names;
  }
  std::string signal() {
    const std::string name = words_.name(keywords);
    if (!signals_.contains(name)) words_.fail("not declared: " + name);
    return name;
  }
  void end(const std::string& what) {
    words_.expect("end");
    words_.expect(what);
  }
  void parallel(bool in_loop) {
    do statement(in_loop);
    while (words_.accept("||"));
  }
  void statement(bool in_loop) {
    if (words_.accept("[")) {
      parallel(in_loop);
      words_.expect("]");
    } else if (words_.accept("loop")) {
      parallel(true);
      words_.expect("each");
      words_.expect("tick");
    } else if (words_.accept("emit")) {
      emissions_[signal()].push_back({nullptr, !in_loop});
    } else if (words_.accept("present")) {
      words_.expect("[");
      std::shared_ptr<ExpressionTree> condition = read_expression(words_, keywords);
      for (const char* word : {"]", "then", "emit"}) words_.expect(word);
      emissions_[signal()].push_back({condition, !in_loop});
      end("present");
    } else if (words_.accept("run")) {
      for (const char* word : {"my_pre", "[", "signal"}) words_.expect(word);
      const std::string from = signal();
      for (const char* word : {"/", "S", ","}) words_.expect(word);
      delays_.emplace_back(from, signal());
      for (const char* word : {"/", "preS", "]"}) words_.expect(word);
    } else if (!words_.accept("nothing")) {
      words_.fail("no statement");
    }
  }
  bool is_present(const std::string& name) {
    if (!signals_.contains(name)) throw std::runtime_error("not declared: " + name);
    if (const auto at = present_.find(name); at != present_.end()) return at->second;
    if (!open_.insert(name).second) throw std::runtime_error("a cycle through " + name);
    const Meaning meaning{[this](const std::string& n) { return is_present(n); }, {}};
    bool emitted = delayed_.contains(name);
    for (const Emission& emission : emissions_[name])
      if (!emission.first_only || first_)
        emitted |= emission.condition == nullptr || evaluate(*emission.condition, meaning) != 0;
    open_.erase(name);
    return present_[name] = emitted;
  }

  Words words_;
  std::string name_;
  std::vector<std::string> inputs_, outputs_;
  std::set<std::string> signals_, delayed_, open_;
  std::map<std::string, std::vector<Emission>> emissions_;
  std::vector<std::pair<std::string, std::string>> delays_;
  std::map<std::string, bool> present_;
  bool first_ = true;
};

void check_esterel(const TargetCase& test) {
  SCOPED_TRACE(test.name());
  test.write("--esterel");
  EsterelModule module(read_text(test.file(test.module()->getName() + ".strl")));
  std::vector<std::vector<int>> seen;
  for (const TargetCase::Instant& instant : test.instants()) {
    std::vector<int> bits = test.rails_by_signal(instant);
    while (bits.size() < module.inputs().size())
      bits.push_back(instant.locals.at(module.inputs()[bits.size()].substr(4)));  // v_s_cold
    seen.push_back(test.statuses_first(module.step(bits)));
  }
  test.expect_trace(seen);
}

TEST(Esterel, RunsAsTheSimulatorDoes) {
  for_each_case(true, check_esterel);
}

/// Whether an equation has more products than the text may hold, which refuses the module.
bool has_a_sum_too_large(const TargetCase& test) {
  Compilation::target_rules() = TargetRules::working();
  std::ostringstream out;
  bool refused = false;
  run_captured([&] {
    try {
      test.module()->ESTEREL_put(out, 0);
    } catch (const IllegalOperationException& exception) {
      refused = exception.first().starts_with("too many products");
    }
  });
  Compilation::target_rules() = TargetRules::told();
  return refused;
}

TEST(Esterel, RandomProgramsRunAsTheSimulatorDoes) {
  for_random_cases(6, [](const TargetCase& test) {
    if (!has_a_sum_too_large(test)) check_esterel(test);
  });
}

}  // namespace
}  // namespace kiva::test
