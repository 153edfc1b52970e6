// A compiled module taken into the one that runs it. Every signal of the called module gets a copy,
// a local whose internal name is the called one's with the suffix of the instance. The equations
// find the copies by their variables' names: those of a signal's first occurrence, "_s_" and "_v_"
// with its internal name and the suffix, and those of its occurrence k, with "_" and k between the
// two. A module read from ZUC text has its further occurrences as signals of their own, under the
// same names, so an instance does not tell where its module came from.

#include "tarn/zu/module_inclusion.h"

#include "tarn/model/compilation.h"
#include "tarn/model/interface.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/whole_values.h"

namespace kiva {

namespace {

/// Far more than any program has, and far less than memory: each level of runs can double what
/// stands below it.
constexpr size_t most_locals = 4'000'000;

/// The value type of a called module's signal; null for a pure one.
const std::string* value_type(const Signal* signal, Module* called) {
  const SignalRef* ref = called->getSignalManager()->getSignalRefByName(signal->getInternalName());
  return ref != nullptr && ref->isValued() ? &ref->getType() : nullptr;
}

/// Text of a compiled module does not tell which locals its user declared. A wire, which is True or
/// False, is told by its equations; a further occurrence bears its signal's name.
bool is_declared(const Signal* signal, Module* called) {
  if (called->getStatement() != nullptr || !signal->isLocal() || signal->isRegister())
    return signal->isDeclared();
  Bddexpressionwood* wood = called->getBddWood();
  const long status_index = signal->getBddStatusId(called, wood);
  const Bddexpression* value = wood->exp_by_index(signal->getBddValueId(called, wood));
  if (wood->exp_by_index(status_index) == nullptr || value == nullptr ||
      value->my_bdd_exp() == wood->Bdd_not(wood->Bdd_var_by_index(status_index)))
    return false;
  const std::string& name = signal->getInternalName();
  const size_t end = name.find_last_not_of("0123456789");
  if (end == std::string::npos || end == 0 || name[end] != '_' || end + 1 == name.size())
    return true;
  const std::string whole = name.substr(0, end);
  return called->getLocalSignal(whole) == nullptr && called->getOutputSignal(whole) == nullptr;
}

class Instance {
 public:
  Instance(Module* module, Module* called, const std::string& suffix, Bddexpressionwood* wood)
      : module_(module), called_(called), suffix_(suffix), wood_(wood) {}

  Signal* copy(const Signal* signal) { return copy(signal, signal->getInternalName()); }

  /// The copy, behind those of its further occurrences.
  Signal* copy_with_occurrences(const Signal* signal) {
    Bddexpressionwood* from = called_->getBddWood();
    const int last = signal->hasOccurrence(from) ? signal->getCurrentOccurrence(from) : 0;
    for (int k = last; k > 0; --k)
      module_->addLocalSignal(
          copy(signal,
               called_->getSignalManager()->getSignalRefByOccurrence(signal, k)->getCurrentName()));
    return copy(signal);
  }

  void add_wire(Signal* wire) {
    const std::string name = wire->getName(called_, called_->getBddWood()) + suffix_;
    auto* made = make_kept<Signal>(name, module_, wood_);
    made->setLocal();
    made->setWire();
    made->setInstance();
    module_->addLocalSignal(made);
    copies_.push_back(made);
  }

  regclass* add_register(const regclass& reg) {
    const auto variable = [&](const Signal* signal) {
      Signal* copy = module_->getLocalSignal(signal->getInternalName() + suffix_);
      if (copy == nullptr)
        throw IllegalOperationException("Run: register not declared local: ",
                                        signal->getInternalName());
      copy->setWire();
      copy->setRegister();
      return copy;
    };
    Signal* actual = variable(reg.actual_var());
    const int initial = reg.is_initialy_true();
    auto* copy = make_kept<regclass>(actual, variable(reg.next_var()), initial);
    module_->addRegisterSignal(copy);
    return copy;
  }

  /// The equations now belong to locals, whatever their signals were in the called module.
  void retype_equations() const {
    for (const Signal* copy : copies_) {
      const auto retype = [&](long index, int usertype) {
        if (Bddexpression* equation = wood_->exp_by_index(index)) equation->setUserType(usertype);
      };
      retype(copy->getBddStatusId(module_, wood_), copy->computeStatusType());
      retype(copy->getBddValueId(module_, wood_), copy->computeValueType());
    }
  }

  /// What finalisation has found to be constant, or has put in its readers' place, may be left
  /// without equations. Nobody reads it; it is Zero.
  void complete_equations() const {
    for (const Signal* copy : copies_) {
      if (!copy->isLocal() || copy->isRegister() || copy->isWire()) continue;
      const auto complete = [&](long index, const bdd& f, int usertype) {
        if (wood_->exp_by_index(index) == nullptr)
          new Bddexpression(copy->getInternalName(), wood_, wood_->Bdd_var_by_index(index), f, 0, 0,
                            usertype);  // learnt, and so owned, by the wood
      };
      complete(copy->getBddStatusId(module_, wood_), wood_->Bdd_zero(), copy->computeStatusType());
      complete(copy->getBddValueId(module_, wood_), wood_->Bdd_one(), copy->computeValueType());
    }
  }

