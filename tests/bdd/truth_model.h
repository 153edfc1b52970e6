#pragma once

#include <array>
#include <bitset>
#include <random>
#include <string>
#include <vector>

#include "bdd/bddpp.h"

namespace kiva::test {

/// Short names "x0", "x1", ...
inline std::string name_of(long i) {
  return std::string("x").append(std::to_string(i));
}

/// The truth table of a function of N variables: bit m is the value where variable `id` has bit id
/// of m. Operators on tables are bitwise and know nothing of diagrams.
template <int N>
using table = std::bitset<1 << N>;

template <int N>
table<N> variable_table(int id) {
  table<N> t;
  for (int m = 0; m < 1 << N; ++m) t[m] = (m >> id & 1) != 0;
  return t;
}

/// f where variable `id` has the value.
template <int N>
table<N> cofactor(const table<N>& f, int id, int value) {
  table<N> t;
  for (int m = 0; m < 1 << N; ++m) t[m] = f[(m & ~(1 << id)) | value << id];
  return t;
}

template <int N>
table<N> choice(const table<N>& f, const table<N>& g, const table<N>& h) {
  return (f & g) | (~f & h);
}

template <int N>
bool depends(const table<N>& f, int id) {
  return cofactor<N>(f, id, 0) != cofactor<N>(f, id, 1);
}

/// Reads the table off the diagram, one walk from the root for each line.
template <int N>
table<N> table_of(const bdd& f, const bdd_node* one) {
  table<N> t;
  for (int m = 0; m < 1 << N; ++m) {
    int link = f.link_type();
    const bdd_node* node = f.node();
    while (node != one) {
      const bool up = (m >> node->var_id() & 1) != 0;
      if (!up) link *= node->else_link_type();
      node = up ? node->then_node() : node->else_node();
    }
    t[m] = link == 1;
  }
  return t;
}

/// The function of a table by Shannon expansion from `index` down, with nodes made directly.
template <int N>
bdd build(bddpp_manager& m, const table<N>& t, long index = 0) {
  if (t.all()) return m.Bdd_one();
  if (t.none()) return m.Bdd_zero();
  const int id = static_cast<int>(m.indextoid(index));
  const bdd then_part = build<N>(m, cofactor<N>(t, id, 1), index + 1);
  const bdd else_part = build<N>(m, cofactor<N>(t, id, 0), index + 1);
  if (then_part == else_part) return then_part;
  int link = 1;
  bdd_node* node = m.Find_or_create_bdd_node(index, then_part.link_type(), else_part.link_type(),
                                             then_part.node(), else_part.node(), link);
  return bdd(&m, link, node);
}

/// Any function of the first `variables` ids.
template <int N>
table<N> random_table(std::mt19937& random, long variables) {
  table<N> t;
  for (int m = 0; m < 1 << N; ++m) t[m] = random() % 2 != 0;
  for (long id = variables; id < N; ++id) t = cofactor<N>(t, static_cast<int>(id), 0);
  return t;
}

/// Three variables a, b, c (ids 0, 1, 2) in one of their six orders, and the handle of each of the
/// 256 functions, found by Shannon expansion with nodes made directly.
class ThreeVariables {
 public:
  static constexpr int N = 3;
  static constexpr int functions = 256;
  static constexpr int orders = 6;

  explicit ThreeVariables(int order) {
    m.New_var_last("a");
    if (order % 2 == 0)
      m.New_var_after(0, "b");
    else
      m.New_var_before(0, "b");
    if (order / 2 == 2)
      m.New_var_after(1, "c");
    else
      m.New_var_before(order / 2, "c");
    for (int mask = 0; mask < functions; ++mask)
      f.push_back(build<N>(m, table<N>(static_cast<unsigned long>(mask))));
  }

  /// The mask of a function, looked up by equality of handles; -1 if it is none of ours.
  int mask_of(const bdd& g) const {
    for (int mask = 0; mask < functions; ++mask) {
      if (f[mask] == g) return mask;
    }
    return -1;
  }
  bdd var(int id) { return m.Bdd_var_by_id(id); }

  bddpp_manager m;
  std::vector<bdd> f;  ///< by mask
};

inline table<3> mask_table(int mask) {
  return table<3>(static_cast<unsigned long>(mask));
}
inline int mask_of(const table<3>& t) {
  return static_cast<int>(t.to_ulong());
}

/// All 27 literal arrays of three variables, by index.
inline std::vector<std::array<int, 3>> all_literals() {
  std::vector<std::array<int, 3>> all;
  for (int i = 0; i < 27; ++i) all.push_back({i % 3, i / 3 % 3, i / 9});
  return all;
}

/// A seed that is new in each run, for SCOPED_TRACE.
class PrintedSeed {
 public:
  PrintedSeed() : value(std::random_device()()) {}
  std::string text() const { return "seed " + std::to_string(value); }
  unsigned value;
};

}  // namespace kiva::test
