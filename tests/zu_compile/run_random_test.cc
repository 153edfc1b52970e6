// Programs cut into modules. A run means its module's body in its own place with the names renamed,
// so a random program, and the same program with parts of it cut out into modules that it runs,
// must give one trace. The modules stand in the same file or have been compiled apart, finalised or
// not.

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

#include "tests/support/setting.h"
#include "tests/zu_compile/apart.h"
#include "tests/zu_compile/compiled.h"
#include "tests/zu_compile/program.h"

namespace kiva::test {
namespace {

using Names = std::set<std::string>;

void add_signals(const Program& p, Names& read, Names& written) {
  if (!p.signal.empty()) written.insert(p.signal);
  for (const std::string& name : p.condition.signals()) read.insert(name);
  for (const Program& part : p.parts) add_signals(part, read, written);
}

void rename(Condition& condition, const std::string& prefix) {
  if (!condition.signal.empty()) condition.signal = prefix + condition.signal;
  for (Condition& part : condition.parts) rename(part, prefix);
}

void rename(Program& p, const std::string& prefix) {
  if (!p.signal.empty()) p.signal = prefix + p.signal;
  rename(p.condition, prefix);
  for (Program& part : p.parts) rename(part, prefix);
}

std::string section(const char* keyword, const Names& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? keyword : ", ") + name;
  return text.empty() ? text : text + "; ";
}

/// Cuts a program into modules.
class Cutter {
 public:
  Cutter(std::mt19937& random, const TempDir* dir) : random_(random), dir_(dir) {}

  /// The program's text with runs in the place of what has been cut out. `outer_outputs` can be
  /// written but not read by a run; below a `repeat`, runs have no renaming.
  std::string text(const Program& whole, const Names& outer_outputs) {
    std::vector<std::string> runs;
    const Program left = cut(whole, outer_outputs, false, true, runs);
    std::string text = left.text();
    for (size_t i = runs.size(); i-- > 0;) {
      const std::string mark = "emit " + placeholder(i);
      for (size_t at; (at = text.find(mark)) != std::string::npos;)
        text.replace(at, mark.size(), runs[i]);
    }
    return text;
  }
  /// The modules cut out of the last text, for the file that runs them, and their declarations.
  const std::string& modules() const { return modules_; }
  std::string declarations() const { return declared_.empty() ? "" : "Run: " + declared_ + ";\n"; }
  int number() const { return number_; }
  /// One of them has been compiled apart, and has a dependence cycle.
  bool refused() const { return refused_; }

 private:
  static std::string placeholder(size_t i) { return "RUN" + std::to_string(i) + "_"; }

  Program cut(const Program& p, const Names& outer_outputs, bool repeated, bool root,
              std::vector<std::string>& runs) {
    Names read, written;
    add_signals(p, read, written);
    const auto clear = [&](const Names& others) {
      return std::none_of(read.begin(), read.end(),
                          [&](const std::string& name) { return others.contains(name); });
    };
    if (!root && random_() % 3 == 0 && clear(written) && clear(outer_outputs)) {
      Program mark;
      mark.kind = kind("emit");
      mark.signal = placeholder(runs.size());
      runs.emplace_back();
      const size_t place = runs.size() - 1;
      runs[place] = run_of(p, read, written, repeated);
      return mark;
    }
    Program left = p;
    for (Program& part : left.parts)
      part = cut(part, outer_outputs, repeated || p.kind == kind("repeat"), false, runs);
    return left;
  }

