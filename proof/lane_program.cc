// A node may be kept negated: where both operands come negated it is an or of what is kept. So each
// node is one operation on two slots. Nodes of one depth do not read each other, and stand together
// by operation: a stretch is one tight loop. Slot 0 is the constant 0; inputs, latches and steps
// follow.

#include "proof/lane_program.h"

#include <algorithm>
#include <bit>

namespace kiva::proof {

using Wide [[gnu::vector_size(32), gnu::may_alias]] = std::uint64_t;

/// The loops. Each is made for the plain machine, and for one with wider registers.
struct LaneLoops {
  template <LaneProgram::Op op>
  [[gnu::always_inline]] static inline void run(const LaneProgram::Step* step, size_t count,
                                                const Lanes* slots, Lanes* out) {
    for (size_t k = 0; k < count; ++k) {
      const Wide& left = *reinterpret_cast<const Wide*>(slots + step[k].left);
      const Wide& right = *reinterpret_cast<const Wide*>(slots + step[k].right);
      Wide& result = *reinterpret_cast<Wide*>(out + k);
      if constexpr (op == LaneProgram::both)
        result = left & right;
      else if constexpr (op == LaneProgram::second_only)
        result = ~left & right;
      else
        result = left | right;
    }
  }

  [[gnu::always_inline]] static inline void look(const LaneProgram& program, Lanes* slots) {
    for (const LaneProgram::Stretch& stretch : program.stretches_) {
      const LaneProgram::Step* steps = program.steps_.data() + stretch.begin;
      const size_t count = stretch.end - stretch.begin;
      Lanes* out = slots + program.first_step_slot_ + stretch.begin;
      switch (stretch.op) {
        case LaneProgram::both:
          run<LaneProgram::both>(steps, count, slots, out);
          break;
        case LaneProgram::second_only:
          run<LaneProgram::second_only>(steps, count, slots, out);
          break;
        case LaneProgram::either:
          run<LaneProgram::either>(steps, count, slots, out);
          break;
      }
    }
  }

