#include "tarn/targets/frame/sum_text.h"

#include <algorithm>
#include <map>

#include "bdd/literal_list.h"
#include "tarn/model/sexception.h"

namespace kiva {

long count_products(const bdd& f, long limit) {
  // Bottom up with an own stack: diagrams are deep. Each function of the diagram is counted once.
  using Key = std::pair<const bdd_node*, int>;
  bddpp_manager& m = *f.manager_ref();
  std::map<Key, long> paths;
  std::vector<bdd> open{f};
  const auto key = [](const bdd& g) { return Key(g.node(), g.link_type()); };
  while (!open.empty()) {
    const bdd g = open.back();
    if (paths.contains(key(g))) {
      open.pop_back();
      continue;
    }
    if (m.Bdd_is_tautology(g)) {
      paths[key(g)] = m.Bdd_is_one_tautologic(g) != 0 ? 1 : 0;
      continue;
    }
    const bdd one = m.Bdd_then(g), zero = m.Bdd_else(g);
    const auto at_one = paths.find(key(one)), at_zero = paths.find(key(zero));
    if (at_one == paths.end()) open.push_back(one);
    if (at_zero == paths.end()) open.push_back(zero);
    if (at_one != paths.end() && at_zero != paths.end())
      paths[key(g)] = std::min(limit, at_one->second + at_zero->second);
  }
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
