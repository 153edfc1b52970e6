#include "tarn/zu/statement_walk.h"

#include <vector>

#include "tarn/model/expression.h"
#include "tarn/model/signal.h"
#include "tarn/zu/statements/abort.h"
#include "tarn/zu/statements/present.h"
#include "tarn/zu/statements/sustain.h"
#include "tarn/zu/statements/wait.h"

namespace kiva {

void for_each_statement(const Statement* root, const std::function<void(const Statement&)>& see) {
  std::vector<const Statement*> open{root};
  while (!open.empty()) {
    const Statement* statement = open.back();
    open.pop_back();
    see(*statement);
    const std::vector<Statement*> children = statement->children();
    open.insert(open.end(), children.rbegin(), children.rend());
  }
}

void for_each_signal(const Expression* root, const std::function<void(const Signal*)>& see) {
  std::vector<const Expression*> open{root};
  while (!open.empty()) {
    const Expression* e = open.back();
    open.pop_back();
    if (const auto* signal = dynamic_cast<const Signal*>(e)) see(signal);
    if (const auto* pair = dynamic_cast<const BinaryExpression*>(e)) {
      open.push_back(pair->getRight());
      open.push_back(pair->getLeft());
    }
    if (const auto* negated = dynamic_cast<const NotExpression*>(e))
      open.push_back(negated->getExpression());
    if (const auto* absent = dynamic_cast<const NpExpression*>(e))
      open.push_back(absent->getExpression());
  }
}

const Expression* condition_of(const Statement& statement) {
  if (const auto* present = dynamic_cast<const Present*>(&statement))
    return present->getExpression();
  if (const auto* wait = dynamic_cast<const Wait*>(&statement)) return wait->getExpression();
  if (const auto* abort = dynamic_cast<const Preemption*>(&statement))
    return abort->getExpression();
  if (const auto* sustain = dynamic_cast<const SustainUntil*>(&statement))
    return sustain->getExpression();
  return nullptr;
}

}  // namespace kiva
