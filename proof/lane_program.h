#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "proof/machine.h"

namespace kiva::proof {

/// A bit each of 256 runs; word k holds runs 64 k to 64 k + 63.
struct alignas(32) Lanes {
  static constexpr size_t words = 4, runs = 64 * words;
  std::uint64_t word[words]{};

  static Lanes all() {
    return {{~std::uint64_t{0}, ~std::uint64_t{0}, ~std::uint64_t{0}, ~std::uint64_t{0}}};
  }
  bool any() const { return (word[0] | word[1] | word[2] | word[3]) != 0; }
  bool has(size_t run) const { return (word[run / 64] >> (run % 64) & 1) != 0; }
  void set(size_t run) { word[run / 64] |= std::uint64_t{1} << (run % 64); }
  std::uint64_t count() const;
  Lanes and_with(const Lanes& other) const;
  Lanes and_not(const Lanes& other) const;
  friend bool operator==(const Lanes&, const Lanes&) = default;
};

/// A machine laid out straight, to be run for 256 runs at a time. What it gives is that of
/// `Stepper`. Many threads may run one program, each over slots of its own.
class LaneProgram {
 public:
  using Slots = std::vector<Lanes>;
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

  /// Latches at their start.
  Slots start() const;
  /// Computes an instant from latches and inputs.
  void look(Slots& slots) const;
  /// The latches move.
  void move(Slots& slots) const;
  /// Adds to `seen`, by place, the runs of `among` in which it is 1.
  static void see(const std::vector<Place>& places, const Slots& slots, const Lanes& among,
                  std::vector<Lanes>& seen);
  static Lanes read(const Slots& slots, Place place);

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
