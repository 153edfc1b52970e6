// Which of several values of a signal counts. Every emission with a value has a signal of its own,
// bound to its value; here each is silenced where a later one fires. A bound signal counts only
// while nothing reads it, so the functions of the later ones stand in each.

#include "tarn/zu/last_value.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <vector>

#include "tarn/model/function_change.h"
#include "tarn/model/module.h"

namespace kiva {

namespace {

bool stands_before(const DataBinding* a, const DataBinding* b) {
  const auto place = [](const DataBinding* binding) {
    const SourceSpan& span = binding->getPlace();
    return std::tuple(span.first_line, span.first_column);
  };
  return place(a) < place(b);
}

void silence_earlier(const std::vector<DataBinding*>& in_order, Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  bdd later = wood->Bdd_zero();
  for (auto at = in_order.rbegin(); at != in_order.rend(); ++at) {
    const Signal* bound = (*at)->getSignal();
    Bddexpression* status = wood->exp_by_index(bound->getInitialBddStatusId(module, wood));
    const Bddexpression* value = wood->exp_by_index(bound->getInitialBddValueId(module, wood));
    if (status == nullptr || status->getAbstraction() != 0) continue;
    const bdd fires = value == nullptr || value->getAbstraction() != 0
                          ? status->my_bdd_exp()
                          : wood->Bdd_and(status->my_bdd_exp(), wood->Bdd_not(value->my_bdd_exp()));
    and_function(*status, wood->Bdd_not(later));
    later = wood->Bdd_or(later, fires);
  }
}

}  // namespace

void keep_last_values(Module* module) {
  if (module->getDataTable() == nullptr) return;
  std::map<std::string, std::vector<DataBinding*>> by_clock;
  for (const auto& [name, binding] : *module->getDataTable())
    if (binding->getClock() != nullptr && !binding->getSignal()->isInstance())
      by_clock[binding->getClock()->getInternalName()].push_back(binding);
  for (auto& [clock, bindings] : by_clock) {
    if (bindings.size() < 2) continue;
    std::stable_sort(bindings.begin(), bindings.end(), stands_before);
    silence_earlier(bindings, module);
  }
}

}  // namespace kiva
