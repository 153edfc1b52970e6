#include "programs/campaign/options.h"

#include <charconv>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include "programs/command_pages.h"
#include "programs/report.h"

namespace kiva::campaign {

namespace {

std::optional<std::uint64_t> number_of(const std::string& text) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// A variable of the environment that an engine of jobs has set.
std::optional<std::uint64_t> set_by_engine(const char* name) {
  const char* text = std::getenv(name);
  if (text == nullptr) return std::nullopt;
  const std::optional<std::uint64_t> number = number_of(text);
  if (!number) throw std::invalid_argument(std::string(name) + " is no number: " + text);
  return number;
}

/// Number from 1, and how many: 0 where the engine does not tell.
std::pair<std::uint64_t, std::uint64_t> shard_of_engine(bool whole_array) {
  if (const auto task = set_by_engine("SLURM_ARRAY_TASK_ID")) {
    if (!whole_array) return {*task, 0};
    const std::uint64_t first = set_by_engine("SLURM_ARRAY_TASK_MIN").value_or(1);
    const std::uint64_t step = set_by_engine("SLURM_ARRAY_TASK_STEP").value_or(1);
    return {(*task - first) / std::max<std::uint64_t>(step, 1) + 1,
            set_by_engine("SLURM_ARRAY_TASK_COUNT").value_or(0)};
  }
  if (const auto index = set_by_engine("JOB_COMPLETION_INDEX")) return {*index + 1, 0};
  throw std::invalid_argument(
      "neither SLURM_ARRAY_TASK_ID nor JOB_COMPLETION_INDEX is set in the environment");
}

}  // namespace

proof::Shard read_shard(const std::string& text) {
  const size_t slash = text.find('/');
  const std::string left = text.substr(0, slash);
  std::optional<std::uint64_t> number, of;
  if (slash != std::string::npos) of = number_of(text.substr(slash + 1));
  if (left == "auto") {
    const auto [task, count] = shard_of_engine(slash == std::string::npos);
    number = task;
    if (slash == std::string::npos && count > 0) of = count;
    if (slash == std::string::npos && count == 0)
      throw std::invalid_argument("the environment does not tell of how many: auto/N does");
  } else {
    number = number_of(left);
  }
  if (!number || !of) throw std::invalid_argument('"' + text + "\" is neither K/N nor auto");
  if (*number == 0 || *number > *of)
    throw std::invalid_argument("there is no shard " + std::to_string(*number) + " of " +
                                std::to_string(*of) + ": they count from 1");
  return {*number - 1, *of};
}

namespace {

const programs::CommandNotes& notes() {
  static const programs::CommandNotes told = [] {
    programs::CommandNotes notes;
    notes.summary = "makes many runs of a compiled module, and holds them to what must be";
    notes.synopsis = "[OPTIONS] MODULE.zuc\nkiva-campaign [OPTIONS] --merge RESULT...";
    notes.examples = {
        {"kiva-campaign --runs 1000000 --never 'open and closing' lift.zuc",
         "random runs, in none of which both may be present"},
        {"kiva-campaign --runs 100000 --against older.zuc lift.zuc", "the same outputs?"},
        {"kiva-campaign --stimuli days lift.zuc", "every file days/*.stimuli and what it awaits"},
        {"kiva-campaign --shard 2/4 -o 2.json --runs 1000000 lift.zuc", "a quarter of a campaign"},
        {"kiva-campaign --merge 1.json 2.json 3.json 4.json", "the whole of it"}};
    notes.statuses = programs::common_statuses();
    notes.statuses[1].second += " Or a run fails.";
    notes.files = {{"PROPERTY-N.stimuli",
                    "the first run that fails the Nth --never or --always, what --against compares "
                    "(against-1), or what stimuli await (expected-1)."}};
    notes.see_also = {"kiva-console", "tarn"};
    return notes;
  }();
  return told;
}

void add_runs(CLI::App& app, Options& options) {
  const auto group = "Runs";
  app.add_option("--runs", options.runs, "N random runs")
      ->type_name("N")
      ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1} << 48))
      ->group(group);
  app.add_option("--instants", options.instants, "of each random run (100)")
      ->type_name("N")
      ->check(CLI::PositiveNumber)
      ->group(group);
  programs::add_random_options(app, nullptr, group, options.drawn);
  app.add_option("--stimuli", options.stimuli,
                 "in place of random runs, those of the files DIR/*.stimuli")
      ->type_name("DIR")
      ->group(group);
}

void add_checks(CLI::App& app, Options& options, programs::PropertyOptions& properties) {
  using proof::Property;
  properties.add(app, "--never", Property::never,
                 "an expression over the signals that must never hold; repeatable, as are the next "
                 "two");
  properties.add(app, "--always", Property::always, "one that must always hold");
  properties.add(app, "--assume", Property::assume,
                 "a run counts only as long as an expression holds");
  app.add_option("--against", options.against,
                 "a module with the same inputs whose outputs must be the same")
      ->type_name("FILE");
}

void check_usage(const CLI::App& app, const Options& options) {
  if (!options.merged.empty()) {
    for (const char* name : {"--runs", "--stimuli", "--never", "--always", "--assume", "--against",
                             "--shard", "--instants", "--seed", "--bias"})
      if (app.count(name) > 0)
        throw CLI::ValidationError(name, "is told by the results that --merge reads");
    return;
  }
  if (options.module.empty()) throw CLI::ValidationError("MODULE", "is required");
  if ((options.runs > 0) == !options.stimuli.empty())
    throw CLI::ValidationError("--runs", "wants a number, or --stimuli a folder in its place");
  for (const char* name : {"--instants", "--seed", "--bias"})
    if (!options.stimuli.empty() && app.count(name) > 0)
      throw CLI::ValidationError(name, "is of random runs: --runs");
}

}  // namespace

int read_options(int argc, char** argv, Options& options) {
  CLI::App app{"Makes many runs of a compiled module, and holds them to what must be.", program};
  programs::PropertyOptions properties;
  std::string shard;
  app.add_option("MODULE", options.module, "module to run (.zuc)")->type_name("FILE");
  add_runs(app, options);
  add_checks(app, options, properties);
  app.add_option(
         "--shard", shard,
         "K/N makes part K of N; auto takes both from an array of Slurm, auto/N takes K from "
         "Slurm or an indexed job of Kubernetes")
      ->type_name("K/N");
  app.add_option("--merge", options.merged, "adds up the results of all shards")
      ->type_name("RESULT");
  app.add_option("--threads", options.threads, "threads to work with (one a core)")
      ->type_name("N")
      ->check(CLI::PositiveNumber);
  app.add_option("-o", options.output, "file for the results instead of the standard output")
      ->type_name("FILE");
  app.add_option("--out", options.folder, "folder for runs that fail (this one)")
      ->type_name("DIR")
      ->check(CLI::ExistingDirectory);
  app.add_flag("--coverage", options.coverage,
               "tells on the error stream what the runs have reached");
  app.add_flag("--verbose", options.verbose, "shows what the library has to tell");
  programs::add_pages(app, notes());
  app.footer(programs::example_lines(notes()));
  try {
    app.parse(argc, argv);
    check_usage(app, options);
    options.properties = properties.read(app);
    if (!shard.empty()) options.shard = read_shard(shard);
  } catch (const std::invalid_argument& error) {
    return app.exit(CLI::ValidationError("--shard", error.what())) == 0 ? 0 : programs::wrong_usage;
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : programs::wrong_usage;
  }
  return -1;
}

}  // namespace kiva::campaign
