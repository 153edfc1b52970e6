// Runs of growing length from the start, 64 side by side. Each run takes every input with a chance
// of its own: what needs many ones in a row, or few, is met, too.

#include <random>

#include "proof/engine.h"

namespace kiva::proof {

namespace {

class RandomSearch : public Engine {
 public:
  explicit RandomSearch(const Machine& machine)
      : machine_(machine), stepper_(machine), words_(machine.inputs.size()) {}

  std::string name() const override { return "random runs"; }
  bool exhausted() const override { return rounds_ >= most_rounds; }
  std::string so_far() const override {
    return std::to_string(instants_) + " random instants without one";
  }

  Answer work(const Stop& stop) override {
    while (!exhausted()) {
      stepper_.start();
      past_.clear();
      for (size_t instant = 0; instant < length_; ++instant) {
        if (stop()) return {};
        for (std::uint64_t& word : words_) word = chance();
        past_.push_back(words_);
        stepper_.look(words_);
        stop.count(200 + 2.0 * machine_.aig.size() + 20.0 * static_cast<double>(words_.size()));
        instants_ += 64;
        if (const std::uint64_t bad = stepper_.word(machine_.bad)) return failing(bad);
        stepper_.move();
      }
      if (++rounds_ % 4 == 0 && length_ < 4096) length_ *= 2;
    }
    return {};
  }

 private:
  static constexpr int most_rounds = 60;

  /// Ones with a chance of 1/8, 1/4, 1/2, 3/4, by round.
  std::uint64_t chance() {
    switch (rounds_ % 4) {
      case 0:
        return random_();
      case 1:
        return random_() & random_();
      case 2:
        return random_() | random_();
      default:
        return random_() & random_() & random_();
    }
  }

  Answer failing(std::uint64_t bad) const {
    Answer answer{.verdict = Verdict::fails, .engine = name(), .shortest = false};
    int run = 0;
    while (((bad >> run) & 1) == 0) ++run;
    for (const std::vector<std::uint64_t>& words : past_) {
      std::vector<bool>& inputs = answer.run.emplace_back();
      for (std::uint64_t word : words) inputs.push_back(((word >> run) & 1) != 0);
    }
    return answer;
  }

  const Machine& machine_;
  Stepper stepper_;
  std::vector<std::uint64_t> words_;
  std::vector<std::vector<std::uint64_t>> past_;
  std::mt19937_64 random_{0x9e3779b97f4a7c15};  // the same runs each time
  size_t length_ = 16;
  int rounds_ = 0;
  long instants_ = 0;
};

}  // namespace

std::unique_ptr<Engine> random_search(const Machine& machine) {
  return std::make_unique<RandomSearch>(machine);
}

}  // namespace kiva::proof
