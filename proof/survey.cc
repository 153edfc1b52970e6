// A state is alive when something that shows can be both in it, or is not what it was in the state
// before, or when an instant leads from it to a state that is alive. What is not alive is dead.

#include "proof/survey.h"

#include <algorithm>
#include <map>

#include "proof/goal_runs.h"
#include "proof/layers.h"
#include "proof/property.h"
#include "proof/reduction.h"

namespace kiva::proof {

namespace {

/// All that the question is about, as roots.
std::vector<Literal> roots_of(const SurveyQuestion& question) {
  std::vector<Literal> roots = question.goals;
  roots.insert(roots.end(), question.shown.begin(), question.shown.end());
  for (size_t latch : question.registers) roots.push_back(question.machine.latches[latch].now);
  roots.push_back(question.allowed);
  return roots;
}

class Surveyor {
 public:
  Surveyor(const SurveyQuestion& question, const ProverOptions& options)
      : question_(question),
        options_(options),
        end_(Stop::after(options.seconds, options.asked)),
        reduction_(question.machine, roots_of(question)),
        layers_(reduction_.machine(), roots_but_last(), reduction_.roots().back()) {
    result_.goals.assign(question.goals.size(), Survey::Goal::unknown);
  }

  Survey run() {
    for (const GoalRun& run : Goals(question_.machine, question_.goals, question_.allowed)
                                  .random_runs(Stop::after(options_.seconds / 8, options_.asked)))
      for (size_t goal : run.reached) result_.goals[goal] = Survey::Goal::reached;
    const Stop walk_end = Stop::after(options_.seconds / 2, options_.asked);
    layers_.until(walk_end, [&] { walk(walk_end); });
    count();
    for (Survey::Goal& goal : result_.goals)
      if (layers_.made() && layers_.complete() && goal == Survey::Goal::unknown)
        goal = Survey::Goal::never;
    layers_.until(end_, [&] { find_dead(); });
    prove_rest();
    return result_;
  }

 private:
  std::vector<Literal> roots_but_last() const {
    return {reduction_.roots().begin(), reduction_.roots().end() - 1};
  }
  /// In what is known of the reachable states.
  void walk(const Stop& stop) {
    layers_.make(stop);
    while (!layers_.complete()) {
      const bdd now = layers_.manager().Bdd_and(layers_.layer(), layers_.allowed());
      for (size_t goal = 0; goal < result_.goals.size(); ++goal)
        if (result_.goals[goal] == Survey::Goal::unknown &&
            layers_.manager().Bdd_and(now, layers_.root(goal)) != layers_.manager().Bdd_zero())
          result_.goals[goal] = Survey::Goal::reached;
      layers_.go_on();
      if (options_.progress)
        options_.progress("walked over " + std::to_string(layers_.done()) + " instants");
    }
  }

  void count() {
    if (layers_.done() == 0) return;
    // Of registers that always agree only one is left, and those that never change are gone.
    std::map<std::uint32_t, size_t> by_node;
    const std::vector<size_t>& latches = layers_.latches();
    for (size_t k = 0; k < latches.size(); ++k)
      by_node[node_of(reduction_.machine().latches[latches[k]].now)] = k;
    std::vector<size_t> counted;
    const size_t first = question_.goals.size() + question_.shown.size();
    for (size_t k = 0; k < question_.registers.size(); ++k)
      if (const auto at = by_node.find(node_of(reduction_.roots()[first + k])); at != by_node.end())
        counted.push_back(at->second);
    std::ranges::sort(counted);
    counted.erase(std::unique(counted.begin(), counted.end()), counted.end());
    result_.states = count_states(layers_.system(), layers_.reached(), counted).decimal();
    result_.all_states = layers_.complete();
  }

  /// Of the known states those from which an allowed instant leads into the set.
  bdd before(const bdd& states) {
    return some_inputs(layers_.manager().Bdd_vector_compose(states, next_));
  }
  bdd some_inputs(const bdd& f) {
    return layers_.manager().Bdd_and_exist(f, layers_.allowed(), inputs_);
  }

  void find_dead() {
    if (!layers_.made() || question_.shown.empty()) return;
    bddpp_manager& manager = layers_.manager();
    std::vector<long> indices;
    for (const TransitionSystem::Input& input : layers_.system().inputs)
      indices.push_back(input.index);
    inputs_ = product(manager, indices);
    const bdd zero = manager.Bdd_zero();
    const bdd care = layers_.complete() ? layers_.reached() : manager.Bdd_one();
    // What is agreed on the known states is often small where the whole function is not.
    for (const TransitionSystem::Register& reg : layers_.system().registers)
      next_.emplace_back(reg.now, manager.Bdd_constrain(reg.f, care));
    bdd alive = zero;
    for (size_t k = 0; k < question_.shown.size(); ++k) {
      const bdd shown = manager.Bdd_constrain(layers_.root(question_.goals.size() + k), care);
      const bdd can_be = some_inputs(shown), can_miss = some_inputs(manager.Bdd_not(shown));
      alive = manager.Bdd_or(alive, manager.Bdd_and(can_be, can_miss));
      alive = manager.Bdd_or(alive, manager.Bdd_and(can_be, before(can_miss)));
      alive = manager.Bdd_or(alive, manager.Bdd_and(can_miss, before(can_be)));
    }
    alive = manager.Bdd_and(alive, care);
    for (bdd fresh = alive; fresh != zero;) {
      fresh = manager.Bdd_and(manager.Bdd_and(before(fresh), care), manager.Bdd_not(alive));
      alive = manager.Bdd_or(alive, fresh);
    }
    const bdd dead = manager.Bdd_not(alive);
    for (size_t number = 0; number < layers_.done(); ++number) {
      const bdd found = manager.Bdd_and(layers_.layer(number), dead);
      if (found == zero) continue;
      Run run = layers_.run_to(found, number);
      run.pop_back();  // the inputs of the instant in that state do not matter
      result_.dead = reduction_.lifted({.verdict = Verdict::fails, .run = std::move(run)}).run;
      return;
    }
  }

  /// By turns in growing times.
  void prove_rest() {
    for (double seconds = 0.25; !end_(); seconds *= 4) {
      bool open = false;
      for (size_t goal = 0; goal < result_.goals.size() && !end_(); ++goal) {
        if (result_.goals[goal] != Survey::Goal::unknown) continue;
        Machine machine = question_.machine;
        set_bad(machine, question_.goals[goal],
                question_.allowed == one ? std::vector<Literal>() : std::vector{question_.allowed});
        ProverOptions options = options_;
        options.seconds = seconds;
        const Answer answer = prove(machine, options);
        if (answer.verdict == Verdict::holds) result_.goals[goal] = Survey::Goal::never;
        if (answer.verdict == Verdict::fails) result_.goals[goal] = Survey::Goal::reached;
        open = open || answer.verdict == Verdict::unknown;
      }
      if (!open) return;
    }
  }

  const SurveyQuestion& question_;
  const ProverOptions& options_;
  const Stop end_;
  const Reduction reduction_;
  Layers layers_;
  bdd inputs_;
  std::vector<std::pair<long, bdd>> next_;
  Survey result_;
};

}  // namespace

Survey survey(const SurveyQuestion& question, const ProverOptions& options) {
  return Surveyor(question, options).run();
}

}  // namespace kiva::proof
