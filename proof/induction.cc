// If k instants in a row without a bad one are always followed by a good one, and the first k
// instants of all runs are good, all are. States that repeat on the way are left out: a shortest
// run to a bad instant has none. That no two are equal is asked for only where a model repeats one.

#include "proof/bounded_search.h"

namespace kiva::proof {

namespace {

class Induction : public Engine {
 public:
  explicit Induction(const Machine& machine)
      : base_(machine), instants_(machine, false), sat_(instants_.aig()) {}

  std::string name() const override { return "induction"; }
  size_t good_instants() const override { return base_.good_instants(); }
  std::string so_far() const override {
    return "no induction over " + std::to_string(k_) + (k_ == 1 ? " instant" : " instants");
  }

  Answer work(const Stop& stop) override {
    while (!stop()) {
      if (!step_holds_ && !step(stop)) continue;
      const Answer found = base_.search(stop, k_);
      if (found.verdict == Verdict::fails) return found;
      if (base_.good_instants() < k_) break;
      Answer answer{.verdict = Verdict::holds, .engine = name()};
      answer.how = "induction over " + std::to_string(k_) + (k_ == 1 ? " instant" : " instants");
      if (k_ == 0) answer.invariant = Invariant();  // no state at all is bad
      return answer;
    }
    return {};
  }

 private:
  /// Tries the step over k instants, and goes on to k + 1 where it fails.
  bool step(const Stop& stop) {
    if (instants_.instants() <= k_) {
      bad_ = sat_.literal(instants_.add());
      stop.count(instants_.steps_to_add());
    }
    const std::optional<bool> fails = sat_.solve({bad_}, stop);
    if (!fails) return false;
    if (!*fails) return step_holds_ = true;
    if (part_equal_states()) return false;
    sat_.clause({-bad_});
    ++k_;
    return false;
  }

  /// Asks for a difference between two states that the model has equal.
  bool part_equal_states() {
    const size_t count = instants_.instants();
    std::vector<std::vector<bool>> states(count);
    for (size_t i = 0; i < count; ++i)
      for (Literal latch : instants_.state(i)) states[i].push_back(sat_.value_of(latch));
    for (size_t i = 0; i < count; ++i)
      for (size_t j = i + 1; j < count; ++j) {
        if (states[i] != states[j]) continue;
        std::vector<int> apart;
        for (size_t k = 0; k < states[i].size(); ++k) {
          const int a = sat_.literal(instants_.state(i)[k]),
                    b = sat_.literal(instants_.state(j)[k]);
          const int differ = sat_.fresh();
          sat_.clause({-differ, a, b});
          sat_.clause({-differ, -a, -b});
          apart.push_back(differ);
        }
        sat_.clause(apart);
        return true;
      }
    return false;
  }

  BoundedSearch base_;
  Unrolling instants_;
  Sat sat_;
  int bad_ = 0;   ///< of the last instant
  size_t k_ = 0;  ///< good instants that the step starts from
  bool step_holds_ = false;
};

}  // namespace

std::unique_ptr<Engine> induction(const Machine& machine) {
  return std::make_unique<Induction>(machine);
}

}  // namespace kiva::proof
