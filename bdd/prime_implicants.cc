// Prime implicants, read off the ternary diagram.
//
// By collection: all implicants are met then side first, else side next, common part last; each
// takes the place of the first collected one that implies it, or is appended; at the end each
// element goes that implies one before it. This fixes the order of the primes, but the number of
// implicants met is the number of ways through the diagram, and each is compared with the list.
//
// By parts: the primes of f = (v and t) or (not v and e) are those of t that do not imply e, with
// v; those of e that do not imply t, with not v; and those of t and e. Every different part is
// solved once, so that a sum of 1,000 variables is no matter. Primes come then side first, else
// side next, common part last. This serves where the collection would meet too many.

#include <algorithm>
#include <iostream>

#include "base/process_end.h"
#include "bdd/internals.h"
#include "bdd/tdd.h"

namespace kiva {

namespace {

/// The implicants that the collection may meet; a list of them is searched in well under a second.
constexpr long most_collected = 20000;

[[noreturn]] void end_at_limit() {
  std::cerr << "error in Tdd::Bdd_implicants_loc() \n"
               "excessive number of products ...\n";
  end_process();
}

/// Products under collection, each with its literals and with a sketch of them: a product can imply
/// another only when the sketch of the other lies within its own.
class collection {
 public:
  collection(bddpp_manager& manager, const bdd* first, int count) : m_(manager) {
    for (int i = 0; i < count; ++i) {
      entries_.push_back(entry_of(first[i]));
      sketches_.push_back(entries_.back().sketch);
    }
  }

  void offer(literal_list literals) {
    entry cube;
    cube.sketch = sketch_of(literals);
    cube.literals = std::move(literals);
    offer(std::move(cube));
  }
  void offer_product(const bdd& cube) { offer(entry_of(cube)); }

  void remove_implying_later() {
    std::vector<char> gone(entries_.size(), 0);
    std::vector<entry> kept;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (gone[i]) continue;
      for (std::size_t j = i + 1; j < entries_.size(); ++j) {
        if (!gone[j] && implies(j, entries_[i])) gone[j] = 1;
      }
    }
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (!gone[i]) kept.push_back(std::move(entries_[i]));
    }
    entries_ = std::move(kept);
  }

  std::vector<bdd> products() const {
    std::vector<bdd> all;
    all.reserve(entries_.size());
    for (const entry& e : entries_) all.push_back(function_of(e));
    return all;
  }

 private:
  struct entry {
    literal_list literals;
    std::uint64_t sketch = 0;
    bdd other;  ///< set where the function is zero or no product, and has no literals therefore
  };

  static std::uint64_t sketch_of(const literal_list& literals) {
    std::uint64_t sketch = 0;
    for (int code : literals) sketch |= std::uint64_t{1} << code % 64;
    return sketch;
  }
  entry entry_of(const bdd& f) const {
    entry e;
    if (m_.Bdd_is_zero_tautologic(f) || !m_.Bdd_is_cube(f)) {
      e.other = f;
      e.sketch = ~std::uint64_t{0};
    } else {
      e.literals = literals_of(m_, f);
      e.sketch = sketch_of(e.literals);
    }
    return e;
  }
  bdd function_of(const entry& e) const {
    return e.other.initialised() ? e.other : product_of(m_, e.literals);
  }
  /// Whether the element implies the cube.
  bool implies(std::size_t i, const entry& cube) const {
    if (cube.other.initialised() || entries_[i].other.initialised())
      return m_.Bdd_imply(function_of(entries_[i]), function_of(cube)) != 0;
    return (cube.sketch & ~sketches_[i]) == 0 &&
           std::includes(entries_[i].literals.begin(), entries_[i].literals.end(),
                         cube.literals.begin(), cube.literals.end());
  }

  void offer(entry cube) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (!implies(i, cube)) continue;
      sketches_[i] = cube.sketch;
      entries_[i] = std::move(cube);
      return;
    }
    if (entries_.size() >= static_cast<std::size_t>(Max_number_of_terms())) end_at_limit();
    sketches_.push_back(cube.sketch);
    entries_.push_back(std::move(cube));
  }

  bddpp_manager& m_;
  std::vector<entry> entries_;
  std::vector<std::uint64_t> sketches_;  // apart, so that a search reads little memory
};

}  // namespace

