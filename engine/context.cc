#include "engine/context.h"

#include "tarn/model/sexception.h"

namespace kiva {

void get_id_signals(Module* module, const std::string& name, long& status_id, long& value_id) {
  Bddexpressionwood* wood = module->getBddWood();
  const SignalRef* ref = module->getSignalManager()->getSignalRefByName(name);
  if (ref == nullptr)
    throw IllegalOperationException("get_id_signals: no signal of this name", name);
  status_id = ref->getBddStatusId(wood);
  value_id = ref->getBddValueId(wood);
}

SignalIds ids_of(Module* module, const Signal* signal) {
  Bddexpressionwood* wood = module->getBddWood();
  return {signal->getBddStatusId(module, wood), signal->getBddValueId(module, wood)};
}

std::vector<RegisterIds> register_ids(Module* module) {
  std::vector<RegisterIds> registers;
  for (const regclass* reg : module->getRegisterList())
    registers.push_back({ids_of(module, reg->actual_var()), ids_of(module, reg->next_var())});
  return registers;
}

ChoiceIds choice_ids(Module* module) {
  module->getSet()->setWire();
  ChoiceIds ids{ids_of(module, module->getSet()), ids_of(module, module->getReset()), {}, {}};
  for (const Signal* input : module->getInputSignalList())
    (input->isValue() ? ids.rowless : ids.inputs).push_back(ids_of(module, input));
  return ids;
}

namespace {

void write_pair(SignalIds ids, StatePair pair, int* context) {
  context[ids.status_id] = pair.status;
  context[ids.value_id] = pair.value;
}

StatePair pair_of_flag(bool raised) {
  return pair_of(raised ? SignalState::one : SignalState::zero);
}

}  // namespace

void move_registers(std::span<const RegisterIds> registers, int* context) {
  for (const RegisterIds& reg : registers) {
    context[reg.actual.status_id] = context[reg.next.status_id];
    context[reg.actual.value_id] = context[reg.next.value_id];
    write_pair(reg.next, {0, 0}, context);
  }
}

int* update_context_register(Module* module, int* context) {
  move_registers(register_ids(module), context);
  return context;
}

int* initialise_register_context(Module* module, int* context) {
  for (const regclass* reg : module->getRegisterList())
    write_pair(ids_of(module, reg->actual_var()), pair_of_flag(reg->is_initialy_true() != 0),
               context);
  return context;
}

void write_choices(const ChoiceIds& ids, bool set, bool reset, std::span<const SignalState> choices,
                   int* context) {
  write_pair(ids.set, pair_of_flag(set), context);
  write_pair(ids.reset, pair_of_flag(reset), context);
  for (size_t row = 0; row < ids.inputs.size(); ++row)
    write_pair(ids.inputs[row], pair_of(choices[row]), context);
  for (SignalIds rowless : ids.rowless) write_pair(rowless, {0, 0}, context);
}

std::vector<Signal*> signals_with_row(const signal_list& list) {
  std::vector<Signal*> rows;
  for (Signal* signal : list)
    if (!signal->isValue()) rows.push_back(signal);
  return rows;
}

}  // namespace kiva
