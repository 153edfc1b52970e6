// Latches that always agree are found as the coarsest partition that one instant preserves (van
// Eijk, 1998), taken against the initial values, so that a class also holds opposites; class 0
// holds those that never change. Random runs give the partition to begin with; it is refined until,
// each latch standing for the first of its class, all members have one next value as the graph
// knows it.

#include "proof/reduction.h"

#include <algorithm>
#include <map>
#include <random>

namespace kiva::proof {

namespace {

/// The places of the latches on which the roots depend, now or later.
std::vector<size_t> needed_latches(const Machine& machine, const std::vector<Literal>& roots) {
  std::vector<long> latch_at(machine.aig.size(), -1);
  for (size_t k = 0; k < machine.latches.size(); ++k)
    latch_at[node_of(machine.latches[k].now)] = static_cast<long>(k);
  std::vector<bool> seen(machine.aig.size(), false);
  std::vector<size_t> latches;
  std::vector<std::uint32_t> open;
  for (Literal root : roots) open.push_back(node_of(root));
  while (!open.empty()) {
    const std::uint32_t node = open.back();
    open.pop_back();
    if (seen[node]) continue;
    seen[node] = true;
    if (machine.aig.is_and(node)) {
      open.push_back(node_of(machine.aig.left(node)));
      open.push_back(node_of(machine.aig.right(node)));
    } else if (latch_at[node] >= 0) {
      latches.push_back(static_cast<size_t>(latch_at[node]));
      open.push_back(node_of(machine.latches[latches.back()].next));
    }
  }
  std::sort(latches.begin(), latches.end());
  return latches;
}

}  // namespace

/// For each latch of the cone the place, in the cone, of the first of its class.
struct Reduction::Classes {
  static constexpr long constant = -1;
  std::vector<long> first;

  Classes(const Machine& machine, const std::vector<size_t>& latches) {
    Stepper stepper(machine);
    std::mt19937_64 random(1);
    std::vector<std::uint64_t> inputs(machine.inputs.size());
    std::vector<std::uint64_t> seen(latches.size(), 0);
    std::vector<bool> changes(latches.size(), false);
    for (int instant = 0; instant < 48; ++instant) {
      for (std::uint64_t& word : inputs)
        word = instant % 3 == 2 ? random() & random() & random() : random();
      stepper.look(inputs);
      stepper.move();
      for (size_t k = 0; k < latches.size(); ++k) {
        const Machine::Latch& latch = machine.latches[latches[k]];
        const std::uint64_t word = stepper.word(negated_if(latch.now, latch.initial));
        seen[k] = (seen[k] ^ word) * 0x9e3779b97f4a7c15 + 0x7f4a7c15;
        changes[k] = changes[k] || word != 0;
      }
    }
    std::map<std::uint64_t, long> classes;
    for (size_t k = 0; k < latches.size(); ++k)
      first.push_back(!changes[k] ? constant
                                  : classes.emplace(seen[k], static_cast<long>(k)).first->second);
  }

