// A run: where its choices come from, what each instant is held against, what is written of it.

#include "programs/console/run.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>

#include "base/connection.h"
#include "base/lines.h"
#include "base/text_stream.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "engine/condition.h"
#include "engine/coverage.h"
#include "engine/expectations.h"
#include "engine/expected_trace.h"
#include "engine/random_choices.h"
#include "engine/server_steps.h"
#include "engine/trace.h"
#include "programs/console/prompt_input.h"
#include "programs/console/why_text.h"
#include "programs/report.h"
#include "programs/told_map.h"
#include "programs/told_text.h"
#include "tarn/model/compilation.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva::console {

namespace {

using programs::unusable;

constexpr int most_differences = 10;

/// What a run cannot go on with.
struct Refused {
  std::string file;
  long line;
  std::string reason;
};

std::ifstream opened(const std::string& file, const char* folder_reason) {
  if (std::filesystem::is_directory(file)) throw Refused{file, 0, folder_reason};
  std::ifstream in(file);
  if (!in) throw Refused{file, 0, "cannot be read"};
  return in;
}

class ConsoleRun {
 public:
  ConsoleRun(const Options& options, Module* module, std::ostream& out)
      : options_(options), simulation_(module), out_(out) {
    connect();
    for (const TraceFormat& format : trace_formats())
      if (options.format == format.name) trace_ = format.make(simulation_);
    read_options();
  }

  /// What led to a refusal stands before it.
  ~ConsoleRun() { out_.flush(); }
  ConsoleRun(const ConsoleRun&) = delete;
  ConsoleRun& operator=(const ConsoleRun&) = delete;

  int run() {
    if (!why_) trace_->begin(out_);
    const bool looks = covers() || saves() || until_ || trace_->looks();
    SimulationState before;
    Choices choices;
    while (!ended_ && next_choices()) {
      if (covers()) before = simulation_.state();
      if (saves()) choices = choices_of(simulation_.state());
      steps_->step(simulation_);
      if (!looks && !awaits()) continue;
      const SimulationState& state = simulation_.state();
      note(before, choices, state);
      if (why_ && state.instant == why_->instant)
        return why_->print(out_, {before, choices, state});
      if (!why_) write(state);
    }
    return end();
  }

 private:
  bool saves() const { return !options_.save_stimuli.empty() || why_; }
  bool covers() const { return options_.coverage || !options_.coverage_file.empty() || why_; }

  void note(const SimulationState& before, const Choices& choices, const SimulationState& state) {
    if (!options_.save_stimuli.empty()) save(choices);
    if (covers()) coverage_.note(before, state);
    check(state);
    ended_ = until_ && until_->holds(state);
  }

  void write(const SimulationState& state) {
    trace_->write(out_, state);
    if (server_) out_.flush();  // the next instant may fail
    if (!out_) throw Refused{options_.output, 0, "the trace cannot be written"};
  }

  void connect() {
    if (!options_.server.first.empty()) {
      server_.emplace(options_.server.first,
                      static_cast<unsigned short>(std::stoi(options_.server.second)),
                      Connection::Milliseconds(static_cast<long>(options_.time_out * 1000)));
      try {
        server_->open();
      } catch (const ConnectionFault& fault) {
        if (simulation_.asks_for_data()) throw;
        programs::errors() << program << ": warning: " << translated(fault.what()) << '\n';
      }
    }
    steps_.emplace(server_ ? &*server_ : nullptr);
  }

  void read_options() {
    try {
      if (!options_.until.empty()) until_.emplace(options_.until, simulation_);
    } catch (const ConditionError& error) {
      throw Refused{"", 0,
                    "--until: character " + std::to_string(error.character) + ": " + error.reason};
    }
    if (!options_.why.empty())
      why_.emplace(options_.why, options_.verbose, simulation_,
                   programs::told_map(options_.module));
    if (!options_.expect.empty()) {
      expected_file_ = opened(options_.expect, "is a folder, not a trace");
      expected_.emplace(expected_file_, simulation_);
    }
    if (options_.coverage || !options_.coverage_file.empty()) read_map();
    if (const auto there = std::filesystem::status(options_.coverage_file);
        std::filesystem::exists(there) && !std::filesystem::is_character_file(there)) {
      std::ifstream in = opened(options_.coverage_file, "is a folder");
      const std::string reason =
          coverage_.merge(std::string(std::istreambuf_iterator<char>(in), {}));
      if (!reason.empty()) throw Refused{options_.coverage_file, 0, reason};
    }
    if (options_.random > 0) return read_random();
    if (options_.stimuli != "-")
      stimuli_file_ = opened(options_.stimuli, "is a folder, not a file of stimuli");
    stimuli_.emplace(options_.stimuli == "-" ? prompted_ : stimuli_file_, simulation_);
  }

  /// Statements are counted where the map of the source stands beside the module.
  void read_map() {
    const std::string map = programs::told_map(options_.module);
    if (map.empty()) return;
    const std::string problem = coverage_.map(map);
    if (!problem.empty()) throw Refused{options_.module + ".map", 0, problem};
  }

  void read_random() {
    random_.emplace(simulation_, options_.drawn.seed);
    for (const std::string& text : options_.drawn.biases) {
      std::string problem;
      const programs::Bias bias = programs::read_bias(text, problem);
      if (problem.empty() && !random_->bias(bias.name, bias.probability))
        problem = programs::no_input("--bias", text);
      if (!problem.empty()) throw Refused{"", 0, problem};
    }
    for (const std::string& text : options_.values) {
      const size_t equals = text.find('=');
      std::vector<std::string> texts;
      if (equals != std::string::npos) {
        std::istringstream list(text.substr(equals + 1));
        for (std::string value; std::getline(list, value, ',');) texts.push_back(value);
      }
      if (texts.empty() || !random_->values(text.substr(0, equals), texts))
        throw Refused{"", 0, programs::no_input("--values", text)};
    }
    const std::string without = random_->input_without_values();
    if (!without.empty())
      throw Refused{"", 0,
                    "--random: the input \"" + without + "\" carries values; give some: --values " +
                        without + "=1,2"};
  }

