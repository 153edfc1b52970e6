// A module as a boolean automaton: outputs and next states as functions of
// inputs and states.

#include "tarn/b_automaton/module_automaton.h"

#include "tarn/model/sexception.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

void require_pure(Module* module) {
  const auto refuse = [&](const std::string& reason) {
    throw IllegalOperationException("module " + module->getName(), reason);
  };
  if (module->getFinalised() == 0) refuse("is not finalised");
  for (const signal_list* signals : {&module->getInputSignalList(), &module->getOutputSignalList(),
                                     &module->getLocalSignalList()})
    for (const Signal* signal : *signals)
      if (signal->isValued(module, module->getBddWood()))
        refuse("carries values: " + signal->getOriginalName());
  if (module->getDataTable() != nullptr && !module->getDataTable()->empty())
    refuse("computes values");
}

}  // namespace

std::unique_ptr<b_automaton> automaton_of(Module* module) {
  require_pure(module);
  TargetRules rules;
  rules.needed_only = rules.complete = true;
  const TargetText text(module, {.shape = {.target = "module"}}, rules);
  if (!text.further_inputs().empty())
    throw IllegalOperationException(
        "module " + module->getName(),
        "nothing computes " + text.manager()->Name_var_by_index(text.further_inputs().front()));

  // Names of the wood may meet after renamings; numbers never do.
  std::list<std::string> state, next_state, inputs, outputs, locals;
  std::vector<std::pair<long, std::string>> place;
  std::set<std::string> met;
  const auto inner_name = [&](const char* kind, long index) {
    std::string name = kind + text.manager()->Name_var_by_index(index);
    if (!met.insert(name).second) name += "@" + std::to_string(index);
    return name;
  };
  std::vector<int> init;
  for (const StateRail& rail : text.state()) {
    state.push_back(inner_name("s_", rail.index));
    next_state.push_back("n_" + state.back());
    place.emplace_back(rail.index, state.back());
    init.push_back(rail.initial ? 1 : 0);
  }
  for (const Signal* input : text.inputs()) {
    inputs.push_back("i_" + input->getOriginalName());
    place.emplace_back(text.status(input), inputs.back());
  }
  for (const Signal* output : text.outputs()) outputs.push_back("o_" + output->getOriginalName());
  for (const TargetEquation& equation : text.equations()) {
    locals.push_back(inner_name("l_", equation.index));
    place.emplace_back(equation.index, locals.back());
  }

  b_autom_dec declaration(state, next_state, inputs, outputs, locals);
  Bddexpressionwood* wood = declaration.wood_associee();
  bddpp_manager* manager = declaration.manager_associe();
  std::vector<long> map(static_cast<size_t>(text.manager()->Nb_bdd_vars()), -1);
  for (const auto& [index, name] : place)
    if (map[static_cast<size_t>(index)] < 0)  // state and inputs come before what is computed
      map[static_cast<size_t>(index)] = manager->Index_var_by_name(name);
  const auto define = [&](const std::string& name, const bdd& f) {
    new Bddexpression(wood, manager->Bdd_var_by_name(name), f, 0, 0);
  };
  const auto copy_of = [&](long index) {
    return manager->Bdd_var_by_index(map[static_cast<size_t>(index)]);
  };
  auto next = next_state.begin();
  for (const StateRail& rail : text.state()) define(*next++, copy_of(rail.next));
  auto output = outputs.begin();
  for (const Signal* signal : text.outputs()) define(*output++, copy_of(text.status(signal)));
  auto local = locals.begin();
  for (const TargetEquation& equation : text.equations())
    define(*local++, Bdd_isomorphe(manager, text.manager(), equation.f, map.data()));
  return std::make_unique<b_automaton>(&declaration, init.data(), manager->Bdd_one(),
                                       manager->Bdd_one());
}

}  // namespace kiva
