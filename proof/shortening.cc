// Delta debugging: halves of the run, quarters and so on down to single instants are left out while
// what is left is bad, candidates side by side.

#include "proof/shortening.h"

#include <algorithm>

namespace kiva::proof {

namespace {
constexpr size_t none = static_cast<size_t>(-1);
}

Shortening::Shortening(const Machine& machine)
    : reduction_(machine), program_(reduction_.machine()) {}

void Shortening::write_inputs(const std::vector<Run>& runs, size_t instant,
                              LaneProgram::Slots& slots) const {
  for (size_t input = 0; input < reduction_.machine().inputs.size(); ++input) {
    Lanes& lanes = slots[program_.input_slot(input)] = {};
    for (size_t k = 0; k < runs.size(); ++k)
      if (instant < runs[k].size() && runs[k][instant][reduction_.input_of(input)]) lanes.set(k);
  }
}

std::vector<size_t> Shortening::first_bad(const std::vector<Run>& runs) {
  std::vector<size_t> first(runs.size(), 0);
  const LaneProgram::Place bad = program_.place(reduction_.machine().bad);
  LaneProgram::Slots slots = program_.start();
  Lanes open;
  for (size_t k = 0; k < runs.size(); ++k) open.set(k);
  for (size_t instant = 0; open.any(); ++instant) {
    if (instant > 0) program_.move(slots);
    write_inputs(runs, instant, slots);
    program_.look(slots);
    work_ += static_cast<double>(program_.size());
    const Lanes now = LaneProgram::read(slots, bad);
    for (size_t k = 0; k < runs.size(); ++k) {
      if (!open.has(k)) continue;
      const bool here = now.has(k) && instant < runs[k].size();
      if (here) first[k] = instant + 1;
      if (here || instant + 1 >= runs[k].size()) open.word[k / 64] &= ~(std::uint64_t{1} << k % 64);
    }
  }
  return first;
}

template <class Candidate>
size_t Shortening::take_first(Run& run, size_t count, const Candidate& candidate) {
  for (size_t begin = 0; begin < count && work_ < most_work; begin += Lanes::runs) {
    std::vector<Run> runs;
    for (size_t k = begin; k < std::min(count, begin + Lanes::runs); ++k)
      runs.push_back(candidate(k));
    const std::vector<size_t> first = first_bad(runs);
    for (size_t k = 0; k < runs.size(); ++k) {
      if (first[k] == 0) continue;
      run = std::move(runs[k]);
      run.resize(first[k]);
      return begin + k;
    }
  }
  return none;
}

void Shortening::drop_instants(Run& run) {
  for (size_t size = std::max<size_t>(run.size() / 2, 1); size > 0; size /= 2) {
    // Behind the piece that went last, first.
    for (size_t from = 0; from < run.size();) {
      const size_t pieces = (run.size() - from + size - 1) / size;
      const size_t taken = take_first(run, pieces, [&](size_t k) {
        Run without = run;
        const auto begin = without.begin() + static_cast<std::ptrdiff_t>(from + k * size);
        const auto left = static_cast<size_t>(without.end() - begin);
        without.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(size, left)));
        return without;
      });
      if (taken == none) break;
      from += taken * size;
    }
  }
}

void Shortening::drop_inputs(Run& run) {
  const size_t inputs = run.front().size();
  for (size_t input = 0; input < inputs;) {
    const size_t taken = take_first(run, inputs - input, [&](size_t k) {
      Run without = run;
      for (std::vector<bool>& instant : without) instant[input + k] = false;
      return without;
    });
    if (taken == none) break;
    input += taken + 1;
  }
  for (size_t from = 0;;) {
    std::vector<std::pair<size_t, size_t>> ones;
    for (size_t at = from; at < run.size() * inputs; ++at)
      if (run[at / inputs][at % inputs]) ones.emplace_back(at / inputs, at % inputs);
    const size_t taken = take_first(run, ones.size(), [&](size_t k) {
      Run without = run;
      without[ones[k].first][ones[k].second] = false;
      return without;
    });
    if (taken == none) break;
    from = ones[taken].first * inputs + ones[taken].second + 1;
  }
}

Run Shortening::shortened(Run run) {
  work_ = 0;
  run.resize(first_bad({run}).front());
  if (run.empty()) return run;
  drop_instants(run);
  if (!run.front().empty()) drop_inputs(run);
  return run;
}

}  // namespace kiva::proof
