#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <vector>

#include "bdd/bddpp.h"
#include "bdd/literal_list.h"

namespace kiva {

/// A ternary decision diagram: at each variable the then cofactor, the else cofactor, and the
/// product of the two, for the implicants that do not mention the variable (after O. Coudert and
/// J. C. Madre, Implicit and incremental computation of primes and essential primes of boolean
/// functions, DAC 1992).
///
/// Equal parts are one object: the root owns every different part once.
class Tdd {
 public:
  /// Reports a null manager, and leaves the diagram empty.
  Tdd(bddpp_manager* manager, const bdd& f);
  Tdd(const Tdd&) = delete;
  Tdd& operator=(const Tdd&) = delete;
  ~Tdd();

  /// Null in a failed construction.
  bddpp_manager* manager() const { return manager_; }
  /// The function itself when it is constant, else its top variable.
  const bdd& value() const { return value_; }
  // Null on a constant.
  const Tdd* then_part() const { return then_; }
  const Tdd* else_part() const { return else_; }
  const Tdd* common_part() const { return common_; }

  /// Offers each implicant of the diagram, times `cube`, to the list out[0 .. count - 1]: it takes
  /// the place of the first element that implies it, else it is appended. Gives the new count.
  int Bdd_implicants_loc(const bdd& cube, int count, bdd* out) const;
  /// The prime implicants; none for zero.
  std::vector<bdd> Bdd_prime_implicants() const;
  int Bdd_prime_implicants(bdd* out) const;

  /// The diagram as an indented tree (print_structure.cc).
  void Print_bdd_structure(std::ostream& out) const;

 private:
  Tdd(bddpp_manager* manager, const bdd& f, const bdd& value)
      : manager_(manager), function_(f), value_(value) {}

  bool is_constant() const { return then_ == nullptr; }
  bool is_one() const { return is_constant() && value_.link_type() == 1; }
  /// Calls take(literals) for each implicant on the way then, else, common.
  void for_each_implicant(const std::function<void(const literal_list&)>& take) const;
  /// All different parts, those of later variables first; the root is the last.
  std::vector<const Tdd*> parts_from_below() const;
  /// The number of implicants that for_each_implicant meets; at most `most`.
  long implicant_number(long most) const;
  std::vector<bdd> primes_by_collection() const;
  std::vector<bdd> primes_by_parts() const;

  bddpp_manager* manager_ = nullptr;
  bdd function_;
  bdd value_;
  const Tdd* then_ = nullptr;
  const Tdd* else_ = nullptr;
  const Tdd* common_ = nullptr;
  std::size_t place_ = 0;  ///< in the root's parts; the root itself is behind them
  std::vector<std::unique_ptr<Tdd>> parts_;  ///< of the root only
};

}  // namespace kiva
