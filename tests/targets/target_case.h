#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/simulation.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {

/// A module with stimuli, what the simulator shows over them, and a folder for its target texts.
/// The harness of a target writes the text with `write`, runs it in the target's own tools over
/// `instants`, and hands the bits that it saw to `expect_trace`.
class TargetCase {
 public:
  struct Instant {
    std::vector<SignalState> inputs;  ///< by input
    std::vector<std::string> texts;   ///< values of the inputs; "--" for none
    bool set = false, reset = false;
    std::vector<SignalState> outputs;   ///< by output, before the registers move
    std::vector<int> statuses;          ///< of the outputs, also where a value rail is unknown
    std::vector<std::string> values;    ///< of the outputs, where a trace file tells them
    std::map<std::string, int> locals;  ///< statuses, where a trace file tells them
  };

  /// `source` is ZU or ZUC text; `options` are those of tarn. Where data functions lie beside the
  /// source, the trace beside it tells the outputs, else the engine does.
  TargetCase(const std::filesystem::path& source, const std::filesystem::path& stimuli,
             const std::string& options = "");
  /// The same of texts.
  TargetCase(const std::string& file_name, const std::string& source, const std::string& stimuli,
             const std::string& options = "");

  const std::string& name() const { return name_; }
  Module* module() const { return module_; }
  bool finalised() const { return module_->getFinalised() != 0; }
  const std::vector<Signal*>& inputs() const { return simulation_->input_rows(); }
  const std::vector<Signal*>& outputs() const { return simulation_->output_rows(); }
  const std::vector<Instant>& instants() const { return instants_; }

  /// A file of the case's folder.
  std::string file(const std::string& name) const { return dir_.file(name); }
  std::filesystem::path folder() const { return dir_.path(); }
  void add_file(const std::string& name, const std::string& text) const { dir_.write(name, text); }
  /// Writes the compiled module in a target language, as `option` of tarn; fails the test when that
  /// fails. Gives what tarn told on the error stream.
  std::string write(const std::string& option) const;

  /// What a bench is made of: the stimuli, with what the trace beside them tells, if there is one.
  const std::string& bench_stimuli() const { return bench_stimuli_; }

  /// The bits of an instant's inputs: the status of each, then, of a module that is not finalised,
  /// the value of each.
  std::vector<int> input_bits(const Instant& instant) const;
  std::vector<int> output_bits(const Instant& instant) const;
  /// The bits of an instant's inputs for a text that keeps the rails of a signal together: of a
  /// module that is not finalised the wires and both rails of each signal, else the statuses.
  std::vector<int> rails_by_signal(const Instant& instant) const;
  /// The bits of such a text's outputs in the order of expect_trace.
  std::vector<int> statuses_first(const std::vector<int>& rails) const;

 private:
  void load(const std::filesystem::path& source, const std::string& stimuli,
            const std::string& options);
  void read_trace(const std::string& file);

  TempDir dir_;
  std::string name_;
  std::string compiled_, bench_stimuli_;
  Module* module_ = nullptr;
  std::unique_ptr<Simulation> simulation_;
  std::vector<Instant> instants_;
};

/// Every shipped example, the circuits s27, planet and s1423, and the modules of the folder cases:
/// names that targets cannot bear, and state in a module that is not finalised. Without
/// `unfinalised` only what is finalised.
std::vector<std::unique_ptr<TargetCase>> all_cases(bool unfinalised);
/// Runs `check` on random programs, automata and Mealy machines over random stimuli; `count` of
/// them, or KIVA_PROGRAMS, from the seed KIVA_SEED on. A fault is told with the smallest program
/// that still has it.
void for_random_cases(int count, const std::function<void(const TargetCase&)>& check);

/// Reads a module of the folder cases, of the examples or of the circuits by its file's name.
TargetCase named_case(const std::string& file_name);

/// Compares what a library operation has written with a file of the folder told.
bool has_told(const std::string& file_name);
void expect_told(const std::string& file_name, const std::string& text);

/// Runs a command of the shell in a folder; gives its standard output. Fails the test when the
/// command fails, or, if `silent`, when it says anything on the error stream.
std::string run_tool(const std::string& command, const std::filesystem::path& folder,
                     bool silent = true);

/// The tests on data in an instant, which a text without data takes as further inputs: those of the
/// thermostat, as its trace tells them; none elsewhere.
std::vector<int> data_tests(const TargetCase::Instant& instant);

}  // namespace kiva::test