  std::string run_of(Program body, const Names& read, const Names& written, bool repeated) {
    const std::string name = "m" + std::to_string(number_++);
    const std::string prefix = repeated || random_() % 2 == 0 ? "" : "f_";
    rename(body, prefix);
    Names inputs, outputs;
    std::string renamings;
    for (const Names* names : {&read, &written})
      for (const std::string& actual : *names) {
        (names == &read ? inputs : outputs).insert(prefix + actual);
        renamings += (renamings.empty() ? "" : ", ") + actual + " \\ " + prefix + actual;
      }
    // What it is cut into itself stands where it does.
    Cutter inside(random_, dir_);
    inside.number_ = number_;
    const std::string inner = inside.text(body, outputs);
    number_ = inside.number_;
    refused_ = refused_ || inside.refused_;
    const std::string module = "module " + name + ": { " + section("Input: ", inputs) +
                               section("Output: ", outputs) + inside.declarations() + inner +
                               " }\n";
    if (dir_ == nullptr || inside.refused_ || random_() % 3 == 0) {
      modules_ += inside.modules() + module;
    } else {
      const bool finalised = random_() % 2 == 0;
      if (!compile_apart(*dir_, name, inside.modules() + module, finalised)) refused_ = true;
      declared_ += (declared_.empty() ? "\"" : "; \"") + dir_->path().string() + "\" : " + name;
    }
    return "run " + name + (prefix.empty() || renamings.empty() ? "" : " [" + renamings + "]");
  }

  std::mt19937& random_;
  const TempDir* dir_;
  std::string modules_;
  std::string declared_;
  int number_ = 0;
  bool refused_ = false;
};

std::vector<Stimulus> random_stimuli(std::mt19937& random) {
  std::vector<Stimulus> stimuli(12);
  for (Stimulus& stimulus : stimuli) {
    for (const std::string& name : input_names)
      if (random() % 3 == 0) stimulus.present.insert(name);
    stimulus.reset = random() % 12 == 0;
    stimulus.set = stimulus.reset;
  }
  stimuli[0] = {stimuli[0].present, true, false};
  return stimuli;
}

std::string states(const Compiled& compiled, const std::vector<Stimulus>& stimuli) {
  Instants instants(compiled);
  std::string all;
  for (const Stimulus& stimulus : stimuli) {
    instants.step(stimulus);
    for (const char* name : {"a", "b", "c", "L", "M", "RTL"}) all += instants.state(name);
    all += ' ';
  }
  return all;
}

class RandomRuns : public testing::TestWithParam<bool> {};

TEST_P(RandomRuns, MeanTheirModulesBodiesInPlace) {
  const bool files = GetParam();
  const TempDir dir;
  const long seed = setting("KIVA_SEED", 20250114);
  const long programs = setting("KIVA_PROGRAMS", files ? 150 : 600);
  std::cout << "seed " << seed << '\n';
  long compared = 0, modules = 0, apart = 0;
  for (long number = 0; number < programs && !testing::Test::HasFailure(); ++number) {
    std::mt19937 random(static_cast<unsigned>(seed + number));
    const Program program = random_program(random, 4 + static_cast<int>(random() % 20));
    const std::string in_place = module_text(program);
    Cutter cutter(random, files ? &dir : nullptr);
    const std::string body = cutter.text(program, Names(output_names.begin(), output_names.end()));
    if (cutter.number() == 0) continue;
    const std::string old_body = program.text() + "\nend\n";
    std::string with_runs = in_place;
    with_runs.replace(with_runs.rfind(old_body), old_body.size(),
                      cutter.declarations() + body + "\nend\n");
    with_runs = cutter.modules() + with_runs;

    const std::vector<Stimulus> stimuli = random_stimuli(random);
    const Compiled expected(in_place);
    const std::string expected_states = expected.ok() ? states(expected, stimuli) : "refused";
    std::string found_states = "refused", report;
    if (!cutter.refused()) {
      const Compiled found(with_runs);
      report = found.report();
      if (found.ok()) found_states = states(found, stimuli);
    }
    // A module by itself may get inputs that it never gets in place.
    if (expected.ok() && found_states == "refused") {
      EXPECT_TRUE(cutter.refused() || report.find("dependance cycle") != std::string::npos)
          << report;
      ++apart;
      continue;
    }
    EXPECT_EQ(found_states, expected_states) << "KIVA_SEED=" << seed + number << '\n'
                                             << in_place << with_runs << report;
    if (!expected.ok()) continue;
    ++compared;
    modules += cutter.number();
  }
  std::cout << compared << " programs agree, cut into " << modules << " modules more; " << apart
            << " have a module that does not settle by itself\n";
  EXPECT_LT(apart, compared / 10);
  EXPECT_GT(compared, programs / 3);
}

INSTANTIATE_TEST_SUITE_P(SourceAndFiles, RandomRuns, testing::Bool());

}  // namespace
}  // namespace kiva::test