  /// Parts members with different next values; false where none have. `next` are they, against the
  /// initial values.
  bool refine(const std::vector<Literal>& next) {
    std::map<std::pair<long, Literal>, long> parts;
    std::vector<long> parted(first.size());
    for (size_t k = 0; k < first.size(); ++k)
      parted[k] =
          first[k] == constant && next[k] == zero
              ? constant
              : parts.emplace(std::pair(first[k], next[k]), static_cast<long>(k)).first->second;
    const bool changed = parted != first;
    first = std::move(parted);
    return changed;
  }
};

Reduction::Reduction(const Machine& original, std::vector<Literal> kept)
    : original_(original),
      roots_(std::move(kept)),
      cone_latches_(needed_latches(original, roots_with(original.bad))) {
  Classes classes(original, cone_latches_);
  std::vector<Literal> roots = roots_with(original.bad);
  for (size_t latch : cone_latches_) roots.push_back(original.latches[latch].next);
  const std::vector<std::uint32_t> cone = original.aig.cone(roots);
  for (;;) {
    Aig aig;
    std::vector<Literal> image(original.aig.size(), zero);
    for (const Machine::Input& input : original.inputs)
      image[node_of(input.literal)] = aig.variable();
    for (size_t k = 0; k < cone_latches_.size(); ++k) {
      const Machine::Latch& latch = original.latches[cone_latches_[k]];
      const long first = classes.first[k];
      Literal value = zero;  // against the initial one
      if (first == static_cast<long>(k)) {
        value = negated_if(aig.variable(), latch.initial);
      } else if (first != Classes::constant) {
        const Machine::Latch& other = original.latches[cone_latches_[static_cast<size_t>(first)]];
        value = negated_if(image[node_of(other.now)], other.initial);
      }
      image[node_of(latch.now)] = negated_if(value, latch.initial);
    }
    copy_nodes(original.aig, cone, aig, image);
    std::vector<Literal> next;
    for (size_t latch : cone_latches_)
      next.push_back(negated_if(image_of(original.latches[latch].next, image),
                                original.latches[latch].initial));
    if (!classes.refine(next)) break;
  }
  build(classes);
}

std::vector<Literal> Reduction::roots_with(Literal bad) const {
  std::vector<Literal> roots = roots_;
  roots.push_back(bad);
  return roots;
}

void Reduction::build(const Classes& classes) {
  // What is needed once latches stand for others: a machine of those that are first, cut again.
  Machine merged;
  std::vector<Literal> image(original_.aig.size(), zero);
  for (const Machine::Input& input : original_.inputs)
    image[node_of(input.literal)] = merged.new_input(input.name);
  std::vector<size_t> first_latches;
  for (size_t k = 0; k < cone_latches_.size(); ++k) {
    const Machine::Latch& latch = original_.latches[cone_latches_[k]];
    const long first = classes.first[k];
    if (first == static_cast<long>(k)) {
      first_latches.push_back(cone_latches_[k]);
      image[node_of(latch.now)] = merged.latches[merged.new_latch(latch.name, latch.initial)].now;
    } else if (first == Classes::constant) {
      image[node_of(latch.now)] = latch.initial ? one : zero;
    } else {
      const Machine::Latch& other = original_.latches[cone_latches_[static_cast<size_t>(first)]];
      image[node_of(latch.now)] =
          negated_if(image[node_of(other.now)], other.initial != latch.initial);
    }
  }
  std::vector<Literal> roots = roots_with(original_.bad);
  for (size_t latch : first_latches) roots.push_back(original_.latches[latch].next);
  copy_nodes(original_.aig, original_.aig.cone(roots), merged.aig, image);
  for (size_t k = 0; k < first_latches.size(); ++k)
    merged.latches[k].next = image_of(original_.latches[first_latches[k]].next, image);
  merged.bad = image_of(original_.bad, image);
  for (Literal& root : roots_) root = image_of(root, image);

  cut(merged, first_latches);
  // What stands for each latch, as a literal of 2 * (place in the original + 1), or a constant.
  for (size_t k = 0; k < cone_latches_.size(); ++k) {
    const bool initial = original_.latches[cone_latches_[k]].initial;
    const long first = classes.first[k];
    if (first == Classes::constant) {
      shared_.push_back(initial ? one : zero);
    } else {
      const size_t other = cone_latches_[static_cast<size_t>(first)];
      shared_.push_back(negated_if(static_cast<Literal>(2 * (other + 1)),
                                   original_.latches[other].initial != initial));
    }
  }
}

/// Takes over what is needed.
void Reduction::cut(const Machine& merged, const std::vector<size_t>& first_latches) {
  std::vector<Literal> kept(merged.aig.size(), zero);
  std::vector<Literal> needed_roots = roots_with(merged.bad);
  const std::vector<size_t> needed = needed_latches(merged, needed_roots);
  for (size_t latch : needed) needed_roots.push_back(merged.latches[latch].next);
  const std::vector<std::uint32_t> cone = merged.aig.cone(needed_roots);
  std::vector<bool> in_cone(merged.aig.size(), false);
  for (std::uint32_t node : cone) in_cone[node] = true;
  for (size_t k = 0; k < merged.inputs.size(); ++k) {
    if (!in_cone[node_of(merged.inputs[k].literal)]) continue;
    kept[node_of(merged.inputs[k].literal)] = reduced_.new_input(merged.inputs[k].name);
    input_of_.push_back(static_cast<long>(k));
  }
  for (size_t latch : needed) {
    kept[node_of(merged.latches[latch].now)] =
        reduced_
            .latches[reduced_.new_latch(merged.latches[latch].name, merged.latches[latch].initial)]
            .now;
    latch_of_.push_back(static_cast<long>(first_latches[latch]));
  }
  copy_nodes(merged.aig, cone, reduced_.aig, kept);
  for (size_t k = 0; k < needed.size(); ++k)
    reduced_.latches[k].next = image_of(merged.latches[needed[k]].next, kept);
  reduced_.bad = image_of(merged.bad, kept);
  for (Literal& root : roots_) root = image_of(root, kept);
}

Answer Reduction::lifted(Answer answer) const {
  for (std::vector<bool>& inputs : answer.run) {
    std::vector<bool> all(original_.inputs.size(), false);
    for (size_t k = 0; k < inputs.size(); ++k) all[static_cast<size_t>(input_of_[k])] = inputs[k];
    inputs = std::move(all);
  }
  if (!answer.invariant) return answer;
  const Invariant& inner = *answer.invariant;
  Invariant whole;
  for (size_t k = 0; k < original_.latches.size(); ++k)
    whole.latches.push_back(whole.aig.variable());
  std::vector<Literal> image(inner.aig.size(), zero);
  for (size_t k = 0; k < inner.latches.size(); ++k)
    image[node_of(inner.latches[k])] = whole.latches[static_cast<size_t>(latch_of_[k])];
  std::vector<std::uint32_t> nodes;
  for (std::uint32_t node = 1; node < inner.aig.size(); ++node) nodes.push_back(node);
  copy_nodes(inner.aig, nodes, whole.aig, image);
  whole.holds = image_of(inner.holds, image);
  for (size_t k = 0; k < cone_latches_.size(); ++k) {
    const Literal shared = shared_[k];
    const Literal other = node_of(shared) == 0
                              ? shared
                              : negated_if(whole.latches[node_of(shared) - 1], is_negated(shared));
    whole.holds = whole.aig.both(whole.holds,
                                 negated(whole.aig.differ(whole.latches[cone_latches_[k]], other)));
  }
  answer.invariant = std::move(whole);
  return answer;
}

}  // namespace kiva::proof
