// A campaign: what is asked, the runs, what is written of them.

#include "programs/campaign/run.h"

#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/parallel_for.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>

#include "base/text_stream.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "programs/campaign/result.h"
#include "programs/campaign/stimuli_folder.h"
#include "programs/report.h"
#include "programs/reporter.h"
#include "programs/told_map.h"
#include "programs/told_text.h"
#include "proof/campaign/random_runs.h"
#include "tarn/model/compilation.h"
#include "tarn/session/session_files.h"
#include "tarn/zu/source_map.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva::campaign {

namespace {

using programs::unusable;
using proof::Property;

/// What a campaign cannot go on with.
struct Refused {
  std::string file;  ///< empty for none
  long line;
  std::string reason;
};

std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in || std::filesystem::is_directory(path)) throw Refused{path, 0, "cannot be read"};
  return std::string(std::istreambuf_iterator<char>(in), {});
}

Module* read_module(const std::string& file) {
  SessionFiles::current().trace = nullptr;
  const ZucRead read = read_zuc_file(file, Compilation::EmptyString, Compilation::EmptyString);
  if (read.module == nullptr) throw Refused{read.where.file, read.where.line, read.reason};
  return read.module;
}

/// The machine of another module stands without it.
proof::Side other_side(const std::string& file, bool with_reset, std::string& name) {
  programs::Reporter reporter(program);
  const programs::ProgramSession session(&reporter);
  Module* module = read_module(file);
  name = module->getName();
  try {
    proof::require_comparable(*module);
    const Simulation simulation(module);
    proof::ModuleMachine machine(simulation, with_reset);
    return proof::side_of(simulation, machine);
  } catch (const proof::MachineError& error) {
    throw Refused{file, 0, error.reason};
  }
}

class ModuleCampaign {
 public:
  explicit ModuleCampaign(const Options& options) : options_(options) {
    for (const std::string& bias : options.drawn.biases)
      with_reset_ = with_reset_ || bias.starts_with("!reset=");
    with_reset_ = with_reset_ || !options.stimuli.empty();
  }

  Result run() {
    Module* module = read_module(options_.module);
    try {
      if (!options_.against.empty()) proof::require_comparable(*module);
      Simulation simulation(module);
      proof::CampaignMachine question(simulation, with_reset_);
      result_.asked["module"] = module->getName();
      result_.asked["hash"] = file_hash(options_.module);
      ask(question);
      cover(question, simulation);
      take_runs(question, simulation);
      question.build();
      const proof::Campaign campaign(question, *source_);
      result_.shard = options_.shard;
      const proof::CampaignCounts counts = campaign.run(options_.shard, parallel());
      take(question, counts);
      return result_;
    } catch (const proof::MachineError& error) {
      throw Refused{options_.module, 0, error.reason};
    } catch (const FolderError& error) {
      throw Refused{error.file, error.line, error.reason};
    }
  }

 private:
  void ask(proof::CampaignMachine& question) {
    Json& properties = result_.asked["properties"] = Json::array();
    for (const Property& property : options_.properties) {
      const std::string word = proof::word(property.kind);
      properties.push_back({word, property.text});
      try {
        if (property.kind == Property::assume)
          question.assume(property.text);
        else
          question.check(property);
      } catch (const ConditionError& error) {
        throw Refused{
            "", 0,
            "--" + word + ": character " + std::to_string(error.character) + ": " + error.reason};
      }
    }
    if (options_.against.empty()) return;
    const proof::Side other = other_side(options_.against, with_reset_, other_name_);
    result_.asked["against"] = {other_name_, file_hash(options_.against)};
    const auto compare = [&](const proof::Side& first, const std::string& file,
                             const proof::Side& second, const std::string& without) {
      if (const std::string what = proof::missing_in(second, first); !what.empty())
        throw Refused{"", 0, file + " has the " + what + ", " + without + " has not"};
    };
    const proof::Side mine = question.side();
    compare(mine, options_.module, other, options_.against);
    compare(other, options_.against, mine, options_.module);
    question.compare_with(other);
  }

  void cover(proof::CampaignMachine& question, const Simulation& simulation) {
    const std::string map = programs::told_map(options_.module);
    std::vector<size_t> locals;
    if (!map.empty()) {
      const CoverageGoals goals(map, simulation);
      if (!goals.problem.empty()) throw Refused{options_.module + ".map", 0, goals.problem};
      result_.has_map = true;
      result_.asked["map"] = text_hash(map);
      locals = goals.declared;
      question.cover_signals(locals, false);
      question.cover(goals.goals);
    } else {
      for (size_t row = 0; row < simulation.local_names().size(); ++row) locals.push_back(row);
      question.cover_signals(locals, true);
    }
  }

