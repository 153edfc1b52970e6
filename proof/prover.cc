#include "proof/prover.h"

#include "proof/correspondence.h"
#include "proof/reduction.h"
#include "proof/sat.h"

namespace kiva::proof {

Stop Stop::after(double seconds, const std::atomic<bool>* asked) {
  return {Clock::now() +
              std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds)),
          asked};
}

namespace {

class Turns {
 public:
  Turns(const Machine& machine, const ProverOptions& options, Stop::Clock::time_point end)
      : options_(options), end_(end) {
    engines_.push_back(random_search(machine));
    engines_.push_back(bounded_search(machine));
    bounded_ = engines_.back().get();
    engines_.push_back(frames_search(machine));
    if (!options.invariant) engines_.push_back(induction(machine));
    engines_.push_back(state_walk(machine));
  }

  /// Until an answer, or slices have grown to so many seconds.
  Answer run(double longest) {
    for (; !over() && slice_ <= longest; slice_ *= 1.6) {
      for (const std::unique_ptr<Engine>& engine : engines_) {
        if (engine->exhausted() || over()) continue;
        Answer answer = engine->work(slice_of(slice_));
        if (answer.verdict == Verdict::fails) return shortest(std::move(answer));
        if (answer.verdict == Verdict::holds && (answer.invariant || !options_.invariant))
          return answer;
        if (options_.progress) options_.progress(so_far());
      }
    }
    Answer none;
    none.how = so_far();
    return none;
  }

 private:
  bool over() const { return Stop(end_, options_.asked)(); }
  Stop slice_of(double seconds) const {
    return {std::min(end_, Stop::Clock::now() + std::chrono::duration_cast<Stop::Clock::duration>(
                                                    std::chrono::duration<double>(seconds))),
            options_.asked};
  }

  std::string so_far() const {
    std::string text = bounded_->so_far();
    for (const std::unique_ptr<Engine>& engine : engines_)
      if (engine.get() != bounded_ && !engine->so_far().empty())
        text += "; " + engine->name() + ": " + engine->so_far();
    return text;
  }

  /// The bounded search finds a shortest run, unless all shorter ones are known to be good.
  Answer shortest(Answer answer) {
    while (!answer.shortest && !over()) {
      if (bounded_->good_instants() + 1 >= answer.run.size()) {
        answer.shortest = true;
      } else {
        Answer shorter = bounded_->work(slice_of(0.1));
        if (shorter.verdict == Verdict::fails) return shorter;
        if (options_.progress)
          options_.progress("found in instant " + std::to_string(answer.run.size()) +
                            ", looking for an earlier one: " + bounded_->so_far());
      }
    }
    return answer;
  }

  const ProverOptions& options_;
  Stop::Clock::time_point end_;
  std::vector<std::unique_ptr<Engine>> engines_;
  Engine* bounded_ = nullptr;
  double slice_ = 0.03;
};

/// On the machine with one node for all that correspond, where there are such. An invariant of it
/// says nothing of the others, so none is given.
Answer prove_merged(const Machine& machine, Turns& turns, const ProverOptions& options,
                    Stop::Clock::time_point end) {
  constexpr double longest = 1e9, part = 0.4;
  Correspondence correspondence(machine);
  if (options.progress) options.progress("looking for signals that correspond");
  if (!correspondence.find(Stop::after(options.seconds * part, options.asked)) ||
      correspondence.count() == 0)
    return turns.run(longest);
  const Machine merged = correspondence.merged();
  const Reduction reduction(merged);
  Turns again(reduction.machine(), options, end);
  Answer answer = reduction.lifted(again.run(longest));
  answer.invariant.reset();
  if (answer.verdict == Verdict::holds)
    answer.how =
        std::to_string(correspondence.count()) + " signals correspond to others; " + answer.how;
  return answer;
}

}  // namespace

Answer prove(const Machine& machine, const ProverOptions& options) {
  constexpr double longest_at_first = 0.03;  // each engine once
  const Stop::Clock::time_point end =
      Stop::Clock::now() + std::chrono::duration_cast<Stop::Clock::duration>(
                               std::chrono::duration<double>(options.seconds));
  const Reduction reduction(machine);
  Turns turns(reduction.machine(), options, end);
  Answer answer = turns.run(options.invariant ? options.seconds : longest_at_first);
  if (answer.verdict == Verdict::unknown && !options.invariant)
    answer = prove_merged(reduction.machine(), turns, options, end);
  return reduction.lifted(std::move(answer));
}

bool is_invariant(const Machine& machine, const Invariant& invariant) {
  Aig aig = machine.aig;
  std::vector<std::uint32_t> nodes;
  for (std::uint32_t node = 1; node < invariant.aig.size(); ++node) nodes.push_back(node);
  std::vector<Literal> now(invariant.aig.size(), zero), next(now), start(now);
  for (size_t k = 0; k < invariant.latches.size(); ++k) {
    const Machine::Latch& latch = machine.latches[k];
    now[node_of(invariant.latches[k])] = latch.now;
    next[node_of(invariant.latches[k])] = latch.next;
    start[node_of(invariant.latches[k])] = latch.initial ? one : zero;
  }
  for (std::vector<Literal>* image : {&now, &next, &start})
    copy_nodes(invariant.aig, nodes, aig, *image);
  const Literal inside = image_of(invariant.holds, now);
  if (image_of(invariant.holds, start) != one) return false;
  const Stop never = Stop::after(1e6);
  Sat sat(aig);
  return sat.solve({sat.literal(inside), -sat.literal(image_of(invariant.holds, next))}, never) ==
             false &&
         sat.solve({sat.literal(inside), sat.literal(machine.bad)}, never) == false;
}

}  // namespace kiva::proof
