#include "tarn/zu/three_states.h"

#include "tarn/model/expression.h"
#include "tarn/model/signal.h"
#include "tarn/zu/statement_walk.h"

namespace kiva {

Rails rails(const Expression* e, int instant, const States& states) {
  if (e->isTrueExpr()) return {true, false};
  if (e->isFalseExpr()) return {false, true};
  if (const auto* signal = dynamic_cast<const Signal*>(e)) {
    for (const auto& [moment, state] : states)
      if (moment == Moment(signal, instant)) return state;
    return {false, false};
  }
  if (const auto* negated = dynamic_cast<const NotExpression*>(e)) {
    const Rails r = rails(negated->getExpression(), instant, states);
    return {r.value, r.status};
  }
  if (const auto* absent = dynamic_cast<const NpExpression*>(e)) {
    const Rails r = rails(absent->getExpression(), instant, states);
    return {!is_present(r), is_present(r)};
  }
  const auto* pair = dynamic_cast<const BinaryExpression*>(e);
  if (pair == nullptr) return {false, false};
  const Rails a = rails(pair->getLeft(), instant, states);
  const Rails b = rails(pair->getRight(), instant, states);
  if (dynamic_cast<const AndExpression*>(e) != nullptr)
    return {a.status && b.status, a.value || b.value};
  return {a.status || b.status, a.value && b.value};
}

namespace {

std::string key(const Expression* e) {
  if (e->isTrueExpr()) return "1";
  if (e->isFalseExpr()) return "0";
  if (const auto* signal = dynamic_cast<const Signal*>(e)) return signal->getInternalName();
  if (const auto* negated = dynamic_cast<const NotExpression*>(e))
    return "-(" + key(negated->getExpression()) + ")";
  if (const auto* absent = dynamic_cast<const NpExpression*>(e))
    return "!(" + key(absent->getExpression()) + ")";
  const auto* pair = dynamic_cast<const BinaryExpression*>(e);
  if (pair == nullptr) return "?";
  const char* between = dynamic_cast<const AndExpression*>(e) != nullptr ? ")&(" : ")|(";
  return "(" + key(pair->getLeft()) + between + key(pair->getRight()) + ")";
}

}  // namespace

std::string expression_key(const Expression* e) {
  constexpr size_t longest = 64;
  size_t named = 0;
  for_each_signal(e, [&](const Signal*) { ++named; });
  return named > longest ? "" : key(e);
}

}  // namespace kiva
