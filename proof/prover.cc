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
    // Most failing runs are found by the bounded search.
    engines_.push_back({random_search(machine), 0.5});
    engines_.push_back({bounded_search(machine), 6});
    bounded_ = engines_.back().engine.get();
    engines_.push_back({frames_search(machine), 1});
    if (!options.invariant) engines_.push_back({induction(machine), 0.5});
    engines_.push_back({state_walk(machine), 0.5});
  }

  static constexpr double first_slice = 0.004, growth = 1.6;
  bool over() const { return Stop(end_, options_.asked)(); }
  Stop slice_of(double seconds) const { return Stop::about(seconds, options_.asked, end_); }
  /// Until an answer, or slices have grown to more than so many seconds.
  Answer run(double longest) {
    for (; !over() && slice_ <= longest; slice_ *= growth) {
      for (const auto& [engine, share] : engines_) {
        if (engine->exhausted() || over()) continue;
        Answer answer = engine->work(slice_of(slice_ * share));
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
  struct Turn {
    std::unique_ptr<Engine> engine;
    double share;  ///< of a slice
  };

  std::string so_far() const {
    std::string text = bounded_->so_far();
    for (const auto& [engine, share] : engines_)
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
  std::vector<Turn> engines_;
  Engine* bounded_ = nullptr;
  double slice_ = first_slice;
};

}  // namespace

Answer prove(const Machine& machine, const ProverOptions& options) {
  constexpr double longest = 1e9, correspondence_share = 4;
  const Stop::Clock::time_point end =
      Stop::Clock::now() + std::chrono::duration_cast<Stop::Clock::duration>(
                               std::chrono::duration<double>(options.seconds));
  const Reduction reduction(machine);
  Turns turns(reduction.machine(), options, end);
  if (options.invariant) return reduction.lifted(turns.run(longest));
  Correspondence correspondence(reduction.machine());
  for (double slice = Turns::first_slice;; slice *= Turns::growth) {
    Answer answer = turns.run(slice);
    if (answer.verdict != Verdict::unknown || turns.over()) return reduction.lifted(answer);
    if (correspondence.find(turns.slice_of(slice * correspondence_share))) break;
  }
  if (correspondence.count() == 0) return reduction.lifted(turns.run(longest));
  // One node for all that correspond. An invariant of that machine says nothing of the others.
  const Machine merged = correspondence.merged();
  const Reduction again(merged);
  Answer answer = again.lifted(Turns(again.machine(), options, end).run(longest));
  answer.invariant.reset();
  if (answer.verdict == Verdict::holds)
    answer.how =
        std::to_string(correspondence.count()) + " signals correspond to others; " + answer.how;
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
