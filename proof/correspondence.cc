// Signal correspondence (van Eijk, 1998). Nodes that random runs do not tell apart are claimed to
// be equal. Of the claims that hold in the first instant, whatever its inputs are, those stay that
// all of them together imply for the next instant: a solver refutes claims over two instants, the
// second on from any state in which all claims hold, until none is refuted. Each refutation is run
// side by side with neighbours of it, and parts classes everywhere. In both instants a node stands
// for all of its class, so that most claims are seen to hold by the graph alone.
//
// Invariants: 1. the first of a class has the least number in it. 2. A claim is given up when the
// solver comes to no end with it.

#include "proof/correspondence.h"

#include <algorithm>
#include <unordered_map>

namespace kiva::proof {

namespace {
constexpr int most_conflicts = 1000;

std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) {
  hash = (hash ^ word) * 0x9e3779b97f4a7c15;
  return hash ^ hash >> 29;
}
}  // namespace

/// Two instants in a row as a graph, or the first of all.
struct Correspondence::Round {
  Aig aig;
  std::vector<Literal> before, now;  ///< images of the machine's nodes in the two instants
  std::vector<Claim> assumed, claims;
  Sat sat{aig, true};
};

Correspondence::Correspondence(const Machine& machine) : machine_(machine) {
  std::vector<Literal> roots{machine.bad, zero};
  for (const Machine::Latch& latch : machine.latches) {
    roots.push_back(latch.now);
    roots.push_back(latch.next);
  }
  for (const Machine::Input& input : machine.inputs) roots.push_back(input.literal);
  cone_ = machine.aig.cone(roots);
  first_.resize(machine.aig.size());
  for (std::uint32_t node = 0; node < machine.aig.size(); ++node) first_[node] = 2 * node;
}

size_t Correspondence::count() const {
  return static_cast<size_t>(
      std::ranges::count_if(cone_, [&](std::uint32_t node) { return is_merged(node); }));
}

bool Correspondence::find(const Stop& stop) {
  group_by_random_runs();
  for (const bool from_start : {true, false})
    while (refute(from_start, stop))
      if (stop()) return false;
  return !stop();
}

void Correspondence::group_by_random_runs() {
  constexpr int instants = 256, runs = 4;
  std::vector<std::uint64_t> hashes(machine_.aig.size(), 0);
  std::vector<bool> opposite(machine_.aig.size(), false);
  Stepper stepper(machine_);
  std::vector<std::uint64_t> inputs(machine_.inputs.size());
  for (int run = 0; run < runs; ++run) {
    stepper.start();
    for (int instant = 0; instant < instants; ++instant) {
      for (std::uint64_t& word : inputs) word = run % 2 == 0 ? random_() : random_() & random_();
      if (instant > 0) stepper.move();
      stepper.look(inputs);
      for (std::uint32_t node : cone_) {
        if (run == 0 && instant == 0) opposite[node] = (stepper.word(2 * node) & 1) != 0;
        hashes[node] = mixed(hashes[node], stepper.word(negated_if(2 * node, opposite[node])));
      }
    }
  }
  std::unordered_map<std::uint64_t, std::uint32_t> known;
  for (std::uint32_t node : cone_) {
    const std::uint32_t first = known.emplace(hashes[node], node).first->second;
    first_[node] = negated_if(2 * first, opposite[first] != opposite[node]);
  }
}

/// Fills `image`, whose inputs stand in it; `own` gives a latch's value. A node that is merged is
/// what its first is, and that it is so a claim.
template <class Own>
void Correspondence::copy_merged(Aig& to, std::vector<Literal>& image, std::vector<Claim>& claims,
                                 const Own& own) const {
  for (const Machine::Latch& latch : machine_.latches)
    if (!is_merged(node_of(latch.now))) image[node_of(latch.now)] = own(latch);
  std::unordered_map<std::uint32_t, const Machine::Latch*> merged_latches;
  for (const Machine::Latch& latch : machine_.latches)
    if (is_merged(node_of(latch.now))) merged_latches.emplace(node_of(latch.now), &latch);
  for (std::uint32_t node : cone_) {
    const bool is_and = machine_.aig.is_and(node);
    const Literal function = is_and ? to.both(image_of(machine_.aig.left(node), image),
                                              image_of(machine_.aig.right(node), image))
                                    : zero;
    if (!is_merged(node)) {
      if (is_and) image[node] = function;
      continue;
    }
    const auto latch = merged_latches.find(node);
    Literal value = is_and ? function : image[node];
    image[node] = image_of(first_[node], image);
    if (latch != merged_latches.end()) value = own(*latch->second);
    if (value != image[node]) claims.push_back({node, first_[node], value, image[node]});
  }
}

