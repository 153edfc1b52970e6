// The array of a module's variables: what is written to it before an instant and moved in it after.

#include "engine/context.h"

#include "tarn/model/sexception.h"

namespace kiva {

void get_id_signals(Module* module, const std::string& name, long& status_index,
                    long& value_index) {
  Bddexpressionwood* wood = module->getBddWood();
  const SignalRef* ref = module->getSignalManager()->getSignalRefByName(name);
  if (ref == nullptr)
    throw IllegalOperationException("get_id_signals: no signal of this name", name);
  status_index = ref->getBddStatusId(wood);
  value_index = ref->getBddValueId(wood);
}

SignalRails rails_of(Module* module, const Signal* signal) {
  Bddexpressionwood* wood = module->getBddWood();
  return {signal->getBddStatusId(module, wood), signal->getBddValueId(module, wood)};
}

std::vector<RegisterRails> register_rails(Module* module) {
  std::vector<RegisterRails> registers;
  for (const regclass* reg : module->getRegisterList())
    registers.push_back({rails_of(module, reg->actual_var()), rails_of(module, reg->next_var())});
  return registers;
}

ChoiceRails choice_rails(Module* module) {
  module->getSet()->setWire();
  ChoiceRails rails{
      rails_of(module, module->getSet()), rails_of(module, module->getReset()), {}, {}};
  for (const Signal* input : module->getInputSignalList())
    (input->isValue() ? rails.rowless : rails.inputs).push_back(rails_of(module, input));
  return rails;
}

namespace {

void write_pair(SignalRails rails, StatePair pair, int* context) {
  context[rails.status_index] = pair.status;
  context[rails.value_index] = pair.value;
}

StatePair pair_of_flag(bool raised) {
  return pair_of(raised ? SignalState::one : SignalState::zero);
}

}  // namespace

void move_registers(std::span<const RegisterRails> registers, int* context) {
  for (const RegisterRails& reg : registers) {
    context[reg.actual.status_index] = context[reg.next.status_index];
    context[reg.actual.value_index] = context[reg.next.value_index];
    write_pair(reg.next, {0, 0}, context);
  }
}

int* update_context_register(Module* module, int* context) {
  move_registers(register_rails(module), context);
  return context;
}

int* initialise_register_context(Module* module, int* context) {
  for (const regclass* reg : module->getRegisterList())
    write_pair(rails_of(module, reg->actual_var()), pair_of_flag(reg->is_initialy_true() != 0),
               context);
  return context;
}

void write_choices(const ChoiceRails& rails, bool set, bool reset,
                   std::span<const SignalState> choices, int* context) {
  write_pair(rails.set, pair_of_flag(set), context);
  write_pair(rails.reset, pair_of_flag(reset), context);
  for (size_t row = 0; row < rails.inputs.size(); ++row)
    write_pair(rails.inputs[row], pair_of(choices[row]), context);
  for (SignalRails rowless : rails.rowless) write_pair(rowless, {0, 0}, context);
}

std::vector<Signal*> signals_with_row(const signal_list& list) {
  std::vector<Signal*> rows;
  for (Signal* signal : list)
    if (!signal->isValue()) rows.push_back(signal);
  return rows;
}

}  // namespace kiva
