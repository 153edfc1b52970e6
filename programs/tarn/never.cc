#include "programs/tarn/never.h"

#include <filesystem>
#include <iostream>

#include "base/translation.h"
#include "programs/tarn/map_of.h"
#include "proof/campaign/campaign_machine.h"
#include "tarn/zu/source_properties.h"

namespace kiva::tarn_program {

namespace {

using proof::Survey;

class NeverHappens {
 public:
  NeverHappens(Module* module, const std::string& file, const Options& options, Messages& messages)
      : module_(module),
        file_(file),
        messages_(messages),
        simulation_(module),
        machine_(simulation_, options.with_reset) {}

  void tell(const std::vector<std::string>& assumed, const proof::ProverOptions& options,
            const ProofWatch& watch) {
    for (const std::string& expression : assumed) machine_.assume(expression);
    const CoverageGoals goals(map_of(module_, file_), simulation_);  // none without a map
    machine_.cover(goals.goals);
    const size_t pieces = machine_.goals().size();
    machine_.cover_signals(goals.declared, false);
    machine_.build();
    const Survey found = proof::survey(machine_.survey(), options);
    watch.clear();
    size_t unknown = 0;
    for (size_t goal = 0; goal < found.goals.size(); ++goal) {
      unknown += found.goals[goal] == Survey::Goal::unknown ? 1 : 0;
      if (found.goals[goal] == Survey::Goal::never)
        tell_never(machine_.goals()[goal], goal < pieces);
    }
    if (found.dead) tell_dead(*found.dead);
    const std::string& name = module_->getName();
    if (unknown > 0)
      std::cout << "# " << name << ": "
                << translated("of " + std::to_string(unknown) + " of " +
                              std::to_string(found.goals.size()) +
                              " pieces it is not known whether they are reached")
                << '\n';
    std::cout << "# " << name << ": "
              << translated(found.states.empty() ? "states not counted"
                                                 : (found.all_states ? "" : "more than ") +
                                                       found.states + " reachable states")
              << std::endl;
  }

 private:
  void warn(const char* name, Place where, std::string sentence) {
    Diagnostic found;
    found.severity = Severity::warning;
    found.name = name;
    found.where = std::move(where);
    found.sentence = std::move(sentence);
    found.manner = Manner::untold;
    messages_.take(found);
  }

  /// As the user named the file.
  Place shown(const SourcePlace& place) const {
    std::error_code none;
    const bool ours = std::filesystem::equivalent(place.file, file_, none);
    return {ours ? file_ : place.file, place.first_line, place.first_column, place.last_line,
            place.last_column};
  }

  /// Where the name stands first in the module's text: its declaration.
  Place declaration(const std::string& name) const {
    const SourceSpan& head = module_->getSpan();
    if (!head.known()) return {file_, 0, 0, 0, 0};
    int number = head.first_line;
    for (const std::string& line : source_lines(*module_)) {
      // A module may bear the name of a signal.
      const bool first = number == head.first_line;
      const size_t from = first ? std::min(line.find(':'), line.size()) : 0;
      if (const size_t at = find_word(line, name, from); at != std::string::npos)
        return {*head.file, number, static_cast<int>(at) + 1, number,
                static_cast<int>(at + name.size())};
      ++number;
    }
    return place_of(head);
  }

  void tell_never(const proof::CampaignMachine::Goal& goal, bool piece) {
    if (piece) {
      const std::string one = goal.kind == CoverageGoal::statements ? "this statement"
                              : goal.kind == CoverageGoal::states   ? "this state"
                                                                    : "this transition";
      // Of a module that is run the same text may stand at several places.
      const std::string path = goal.name.substr(0, goal.name.find(' '));
      warn("never-reached", shown(goal.place),
           "no run reaches " + one + (path.find('/') == std::string::npos ? "" : " in " + path));
      return;
    }
    const size_t blank = goal.name.find(' ');
    const std::string list = goal.name.substr(0, blank), name = goal.name.substr(blank + 1);
    if (list == "input") return;
    warn("constant-signal", declaration(name),
         "the " + list + " \"" + name + "\" is " +
             (goal.kind == "present" ? "never present" : "present in every instant"));
  }

  void tell_dead(const proof::Run& run) {
    warn("dead-end", place_of(module_->getSpan()),
         "no output changes from instant " + std::to_string(run.size() + 1) +
             " on, whatever comes, after the run that the standard output tells");
    std::cout << "# " << module_->getName() << ": " << translated("no output changes after")
              << '\n';
    simulation_.load();
    for (const std::vector<bool>& inputs : run)
      std::cout << proof::run_instant(simulation_, inputs) << '\n';
  }

  Module* module_;
  const std::string& file_;
  Messages& messages_;
  Simulation simulation_;
  proof::CampaignMachine machine_;
};

}  // namespace

void tell_what_never_happens(Module* module, const std::string& file, const Options& options,
                             const std::vector<std::string>& assumed, const ProofWatch& watch,
                             Messages& messages) {
  NeverHappens(module, file, options, messages).tell(assumed, watch.options(options), watch);
}

}  // namespace kiva::tarn_program