/// Whether a claim was refuted, or given up.
bool Correspondence::refute(bool from_start, const Stop& stop) {
  Round round;
  Aig& aig = round.aig;
  round.before.assign(machine_.aig.size(), zero);
  round.now = round.before;
  if (!from_start) {
    for (const Machine::Input& input : machine_.inputs)
      round.before[node_of(input.literal)] = aig.variable();
    copy_merged(aig, round.before, round.assumed, [&](const Machine::Latch& latch) {
      return is_merged(node_of(latch.now)) ? round.before[node_of(latch.now)] : aig.variable();
    });
  }
  for (const Machine::Input& input : machine_.inputs)
    round.now[node_of(input.literal)] = aig.variable();
  copy_merged(aig, round.now, round.claims, [&](const Machine::Latch& latch) {
    if (from_start) return latch.initial ? one : zero;
    return image_of(latch.next, round.before);
  });
  for (const Claim& claim : round.assumed) {
    const int own = round.sat.literal(claim.own), shared = round.sat.literal(claim.shared);
    round.sat.clause({-own, shared});
    round.sat.clause({own, -shared});
  }
  bool refuted = false;
  const std::vector<Literal> claimed = first_;
  for (const Claim& claim : round.claims) {
    if (first_[claim.node] != claimed[claim.node]) continue;
    const int own = round.sat.literal(claim.own), shared = round.sat.literal(claim.shared);
    const int differ = round.sat.fresh();
    round.sat.clause({-differ, own, shared});
    round.sat.clause({-differ, -own, -shared});
    const std::optional<bool> found = round.sat.solve({differ}, stop, most_conflicts);
    if (found == false) {
      // It may help with the next ones.
      round.sat.clause({-own, shared});
      round.sat.clause({own, -shared});
      continue;
    }
    refuted = true;
    if (stop()) return true;
    if (found != true || !split(round, from_start)) first_[claim.node] = 2 * claim.node;
  }
  return refuted;
}

void Correspondence::look(std::vector<std::uint64_t>& words) const {
  const auto word = [&](Literal a) {
    return words[node_of(a)] ^ (is_negated(a) ? ~std::uint64_t{0} : 0);
  };
  for (std::uint32_t node : cone_)
    if (machine_.aig.is_and(node))
      words[node] = word(machine_.aig.left(node)) & word(machine_.aig.right(node));
}

/// Runs what the solver has found, and neighbours of it in which all claims hold before, too. False
/// where that parts nothing.
bool Correspondence::split(const Round& round, bool from_start) {
  const auto bits = [](bool value) { return value ? ~std::uint64_t{0} : 0; };
  std::unordered_map<std::uint32_t, std::uint64_t> drawn;
  const auto near = [&](Literal found) {
    if (!round.aig.is_variable(node_of(found))) return bits(round.sat.value_of(found));
    const auto [at, fresh] = drawn.emplace(node_of(found), 0);
    if (fresh)
      at->second = random_() & random_() & random_() & random_() & random_() & ~std::uint64_t{1};
    return bits(round.sat.value_of(found)) ^ at->second;
  };
  std::vector<std::uint64_t> words(machine_.aig.size(), 0);
  std::uint64_t good = ~std::uint64_t{0};
  const auto word = [&](Literal a) { return words[node_of(a)] ^ bits(is_negated(a)); };
  if (!from_start) {
    for (const Machine::Latch& latch : machine_.latches)
      words[node_of(latch.now)] = near(round.before[node_of(latch.now)]);
    for (const Machine::Input& input : machine_.inputs)
      words[node_of(input.literal)] = near(round.before[node_of(input.literal)]);
    look(words);
    for (const Claim& claim : round.assumed) good &= ~(words[claim.node] ^ word(claim.first));
  }
  std::vector<std::uint64_t> state;
  for (const Machine::Latch& latch : machine_.latches)
    state.push_back(from_start ? bits(latch.initial) : word(latch.next));
  for (size_t k = 0; k < state.size(); ++k) words[node_of(machine_.latches[k].now)] = state[k];
  for (const Machine::Input& input : machine_.inputs)
    words[node_of(input.literal)] = near(round.now[node_of(input.literal)]);
  look(words);
  return part(words, good | 1);
}

/// Parts classes whose members are not the same in all the lanes.
bool Correspondence::part(const std::vector<std::uint64_t>& words, std::uint64_t lanes) {
  struct Key {
    std::uint32_t first;
    std::uint64_t word;
    bool operator==(const Key&) const = default;
  };
  struct Hash {
    size_t operator()(const Key& key) const { return mixed(key.first, key.word); }
  };
  std::unordered_map<Key, Literal, Hash> parts;
  bool parted = false;
  for (std::uint32_t node : cone_) {
    if (!is_merged(node)) continue;
    const Literal old = first_[node];
    const std::uint32_t first = node_of(old);
    const std::uint64_t differ =
        (words[node] ^ words[first] ^ (is_negated(old) ? ~std::uint64_t{0} : 0)) & lanes;
    if (differ == 0) continue;
    parted = true;
    // Against the old first, so that opposites stay together.
    const auto [at, fresh] = parts.emplace(Key{first, differ}, 2 * node);
    if (fresh) at->second = negated_if(2 * node, is_negated(old));
    first_[node] = negated_if(at->second, is_negated(old));
  }
  return parted;
}

Machine Correspondence::merged() const {
  Machine to;
  std::vector<Literal> image(machine_.aig.size(), zero);
  for (const Machine::Input& input : machine_.inputs)
    image[node_of(input.literal)] = to.new_input(input.name);
  std::vector<const Machine::Latch*> kept;
  std::vector<Claim> claims;
  copy_merged(to.aig, image, claims, [&](const Machine::Latch& latch) {
    if (is_merged(node_of(latch.now))) return zero;
    kept.push_back(&latch);
    return to.latches[to.new_latch(latch.name, latch.initial)].now;
  });
  for (size_t k = 0; k < kept.size(); ++k) to.latches[k].next = image_of(kept[k]->next, image);
  to.bad = image_of(machine_.bad, image);
  return to;
}

}  // namespace kiva::proof