  std::string stimuli_name() const {
    return options_.stimuli == "-" ? "standard input" : options_.stimuli;
  }

  bool next_choices() {
    if (random_) {
      if (simulation_.instant() == options_.random) return false;
      random_->choose(simulation_);
      return true;
    }
    try {
      auto stimulus = stimuli_->next();
      if (!stimulus) return false;
      apply(*stimulus, simulation_);
      expectations_ = std::move(stimulus->expectations);
      return true;
    } catch (const StimuliError& error) {
      throw Refused{stimuli_name(), error.line, error.reason};
    }
  }

  void save(const Choices& choices) {
    Choices saved = choices;
    // The load raises it in any case.
    if (simulation_.instant() == 1) saved.set = false;
    saved_ += stimulus_line(saved, simulation_) + '\n';
  }

  bool awaits() const { return options_.update || !expectations_.empty() || expected_; }
  /// Holds the instant against what is awaited of it.
  void check(const SimulationState& state) {
    if (!awaits()) return;
    const std::string instant = "instant " + std::to_string(state.instant) + ": ";
    if (options_.update) {
      seen_.push_back(seen(expectations_, state, simulation_));
    } else {
      for (const std::string& difference : unmet(expectations_, state, simulation_))
        differ(stimuli_name(), stimuli_->line(), instant + difference);
    }
    if (!expected_) return;
    for (const std::string& difference : expected_->compare(state))
      differ(options_.expect, expected_->line(), instant + difference);
  }

  void differ(const std::string& file, long line, const std::string& difference) {
    if (++differences_ > most_differences) return;
    out_.flush();  // behind what led there
    programs::errors() << file << ':' << line << ": " << translated(difference) << '\n';
  }

  int end() {
    if (why_)
      throw Refused{"", 0, "--why: the run has no instant " + std::to_string(why_->instant)};
    steps_->finish();
    trace_->end(out_);
    if (expected_) {
      const std::string difference = expected_->end();
      if (!difference.empty()) differ(options_.expect, expected_->line(), difference);
    }
    if (differences_ > most_differences)
      programs::errors() << program << ": "
                         << translated(std::to_string(differences_ - most_differences) +
                                       " more differences")
                         << '\n';
    if (options_.update) update();
    if (!options_.save_stimuli.empty()) write_file(options_.save_stimuli, saved_);
    if (options_.coverage) {
      TextStream told;
      coverage_.print(told);
      programs::errors() << translated_lines(told.str()) << std::flush;
    }
    if (!options_.coverage_file.empty()) write_file(options_.coverage_file, coverage_.text());
    if (until_ && !ended_)
      return refuse("", 0,
                    "--until: in none of " + std::to_string(simulation_.instant()) +
                        " instants holds " + options_.until);
    return differences_ > 0 ? unusable : 0;
  }

  static void write_file(const std::string& name, const std::string& text) {
    WholeFile file(name);
    if (file.opened()) file.out() << text;
    if (!file.opened() || !file.finish()) throw Refused{name, 0, "cannot be written"};
  }

  void update() const {
    try {
      write_file(options_.stimuli, updated_stimuli());
    } catch (const std::runtime_error& error) {
      throw Refused{options_.stimuli, 0, error.what()};
    }
  }

  std::string updated_stimuli() const {
    std::ifstream in = opened(options_.stimuli, "is a folder");
    std::string text, line;
    for (size_t instant = 0; next_line(in, line);) {
      if ((!line.empty() && line.front() == '#') || instant == seen_.size()) {
        text += line + '\n';
        continue;
      }
      line.resize(end_of_choices(line));
      text += line + (line.empty() ? "-> " : " -> ") + seen_[instant++] + '\n';
    }
    return text;
  }

  const Options& options_;
  Simulation simulation_;
  std::ostream& out_;
  std::optional<Connection> server_;
  std::optional<ServerSteps> steps_;
  std::unique_ptr<TraceWriter> trace_;
  std::ifstream stimuli_file_, expected_file_;
  PromptInput prompt_{[this] { out_.flush(); }};
  std::istream prompted_{&prompt_};
  std::optional<StimuliReader> stimuli_;
  std::optional<RandomChoices> random_;
  std::optional<Condition> until_;
  std::optional<WhyText> why_;
  std::optional<ExpectedTrace> expected_;
  Coverage coverage_{simulation_};
  std::vector<Expectation> expectations_;
  std::vector<std::string> seen_;  ///< by instant, for --update
  std::string saved_;
  int differences_ = 0;
  bool ended_ = false;
};

}  // namespace

int refuse(const std::string& file, long line, const std::string& reason) {
  const int at = static_cast<int>(line);
  programs::complain(program, {file, at, 0, at, 0}, reason);
  return unusable;
}

Ended run(const Options& options, std::ostream& out) {
  const ZucRead read =
      read_zuc_file(options.module, Compilation::EmptyString, Compilation::EmptyString);
  if (read.module == nullptr) return {refuse(read.where.file, read.where.line, read.reason)};
  try {
    return {ConsoleRun(options, read.module, out).run(), true};
  } catch (const Refused& refused) {
    return {refuse(refused.file, refused.line, refused.reason)};
  } catch (const ConnectionFault& fault) {
    refuse("", 0, fault.what());
    return {values_missing};
  } catch (const WhyText::Refused& refused) {
    return {refuse("", 0, refused.reason)};
  }
}

}  // namespace kiva::console
