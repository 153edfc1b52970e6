#include "tests/targets/target_case.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "engine/stimuli.h"
#include "tarn/model/compilation.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/process_end.h"

namespace kiva::test {

namespace fs = std::filesystem;

namespace {

SignalState state_of_word(const std::string& word) {
  for (SignalState state :
       {SignalState::one, SignalState::zero, SignalState::top, SignalState::bottom})
    if (look_of(state).word == word) return state;
  return SignalState::unknown;
}

}  // namespace

TargetCase::TargetCase(const fs::path& source, const fs::path& stimuli,
                       const std::string& options) {
  load(source, read_text(stimuli.string()), options);
  if (fs::exists(source.parent_path() / "data"))
    read_trace(fs::path(source).replace_extension(".trace").string());
}

TargetCase::TargetCase(const std::string& file_name, const std::string& source,
                       const std::string& stimuli, const std::string& options) {
  load(dir_.write(file_name, source), stimuli, options);
}

void TargetCase::load(const fs::path& source, const std::string& stimuli,
                      const std::string& options) {
  name_ = source.stem().string();
  compiled_ = dir_.file(name_ + ".zuc");
  if (source.extension() == ".zu") {
    run_tool(KIVA_PROGRAMS "/tarn " + options + " '" + source.string() + "'", dir_.path(), false);
  } else if (source != compiled_) {
    fs::copy_file(source, compiled_);
  }
  Compilation::GDataTypeTable() = nullptr;
  Compilation::GDataMethodTable() = nullptr;
  Compilation::GDataConstantTable() = nullptr;
  const ZucRead read = read_zuc_file(compiled_, "", "");
  ASSERT_NE(read.module, nullptr) << read.problem;
  module_ = read.module;
  simulation_ = std::make_unique<Simulation>(module_);
  bench_stimuli_ = stimuli;
  std::istringstream in(stimuli);
  StimuliReader reader(in, *simulation_);
  while (const auto stimulus = reader.next()) {
    apply(*stimulus, *simulation_);
    const SimulationState& state = simulation_->state();
    Instant instant{state.inputs, state.input_texts, state.set, state.reset, {}, {}, {}, {}};
    run_captured([&] { simulation_->step(nullptr); });  // says what it misses of data
    instant.outputs = state.shown_outputs;
    for (size_t i = 0; i < outputs().size(); ++i)
      instant.statuses.push_back(
          instant.outputs[i] != SignalState::unknown
              ? pair_of(instant.outputs[i]).status
              : state.context[static_cast<size_t>(
                    outputs()[i]->getInitialBddStatusId(module_, module_->getBddWood()))]);
    instants_.push_back(std::move(instant));
  }
}

void TargetCase::read_trace(const std::string& file) {
  std::ifstream in(file);
  std::istringstream stimuli(std::exchange(bench_stimuli_, ""));
  size_t number = 0;
  for (std::string line; std::getline(in, line); ++number) {
    ASSERT_LT(number, instants_.size());
    const auto trace = nlohmann::json::parse(line);
    const auto& outputs = trace["outputs"];
    while (std::getline(stimuli, line) && line.starts_with('#')) {
    }
    bench_stimuli_ += line.substr(0, line.find("->")) + " ->";
    // Tests on data, which targets without data are given.
    for (const char* name : {"cold", "hot"})
      if (trace["locals"].contains(name))
        bench_stimuli_ += std::string(trace["locals"][name] == "one" ? " " : " !") + name;
    for (const auto& [name, word] : trace["locals"].items())
      instants_[number].locals[name] = pair_of(state_of_word(word.get<std::string>())).status;
    for (size_t i = 0; i < this->outputs().size(); ++i) {
      const auto& shown = outputs[simulation_->output_names()[i]];
      instants_[number].outputs[i] = state_of_word(shown[0].get<std::string>());
      instants_[number].statuses[i] = pair_of(instants_[number].outputs[i]).status;
      instants_[number].values.push_back(shown[1].get<std::string>());
      const std::string& name = simulation_->output_names()[i];
      bench_stimuli_ +=
          ' ' + stimulus_text(name, instants_[number].outputs[i], instants_[number].values.back());
    }
    bench_stimuli_ += '\n';
  }
  ASSERT_EQ(number, instants_.size());
}

std::string TargetCase::write(const std::string& option) const {
  const std::string err = dir_.file("tarn.err");
  const std::string command = "cd '" + dir_.path().string() + "' && '" KIVA_PROGRAMS "/tarn' -q " +
                              option + " '" + compiled_ + "' 2>tarn.err";
  EXPECT_EQ(std::system(command.c_str()), 0) << name_ << ": " << read_text(err);
  return read_text(err);
}

std::vector<int> TargetCase::input_bits(const Instant& instant) const {
  std::vector<int> row;
  for (SignalState state : instant.inputs) row.push_back(pair_of(state).status);
  if (!finalised())
    for (SignalState state : instant.inputs) row.push_back(pair_of(state).value);
  return row;
}

std::vector<int> TargetCase::output_bits(const Instant& instant) const {
  std::vector<int> row = instant.statuses;
  if (!finalised())
    for (SignalState state : instant.outputs) row.push_back(pair_of(state).value);
  return row;
}

std::vector<int> TargetCase::rails_by_signal(const Instant& instant) const {
  if (finalised()) return input_bits(instant);
  std::vector<int> row{instant.set, !instant.set, instant.reset, !instant.reset};
  for (SignalState state : instant.inputs) {
    row.push_back(pair_of(state).status);
    row.push_back(pair_of(state).value);
  }
  return row;
}

std::vector<int> TargetCase::statuses_first(const std::vector<int>& rails) const {
  if (finalised()) return rails;
  std::vector<int> row;  // without those of rtl
  for (size_t first : {2, 3})
    for (size_t i = first; i < rails.size(); i += 2) row.push_back(rails[i]);
  return row;
}

namespace {

/// The sources of all cases, in an order of their own.
std::vector<fs::path> sources() {
  const fs::path root(KIVA_SOURCE);
  std::vector<fs::path> found;
  for (const char* folder : {"examples", "tests/system/circuits", "tests/targets/cases"})
    for (const auto& entry : fs::recursive_directory_iterator(root / folder))
      if (entry.path().extension() == ".zu" || entry.path().extension() == ".zuc")
        found.push_back(entry.path());
  std::sort(found.begin(), found.end());
  return found;
}

TargetCase case_of(const fs::path& source) {
  return {source, fs::path(source).replace_extension(".stimuli")};
}

}  // namespace

TargetCase named_case(const std::string& file_name) {
  for (const fs::path& source : sources())
    if (source.filename() == file_name) return case_of(source);
  throw std::runtime_error("no case " + file_name);
}

std::vector<std::unique_ptr<TargetCase>> all_cases(bool unfinalised) {
  std::vector<std::unique_ptr<TargetCase>> cases;
  for (const fs::path& source : sources()) {
    cases.emplace_back(new TargetCase(case_of(source)));
    if (!unfinalised && !cases.back()->finalised()) cases.pop_back();
  }
  EXPECT_GE(cases.size(), 18u);
  return cases;
}

bool has_told(const std::string& file_name) {
  return fs::exists(fs::path(KIVA_SOURCE "/tests/targets/told") / file_name);
}

void expect_told(const std::string& file_name, const std::string& text) {
  const std::string path = KIVA_SOURCE "/tests/targets/told/" + file_name;
  if (std::getenv("KIVA_WRITE_TOLD") != nullptr) std::ofstream(path) << text;
  EXPECT_EQ(text, read_text(path)) << file_name;
}

std::string run_tool(const std::string& command, const fs::path& folder, bool silent) {
  const TempDir streams;
  const std::string line = "cd '" + folder.string() + "' && { " + command + " ; } >'" +
                           streams.file("out") + "' 2>'" + streams.file("err") + "'";
  const int result = std::system(line.c_str());
  const std::string err = read_text(streams.file("err"));
  EXPECT_TRUE(WIFEXITED(result) && WEXITSTATUS(result) == 0)
      << command << "\n"
      << err << read_text(streams.file("out"));
  EXPECT_TRUE(!silent || err.empty()) << command << "\n" << err;
  return read_text(streams.file("out"));
}

std::vector<int> data_tests(const TargetCase::Instant& instant) {
  std::vector<int> bits;
  for (const char* name : {"cold", "hot"})
    if (const auto at = instant.locals.find(name); at != instant.locals.end())
      bits.push_back(at->second);
  return bits;
}

}  // namespace kiva::test
