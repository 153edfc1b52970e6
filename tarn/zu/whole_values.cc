#include "tarn/zu/whole_values.h"

#include <vector>

#include "tarn/model/compilation.h"
#include "tarn/model/function_change.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"

namespace kiva {

namespace {

/// The internal names of a signal's further occurrences. Text of a compiled module has them as
/// locals.
std::vector<std::string> further_occurrences(const Signal* signal, Module* module) {
  std::vector<std::string> names;
  const std::string& name = signal->getInternalName();
  if (module->getStatement() == nullptr) {
    for (int k = 1; module->getLocalSignal(name + '_' + std::to_string(k)) != nullptr; ++k)
      names.push_back(name + '_' + std::to_string(k));
    return names;
  }
  Bddexpressionwood* own = module->getBddWood();
  const int last = signal->hasOccurrence(own) ? signal->getCurrentOccurrence(own) : 0;
  for (int k = 1; k <= last; ++k)
    names.push_back(
        module->getSignalManager()->getSignalRefByOccurrence(signal, k)->getCurrentName());
  return names;
}

}  // namespace

void join_values(const Signal* signal, Module* module, Bddexpressionwood* wood,
                 const std::string& suffix) {
  if (!Compilation::rules().values) return;
  const auto equation = [&](const char* rail, const std::string& name) {
    const long id = wood->Index_var_by_name(rail + name + suffix);
    return id < 0 ? nullptr : wood->exp_by_index(id);
  };
  const auto is_zero = [&](const Bddexpression* e) {
    return e != nullptr && e->getAbstraction() == 0 && wood->Bdd_is_tautology(e->my_bdd_exp(), 0);
  };
  Bddexpression* whole = equation("_v_", signal->getInternalName());
  if (whole == nullptr || whole->getAbstraction() != 0) return;
  const std::vector<std::string> names = further_occurrences(signal, module);
  if (names.size() < 2) return;
  // From the last variable on, as they stand below each other in the order.
  bdd all = wood->Bdd_one(), some = wood->Bdd_zero();
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    const Bddexpression* value = equation("_v_", *name);
    if (value == nullptr) return;
    all = wood->Bdd_and(value->my_bdd_var(), all);
    // One that stays Bottom says nothing; finalisation makes it False.
    if (!is_zero(value) || !is_zero(equation("_s_", *name)))
      some = wood->Bdd_or(value->my_bdd_var(), some);
  }
  const bool silent = wood->Bdd_is_tautology(some, 0);
  if (!silent && whole->my_bdd_exp() == all) set_function(*whole, some);
}

}  // namespace kiva
