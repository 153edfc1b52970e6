#include "programs/tarn/cover.h"

#include <iostream>
#include <optional>

#include "base/text_stream.h"
#include "base/translation.h"
#include "engine/expectations.h"
#include "programs/tarn/compare.h"
#include "programs/tarn/map_of.h"
#include "programs/tarn/proof_watch.h"
#include "programs/tarn/translate.h"
#include "proof/campaign/campaign_machine.h"
#include "proof/question.h"
#include "proof/reduction.h"
#include "proof/run_suite.h"
#include "tarn/session/session_files.h"

namespace kiva::tarn_program {

namespace {

using proof::Answer;
using proof::Verdict;

class Cover {
 public:
  Cover(Module* module, const std::string& file, const Options& options)
      : module_(module),
        file_(file),
        options_(options),
        simulation_(module),
        question_(simulation_, options.with_reset) {}

  int run() {
    const std::string map = map_of(module_, file_);
    if (map.empty()) return unusable_map(file_, "has no map of its source (tarn --map)");
    const CoverageGoals goals(map, simulation_);
    if (!goals.problem.empty()) return unusable_map(file_ + ".map", goals.problem);
    question_.cover(goals.goals);
    question_.build();
    goals_.emplace(question_.machine(), question_.survey().goals);
    suite_.emplace(*goals_);
    const ProofWatch watch;
    for (proof::GoalRun& run : goals_->random_runs(watch.stop(most_random))) suite_->add(run);
    told("random runs reach");
    for (size_t goal = 0; goal < question_.goals().size(); ++goal) {
      if (suite_->reached().contains(goal)) continue;
      if (!seek(goal, watch)) return undecided;
    }
    suite_->reduce(watch.stop(most_reduction));
    told("what is written reaches");
    if (!write_all()) return unusable;
    tell("never reached", never_);
    tell("not known to be reached", unknown_);
    return unknown_.empty() ? 0 : undecided;
  }

 private:
  // Seconds, about
  static constexpr double most_random = 10, most_reduction = 10, most_going_on = 0.05;

  static int unusable_map(const std::string& file, const std::string& reason) {
    fail({file, 0, 0, 0, 0}, reason);
    return unusable;
  }

  /// How much the runs reach, as a comment.
  void told(const char* what) const {
    if (options_.quiet) return;
    TextStream text;
    text << what << ' ' << suite_->reached().size() << " of " << question_.goals().size()
         << " statements, states and transitions: " << suite_->runs().size()
         << (suite_->runs().size() == 1 ? " run, " : " runs, ") << suite_->instants()
         << (suite_->instants() == 1 ? " instant" : " instants");
    std::cout << "# " << translated(text.str()) << '\n';
  }

  /// False when it was interrupted.
  bool seek(size_t goal, const ProofWatch& watch) {
    if (go_on_to(goal, watch)) return true;
    proof::Machine machine = question_.machine();
    set_bad(machine, question_.goals()[goal].reached, {});
    const Answer answer = prove(machine, watch.options(options_));
    watch.clear();
    if (ProofWatch::interrupted()) return ProofWatch::stopped(answer.how) == 0;
    if (answer.verdict == Verdict::holds) never_.push_back(goal);
    if (answer.verdict == Verdict::unknown) unknown_.push_back(goal);
    if (answer.verdict == Verdict::fails) suite_->add(goals_->seen(answer.run));
    return true;
  }

  /// Whether a few more instants of the newest run reach it.
  bool go_on_to(size_t goal, const ProofWatch& watch) {
    if (suite_->runs().empty()) return false;
    proof::Run run = suite_->runs().back().inputs;
    proof::Machine machine = proof::after(question_.machine(), run);
    machine.bad = question_.goals()[goal].reached;
    const proof::Reduction reduction(machine);
    const Answer found = reduction.lifted(
        proof::bounded_search(reduction.machine())->work(watch.stop(most_going_on)));
    if (found.verdict != Verdict::fails) return false;
    run.insert(run.end(), found.run.begin(), found.run.end());
    suite_->replace_newest(goals_->seen(std::move(run)));
    return true;
  }

  /// As stimuli, each instant with what its outputs are.
  std::string text_of(const proof::GoalRun& run) {
    std::string text = "# reaches " + std::to_string(run.reached.size()) + " of " +
                       std::to_string(question_.goals().size()) +
                       " statements, states and transitions\n";
    simulation_.load();
    for (const std::vector<bool>& inputs : run.inputs) {
      const std::string line = proof::run_instant(simulation_, inputs);
      const std::string outputs = seen({}, simulation_.state(), simulation_);
      text += line + (line.empty() || outputs.empty() ? "" : " ") +
              (outputs.empty() ? "" : "-> " + outputs) + '\n';
    }
    return text;
  }

  bool write_all() {
    for (size_t n = 0; n < suite_->runs().size(); ++n) {
      const std::string path =
          options_.folder + '/' + module_->getName() + '-' + std::to_string(n + 1) + ".stimuli";
      SessionOutput file(path);
      if (file.opened()) file.out() << text_of(suite_->runs()[n]);
      if (!file.opened() || !file.finish()) return fail({path, 0, 0, 0, 0}, "cannot be written");
      if (!options_.quiet) std::cout << path << '\n';
    }
    return true;
  }

  void tell(const char* what, const std::vector<size_t>& goals) const {
    for (size_t goal : goals)
      std::cout << "# "
                << translated(std::string(what) + ": " + question_.goals()[goal].kind + ": " +
                              question_.goals()[goal].name)
                << '\n';
  }

  Module* module_;
  std::string file_;
  const Options& options_;
  Simulation simulation_;
  proof::CampaignMachine question_;
  std::optional<proof::Goals> goals_;
  std::optional<proof::RunSuite> suite_;
  std::vector<size_t> never_, unknown_;
};

}  // namespace

int cover_module(Options& options, Messages& messages) {
  const std::string& file = options.files.front();
  try {
    const std::vector<Module*> modules = outer_modules(load_modules(file, options, messages));
    if (modules.empty()) return unusable;
    if (modules.size() != 1) {
      fail(file + " holds several modules; --module names one");
      return wrong_usage;
    }
    return Cover(modules.front(), file, options).run();
  } catch (const proof::MachineError& error) {
    fail({file, 0, 0, 0, 0}, error.reason);
  } catch (...) {
    fail(fault_under_way(file));
  }
  return unusable;
}

}  // namespace kiva::tarn_program
