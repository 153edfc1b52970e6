// Every operator on every function of three variables, in each order of the variables, against
// tables of eight bits.

#include <gtest/gtest.h>

#include "tests/bdd/truth_model.h"

namespace kiva::test {

namespace {

constexpr int N = 3;
constexpr int functions = ThreeVariables::functions;

class InEachOrder : public ::testing::TestWithParam<int> {
 protected:
  ThreeVariables world{GetParam()};
  bddpp_manager& m = world.m;
  const std::vector<bdd>& f = world.f;

  static std::string at(int a, int b, int c = 0) {
    return "masks " + std::to_string(a) + ", " + std::to_string(b) + ", " + std::to_string(c);
  }
  /// The literals by index as a table: one where they all hold.
  table<N> cube_table(const std::array<int, 3>& literals) const {
    table<N> t;
    t.set();
    for (int index = 0; index < N; ++index) {
      const table<N> v = variable_table<N>(static_cast<int>(m.indextoid(index)));
      if (literals[index] == 1) t &= v;
      if (literals[index] == 0) t &= ~v;
    }
    return t;
  }
  table<N> under(table<N> t, const std::array<int, 3>& literals) const {
    for (int index = 0; index < N; ++index) {
      if (literals[index] != 2)
        t = cofactor<N>(t, static_cast<int>(m.indextoid(index)), literals[index]);
    }
    return t;
  }
};

}  // namespace

TEST_P(InEachOrder, HandlesAreCanonical) {
  for (int a = 0; a < functions; ++a) {
    ASSERT_EQ(table_of<N>(f[a], m.Bdd_node_one()), mask_table(a));
    ASSERT_EQ(m.Bdd_is_correct(f[a]), 1);
    ASSERT_EQ(m.Bdd_not(f[a]), f[255 - a]);
    ASSERT_EQ(world.mask_of(f[a]), a) << "another function has the same handle";
  }
}

TEST_P(InEachOrder, BinaryOperatorsOnAllPairs) {  // house: a line an operator
  long wrong = 0;
  for (int a = 0; a < functions; ++a) {
    for (int b = 0; b < functions; ++b) {
      const bool right =
          m.Bdd_and(f[a], f[b]) == f[a & b] && m.Bdd_or(f[a], f[b]) == f[a | b] &&
          m.Bdd_nand(f[a], f[b]) == f[255 & ~(a & b)] &&
          m.Bdd_nor(f[a], f[b]) == f[255 & ~(a | b)] && m.Bdd_xor(f[a], f[b]) == f[a ^ b] &&
          m.Bdd_xnor(f[a], f[b]) == f[255 & ~(a ^ b)] &&
          m.Bdd_eq(f[a], f[b]) == f[255 & ~(a ^ b)] &&
          m.Bdd_implication(f[a], f[b]) == f[255 & (~a | b)] &&
          m.Bdd_imply(f[a], f[b]) == ((a & ~b) == 0) && m.Bdd_equiv(f[a], f[b]) == (a == b) &&
          m.Bdds_excl(f[a], f[b]) == ((a & b) == 0) && m.Bdds_exclude(f[a], f[b]) == ((a & b) == 0);
      if (!right && ++wrong < 5) ADD_FAILURE() << at(a, b);
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST_P(InEachOrder, IfThenElse) {
  // All triples in one order, each fifth last operand in the others (and under a sanitizer).
#ifdef __SANITIZE_ADDRESS__
  const int stride = 5;
#else
  const int stride = GetParam() == 3 ? 1 : 5;
#endif
  long wrong = 0;
  for (int a = 0; a < functions; ++a) {
    for (int b = 0; b < functions; ++b) {
      for (int c = (a + b) % stride; c < functions; c += stride) {
        if (m.Bdd_ite(f[a], f[b], f[c]) != f[(a & b) | (255 & ~a & c)] && ++wrong < 5)
          ADD_FAILURE() << at(a, b, c);
      }
    }
  }
  EXPECT_EQ(wrong, 0);
  for (int b = 0; b < functions; b += 3) {
    for (int c = 0; c < functions; ++c) {
      for (int index = 0; index < N; ++index) {
        const int v = mask_of(variable_table<N>(static_cast<int>(m.indextoid(index))));
        ASSERT_EQ(m.Bdd_ite(1, index, f[b], f[c]), f[(v & b) | (255 & ~v & c)]);
        ASSERT_EQ(m.Bdd_ite(-1, index, f[b], f[c]), f[(255 & ~v & b) | (v & c)]);
      }
      ASSERT_EQ(m.Bdd_ite(1, -1, f[b], f[c]), f[b]);
      ASSERT_EQ(m.Bdd_ite(-1, -1, f[b], f[c]), f[c]);
    }
  }
}

TEST_P(InEachOrder, CofactorsAndQuantifiers) {
  for (int a = 0; a < functions; ++a) {
    if (!m.Bdd_is_tautology(f[a])) {
      const int top = static_cast<int>(m.Bdd_if_id(f[a]));
      EXPECT_EQ(m.Bdd_if(f[a]), world.var(top));
      EXPECT_EQ(m.Bdd_then(f[a]), f[mask_of(cofactor<N>(mask_table(a), top, 1))]);
      EXPECT_EQ(m.Bdd_else(f[a]), f[mask_of(cofactor<N>(mask_table(a), top, 0))]);
    }
    for (const auto& literals : all_literals()) {
      const table<N> cube = cube_table(literals);
      const bdd& expected = f[mask_of(under(mask_table(a), literals))];
      EXPECT_EQ(m.Bdd_cube_reduce(f[a], f[mask_of(cube)]), expected);
      EXPECT_EQ(m.Bdd_reduce(f[a], f[mask_of(cube)]), expected);
      EXPECT_EQ(m.Bdd_eval(f[a], literals.data()), expected);
    }
    for (int id = 0; id < N; ++id) {
      const table<N> low = cofactor<N>(mask_table(a), id, 0);
      const table<N> high = cofactor<N>(mask_table(a), id, 1);
      for (const bdd& v : {world.var(id), m.Bdd_not(world.var(id))}) {
        EXPECT_EQ(m.Bdd_exist(f[a], v), f[mask_of(low | high)]);
        EXPECT_EQ(m.Bdd_forall(f[a], v), f[mask_of(low & high)]);
      }
    }
    EXPECT_EQ(m.Bdd_exist(f[a], f[0x88]), f[a]) << "no quantifier over a product";
    EXPECT_EQ(m.Bdd_cube_reduce(f[a], m.Bdd_zero()), f[a]);
    EXPECT_EQ(m.Bdd_cube_reduce(f[a], m.Bdd_one()), f[a]);
  }
}

TEST_P(InEachOrder, ReduceByAnyFunction) {
  // The product of the cofactors by the disjoint cubes of c, the then side first.
  const auto first_cube = [&](const table<N>& c) {
    // One walk down: a value is bound where the function on the way still depends on the variable.
    std::array<int, 3> cube{2, 2, 2};
    table<N> rest = c;
    for (int index = 0; index < N; ++index) {
      const int id = static_cast<int>(m.indextoid(index));
      if (!depends<N>(rest, id)) continue;
      cube[index] = cofactor<N>(rest, id, 1).any() ? 1 : 0;
      rest = cofactor<N>(rest, id, cube[index]);
    }
    return cube;
  };
  for (int c = 0; c < functions; ++c) {
    bool in_common[functions] = {};
    for (int a = 0; a < functions; ++a) {
      for (int id = 0; id < N; ++id)
        in_common[a] |= depends<N>(mask_table(a), id) && depends<N>(mask_table(c), id);
    }
    std::vector<std::array<int, 3>> cubes;
    for (table<N> rest = mask_table(c); rest.any(); rest &= ~cube_table(cubes.back()))
      cubes.push_back(first_cube(rest));
    for (int a = 0; a < functions; ++a) {
      table<N> expected = mask_table(a);
      if (in_common[a]) {
        expected.set();
        for (const auto& cube : cubes) expected &= under(mask_table(a), cube);
      }
      ASSERT_EQ(m.Bdd_reduce(f[a], f[c]), f[mask_of(expected)]) << at(a, c);
    }
    if (c == 0) continue;
    EXPECT_EQ(m.Bdd_satisfy(f[c]), f[mask_of(cube_table(first_cube(mask_table(c))))]);
  }
  EXPECT_EQ(m.Bdd_satisfy(m.Bdd_zero()), m.Bdd_one());
}

TEST_P(InEachOrder, Substitution) {
  for (int a = 0; a < functions; ++a) {
    for (int id = 0; id < N; ++id) {
      for (int g = a % 3; g < functions; g += 3) {
        const table<N> expected = choice<N>(mask_table(g), cofactor<N>(mask_table(a), id, 1),
                                            cofactor<N>(mask_table(a), id, 0));
        ASSERT_EQ(m.Bdd_compose(f[a], world.var(id), f[g]), f[mask_of(expected)]) << at(a, g, id);
      }
    }
    // Two at once: neither value is read where the other stands.
    for (int g = a % 7; g < functions; g += 7) {
      const int h = (a * 31 + g * 17) % functions;
      table<N> expected;
      for (int line = 0; line < 8; ++line) {
        const int read = (line & 4) | (mask_table(g)[line] ? 1 : 0) | (mask_table(h)[line] ? 2 : 0);
        expected[line] = mask_table(a)[read];
      }
      ASSERT_EQ(m.Bdd_vector_compose(f[a], {{m.idtoindex(0), f[g]}, {m.idtoindex(1), f[h]}}),
                f[mask_of(expected)])
          << at(a, g, h);
    }
    // Every map of three indices, those that fold variables together included.
    for (const auto& image : all_literals()) {
      const long map[] = {image[0], image[1], image[2]};
      table<N> expected;
      for (int line = 0; line < 8; ++line) {
        int read = 0;
        for (int index = 0; index < N; ++index) {
          const bool value = (line >> m.indextoid(map[index]) & 1) != 0;
          read |= value ? 1 << m.indextoid(index) : 0;
        }
        expected[line] = mask_table(a)[read];
      }
      ASSERT_EQ(m.Bdd_replace_vars(f[a], map), f[mask_of(expected)]);
    }
  }
}

TEST_P(InEachOrder, KeepFirstVariables) {
  for (int a = 0; a < functions; ++a) {
    EXPECT_EQ(m.Bdd_keep_first_variables(f[a], N), f[a]);
    for (int n = 0; n < N; ++n) {
      // One unless the first n variables alone make f zero.
      table<N> expected = mask_table(a);
      for (int index = n; index < N; ++index) {
        const int id = static_cast<int>(m.indextoid(index));
        expected = cofactor<N>(expected, id, 0) | cofactor<N>(expected, id, 1);
      }
      EXPECT_EQ(m.Bdd_keep_first_variables(f[a], n), f[mask_of(expected)]);
    }
  }
}

TEST_P(InEachOrder, ThreeValuedEvaluation) {
  for (int a = 0; a < functions; ++a) {
    for (auto literals : all_literals()) {
      const table<N> rest = under(mask_table(a), literals);
      const int expected = rest.all() ? 1 : rest.none() ? 0 : 2;
      EXPECT_EQ(m.Bdd_eval_for_literal(f[a], literals.data()), expected);
      for (int& literal : literals) literal = literal == 0 ? 7 : literal;
      EXPECT_EQ(m.Bdd_eval_for_literal(f[a], literals.data()), expected) << "7 is false";
    }
  }
}

TEST_P(InEachOrder, CubesAndLiterals) {
  std::vector<bool> is_cube(functions, false);
  is_cube[0] = true;
  for (const auto& literals : all_literals()) {
    const int mask = mask_of(cube_table(literals));
    is_cube[mask] = true;
    EXPECT_EQ(m.Literals_to_bdd(literals.data()), f[mask]);
    if (mask == 255) continue;
    std::array<int, 3> back{};
    m.Bdd_to_literals(f[mask], back.data());
    EXPECT_EQ(back, literals);
  }
  for (int a = 0; a < functions; ++a) {
    EXPECT_EQ(m.Bdd_is_cube(f[a]), is_cube[a] ? 1 : 0) << a;
    std::array<int, 3> found{2, 2, 2};
    EXPECT_EQ(m.Bdd_OneSat(f[a].node(), f[a].link_type(), found.data()), a == 0 ? 0 : 1);
    EXPECT_TRUE((cube_table(found) & ~mask_table(a)).none() || a == 0);
  }
}

TEST_P(InEachOrder, ShapesAndDependence) {
  const int variables[] = {0xAA, 0xCC, 0xF0};
  for (int a = 0; a < functions; ++a) {
    EXPECT_EQ(m.Bdd_is_tautology(f[a]), a == 0 || a == 255);
    EXPECT_EQ(m.Bdd_is_tautology(f[a], 1), a == 255);
    EXPECT_EQ(m.Bdd_is_tautology(f[a], 0), a == 0);
    EXPECT_EQ(m.Bdd_is_one_tautologic(f[a]), a == 255);
    EXPECT_EQ(m.Bdd_is_zero_tautologic(f[a]), a == 0);
    index_set ids, indices;
    int present[3];
    m.Present_variables(f[a], present);
    for (int id = 0; id < N; ++id) {
      EXPECT_EQ(m.Bdd_is_var(f[variables[id]]), 1);
      EXPECT_EQ(m.Bdd_is_negvar(f[255 - variables[id]]), 1);
      const table<N> low = cofactor<N>(mask_table(a), id, 0);
      const table<N> high = cofactor<N>(mask_table(a), id, 1);
      const long index = m.idtoindex(id);
      if (low != high) {
        ids.insert(id);
        indices.insert(index);
      }
      EXPECT_EQ(present[index], low != high);
      EXPECT_EQ(m.Bdd_depends_on(f[a], world.var(id)), low != high);
      EXPECT_EQ(m.Variable_awaited(f[a], index), low != high);
      EXPECT_EQ(m.Variable_true_awaited(f[a], index), low != high && high.any());
      EXPECT_EQ(m.Variable_false_awaited(f[a], index), low != high && low.any());
    }
    EXPECT_EQ(m.set_of_id_depend_on(f[a]), ids);
    EXPECT_EQ(m.set_of_index_depend_on(f[a]), indices);
    EXPECT_EQ(f[a].node()->var_id_dep(), ids);
    const bool is_variable = a == 0xAA || a == 0xCC || a == 0xF0;
    EXPECT_EQ(m.Bdd_is_var(f[a]), is_variable);
    for (int b = 0; b < functions; b += 5) {
      bool common = false;
      for (int id = 0; id < N; ++id) common |= ids.contains(id) && depends<N>(mask_table(b), id);
      EXPECT_EQ(m.exists_common_variables(f[a], f[b]), common);
    }
  }
  EXPECT_EQ(m.Bdd_depends_on(m.Bdd_one(), m.Bdd_zero()), 1) << "constants share their id";
  EXPECT_EQ(m.Bdd_depends_on(m.Bdd_one(), world.var(0)), 0);
  EXPECT_EQ(m.Variable_awaited(f[0xAA], 3), 0);
  EXPECT_EQ(m.Variable_awaited(f[0xAA], -1), 0);
}

TEST_P(InEachOrder, SimplifyDropsVariablesWhileDisjoint) {
  for (int a = 0; a < functions; ++a) {
    for (int g = 0; g < functions; ++g) {
      table<N> expected = mask_table(a);
      for (int id = 0; id < N; ++id) {
        const table<N> wider = cofactor<N>(expected, id, 0) | cofactor<N>(expected, id, 1);
        if ((wider & mask_table(g)).none()) expected = wider;
      }
      ASSERT_EQ(m.Bdd_simplify(f[a], f[g]), f[mask_of(expected)]) << at(a, g);
    }
  }
}

TEST_P(InEachOrder, TablesOverChosenVariables) {
  const bdd vars[] = {world.var(2), world.var(0)};
  EXPECT_EQ(m.Minterm(2, 2, vars), f[0xAA & ~0xF0]);
  EXPECT_EQ(m.Minterm(-1, 2, vars), m.Bdd_zero());
  EXPECT_EQ(m.Minterm(0, 0, vars), m.Bdd_one());
  for (int a = 0; a < functions; ++a) {
    char text[4];
    bdd residues[4];
    m.Truth_table(f[a], 2, vars, text);
    m.Bdd_truth_table(f[a], 2, vars, residues);
    for (int line = 0; line < 4; ++line) {
      const table<N> rest = cofactor<N>(cofactor<N>(mask_table(a), 2, line & 1), 0, line >> 1);
      EXPECT_EQ(text[line], rest.all() ? '1' : rest.none() ? '0' : '?');
      EXPECT_EQ(residues[line], f[mask_of(rest)]);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(ThreeVariables, InEachOrder, ::testing::Range(0, 6));

}  // namespace kiva::test
