// Finalisation: a compiled module becomes one that can be run and written. Every signal gets a
// complete pair of equations, inputs are True or False, what nothing needs goes, and a register
// pair "boot" raises the set wire in the first instant.
//
// The steps depend on their order: the pairs are completed before constants spread, since a rail
// that turns constant must not lose its equation where it is part of the interface; and the keep
// lists are made after the clean, when registers that hold a constant have gone.

#include "tarn/zu/finalize.h"

#include <algorithm>
#include <iostream>
#include <optional>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/session/session.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/passing_locals.h"
#include "tarn/zu/whole_values.h"

namespace kiva {

namespace {

/// The user types whose equations are the module's interface and state.
const std::list<int>& protected_types() {
  static const std::list<int> types{Compilation::SINPUT,  Compilation::VINPUT, Compilation::SOUTPUT,
                                    Compilation::VOUTPUT, Compilation::SREG,   Compilation::VREG,
                                    Compilation::SCLOCK,  Compilation::VCLOCK};
  return types;
}

/// Learns `left` := `right`; the wood owns the equation.
void define(Bddexpressionwood* wood, const std::string& name, const bdd& left, const bdd& right,
            int usertype) {
  const std::unique_ptr<Bddexpression> replaced(wood->exp_by_index(wood->Bdd_if_index(left)));
  new Bddexpression(name, wood, left, right, 0, 0, usertype);
}

bdd variable(Bddexpressionwood* wood, long index) {
  return wood->Bdd_var_by_index(index);
}

void require_type(Bddexpression* e, int type, const std::string& warning) {
  if (e == nullptr) return;
  if (e->getUserType() != type) std::cerr << warning << '\n';
  e->setUserType(type);
}

/// Gives a signal's occurrences the rails that they lack.
void complete_pairs(Module* module, Bddexpressionwood* wood, const Signal* signal,
                    bool may_define_status) {
  const std::list<long> indices = signal->getAllBddId(module, wood);
  for (auto at = indices.begin(); at != indices.end();) {
    const long status_index = *at++;
    const long value_index = *at++;
    if (status_index < 0) continue;
    const Bddexpression* status = wood->exp_by_index(status_index);
    Bddexpression* value = wood->exp_by_index(value_index);
    if (value == nullptr) {
      define(wood, signal->getInternalName(), variable(wood, value_index),
             wood->Bdd_not(variable(wood, status_index)), signal->computeValueType());
    } else if (status == nullptr) {
      if (!may_define_status) continue;
      report("***Warning: Finalize: no status expression and a value expression for:" +
                 wood->Name_var_by_index(value_index) + "!!!\n => changing status equation ...",
             Manner::message, Severity::warning);
      define(wood, signal->getInternalName(), variable(wood, status_index),
             wood->Bdd_not(variable(wood, value_index)), signal->computeValueType());
    } else if (status->getAbstraction() == 0 && value->getAbstraction() == 0 &&
               wood->my_bdd_manager()->Bdd_is_zero_tautologic(status->my_bdd_exp()) != 0 &&
               wood->my_bdd_manager()->Bdd_is_zero_tautologic(value->my_bdd_exp()) != 0) {
      value->setBddExp(wood->Bdd_one());  // a signal that stays Bottom is False
    }
  }
}

/// What the steps below take for granted of registers' next values and of values with a clock.
void require_types(Module* module, Bddexpressionwood* wood) {
  for (const regclass* reg : module->getRegisterList()) {
    const Signal* next = reg->next_var();
    const long status_index = next->getBddStatusId(module, wood);
    const long value_index = next->getBddValueId(module, wood);
    require_type(wood->exp_by_index(status_index), Compilation::SREG,
                 " Warning: reaffectation " + wood->Name_var_by_index(status_index) + " with SREG");
    require_type(wood->exp_by_index(value_index), Compilation::VREG,
                 " Warning reaffectation " + wood->Name_var_by_index(value_index) + " with VREG");
  }
  if (module->getDataTable() == nullptr) return;
  for (const auto& [bound_name, binding] : *module->getDataTable()) {
    if (binding->getClock() == nullptr) continue;
    const Signal* signal = binding->getSignal();
    const auto make_output = [&](long index, int type) {
      Bddexpression* e = wood->exp_by_index(index);
      if (e == nullptr) return;
      require_type(e, type,
                   "Warning: reaffectation " + wood->Name_var_by_index(index) + " with " +
                       std::to_string(type) + " (founding :" + std::to_string(e->getUserType()) +
                       ")");
    };
    make_output(signal->getInitialBddStatusId(module, wood), Compilation::SOUTPUT);
    make_output(signal->getInitialBddValueId(module, wood), Compilation::VOUTPUT);
  }
}

/// Every signal gets both rails; inputs are True or False, and the interface has its own names.
void complete_signals(Module* module, Bddexpressionwood* wood) {
  for (const signal_list* list : {&module->getInputSignalList(), &module->getDataSignalList()})
    for (const Signal* input : *list) {
      const long status_index = input->getBddStatusId(module, wood);
      define(wood, input->getInternalName(), variable(wood, input->getBddValueId(module, wood)),
             wood->Bdd_not(variable(wood, status_index)), Compilation::VINPUT);
      // Instances of one module have data signals of one original name.
      const bool instance = input->isInstance();
      wood->Rename_var(instance ? input->getInternalName() : input->getOriginalName(),
                       wood->Name_var_by_index(status_index));
    }
  for (const signal_list* list : {&module->getOutputSignalList(), &module->getLocalSignalList()})
    for (const Signal* signal : *list) join_values(signal, module, wood);
  for (const Signal* output : module->getOutputSignalList()) {
    complete_pairs(module, wood, output, true);
    wood->Rename_var(output->getOriginalName(),
                     wood->Name_var_by_index(output->getInitialBddStatusId(module, wood)));
  }
  for (const Signal* local : module->getLocalSignalList())
    complete_pairs(module, wood, local, !local->isRegister());
}

/// The register that raises the set wire in the first instant; nothing resets the module.
void add_start(Module* module, Bddexpressionwood* wood) {
  Signal* boot = make_kept<Signal>(signal_name("boot", module), module, wood, true);
  Signal* bootplus = make_kept<Signal>(signal_name("bootplus", module), module, wood, true);
  for (Signal* signal : {boot, bootplus}) {
    signal->setLocal();
    signal->setRegister();
    module->addLocalSignal(signal);
  }
  module->addRegisterSignal(boot, bootplus, 1);
  const auto define_pair = [&](const Signal* signal, const bdd& status, const bdd& value) {
    define(wood, signal->getInternalName(), variable(wood, signal->getBddStatusId(module, wood)),
           status, signal->computeStatusType());
    define(wood, signal->getInternalName(), variable(wood, signal->getBddValueId(module, wood)),
           value, signal->computeValueType());
  };
  define_pair(module->getSet(), variable(wood, boot->getBddStatusId(module, wood)),
              wood->Bdd_not(variable(wood, module->getSet()->getBddStatusId(module, wood))));
  define_pair(module->getReset(), wood->Bdd_zero(), wood->Bdd_one());
  define_pair(bootplus, wood->Bdd_zero(), wood->Bdd_one());
}

/// The locals that stay for whoever watches the module, by the rule `locals`.
std::vector<const Signal*> watched_locals(const Module* module) {
  std::vector<const Signal*> watched;
  for (const Signal* local : module->getLocalSignalList())
    if (is_watched(local) && !local->isRegister()) watched.push_back(local);
  return watched;
}

void set_types(Module* module, Bddexpressionwood* wood, const std::vector<const Signal*>& signals,
               int status_type, int value_type) {
  for (const Signal* signal : signals) {
    const auto set_type = [&](long index, int type) {
      Bddexpression* e = wood->exp_by_index(index);
      if (e != nullptr && e->getAbstraction() == 0) e->setUserType(type);
    };
    set_type(signal->getInitialBddStatusId(module, wood), status_type);
    set_type(signal->getInitialBddValueId(module, wood), value_type);
  }
}

/// The equations that stay, whether or not anything reads them.
index_set needed_equations(Module* module, Bddexpressionwood* wood, bool keep_rtl,
                           const std::vector<const Signal*>& watched, std::vector<long> kept) {
  const auto keep = [&](long status_index, long value_index) {
    kept.push_back(status_index);
    kept.push_back(value_index);
  };
  // A constant that nobody reads would go; the wire has its equations whatever the module holds.
  keep(module->getReset()->getBddStatusId(module, wood),
       module->getReset()->getBddValueId(module, wood));
  for (const Signal* input : module->getInputSignalList())
    kept.push_back(input->getBddStatusId(module, wood));
  for (const Signal* output : module->getOutputSignalList())
    keep(output->getInitialBddStatusId(module, wood), output->getInitialBddValueId(module, wood));
  if (module->getDataTable() != nullptr)
    for (const auto& [bound_name, binding] : *module->getDataTable())
      if (binding->getClock() != nullptr)
        for (const Signal* signal : {binding->getClock(), binding->getSignal()})
          keep(signal->getInitialBddStatusId(module, wood),
               signal->getInitialBddValueId(module, wood));  // else its state is unknown
  const std::set<const Signal*> registers = register_variables(module);
  for (const Signal* local : module->getLocalSignalList())
    if (Compilation::rules().locals ? registers.contains(local) : local->isRegister())
      keep(local->getBddStatusId(module, wood), local->getBddValueId(module, wood));
  for (const Signal* local : watched)
    keep(local->getInitialBddStatusId(module, wood), local->getInitialBddValueId(module, wood));
  if (keep_rtl) kept.push_back(module->getRtl()->getBddStatusId(module, wood));
  return index_set::from_unsorted(std::move(kept));
}

void suppress_wires(Bddexpressionwood* wood) {
  if (!Compilation::KeepWiresFlag()) wood->suppress_wires(protected_types());
}

void date(Module* module, Bddexpressionwood* wood) {
  std::list<long> dated;
  for (const signal_list* list : {&module->getLocalSignalList(), &module->getOutputSignalList()})
    for (const Signal* signal : *list) dated.splice(dated.end(), signal->getAllBddId(module, wood));
  wood->compute_dates(dated);
  // Inputs and wires are in no list: what reads them may have their date, and come before them.
  std::list<long> overtaken;
  for (long index : wood->Set_of_exp()) {
    const long date = wood->exp_by_index(index)->getEarlyDate();
    for (long reader : wood->set_of_amont_dependances(index)) {
      const Bddexpression* e = wood->exp_by_index(reader);
      if (e == nullptr || std::pair(e->getEarlyDate(), reader) > std::pair(date, index)) continue;
      overtaken.push_back(index);
      break;
    }
  }
  if (!overtaken.empty()) wood->compute_dates(overtaken);
}

}  // namespace

void finalize_module(Module* module, int keep_rtl) {
  Bddexpressionwood* wood = module->getBddWood();
  if (wood == nullptr) return;
  module->setFinalised(1);
  for (Signal* wire : {module->getSet(), module->getReset(), module->getRtl()}) wire->setWire();
  require_types(module, wood);
  complete_signals(module, wood);
  std::vector<const Signal*> watched = watched_locals(module);
  // Nothing that follows takes the equations of outputs away.
  set_types(module, wood, watched, Compilation::SOUTPUT, Compilation::VOUTPUT);
  std::optional<PassingLocals> passing;
  if (Compilation::rules().locals) passing.emplace(module, wood);
  wood->constants_propagation(protected_types());
  if (passing) passing->may_be_inlined();
  suppress_wires(wood);
  if (passing) passing->protect();
  suppress_useless_registers(module);
  clean_locals(module);
  add_start(module, wood);
  watched = watched_locals(module);
  wood->clean(needed_equations(module, wood, keep_rtl != 0, watched,
                               passing ? passing->pass_on() : std::vector<long>()));
  set_types(module, wood, watched, Compilation::STAT, Compilation::VAL);
  if (Compilation::rules().locals) forget_silent_locals(module, wood);
  date(module, wood);
  module->replace_at_in_name_variables();
  module->loose_first_underscore_in_name_variables();
}

void clean_module(Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  if (wood == nullptr) return;
  suppress_wires(wood);
  suppress_useless_registers(module);
  clean_locals(module);
}

namespace {

/// A register that always holds one value is a local that has it.
void show_held(Signal* signal, bool held, Module* module, Bddexpressionwood* wood) {
  signal->setRegister(false);
  signal->setWire(false);
  const auto constant = [&](bool one) { return one ? wood->Bdd_one() : wood->Bdd_zero(); };
  define(wood, signal->getInternalName(), variable(wood, signal->getBddStatusId(module, wood)),
         constant(held), Compilation::SOUTPUT);
  define(wood, signal->getInternalName(), variable(wood, signal->getBddValueId(module, wood)),
         constant(!held), Compilation::VOUTPUT);
}

}  // namespace

void suppress_useless_registers(Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  if (wood == nullptr) return;
  RegisterList kept;
  for (regclass* reg : module->getRegisterList()) {
    const long next_id = reg->next_var()->getBddStatusId(module, wood);
    const Bddexpression* e = wood->exp_by_index(next_id);
    if (e == nullptr) {
      report("internal error 2 in Module::suppress_useless_registers() about index:" +
                 std::to_string(next_id),
             Manner::message, Severity::warning);
      continue;
    }
    const int initial = reg->is_initialy_true();
    bddpp_manager* manager = wood->my_bdd_manager();
    if (e->getAbstraction() != 0 || manager->Bdd_is_tautology(e->my_bdd_exp()) == 0 ||
        manager->Bdd_is_tautology(e->my_bdd_exp(), initial) == 0) {
      kept.push_back(reg);
      continue;
    }
    std::cerr << "detecting useless register " << reg->actual_var()->getName(module, wood) << '\n';
    bdd held = variable(wood, reg->actual_var()->getBddStatusId(module, wood));
    if (initial == 0) held = wood->Bdd_not(held);
    wood->reduce_expressions(held, protected_types());
    if (is_watched(reg->actual_var())) show_held(reg->actual_var(), initial != 0, module, wood);
  }
  module->setRegisterList(std::move(kept));
}

void clean_locals(Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  signal_list kept;
  for (Signal* local : module->getLocalSignalList()) {
    const auto is_read = [&] {
      for (long index : local->getAllBddId(module, wood))
        if (!wood->set_of_amont_dependances(index).empty()) return true;
      return false;
    };
    if (is_watched(local) || local->isRegister() || local->isValued(module, wood) ||
        local->isClock() || is_read())
      kept.push_back(local);
  }
  module->setLocalSignalList(std::move(kept));
}

void propagate_constants(Module* module) {
  if (module->getBddWood() != nullptr)
    module->getBddWood()->constants_propagation(protected_types());
}

void add_over_knowledge_check(Module* module) {
  if (module->getOutputSignalList().empty()) return;
  Bddexpressionwood* wood = module->getBddWood();
  bdd error = wood->Bdd_zero();
  for (const Signal* output : module->getOutputSignalList()) {
    const std::list<long> indices = output->getAllBddId(module, wood);
    for (auto at = indices.begin(); at != indices.end();) {
      const Bddexpression* status = wood->exp_by_index(*at++);
      const Bddexpression* value = wood->exp_by_index(*at++);
      if (status == nullptr || value == nullptr || status->getAbstraction() != 0 ||
          value->getAbstraction() != 0)
        continue;
      error = wood->Bdd_or(error, wood->Bdd_and(status->my_bdd_exp(), value->my_bdd_exp()));
    }
  }
  Signal* signal = make_kept<Signal>("OverKnowledgeError", module, wood);
  signal->setOutput();
  module->addOutputSignal(signal);
  define(wood, signal->getInternalName(), signal->getBddStatus(module, wood), error,
         Compilation::SOUTPUT);
  define(wood, signal->getInternalName(), signal->getBddValue(module, wood), wood->Bdd_not(error),
         Compilation::VOUTPUT);
}

}  // namespace kiva
