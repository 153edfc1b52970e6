// A node may be kept negated: where both operands come negated it is an or of what is kept. So each
// node is one operation on two slots. Nodes of one depth do not read each other, and stand together
// by operation: a stretch is one tight loop. Slot 0 is the constant 0; inputs, latches and steps
// follow.

#include "proof/lane_program.h"

#include <algorithm>

namespace kiva::proof {

using Narrow [[gnu::vector_size(32), gnu::may_alias]] = std::uint64_t;
using Wide [[gnu::vector_size(64), gnu::may_alias]] = std::uint64_t;

template <class L>
struct Register;
template <>
struct Register<Lanes> {
  using Type = Narrow;
};
template <>
struct Register<WideLanes> {
  using Type = Wide;
};

/// The loops. Each is made for the plain machine, and for one with registers as wide as the lanes.
struct LaneLoops {
  template <LaneProgram::Op op, class L>
  [[gnu::always_inline]] static inline void run(const LaneProgram::Step* step, size_t count,
                                                const L* slots, L* out) {
    using R = typename Register<L>::Type;
    for (size_t k = 0; k < count; ++k) {
      const R& left = *reinterpret_cast<const R*>(slots + step[k].left);
      const R& right = *reinterpret_cast<const R*>(slots + step[k].right);
      R& result = *reinterpret_cast<R*>(out + k);
      if constexpr (op == LaneProgram::both)
        result = left & right;
      else if constexpr (op == LaneProgram::second_only)
        result = ~left & right;
      else
        result = left | right;
    }
  }

  template <class L>
  [[gnu::always_inline]] static inline void look(const LaneProgram& program, L* slots) {
    for (const LaneProgram::Stretch& stretch : program.stretches_) {
      const LaneProgram::Step* steps = program.steps_.data() + stretch.begin;
      const size_t count = stretch.end - stretch.begin;
      L* out = slots + program.first_step_slot_ + stretch.begin;
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

  template <class L>
  [[gnu::always_inline]] static inline void see(const std::vector<LaneProgram::Place>& places,
                                                const L* slots, const L& among, L* seen) {
    using R = typename Register<L>::Type;
    const R& mask = *reinterpret_cast<const R*>(&among);
    for (size_t k = 0; k < places.size(); ++k) {
      const R& slot = *reinterpret_cast<const R*>(slots + places[k].slot);
      const std::uint64_t flip = places[k].negated ? ~std::uint64_t{0} : 0;
      *reinterpret_cast<R*>(seen + k) |= (slot ^ flip) & mask;
    }
  }

#if defined(__x86_64__)
  [[gnu::target("avx2")]] static void look_fast(const LaneProgram& program, Lanes* slots) {
    look(program, slots);
  }
  [[gnu::target("avx512f")]] static void look_fast(const LaneProgram& program, WideLanes* slots) {
    look(program, slots);
  }
  [[gnu::target("avx2")]] static void see_fast(const std::vector<LaneProgram::Place>& places,
                                               const Lanes* slots, const Lanes& among,
                                               Lanes* seen) {
    see(places, slots, among, seen);
  }
  [[gnu::target("avx512f")]] static void see_fast(const std::vector<LaneProgram::Place>& places,
                                                  const WideLanes* slots, const WideLanes& among,
                                                  WideLanes* seen) {
    see(places, slots, among, seen);
  }
  template <class L>
  static bool has_fast() {
    static const bool has = L::words == Lanes::words ? __builtin_cpu_supports("avx2") != 0
                                                     : __builtin_cpu_supports("avx512f") != 0;
    return has;
  }
#else
  template <class L>
  static bool has_fast() {
    return false;
  }
  template <class L>
  static void look_fast(const LaneProgram&, L*) {}
  template <class L>
  static void see_fast(const std::vector<LaneProgram::Place>&, const L*, const L&, L*) {}
#endif
};

bool LaneProgram::has_wide_registers() {
  return LaneLoops::has_fast<WideLanes>();
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

template <class L>
LaneProgram::SlotsOf<L> LaneProgram::start() const {
  SlotsOf<L> slots(slot_count_ + latch_moves_);  // behind them, room for what moves
  for (const auto& [slot, initial] : initial_)
    if (initial) slots[slot] = L::all();
  return slots;
}

template <class L>
void LaneProgram::look(SlotsOf<L>& slots) const {
  if (LaneLoops::has_fast<L>())
    LaneLoops::look_fast(*this, slots.data());
  else
    LaneLoops::look(*this, slots.data());
}

template <class L>
void LaneProgram::see(const std::vector<Place>& places, const SlotsOf<L>& slots, const L& among,
                      std::vector<L>& seen) {
  if (LaneLoops::has_fast<L>())
    LaneLoops::see_fast(places, slots.data(), among, seen.data());
  else
    LaneLoops::see(places, slots.data(), among, seen.data());
}

template <class L>
void LaneProgram::move(SlotsOf<L>& slots) const {
  L* held = slots.data() + slot_count_;
  for (size_t k = 0; k < latch_moves_; ++k) held[k] = read(slots, moves_[k].from);
  for (size_t k = latch_moves_; k < moves_.size(); ++k)
    slots[moves_[k].to] = read(slots, moves_[k].from);
  for (size_t k = 0; k < latch_moves_; ++k) slots[moves_[k].to] = held[k];
}

template LaneProgram::SlotsOf<Lanes> LaneProgram::start<Lanes>() const;
template LaneProgram::SlotsOf<WideLanes> LaneProgram::start<WideLanes>() const;
template void LaneProgram::look(SlotsOf<Lanes>&) const;
template void LaneProgram::look(SlotsOf<WideLanes>&) const;
template void LaneProgram::move(SlotsOf<Lanes>&) const;
template void LaneProgram::move(SlotsOf<WideLanes>&) const;
template void LaneProgram::see(const std::vector<Place>&, const SlotsOf<Lanes>&, const Lanes&,
                               std::vector<Lanes>&);
template void LaneProgram::see(const std::vector<Place>&, const SlotsOf<WideLanes>&,
                               const WideLanes&, std::vector<WideLanes>&);

}  // namespace kiva::proof