  void take_runs(proof::CampaignMachine& question, const Simulation& simulation) {
    if (!options_.stimuli.empty()) {
      auto folder = std::make_unique<StimuliFolder>(options_.stimuli, simulation, question);
      result_.asked["stimuli"] = folder->hash();
      folder_ = folder.get();
      source_ = std::move(folder);
    } else {
      std::vector<double> chances(simulation.input_names().size(), 0.5);
      if (with_reset_) chances.push_back(0);
      for (const std::string& text : options_.drawn.biases) read_bias(text, simulation, chances);
      source_ = std::make_unique<proof::RandomRuns>(options_.runs, options_.instants,
                                                    options_.drawn.seed, chances);
      result_.asked["instants"] = options_.instants;
      result_.asked["seed"] = options_.drawn.seed;
      result_.asked["bias"] = options_.drawn.biases;
    }
    result_.asked["runs"] = source_->runs();
  }

  static void read_bias(const std::string& text, const Simulation& simulation,
                        std::vector<double>& chances) {
    std::string problem;
    const programs::Bias bias = programs::read_bias(text, problem);
    const auto& names = simulation.input_names();
    const auto at = static_cast<size_t>(std::ranges::find(names, bias.name) - names.begin());
    if (problem.empty() && at == names.size() && bias.name != "!reset")
      problem = programs::no_input("--bias", text);
    if (!problem.empty()) throw Refused{"", 0, problem};
    chances[at] = bias.probability;
  }

  proof::Campaign::ForAll parallel() const {
    const auto threads = static_cast<size_t>(std::max(options_.threads, 0));
    return [threads](size_t count, const std::function<void(size_t)>& work) {
      std::optional<tbb::global_control> limit;
      if (threads > 0) limit.emplace(tbb::global_control::max_allowed_parallelism, threads);
      tbb::parallel_for(size_t{0}, count, work);
    };
  }

  void take(proof::CampaignMachine& question, const proof::CampaignCounts& counts) {
    for (size_t k = 0; k < counts.reached.size(); ++k) {
      const proof::CampaignMachine::Goal& goal = question.goals()[k];
      const auto runs = static_cast<long>(counts.reached[k]);
      if (goal.kind == "present")
        result_.signals[goal.name].present = runs;
      else if (goal.kind == "not present")
        result_.signals[goal.name].not_present = runs;
      else
        result_.reached[goal.kind][goal.name] = runs;
    }
    std::map<std::string, int> numbers;
    const size_t properties = question.checks().size();
    const auto add = [&](const std::string& word, const std::string& text, size_t check) {
      const proof::CampaignCounts::Failed& failed = counts.failed[check];
      Result::Check& told = result_.checks.emplace_back(
          Result::Check{word + '-' + std::to_string(++numbers[word]), text, failed, "", ""});
      if (failed.runs == 0) return;
      if (folder_ != nullptr) told.file = folder_->file(failed.first);
      told.stimuli =
          "# " + word + ' ' + text + '\n' +
          (check > properties ? folder_->text(failed.first, failed.instant)
                              : question.shown(check, source_->run(failed.first, failed.instant,
                                                                   question.inputs())));
    };
    for (size_t check = 0; check < properties; ++check)
      add(proof::word(question.checks()[check].kind), question.checks()[check].text, check);
    if (!other_name_.empty()) add("against", other_name_, properties);
    if (folder_ != nullptr) add("expected", "by the stimuli", properties + 1);
  }

  using Json = nlohmann::ordered_json;
  const Options& options_;
  bool with_reset_ = false;
  std::unique_ptr<proof::RunSource> source_;
  const StimuliFolder* folder_ = nullptr;
  std::string other_name_;
  Result result_;
};

Result merge(const Options& options) {
  std::vector<std::string> files = options.merged;
  if (!options.module.empty()) files.push_back(options.module);  // the last word of the list
  std::vector<Result> shards;
  for (const std::string& file : files) {
    std::optional<Result> shard = Result::read(read_file(file));
    if (!shard) throw Refused{file, 0, "is no result of a campaign"};
    shards.push_back(std::move(*shard));
  }
  try {
    return merged(shards);
  } catch (const MergeError& error) {
    throw Refused{error.file < files.size() ? files[error.file] : "", 0, error.reason};
  }
}

void write_file(const std::string& path, const std::string& text) {
  WholeFile file(path);
  if (file.opened()) file.out() << text;
  if (!file.opened() || !file.finish()) throw Refused{path, 0, "cannot be written"};
}

int finish(const Options& options, const Result& result) {
  // A shard keeps its runs in its result: which is the first is known when all are added up.
  if (result.shard.of == 1)
    for (const Result::Check& check : result.checks)
      if (check.failed.runs > 0)
        write_file((std::filesystem::path(options.folder) / (check.name + ".stimuli")).string(),
                   check.stimuli);
  if (options.output.empty())
    std::cout << result.text() << std::flush;
  else
    write_file(options.output, result.text());
  TextStream told;
  result.print(told, options.coverage);
  programs::errors() << translated_lines(told.str()) << std::flush;
  return result.failed() ? unusable : 0;
}

}  // namespace

int run(const Options& options) {
  try {
    return finish(options, options.merged.empty() ? ModuleCampaign(options).run() : merge(options));
  } catch (const Refused& refused) {
    const int at = static_cast<int>(refused.line);
    programs::complain(program, {refused.file, at, 0, at, 0}, refused.reason);
    return unusable;
  }
}

}  // namespace kiva::campaign
