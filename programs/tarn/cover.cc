#include "programs/tarn/cover.h"

#include <algorithm>
#include <iostream>
#include <set>

#include "engine/expectations.h"
#include "programs/tarn/compare.h"
#include "programs/tarn/map_of.h"
#include "programs/tarn/proof_watch.h"
#include "programs/tarn/translate.h"
#include "proof/campaign/campaign_machine.h"
#include "proof/question.h"
#include "tarn/session/session_files.h"

namespace kiva::tarn_program {

namespace {

using proof::Answer;
using proof::Verdict;

/// A run, and the numbers of the goals that it reaches.
struct CoveringRun {
  proof::Run inputs;
  std::set<size_t> reached;
};

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
    if (map.empty()) return told(file_, "has no map of its source (tarn --map)");
    const CoverageGoals goals(map, simulation_);
    if (!goals.problem.empty()) return told(file_ + ".map", goals.problem);
    question_.cover(goals.goals);
    question_.build();
    const ProofWatch watch;
    for (size_t goal = 0; goal < question_.goals().size(); ++goal) {
      if (reached_.contains(goal)) continue;
      if (!seek(goal, watch)) return undecided;
    }
    thin_out();
    if (!write_all()) return unusable;
    tell("never reached", never_);
    tell("not known to be reached", unknown_);
    return unknown_.empty() ? 0 : undecided;
  }

 private:
  static int told(const std::string& file, const std::string& reason) {
    fail({file, 0, 0, 0, 0}, reason);
    return unusable;
  }

  /// False when it was interrupted.
  bool seek(size_t goal, const ProofWatch& watch) {
    proof::Machine machine = question_.machine();
    set_bad(machine, question_.goals()[goal].reached, {});
    const Answer answer = prove(machine, watch.options(options_));
    watch.clear();
    if (ProofWatch::interrupted()) return ProofWatch::stopped(answer.how) == 0;
    if (answer.verdict == Verdict::holds) never_.push_back(goal);
    if (answer.verdict == Verdict::unknown) unknown_.push_back(goal);
    if (answer.verdict != Verdict::fails) return true;
    runs_.push_back({answer.run, goals_of(answer.run)});
    reached_.insert(runs_.back().reached.begin(), runs_.back().reached.end());
    return true;
  }

  std::set<size_t> goals_of(const proof::Run& run) const {
    std::set<size_t> reached;
    proof::Stepper stepper(question_.machine());
    for (size_t instant = 0; instant < run.size(); ++instant) {
      if (instant > 0) stepper.move();
      stepper.look(proof::words_of(run[instant]));
      for (size_t goal = 0; goal < question_.goals().size(); ++goal)
        if ((stepper.word(question_.goals()[goal].reached) & 1) != 0) reached.insert(goal);
    }
    return reached;
  }

  /// Runs that reach most of what is left first, until nothing is left.
  void thin_out() {
    std::vector<CoveringRun> kept;
    std::set<size_t> left = reached_;
    while (!left.empty()) {
      const auto gain = [&](const CoveringRun& run) {
        return std::count_if(run.reached.begin(), run.reached.end(),
                             [&](size_t goal) { return left.contains(goal); });
      };
      const auto best = std::max_element(
          runs_.begin(), runs_.end(),
          [&](const CoveringRun& a, const CoveringRun& b) { return gain(a) < gain(b); });
      for (size_t goal : best->reached) left.erase(goal);
      kept.push_back(*best);
    }
    runs_ = std::move(kept);
  }

  /// As stimuli, each instant with what its outputs are.
  std::string text_of(const CoveringRun& run) {
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
    for (size_t n = 0; n < runs_.size(); ++n) {
      const std::string path =
          options_.folder + '/' + module_->getName() + '-' + std::to_string(n + 1) + ".stimuli";
      SessionOutput file(path);
      if (file.opened()) file.out() << text_of(runs_[n]);
      if (!file.opened() || !file.finish()) return fail({path, 0, 0, 0, 0}, "cannot be written");
      if (!options_.quiet) std::cout << path << '\n';
    }
    return true;
  }

  void tell(const char* what, const std::vector<size_t>& goals) const {
    for (size_t goal : goals)
      std::cout << "# " << what << ": " << question_.goals()[goal].kind << ": "
                << question_.goals()[goal].name << '\n';
  }

  Module* module_;
  std::string file_;
  const Options& options_;
  Simulation simulation_;
  proof::CampaignMachine question_;
  std::vector<CoveringRun> runs_;
  std::set<size_t> reached_;
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