  [[gnu::always_inline]] static inline void see(const std::vector<LaneProgram::Place>& places,
                                                const Lanes* slots, const Lanes& among,
                                                Lanes* seen) {
    const Wide& mask = *reinterpret_cast<const Wide*>(&among);
    for (size_t k = 0; k < places.size(); ++k) {
      const Wide& slot = *reinterpret_cast<const Wide*>(slots + places[k].slot);
      const std::uint64_t flip = places[k].negated ? ~std::uint64_t{0} : 0;
      *reinterpret_cast<Wide*>(seen + k) |= (slot ^ flip) & mask;
    }
  }

#if defined(__x86_64__)
  [[gnu::target("avx2")]] static void look_wide(const LaneProgram& program, Lanes* slots) {
    look(program, slots);
  }
  [[gnu::target("avx2")]] static void see_wide(const std::vector<LaneProgram::Place>& places,
                                               const Lanes* slots, const Lanes& among,
                                               Lanes* seen) {
    see(places, slots, among, seen);
  }
  static bool wide() {
    static const bool has = __builtin_cpu_supports("avx2") != 0;
    return has;
  }
#else
  static bool wide() {
    return false;
  }
  static void look_wide(const LaneProgram&, Lanes*) {}
  static void see_wide(const std::vector<LaneProgram::Place>&, const Lanes*, const Lanes&, Lanes*) {
  }
#endif
};

std::uint64_t Lanes::count() const {
  std::uint64_t sum = 0;
  for (std::uint64_t w : word) sum += static_cast<std::uint64_t>(std::popcount(w));
  return sum;
}

Lanes Lanes::and_with(const Lanes& other) const {
  Lanes lanes = *this;
  for (size_t k = 0; k < words; ++k) lanes.word[k] &= other.word[k];
  return lanes;
}

Lanes Lanes::and_not(const Lanes& other) const {
  Lanes lanes = *this;
  for (size_t k = 0; k < words; ++k) lanes.word[k] &= ~other.word[k];
  return lanes;
}

LaneProgram::LaneProgram(const Machine& machine) : place_of_node_(machine.aig.size(), {0, false}) {
  slot_count_ = 1;
  for (const Machine::Input& input : machine.inputs)
    place_of_node_[node_of(input.literal)] = {slot_count_++, false};
  for (const Machine::Latch& latch : machine.latches) {
    place_of_node_[node_of(latch.now)] = {slot_count_, false};
    initial_.emplace_back(slot_count_++, latch.initial);
  }
  first_step_slot_ = slot_count_;
  lay_steps(machine.aig);
  for (const Machine::Latch& latch : machine.latches)
    moves_.push_back({place(latch.now).slot, place(latch.next)});
  const auto reads_latch = [&](const Move& m) { return m.from.slot < first_step_slot_; };
  latch_moves_ = static_cast<size_t>(
      std::stable_partition(moves_.begin(), moves_.end(), reads_latch) - moves_.begin());
}

void LaneProgram::lay_steps(const Aig& aig) {
  struct Laid {
    std::uint32_t node, depth;
    Op op;
  };
  std::vector<Laid> order;
  std::vector<std::uint32_t> depth(aig.size(), 0);
  for (std::uint32_t node = 1; node < aig.size(); ++node) {
    if (!aig.is_and(node)) continue;
    const Place left = place(aig.left(node)), right = place(aig.right(node));
    depth[node] = 1 + std::max(depth[node_of(aig.left(node))], depth[node_of(aig.right(node))]);
    const Op op = left.negated && right.negated   ? either
                  : left.negated != right.negated ? second_only
                                                  : both;
    // Its slot is known once all are in order; whether it is kept negated is known here.
    place_of_node_[node] = {0, op == either};
    order.push_back({node, depth[node], op});
  }
  std::stable_sort(order.begin(), order.end(), [](const Laid& a, const Laid& b) {
    return std::pair(a.depth, a.op) < std::pair(b.depth, b.op);
  });
  for (const Laid& laid : order) {
    Place left = place(aig.left(laid.node)), right = place(aig.right(laid.node));
    if (laid.op == second_only && right.negated) std::swap(left, right);
    place_of_node_[laid.node].slot = slot_count_++;
    const auto at = static_cast<std::uint32_t>(steps_.size());
    steps_.push_back({left.slot, right.slot});
    const bool fits =
        at != 0 && stretches_.back().op == laid.op && depth[order[at - 1].node] == laid.depth;
    if (fits)
      stretches_.back().end = at + 1;
    else
      stretches_.push_back({laid.op, at, at + 1});
  }
}

LaneProgram::Slots LaneProgram::start() const {
  Slots slots(slot_count_ + latch_moves_);  // behind them, room for what moves
  for (const auto& [slot, initial] : initial_)
    if (initial) slots[slot] = Lanes::all();
  return slots;
}

void LaneProgram::look(Slots& slots) const {
  if (LaneLoops::wide())
    LaneLoops::look_wide(*this, slots.data());
  else
    LaneLoops::look(*this, slots.data());
}

void LaneProgram::see(const std::vector<Place>& places, const Slots& slots, const Lanes& among,
                      std::vector<Lanes>& seen) {
  if (LaneLoops::wide())
    LaneLoops::see_wide(places, slots.data(), among, seen.data());
  else
    LaneLoops::see(places, slots.data(), among, seen.data());
}

Lanes LaneProgram::read(const Slots& slots, Place place) {
  Lanes lanes = slots[place.slot];
  if (place.negated)
    for (std::uint64_t& word : lanes.word) word = ~word;
  return lanes;
}

void LaneProgram::move(Slots& slots) const {
  Lanes* held = slots.data() + slot_count_;
  for (size_t k = 0; k < latch_moves_; ++k) held[k] = read(slots, moves_[k].from);
  for (size_t k = latch_moves_; k < moves_.size(); ++k)
    slots[moves_[k].to] = read(slots, moves_[k].from);
  for (size_t k = 0; k < latch_moves_; ++k) slots[moves_[k].to] = held[k];
}

}  // namespace kiva::proof
