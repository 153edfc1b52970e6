#pragma once

#include "bdd/bddpp.h"

namespace kiva::test {

/// The operators as plain recursions on handles, with no table and no cut: what they make, and in
/// which order, is what the package's own operators must make.
class PlainRecursion {
 public:
  explicit PlainRecursion(bddpp_manager& manager) : m(manager) {}

  bdd make(long index, const bdd& then_part, const bdd& else_part) {
    if (then_part == else_part) return then_part;
    int link = 1;
    bdd_node* node = m.Find_or_create_bdd_node(index, then_part.link_type(), else_part.link_type(),
                                               then_part.node(), else_part.node(), link);
    return bdd(&m, link, node);
  }

  bdd or_(const bdd& x, const bdd& y) {
    if (m.Bdd_is_tautology(x)) return m.Bdd_is_one_tautologic(x) ? x : y;
    if (m.Bdd_is_tautology(y)) return m.Bdd_is_one_tautologic(y) ? y : x;
    if (x.node() == y.node()) return x == y ? x : m.Bdd_one();
    return split(x, y, &PlainRecursion::or_);
  }
  bdd and_(const bdd& x, const bdd& y) {
    if (m.Bdd_is_tautology(x)) return m.Bdd_is_one_tautologic(x) ? y : x;
    if (m.Bdd_is_tautology(y)) return m.Bdd_is_one_tautologic(y) ? x : y;
    if (x.node() == y.node()) return x == y ? x : m.Bdd_zero();
    return split(x, y, &PlainRecursion::and_);
  }
  bdd not_(const bdd& x) { return m.Bdd_not(x); }
  bdd xor_(const bdd& x, const bdd& y) {
    if (m.Bdd_is_tautology(x)) return m.Bdd_is_one_tautologic(x) ? not_(y) : y;
    if (m.Bdd_is_tautology(y)) return m.Bdd_is_one_tautologic(y) ? not_(x) : x;
    if (x.node() == y.node()) return x == y ? m.Bdd_zero() : m.Bdd_one();
    return split(x, y, &PlainRecursion::xor_);
  }
  bdd ite(const bdd& f, const bdd& g, const bdd& h) {
    const bdd positive = and_(f, g);
    return or_(positive, and_(not_(f), h));
  }

  /// By the literals of the array, by index.
  bdd cofactor(const bdd& f, const std::vector<int>& literals) {
    if (m.Bdd_is_tautology(f)) return f;
    const long index = m.Bdd_if_index(f);
    if (literals[index] == 1) return cofactor(m.Bdd_then(f), literals);
    if (literals[index] == 0) return cofactor(m.Bdd_else(f), literals);
    const bdd then_part = cofactor(m.Bdd_then(f), literals);
    return make(index, then_part, cofactor(m.Bdd_else(f), literals));
  }
  bdd cofactor(const bdd& f, long index, int value) {
    std::vector<int> literals(m.Nb_bdd_vars(), 2);
    literals[index] = value;
    return cofactor(f, literals);
  }
  bdd exist(const bdd& f, long index) {
    const bdd where_true = cofactor(f, index, 1);
    return or_(where_true, cofactor(f, index, 0));
  }

  bdd compose(const bdd& f, long v_index, const bdd& g) {
    if (m.Bdd_is_tautology(f)) return f;
    const long index = m.Bdd_if_index(f);
    const bdd then_part = compose(m.Bdd_then(f), v_index, g);
    const bdd else_part = compose(m.Bdd_else(f), v_index, g);
    return ite(index == v_index ? g : m.Bdd_var_by_index(index), then_part, else_part);
  }
  bdd replace(const bdd& f, const std::vector<long>& map) {
    if (m.Bdd_is_tautology(f)) return f;
    const bdd then_part = replace(m.Bdd_then(f), map);
    const bdd else_part = replace(m.Bdd_else(f), map);
    return ite(m.Bdd_var_by_index(map[m.Bdd_if_index(f)]), then_part, else_part);
  }
  bdd keep_first(const bdd& f, long n) {
    if (m.Bdd_is_tautology(f)) return f;
    if (m.Bdd_if_index(f) >= n) return m.Bdd_one();
    const bdd then_part = keep_first(m.Bdd_then(f), n);
    const bdd else_part = keep_first(m.Bdd_else(f), n);
    return ite(m.Bdd_var_by_index(m.Bdd_if_index(f)), then_part, else_part);
  }

  bddpp_manager& m;

 private:
  bdd split(const bdd& x, const bdd& y, bdd (PlainRecursion::*op)(const bdd&, const bdd&)) {
    const long i = m.Bdd_if_index(x), j = m.Bdd_if_index(y);
    if (i > j) {
      const bdd then_part = (this->*op)(m.Bdd_then(y), x);
      return make(j, then_part, (this->*op)(m.Bdd_else(y), x));
    }
    const bdd then_part = (this->*op)(m.Bdd_then(x), i == j ? m.Bdd_then(y) : y);
    return make(i, then_part, (this->*op)(m.Bdd_else(x), i == j ? m.Bdd_else(y) : y));
  }
};

}  // namespace kiva::test
