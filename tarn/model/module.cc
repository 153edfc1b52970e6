// What a module is made of: interface, registers, signals by kind. What is done with modules stands
// on the floors above.

#include "tarn/model/module.h"

#include <ostream>

#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"

namespace kiva {

std::ostream& operator<<(std::ostream& out, const regclass& reg) {
  const auto print_variable = [&out](const Signal* signal) {
    if (signal == nullptr) {
      out << "? ";
    } else {
      out << signal->getInternalName() << ' ';
    }
  };
  print_variable(reg.next_var());
  print_variable(reg.actual_var());
  return out << (reg.is_initialy_true() != 0 ? "1" : "0");
}

Module::Module(const std::string& name)
    : name(name),
      compilation(make_kept<EquationTable>(name)),
      signal_manager(make_kept<SignalManager>()) {}

Module::Module(const std::string& name, signal_list inputs, signal_list outputs, signal_list locals,
               signal_list data, RegisterList registers, const std::array<Signal*, 3>& wires,
               Bddexpressionwood* wood)
    : name(name),
      input_signal_list(std::move(inputs)),
      output_signal_list(std::move(outputs)),
      local_signal_list(std::move(locals)),
      data_signal_list(std::move(data)),
      register_list(std::move(registers)),
      compilation(nullptr),
      set_wire(wires[0]),
      reset_wire(wires[1]),
      rtl_wire(wires[2]),
      current_instance(0),
      signal_manager(make_kept<SignalManager>()) {
  for (regclass* reg : register_list) {
    if (reg->actual_var() == nullptr)
      throw IllegalOperationException("Register not declared local! ");
    if (reg->next_var() == nullptr)
      throw IllegalOperationException("Register not declared local: ",
                                      reg->actual_var()->getInternalName());
    for (Signal* variable : {reg->actual_var(), reg->next_var()}) {
      variable->setRegister();
      variable->setWire();
    }
  }
  compilation = make_kept<EquationTable>(name, wood);
  compilation->own_wood();
}

Module::Module(Module& other)
    : name(other.name),
      compilation(nullptr),
      reincarnate(other.reincarnate),
      finalised(other.finalised),
      current_instance(other.current_instance),
      signal_manager(make_kept<SignalManager>()) {
  Bddexpressionwood* wood = new Bddexpressionwood(other.getBddWood());
  compilation = make_kept<EquationTable>(other.compilation->getModuleName(), wood);
  compilation->own_wood();

  const auto copy_signal = [&](Signal* signal) {
    return make_kept<Signal>(*signal, this, wood, &other);
  };
  for (Signal* signal : other.input_signal_list) input_signal_list.push_back(copy_signal(signal));
  for (Signal* signal : other.output_signal_list) output_signal_list.push_back(copy_signal(signal));
  for (Signal* signal : other.local_signal_list) local_signal_list.push_back(copy_signal(signal));
  for (Signal* signal : other.data_signal_list) data_signal_list.push_back(copy_signal(signal));
  const auto copy_wire = [&](Signal* wire) -> Signal* {
    if (wire == nullptr) return nullptr;
    Signal* copy = copy_signal(wire);
    copy->setWire();
    return copy;
  };
  set_wire = copy_wire(other.set_wire);
  reset_wire = copy_wire(other.reset_wire);
  rtl_wire = copy_wire(other.rtl_wire);

  for (const regclass* reg : other.register_list)
    addRegisterSignal(getLocalSignal(reg->actual_var()->getInternalName()),
                      getLocalSignal(reg->next_var()->getInternalName()), reg->is_initialy_true());

  // The wood's copy holds the equations already; what other signals refer to follows.
  if (other.data_table != nullptr)
    for (const auto& [bound_name, binding] : *other.data_table)
      bindings()[bound_name] = make_kept<DataBinding>(*binding, this, &other);
}

Module::~Module() {
  Session& session = Session::current();
  if (session.ending()) return;
  session.arena().forget(this);
  explicit_states.clear();
  if (Bddexpressionwood* wood = compilation->getBddexpressionWood())
    EquationTable::destroy_wood(wood);
}

Signal* Module::getInputSignal(const std::string& name) const {
  return input_signal_list.find_original(name);
}
Signal* Module::getOutputSignal(const std::string& name) const {
  return output_signal_list.find_original(name);
}
Signal* Module::getLocalSignal(const std::string& name) const {
  return local_signal_list.find_internal(name);
}
Signal* Module::getDataSignal(const std::string& name) const {
  return data_signal_list.find_internal(name);
}

Signal* Module::getOutputLocalSignal(const std::string& name) const {
  Signal* signal = getOutputSignal(name);
  return signal != nullptr ? signal : getLocalSignal(name);
}

Signal* Module::getSignal(const std::string& name) const {
  if (Signal* signal = getInputSignal(name)) return signal;
  if (Signal* signal = getOutputSignal(name)) return signal;
  if (Signal* signal = getDataSignal(name)) return signal;
  return getLocalSignal(name);
}

Signal* Module::getSignalFromInternalName(const std::string& name) const {
  for (const signal_list* list :
       {&input_signal_list, &output_signal_list, &data_signal_list, &local_signal_list})
    if (Signal* signal = list->find_internal(name)) return signal;
  return nullptr;
}

Signal* Module::getSignalById(long index, Bddexpressionwood* wood) const {
  const SignalRef* ref = signal_manager->getSignalRefById(index, wood);
  return ref == nullptr ? nullptr : getSignal(ref->getInternalName());
}

const std::string& Module::getSignalNameById(long index, Bddexpressionwood* wood) const {
  const SignalRef* ref = signal_manager->getSignalRefById(index, wood);
  if (ref == nullptr)
    throw IllegalOperationException(
        "Module::getSignalNameById: no signal reference for this bdd id", std::to_string(index));
  return ref->getCurrentName();
}

void Module::addRegisterSignal(Signal* actual, Signal* next, int initial) {
  register_list.push_back(make_kept<regclass>(actual, next, initial));
}

void Module::addRegisterDecl(const char* actual, int initial, const char* next) {
  const auto make_variable = [this](const char* variable_name) {
    Signal* signal = make_kept<Signal>(std::string(variable_name), this, getBddWood(), true);
    signal->setLocal();
    signal->setInput(false);
    signal->setOutput(false);
    addLocalSignal(signal);
    return signal;
  };
  Signal* actual_signal = make_variable(actual);
  Signal* next_signal = make_variable(next);
  addRegisterSignal(actual_signal, next_signal, initial);
}

void Module::addRunDecl(const std::string& run, const std::string& file, const std::string& dir) {
  if (run_decl_table == nullptr)
    run_decl_table = std::make_unique<std::map<std::string, std::string>>();
  if (!run_decl_table->emplace(run, dir + "/" + file).second)
    throw explained(IllegalOperationException("Run module already exists: ", run),
                    "the place of module \"" + run + "\" is declared twice");
}

const std::string* Module::getModuleLocation(const std::string& run) const {
  if (run_decl_table == nullptr) return nullptr;
  auto at = run_decl_table->find(run);
  return at == run_decl_table->end() ? nullptr : &at->second;
}

void Module::update_user_type() {
  Bddexpressionwood* wood = getBddWood();
  if (wood == nullptr) return;
  const auto set_type = [wood](long index, int type) {
    if (index < 0) return;
    if (Bddexpression* e = wood->exp_by_index(index)) e->setUserType(type);
  };
  for (const Signal* output : output_signal_list) {
    set_type(output->getBddStatusId(this, wood), Compilation::SOUTPUT);
    set_type(output->getBddValueId(this, wood), Compilation::VOUTPUT);
  }
  const auto set_types = [&](bool (Signal::*mark)() const, int status_type, int value_type) {
    for (const Signal* local : local_signal_list) {
      if (!(local->*mark)()) continue;
      bool status = true;
      for (long index : local->getAllBddId(this, wood)) {
        set_type(index, status ? status_type : value_type);
        status = !status;
      }
    }
  };
  set_types(&Signal::isRegister, Compilation::SREG, Compilation::VREG);
  set_types(&Signal::isClock, Compilation::SCLOCK, Compilation::VCLOCK);
}

void Module::replace_at_in_name_variables() {
  if (getBddWood() == nullptr || getBddWood()->my_bdd_manager() == nullptr) return;
  getBddWood()->my_bdd_manager()->Replace_char_in_all_names('@', '_');
}

void Module::loose_first_underscore_in_name_variables() {
  if (getBddWood() == nullptr || getBddWood()->my_bdd_manager() == nullptr) return;
  getBddWood()->my_bdd_manager()->No_begin_underscore_name();
}

std::string Module::generateName(const char* prefix, int& counter) const {
  return name + prefix + "_" + std::to_string(counter++);
}

void ModuleTable::add(Module* module) {
  if (!modules_.emplace(module->getName(), module).second)
    throw explained(HashTableAddException(module->getName()),
                    "two modules have the name \"" + module->getName() + '"');
  in_order_.push_back(module);
}

void ModuleTable::remove(const std::string& name) {
  std::erase(in_order_, get(name));
  modules_.erase(name);
}

Module* ModuleTable::get(const std::string& name) const {
  auto at = modules_.find(name);
  return at == modules_.end() ? nullptr : at->second;
}

}  // namespace kiva
