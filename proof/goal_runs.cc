#include "proof/goal_runs.h"

#include <algorithm>
#include <random>

#include "proof/lane_program.h"

namespace kiva::proof {

GoalRun Goals::seen(Run run) const {
  GoalRun found;
  Stepper stepper(machine_);
  size_t useful = 0;
  for (size_t instant = 0; instant < run.size(); ++instant) {
    if (instant > 0) stepper.move();
    stepper.look(words_of(run[instant]));
    if ((stepper.word(allowed_) & 1) == 0) break;
    for (size_t goal = 0; goal < goals_.size(); ++goal)
      if ((stepper.word(goals_[goal]) & 1) != 0 && found.reached.insert(goal).second)
        useful = instant + 1;
  }
  run.resize(useful);
  found.inputs = std::move(run);
  return found;
}

namespace {

/// A block of random runs, with what they reach.
class RandomBlock {
 public:
  RandomBlock(const LaneProgram& program, size_t inputs, std::mt19937_64& random)
      : program_(program), inputs_(inputs), random_(random), slots_(program.start()) {}

  /// Adds to `seen`, by place, the runs that come there.
  void make(size_t instants, const std::vector<LaneProgram::Place>& places,
            LaneProgram::Place allowed, std::vector<Lanes>& seen) {
    // An input is One with a chance of 1/2, 1/4, 1/8 or 7/8, by word and input.
    Lanes open = Lanes::all();
    for (size_t instant = 0; instant < instants && open.any(); ++instant, ++made_) {
      if (instant > 0) program_.move(slots_);
      for (size_t input = 0; input < inputs_; ++input) {
        Lanes& lanes = slots_[program_.input_slot(input)];
        for (size_t word = 0; word < Lanes::words; ++word) lanes.word[word] = chance(word + input);
        past_.push_back(lanes);
      }
      program_.look(slots_);
      open = open.and_with(LaneProgram::read(slots_, allowed));
      LaneProgram::see(places, slots_, open, seen);
    }
  }
  Run run(size_t lane) const {
    Run run(made_, std::vector<bool>(inputs_));
    for (size_t at = 0; at < past_.size(); ++at)
      run[at / inputs_][at % inputs_] = past_[at].has(lane);
    return run;
  }

 private:
  std::uint64_t chance(size_t kind) {
    switch (kind % 4) {
      case 0:
        return random_();
      case 1:
        return random_() & random_();
      case 2:
        return random_() & random_() & random_();
      default:
        return random_() | random_() | random_();
    }
  }

  const LaneProgram& program_;
  size_t inputs_;
  std::mt19937_64& random_;
  LaneProgram::Slots slots_;
  size_t made_ = 0;          ///< instants
  std::vector<Lanes> past_;  ///< inputs, instant by instant
};

/// The run that most of the open goals were seen in.
size_t best_lane(const std::vector<Lanes>& seen, const std::set<size_t>& open) {
  std::vector<size_t> gain(Lanes::runs, 0);
  for (size_t goal : open)
    if (seen[goal].any())
      for (size_t lane = 0; lane < Lanes::runs; ++lane) gain[lane] += seen[goal].has(lane) ? 1 : 0;
  return static_cast<size_t>(std::max_element(gain.begin(), gain.end()) - gain.begin());
}

}  // namespace

std::vector<GoalRun> Goals::random_runs(const Stop& stop) const {
  constexpr size_t most_instants = 1024;
  constexpr int idle_blocks = 6;
  const LaneProgram program(machine_);
  std::vector<LaneProgram::Place> places;
  for (Literal goal : goals_) places.push_back(program.place(goal));
  std::mt19937_64 random{0x9e3779b97f4a7c15};
  std::set<size_t> open;
  for (size_t goal = 0; goal < goals_.size(); ++goal)
    if (goals_[goal] != zero) open.insert(goal);
  std::vector<GoalRun> runs;
  size_t instants = machine_.inputs.empty() ? most_instants : 16;
  for (int idle = 0; idle < idle_blocks && !open.empty() && !stop();) {
    RandomBlock block(program, machine_.inputs.size(), random);
    std::vector<Lanes> seen(goals_.size());
    block.make(instants, places, program.place(allowed_), seen);
    stop.count(steps(instants));
    ++idle;
    for (;;) {
      const size_t lane = best_lane(seen, open);
      if (std::ranges::none_of(open, [&](size_t goal) { return seen[goal].has(lane); })) break;
      runs.push_back(this->seen(block.run(lane)));
      for (size_t goal : runs.back().reached) open.erase(goal);
      idle = 0;
    }
    if (instants < most_instants && idle > 1) {
      instants *= 4;
      idle = 0;
    }
  }
  return runs;
}

}  // namespace kiva::proof
