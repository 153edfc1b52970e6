#pragma once

#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

#include "proof/machine.h"

namespace kiva::proof {

/// A bit each of 64 `Words` runs; word k holds runs 64 k to 64 k + 63.
template <size_t Words>
struct alignas(8 * Words) LanesOf {
  static constexpr size_t words = Words, runs = 64 * words;
  std::uint64_t word[words]{};

  static LanesOf all() {
    LanesOf lanes;
    for (std::uint64_t& w : lanes.word) w = ~std::uint64_t{0};
    return lanes;
  }
  bool any() const {
    std::uint64_t some = 0;
    for (std::uint64_t w : word) some |= w;
    return some != 0;
  }
  bool has(size_t run) const { return (word[run / 64] >> (run % 64) & 1) != 0; }
  void set(size_t run) { word[run / 64] |= std::uint64_t{1} << (run % 64); }
  std::uint64_t count() const {
    std::uint64_t sum = 0;
    for (std::uint64_t w : word) sum += static_cast<std::uint64_t>(std::popcount(w));
    return sum;
  }
  LanesOf and_with(const LanesOf& other) const {
    LanesOf lanes = *this;
    for (size_t k = 0; k < words; ++k) lanes.word[k] &= other.word[k];
    return lanes;
  }
  LanesOf and_not(const LanesOf& other) const {
    LanesOf lanes = *this;
    for (size_t k = 0; k < words; ++k) lanes.word[k] &= ~other.word[k];
    return lanes;
  }
  friend bool operator==(const LanesOf&, const LanesOf&) = default;
};
using Lanes = LanesOf<4>;
/// For machines with registers of 512 bits; others are faster with `Lanes`.
using WideLanes = LanesOf<8>;

/// A machine laid out straight, to be run for 256 runs at a time, or 512. What it gives is that of
/// `Stepper`. Many threads may run one program, each over slots of its own.
class LaneProgram {
 public:
  template <class L>
  using SlotsOf = std::vector<L>;
  using Slots = SlotsOf<Lanes>;
  /// Where a literal stands among the slots.
  struct Place {
    std::uint32_t slot;
    bool negated;
    friend auto operator<=>(const Place&, const Place&) = default;
  };

  explicit LaneProgram(const Machine& machine);
  /// Of a literal of the machine.
  Place place(Literal literal) const {
    const Place of_node = place_of_node_[node_of(literal)];
    return {of_node.slot, of_node.negated != is_negated(literal)};
  }
  /// Of an input, by its place among the machine's.
  size_t input_slot(size_t input) const { return 1 + input; }
  size_t size() const { return slot_count_; }

  /// Whether this machine has the registers that `WideLanes` are for.
  static bool has_wide_registers();

  // For `Lanes` and `WideLanes`.
  /// Latches at their start.
  template <class L = Lanes>
  SlotsOf<L> start() const;
  /// Computes an instant from latches and inputs.
  template <class L>
  void look(SlotsOf<L>& slots) const;
  /// The latches move.
  template <class L>
  void move(SlotsOf<L>& slots) const;
  /// Adds to `seen`, by place, the runs of `among` in which it is 1.
  template <class L>
  static void see(const std::vector<Place>& places, const SlotsOf<L>& slots, const L& among,
                  std::vector<L>& seen);
  template <class L>
  static L read(const SlotsOf<L>& slots, Place place) {
    L lanes = slots[place.slot];
    if (place.negated)
      for (std::uint64_t& word : lanes.word) word = ~word;
    return lanes;
  }

 private:
  enum Op : std::uint8_t { both, second_only, either };
  struct Step {
    std::uint32_t left, right;
  };
  /// Steps of one kind that stand behind each other, as their results do.
  struct Stretch {
    Op op;
    std::uint32_t begin, end;
  };
  struct Move {
    std::uint32_t to;
    Place from;
  };
  friend struct LaneLoops;
  void lay_steps(const Aig& aig);

  std::uint32_t slot_count_ = 0, first_step_slot_ = 0;
  std::vector<Place> place_of_node_;
  std::vector<Step> steps_;
  std::vector<Stretch> stretches_;
  std::vector<Move> moves_;
  size_t latch_moves_ = 0;  ///< the first of them read what the others of them write
  std::vector<std::pair<std::uint32_t, bool>> initial_;
};

}  // namespace kiva::proof