 private:
  Signal* copy(const Signal* signal, const std::string& internal_name) {
    auto* made =
        make_kept<Signal>(signal->getOriginalName(), internal_name + suffix_, module_, wood_);
    if (const std::string* type = value_type(signal, called_))
      made->setValueType(*type, module_, wood_);
    made->setLocal();
    made->setInstance();
    made->setDeclared(internal_name == signal->getInternalName() && is_declared(signal, called_));
    made->setWire(signal->isWire());
    made->setRegister(signal->isRegister());
    made->setClock(signal->isClock());
    made->setValue(signal->isValue());
    copies_.push_back(made);
    return made;
  }

  Module* module_;
  Module* called_;
  const std::string& suffix_;
  Bddexpressionwood* wood_;
  std::vector<Signal*> copies_;
};

/// A finalised module starts itself by a register of its own; an instance is started by its wire.
bool is_start_up(const regclass& reg, const Module* called) {
  const auto is_made = [](const Signal* signal, const std::string& name) {
    return signal->getInternalName().starts_with(name) &&
           signal->getInternalName().find_first_not_of("_bis", name.size()) == std::string::npos;
  };
  return called->getFinalised() != 0 && is_made(reg.actual_var(), "boot") &&
         is_made(reg.next_var(), "bootplus");
}

void take_bindings(Module* module, const Module* called, Interface* interface,
                   Bddexpressionwood* wood) {
  if (called->getDataTable() == nullptr) return;
  for (const auto& [name, binding] : *called->getDataTable()) {
    DataBinding* copy = binding->instanciate(interface);
    // A data signal and whatever a binding fires is left to its binding alone.
    copy->getSignal()->setValue();
    module->addBinding(copy, wood);
  }
}

}  // namespace

void include_compiled_module(Module* module, Module* called, Interface* interface,
                             const std::string& suffix,
                             Bddexpressionwood* wood) {  // house: one list after the other
  const size_t locals = module->getLocalSignalList().size() + called->getLocalSignalList().size();
  if (locals > most_locals)
    throw explained(IllegalOperationException("Run: more than " + std::to_string(most_locals) +
                                                  " signals with those of module ",
                                              called->getName()),
                    "more than " + std::to_string(most_locals) +
                        " signals with those of module \"" + called->getName() + '"');

  const regclass* start_up = nullptr;
  for (const regclass* reg : called->getRegisterList())
    if (is_start_up(*reg, called)) start_up = reg;

  Instance instance(module, called, suffix, wood);
  for (const Signal* input : called->getInputSignalList()) {
    Signal* copy = instance.copy(input);
    module->addLocalSignal(copy);
    interface->addInput(input->getOriginalName(), copy);
  }
  for (const Signal* data : called->getDataSignalList()) {
    Signal* copy = instance.copy(data);
    copy->setLocal(false);
    copy->setInput();
    module->addDataSignal(copy);
    interface->addData(data->getInternalName(), copy);
  }
  for (const Signal* output : called->getOutputSignalList()) {
    Signal* copy = instance.copy_with_occurrences(output);
    module->addLocalSignal(copy);
    interface->addOutput(output->getOriginalName(), copy);
  }
  for (const Signal* local : called->getLocalSignalList()) {
    if (start_up != nullptr && (local == start_up->actual_var() || local == start_up->next_var()))
      continue;
    Signal* copy = instance.copy_with_occurrences(local);
    module->addLocalSignal(copy);
    interface->addLocal(local->getInternalName(), copy);
  }
  for (Signal* wire : {called->getSet(), called->getReset(), called->getRtl()})
    instance.add_wire(wire);

  for (const regclass* reg : called->getRegisterList()) {
    if (reg == start_up) continue;
    regclass* copy = instance.add_register(*reg);
    interface->addRegister(copy);
  }

  wood->Include_wood_instance(*called->getBddWood(), suffix);
  for (const signal_list* list : {&called->getOutputSignalList(), &called->getLocalSignalList()})
    for (const Signal* signal : *list) join_values(signal, called, wood, suffix);
  instance.retype_equations();
  if (called->getFinalised() != 0) instance.complete_equations();
  if (start_up != nullptr)
    for (const char* rail : {"_s_", "_v_"}) {
      const long index =
          wood->Index_var_by_name(rail + start_up->next_var()->getInternalName() + suffix);
      if (index >= 0) wood->forget_expression_by_bddid(index);
    }

  module->setReincarnate(module->getReincarnate() || called->getReincarnate());
  take_bindings(module, called, interface, wood);
}

}  // namespace kiva
