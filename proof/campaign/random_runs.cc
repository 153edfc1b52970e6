// The generator is SplitMix64, a counter that is mixed. A word whose bits are 1 with the chance
// 0.b1b2...bk (binary) is drawn from the last digit on: or-ing a random word halves the way to 1,
// and-ing one the way to 0.

#include "proof/campaign/random_runs.h"

#include <bit>
#include <cmath>

namespace kiva::proof {

namespace {

constexpr std::uint64_t golden = 0x9e3779b97f4a7c15;
constexpr unsigned digits = 32;
constexpr std::uint64_t certain = std::uint64_t{1} << digits;

std::uint64_t mixed(std::uint64_t z) {
  z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
  z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
  return z ^ (z >> 31);
}

}  // namespace

class RandomRuns::Drawn : public RunSource::Block {
 public:
  Drawn(const RandomRuns& of, std::uint64_t block)
      : of_(of), counter_(mixed(mixed(of.seed_ + golden) + block * golden)), left_(of.instants_) {
    const std::uint64_t behind = of.runs_ - block * 64;
    runs_ = behind >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << behind) - 1;
  }

  std::uint64_t next(std::uint64_t* words) override {
    if (left_-- <= 0) return 0;
    for (std::uint64_t chance : of_.chances_) *words++ = word(chance);
    return runs_;
  }

 private:
  std::uint64_t draw() { return mixed(counter_ += golden); }
  std::uint64_t word(std::uint64_t chance) {
    if (chance == certain / 2) return draw();
    if (chance == 0 || chance == certain) return chance == 0 ? 0 : ~std::uint64_t{0};
    std::uint64_t word = 0;
    for (auto digit = static_cast<unsigned>(std::countr_zero(chance)); digit < digits; ++digit)
      word = (chance >> digit & 1) != 0 ? word | draw() : word & draw();
    return word;
  }

  const RandomRuns& of_;
  std::uint64_t counter_, runs_ = 0;
  long left_;
};

RandomRuns::RandomRuns(std::uint64_t runs, long instants, std::uint64_t seed,
                       const std::vector<double>& chances)
    : runs_(runs), instants_(instants), seed_(seed) {
  for (double chance : chances)
    chances_.push_back(
        static_cast<std::uint64_t>(std::ceil(chance * static_cast<double>(certain))));
}

std::unique_ptr<RunSource::Block> RandomRuns::block(std::uint64_t number) const {
  return std::make_unique<Drawn>(*this, number);
}

}  // namespace kiva::proof
