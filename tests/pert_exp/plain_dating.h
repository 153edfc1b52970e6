#pragma once

#include <list>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "pert_exp/wood.h"

namespace kiva::test {

inline std::string numbered(std::string stem, long number) {
  return stem += std::to_string(number);
}

/// The equations of a wood as plain sets, and their dating written as the recursion that defines
/// it: no put-off pushes, no topological order, the machine's own stack.
struct Plain_wood {
  explicit Plain_wood(long nb_vars)
      : deps(nb_vars), readers(nb_vars), early(nb_vars, 0), late(nb_vars, 0) {}

  long size() const { return static_cast<long>(deps.size()); }
  void equation(long index, const std::set<long>& reads);

  long compute_dates();
  long compute_dates(const std::list<long>& indices);
  void early_propagation(long index, long date);
  void late_propagation(long index, long date);
  /// Indices with an equation that reach themselves along the dependences.
  std::list<long> on_cycles() const;
  /// By the definitions, for acyclic woods.
  long down_path(long index, long weight) const;
  long up_path(long index, long weight) const;

  std::vector<std::optional<std::set<long>>> deps;  ///< none for a variable without equation
  std::vector<std::set<long>> readers;
  std::vector<long> early, late;
  std::vector<long> weight;
  long level = 0;

 private:
  void push_from(long index);
};

/// What a random wood may hold.
struct Shape {
  long most_variables = 10;
  bool acyclic = true;
  enum { undated, small_dates, dates_about_the_bound, any_dates } dates = undated;
  /// Readers that no dependence answers for.
  bool extra_readers = false;
};

Plain_wood random_wood(std::mt19937& random, const Shape& shape);

/// Abstract equations with the dependences, readers, weights, dates and level of `plain`.
void fill(Bddexpressionwood& wood, const Plain_wood& plain);

}  // namespace kiva::test
