// The ternary diagram of a function. Its size is the number of different functions that products of
// cofactors give, not the number of ways to them, and nothing here recurs: a function of 10,000
// variables builds like any other.

#include "bdd/tdd.h"

#include <algorithm>
#include <iostream>
#include <unordered_map>

#include "base/graph_walk.h"
#include "bdd/internals.h"

namespace kiva {

Tdd::Tdd(bddpp_manager* manager, const bdd& f) : manager_(manager), function_(f) {
  if (manager == nullptr) {
    std::cerr << "in Tdd::Tdd() : error: bdd manager not yet created !\n";
    return;
  }
  bdd_internals::require_own(manager, "Tdd", {f.node()});
  bddpp_manager& m = *manager;
  const auto value_of = [&m](const bdd& g) { return m.Bdd_is_tautology(g) ? g : m.Bdd_if(g); };
  value_ = value_of(f);
  std::unordered_map<std::uint32_t, Tdd*> known{{bdd_internals::edge_of(f).code(), this}};
  const auto part = [&](const bdd& g, auto more) -> const Tdd* {
    const auto [at, is_new] = known.try_emplace(bdd_internals::edge_of(g).code(), nullptr);
    if (!is_new) return at->second;
    parts_.emplace_back(new Tdd(manager, g, value_of(g)));
    Tdd* made = parts_.back().get();
    made->place_ = parts_.size() - 1;
    at->second = made;
    more(made);
    return made;
  };
  const auto branches = [&m](const Tdd* here) { return !m.Bdd_is_tautology(here->function_); };
  walk_from(std::vector<Tdd*>{this}, branches, [&](Tdd* here, auto more) {
    const bdd then_side = m.Bdd_then(here->function_), else_side = m.Bdd_else(here->function_);
    here->then_ = part(then_side, more);
    here->else_ = part(else_side, more);
    here->common_ = part(m.Bdd_and(else_side, then_side), more);
  });
  place_ = parts_.size();
}

Tdd::~Tdd() = default;

void Tdd::for_each_implicant(const std::function<void(const literal_list&)>& take) const {
  struct step {
    const Tdd* part;
    int stage;
  };
  std::vector<step> way{{this, 0}};
  literal_list literals;
  while (!way.empty()) {
    step& top = way.back();
    const Tdd& here = *top.part;
    if (here.is_constant()) {
      if (here.is_one()) take(literals);
      way.pop_back();
      continue;
    }
    // A literal stands only while its own branch is walked.
    if (top.stage == 1 || top.stage == 2) literals.pop_back();
    const int stage = top.stage++;
    if (stage == 3) {
      way.pop_back();
      continue;
    }
    if (stage < 2) literals.push_back(literal_code(here.value_.node()->var_index(), 1 - stage));
    way.push_back({stage == 0 ? here.then_ : stage == 1 ? here.else_ : here.common_, 0});
  }
}

std::vector<const Tdd*> Tdd::parts_from_below() const {
  std::vector<const Tdd*> parts;
  for (const auto& part : parts_) parts.push_back(part.get());
  const auto index = [](const Tdd* part) { return part->value_.node()->var_index(); };
  std::stable_sort(parts.begin(), parts.end(), [&](const Tdd* a, const Tdd* b) {
    if (a->is_constant() || b->is_constant()) return a->is_constant() && !b->is_constant();
    return index(a) > index(b);
  });
  parts.push_back(this);
  return parts;
}

long Tdd::implicant_number(long most) const {
  std::vector<long> number(parts_.size() + 1, 0);
  for (const Tdd* part : parts_from_below()) {
    long& here = number[part->place_];
    if (part->is_constant()) {
      here = part->is_one() ? 1 : 0;
    } else {
      here = std::min(most, number[part->then_->place_] + number[part->else_->place_] +
                                number[part->common_->place_]);
    }
  }
  return number.back();
}

}  // namespace kiva
