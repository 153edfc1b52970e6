// Sums of products are counted before they are written: a diagram may stand for more products than
// any file can hold.

#include "tarn/targets/frame/sum_text.h"

#include <algorithm>
#include <map>

#include "base/graph_walk.h"
#include "bdd/literal_list.h"
#include "tarn/model/sexception.h"

namespace kiva {

long count_products(const bdd& f, long limit) {
  // Each function of the diagram is counted once.
  using Key = std::pair<const bdd_node*, int>;
  bddpp_manager& m = *f.manager_ref();
  std::map<Key, long> paths;
  const auto key = [](const bdd& g) { return Key(g.node(), g.link_type()); };
  const auto counted = [&](const bdd& g) { return paths.contains(key(g)); };
  const auto halves = [&m](const bdd& g, auto ask) {
    if (m.Bdd_is_tautology(g)) return;
    ask(m.Bdd_then(g));
    ask(m.Bdd_else(g));
  };
  walk_from_below(f, counted, halves, [&](const bdd& g) {
    paths[key(g)] =
        m.Bdd_is_tautology(g)
            ? m.Bdd_is_one_tautologic(g)
            : std::min(limit, paths.at(key(m.Bdd_then(g))) + paths.at(key(m.Bdd_else(g))));
  });
  return paths[key(f)];
}

std::string sum_text(const TargetText& text, const SumTexts& texts,
                     const TargetEquation& equation) {
  bddpp_manager& m = *text.manager();
  const bdd& f = equation.f;
  if (m.Bdd_is_tautology(f)) return m.Bdd_is_one_tautologic(f) ? texts.one : texts.zero;
  if (text.rules().refuse_large_sums) {
    const long limit = Max_number_of_terms();
    if (count_products(f, limit) >= limit)
      throw IllegalOperationException("too many products in the equation of",
                                      text.name(equation.index));
  }
  std::string sum;
  for (const bdd& product : m.Bdd_sop(f, texts.level)) {
    if (!sum.empty()) sum += texts.or_text;
    const char* separator = "";
    for (int code : literals_of(m, product)) {
      const long index = code / 2;
      const std::string name = texts.name ? texts.name(index) : text.name(index);
      sum += separator + (code % 2 == 0 ? texts.not_text + name + texts.not_end : name);
      separator = texts.and_text.c_str();
    }
  }
  return sum;
}

}  // namespace kiva
