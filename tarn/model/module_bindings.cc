// The bindings of a module: which data expression gives which signal its value. A binding without
// clock turns its signal's two equations into abstract ones, which depend on whatever signals the
// expression reads, so that dating puts them behind those.

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/session/session.h"

namespace kiva {

namespace {
const char* const value_signal = "VALUE_SIGNAL";
}  // namespace

DataTable& Module::bindings() {
  if (data_table == nullptr) data_table = std::make_unique<DataTable>();
  return *data_table;
}

void Module::addBinding(DataBinding* binding, Bddexpressionwood* wood) {
  bindings()[binding->getSignal()->getName(this, wood)] = binding;
}

DataBinding* Module::getBinding(const std::string& signal_name) const {
  if (data_table == nullptr) return nullptr;
  auto at = data_table->find(signal_name);
  return at == data_table->end() ? nullptr : at->second;
}

index_set Module::dependence_ids(DataExpr* e, Bddexpressionwood* wood, bool& any) {
  std::vector<long> indices;
  const auto signals = e->computeDependencySet();
  any = signals != nullptr;
  if (any)
    for (const Signal* read : *signals) {
      if (!read->hasOccurrence(wood)) continue;  // of another branch
      indices.push_back(read->getBddStatusId(this, wood));
      indices.push_back(read->getBddValueId(this, wood));
    }
  return index_set::from_unsorted(std::move(indices));
}

void Module::make_value_equations(Signal* signal, Bddexpressionwood* wood,
                                  const index_set& indices) {
  for (long index : {signal->getBddStatusId(this, wood), signal->getBddValueId(this, wood)}) {
    const std::unique_ptr<Bddexpression> replaced(wood->exp_by_index(index));
    new Bddexpression(index, wood, indices, value_signal, 0,
                      0);  // learnt, and so owned, by the wood
  }
}

Signal* Module::addSignalBinding(DataExpr* e, Signal* signal) {
  bindings()[signal->getInternalName()] = make_kept<DataBinding>(signal, e);
  bool any = false;
  const index_set indices = dependence_ids(e, getBddWood(), any);
  if (any) make_value_equations(signal, getBddWood(), indices);
  return signal;
}

Signal* Module::addSignalBinding(DataExpr* e, Signal* signal, Signal* clock) {
  if (clock != nullptr) clock->setClock();
  bindings()[signal->getInternalName()] = make_kept<DataBinding>(signal, e, clock);
  signal->setValue();
  return signal;
}

Signal* Module::bind_intermediate(DataExpr* e, const std::string& signal_name, Signal* clock,
                                  Bddexpressionwood* wood) {
  Signal* signal = make_kept<Signal>(
      Compilation::rules().copies ? getSignalManager()->freeName(signal_name) : signal_name, this,
      wood);
  signal->setValueType(e->getType(this), this, wood);
  signal->setValue();
  if (clock != nullptr) clock->setClock();
  bindings()[signal->getInternalName()] = make_kept<DataBinding>(signal, e, clock);

  bool any = false;
  index_set indices = dependence_ids(e, wood, any);
  if (clock != nullptr) {
    any = true;
    indices.insert(clock->getBddStatusId(this, wood));
    indices.insert(clock->getBddValueId(this, wood));
  }
  if (any) make_value_equations(signal, wood, indices);
  return signal;
}

Signal* Module::addSignalBinding(DataExpr* e, const std::string& prefix) {
  return bind_intermediate(e, "IData_" + prefix + std::to_string(DataExpr::Indexation()++), nullptr,
                           getBddWood());
}

Signal* Module::addSignalBinding(DataExpr* e, Signal* clock, Bddexpressionwood* wood) {
  return bind_intermediate(
      e, clock->getInternalName() + "Data" + std::to_string(DataExpr::Indexation()++), clock, wood);
}

Signal* Module::addSignalBinding(DataExpr* e, const std::string& prefix, Signal* clock) {
  return bind_intermediate(e, prefix + "Data" + std::to_string(DataExpr::Indexation()++), clock,
                           getBddWood());
}

std::unique_ptr<std::vector<Signal*>> Module::getSignalBindingByClock(const Signal* clock) const {
  if (data_table == nullptr) return nullptr;
  auto signals = std::make_unique<std::vector<Signal*>>();
  if (auto found = getDataBindingByClock(clock))
    for (const DataBinding* binding : *found) signals->push_back(binding->getSignal());
  return signals;
}

std::unique_ptr<std::vector<DataBinding*>> Module::getDataBindingByClock(
    const Signal* clock) const {
  if (data_table == nullptr) return nullptr;
  auto found = std::make_unique<std::vector<DataBinding*>>();
  for (const auto& [bound_name, binding] : *data_table)
    if (binding->getClock() != nullptr &&
        binding->getClock()->getInternalName() == clock->getInternalName())
      found->push_back(binding);
  return found->empty() ? nullptr : std::move(found);
}

}  // namespace kiva
