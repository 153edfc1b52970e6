// Layers of states until one holds a state and inputs that are bad, or nothing new is reached.

#include <numeric>

#include "proof/diagrams.h"
#include "proof/engine.h"
#include "proof/layers.h"

namespace kiva::proof {

namespace {

constexpr double layer_steps = 20'000;  // beside what grows

class StateWalk : public Engine {
 public:
  explicit StateWalk(const Machine& machine) : machine_(machine), layers_(machine, {machine.bad}) {}

  std::string name() const override { return "states"; }
  bool exhausted() const override { return layers_.too_large(); }
  size_t good_instants() const override { return layers_.done(); }
  std::string so_far() const override {
    if (!layers_.made()) return exhausted() ? "diagrams too large" : "making diagrams";
    return states() + " states in " + std::to_string(layers_.done()) + " instants" +
           (exhausted() ? ", then diagrams too large" : "");
  }

  Answer work(const Stop& stop) override {
    Answer answer;
    layers_.until(stop, [&] { walk(stop, answer); });
    return answer;
  }

 private:
  void walk(const Stop& stop, Answer& answer) {
    if (!layers_.made()) layers_.make(stop);
    bddpp_manager& manager = layers_.manager();
    while (!layers_.complete()) {
      const bdd found = manager.Bdd_and(layers_.layer(), layers_.root(0));
      if (found != manager.Bdd_zero()) {
        Run run = layers_.run_to(found, layers_.done());
        answer = {.verdict = Verdict::fails, .engine = name(), .run = std::move(run)};
        return;
      }
      if (stop()) return;
      stop.count(layer_steps);
      layers_.go_on();
    }
    answer = holding();
  }

  std::string states() const {
    if (layers_.done() == 0) return "no";
    std::vector<size_t> all(layers_.latches().size());
    std::iota(all.begin(), all.end(), size_t{0});
    return count_states(layers_.system(), layers_.reached(), all).decimal();
  }

  Answer holding() const {
    Answer answer{.verdict = Verdict::holds, .engine = name()};
    Invariant& invariant = answer.invariant.emplace();
    for (size_t k = 0; k < machine_.latches.size(); ++k)
      invariant.latches.push_back(invariant.aig.variable());
    std::vector<Literal> entries(static_cast<size_t>(layers_.system().manager.Nb_bdd_vars()), zero);
    for (size_t k = 0; k < layers_.latches().size(); ++k)
      entries[static_cast<size_t>(layers_.system().registers[k].now)] =
          invariant.latches[layers_.latches()[k]];
    invariant.holds = image_of(layers_.reached(), entries, invariant.aig);
    answer.how =
        "all " + states() + " states seen, the last in instant " + std::to_string(layers_.done());
    return answer;
  }

  const Machine& machine_;
  mutable Layers layers_;
};

}  // namespace

std::unique_ptr<Engine> state_walk(const Machine& machine) {
  return std::make_unique<StateWalk>(machine);
}

}  // namespace kiva::proof