int Tdd::Bdd_implicants_loc(const bdd& cube, int count, bdd* out) const {
  if (manager_ == nullptr) return count;
  collection found(*manager_, out, count);
  const bool any = manager_->Bdd_is_one_tautologic(cube);
  for_each_implicant([&](const literal_list& literals) {
    if (any)
      found.offer(literals);
    else
      found.offer_product(manager_->Bdd_and(cube, product_of(*manager_, literals)));
  });
  const std::vector<bdd> products = found.products();
  std::copy(products.begin(), products.end(), out);
  return static_cast<int>(products.size());
}

std::vector<bdd> Tdd::Bdd_prime_implicants() const {
  if (manager_ == nullptr) return {};
  return implicant_number(most_collected + 1) <= most_collected ? primes_by_collection()
                                                                : primes_by_parts();
}

int Tdd::Bdd_prime_implicants(bdd* out) const {
  const std::vector<bdd> primes = Bdd_prime_implicants();
  std::copy(primes.begin(), primes.end(), out);
  return static_cast<int>(primes.size());
}

std::vector<bdd> Tdd::primes_by_collection() const {
  collection found(*manager_, nullptr, 0);
  for_each_implicant([&](const literal_list& literals) { found.offer(literals); });
  found.remove_implying_later();
  return found.products();
}

std::vector<bdd> Tdd::primes_by_parts() const {  // house: one pass whose steps share its lists
  // The literals of a prime stand from its last variable up, so that one more is appended.
  using primes = std::vector<literal_list>;
  std::vector<primes> found(parts_.size() + 1);
  std::vector<long> uses(parts_.size() + 1, 0);
  const std::vector<const Tdd*> parts = parts_from_below();
  for (const Tdd* part : parts) {
    if (part->is_constant()) continue;
    for (const Tdd* child : {part->then_, part->else_, part->common_}) ++uses[child->place_];
  }
  std::vector<int> literals(manager_->Nb_bdd_vars(), 2);
  const auto implies = [&](const literal_list& prime, const bdd& f) {
    for (int code : prime) literals[code / 2] = code % 2;
    const bool result = manager_->Bdd_eval_for_literal(f, literals.data()) == 1;
    for (int code : prime) literals[code / 2] = 2;
    return result;
  };
  for (const Tdd* part : parts) {
    primes& here = found[part->place_];
    if (part->is_constant()) {
      if (part->is_one()) here.emplace_back();
      continue;
    }
    const auto take = [&](literal_list&& prime) {
      if (here.size() >= static_cast<std::size_t>(Max_number_of_terms())) end_at_limit();
      here.push_back(std::move(prime));
    };
    const long index = part->value_.node()->var_index();
    const auto add_side = [&](const Tdd* side, const Tdd* opposite, int value) {
      if (opposite->is_one()) return;
      for (const literal_list& prime : found[side->place_]) {
        if (implies(prime, opposite->function_)) continue;
        literal_list longer(prime);
        longer.push_back(literal_code(index, value));
        take(std::move(longer));
      }
    };
    add_side(part->then_, part->else_, 1);
    add_side(part->else_, part->then_, 0);
    // A list that nobody waits for any more is moved, not copied.
    for (const Tdd* side : {part->then_, part->else_}) {
      if (--uses[side->place_] == 0) primes().swap(found[side->place_]);
    }
    primes& common = found[part->common_->place_];
    const bool last_use = --uses[part->common_->place_] == 0;
    if (last_use && here.empty()) {
      here = std::move(common);
    } else {
      for (literal_list& prime : common) take(last_use ? std::move(prime) : literal_list(prime));
    }
    if (last_use) primes().swap(common);
  }
  std::vector<bdd> products;
  products.reserve(found.back().size());
  for (literal_list& prime : found.back()) {
    std::reverse(prime.begin(), prime.end());
    products.push_back(product_of(*manager_, prime));
  }
  return products;
}

std::vector<bdd> bddpp_manager::Bdd_prime_implicants(const bdd& f) {
  bdd_internals::require_own(this, "Bdd_prime_implicants", {f.node()});
  if (Bdd_is_tautology(f)) return {f};
  return Tdd(this, f).Bdd_prime_implicants();
}

int bddpp_manager::Bdd_prime_implicants(const bdd& f, bdd* out) {
  const std::vector<bdd> primes = Bdd_prime_implicants(f);
  std::copy(primes.begin(), primes.end(), out);
  return static_cast<int>(primes.size());
}

}  // namespace kiva
