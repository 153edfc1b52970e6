#include "proof/campaign/run_source.h"

namespace kiva::proof {

Run RunSource::run(std::uint64_t number, size_t instants, size_t inputs) const {
  const std::unique_ptr<Block> walk = block(number / 64);
  std::vector<std::uint64_t> words(inputs);
  Run run;
  while (run.size() < instants && (walk->next(words.data()) >> (number % 64) & 1) != 0) {
    std::vector<bool>& bits = run.emplace_back();
    for (std::uint64_t word : words) bits.push_back((word >> (number % 64) & 1) != 0);
  }
  return run;
}

}  // namespace kiva::proof
