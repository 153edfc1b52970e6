// References by name and, in each wood, by the index of either rail. Woods over one manager share
// their tables.

#include "tarn/model/signal_manager.h"

#include <algorithm>
#include <ostream>

#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/model/signal.h"

namespace kiva {

SignalRef::SignalRef(const std::string& name, Module* module, Bddexpressionwood* wood, bool valued)
    : SignalRef(name, name, name, 0, module, wood, valued) {}

SignalRef::SignalRef(const std::string& original, const std::string& internal, Module* module,
                     Bddexpressionwood* wood, bool valued)
    : SignalRef(original, internal, internal, 0, module, wood, valued) {}

SignalRef::SignalRef(const std::string& original, const std::string& internal,
                     const std::string& current, int occurrence, Module* module,
                     Bddexpressionwood* wood, bool valued)
    : original_name(original),
      internal_name(internal),
      current_name(current),
      current_occurrence(occurrence),
      is_valued(valued) {
  long status_index = computeId("_s_" + current, wood);
  long value_index = computeId("_v_" + current, wood);
  addBddIds(status_index, value_index, wood);
  module->getSignalManager()->addSignalRef(this);
}

long SignalRef::computeId(const std::string& name, Bddexpressionwood* wood) {
  return wood->Index_new_var_last(name);
}

void SignalRef::addBddIds(long status_index, long value_index, Bddexpressionwood* wood) {
  if (bdd_ids_wood.find(wood) != nullptr)
    throw IllegalOperationException("SignalRef::addBddIds: wood already added", current_name);
  bdd_ids_wood.enter(wood, {status_index, value_index});
}

long SignalRef::getBddStatusId(Bddexpressionwood* wood) const {
  const BddIds* entry = bdd_ids_wood.find(wood);
  if (entry == nullptr)
    throw IllegalOperationException("SignalRef::getBddStatusId:unknown wood", current_name);
  return entry->status_index;
}

long SignalRef::getBddValueId(Bddexpressionwood* wood) const {
  const BddIds* entry = bdd_ids_wood.find(wood);
  if (entry == nullptr)
    throw IllegalOperationException("SignalRef::getBddValueId:unknown wood", current_name);
  return entry->value_index;
}

void SignalRef::setBddStatusId(long index, Bddexpressionwood* wood) {
  BddIds* entry = bdd_ids_wood.find(wood);
  if (entry == nullptr)
    throw IllegalOperationException("SignalRef::setBddStausId: wood not found", current_name);
  entry->status_index = index;
}

void SignalRef::setBddValueId(long index, Bddexpressionwood* wood) {
  BddIds* entry = bdd_ids_wood.find(wood);
  if (entry == nullptr)
    throw IllegalOperationException("SignalRef::setBddValueId: wood not found", current_name);
  entry->value_index = index;
}

bool SignalRef::isDefinedWood(const Bddexpressionwood* wood) const {
  return bdd_ids_wood.find(wood) != nullptr;
}

void SignalRef::removeWood(const Bddexpressionwood* wood) {
  bdd_ids_wood.remove(wood);
}

void SignalRef::print(std::ostream& out) const {
  out << "Signal Ref:"
      << "original: " << original_name << "  internal:  " << internal_name
      << "  current:  " << current_name;
  bdd_ids_wood.for_each([&out](const Bddexpressionwood* wood, const BddIds& indices) {
    out << "Bdd ids for wood:" << wood << " : (" << indices.status_index << ", "
        << indices.value_index << ")";
  });
}

std::ostream& operator<<(std::ostream& out, const SignalRef& ref) {
  ref.print(out);
  return out;
}

void SignalManager::addSignalRef(SignalRef* ref) {
  if (!signalref_names.enter(ref->getCurrentName()).is_new)
    throw HashTableAddException(ref->getCurrentName(), "SignalManager::addSignalRef");
  signalref_table.push_back(ref);
  if (ref->getCurrentName() != ref->getInternalName()) {
    std::vector<SignalRef*>& same_signal = further_occurrences[ref->getInternalName()];
    auto at = std::lower_bound(same_signal.begin(), same_signal.end(), ref,
                               [](const SignalRef* a, const SignalRef* b) {
                                 return a->getCurrentName() < b->getCurrentName();
                               });
    same_signal.insert(at, ref);
  }
  ref->getBddIdsWood().for_each([&](Bddexpressionwood* wood, const BddIds& indices) {
    addSignalRefIdTable(indices.status_index, indices.value_index, ref, wood);
  });
}

void SignalManager::addSignalRefIdTable(long status_index, long value_index, SignalRef* ref,
                                        Bddexpressionwood* wood) {
  SignalRefTable& table = signalref_id_table[wood->my_bdd_manager()];
  const size_t needed = static_cast<size_t>(
      std::max({wood->my_bdd_manager()->Nb_bdd_vars(), status_index + 1, value_index + 1}));
  if (table.size() < needed) table.resize(needed, nullptr);
  // Over one manager a reference has the same two indices in each wood.
  const bool its_own = ref->isDefinedWood(wood) && ref->getBddStatusId(wood) == status_index &&
                       ref->getBddValueId(wood) == value_index;
  const auto taken = [&](long index) {
    return table[index] != nullptr && !(its_own && table[index] == ref);
  };
  if (taken(status_index))
    throw IllegalOperationException("addSignalRef (excep1)", ref->getCurrentName());
  if (taken(value_index))
    throw IllegalOperationException("addSignalRef (excep2)", ref->getCurrentName());
  table[status_index] = ref;
  table[value_index] = ref;
  signalrefs_of_wood[wood].push_back(ref);
}

void SignalManager::extendSignalRef(long status_index, long value_index, SignalRef* ref,
                                    Bddexpressionwood* wood) {
  ref->addBddIds(status_index, value_index, wood);
  addSignalRefIdTable(status_index, value_index, ref, wood);
}

SignalRef* SignalManager::getSignalRefByName(const std::string& current_name) const {
  const long place = signalref_names.find(current_name);
  return place < 0 ? nullptr : signalref_table[place];
}

SignalRef* SignalManager::getSignalRefById(long index, const Bddexpressionwood* wood) const {
  const SignalRefTable* table = tableOf(wood);
  if (table == nullptr || index < 0 || static_cast<size_t>(index) >= table->size()) return nullptr;
  SignalRef* ref = (*table)[index];
  return ref != nullptr && ref->isDefinedWood(wood) ? ref : nullptr;
}

const SignalManager::SignalRefTable* SignalManager::tableOf(const Bddexpressionwood* wood) const {
  const auto at = signalref_id_table.find(wood->my_bdd_manager());
  return at == signalref_id_table.end() ? nullptr : &at->second;
}

const std::vector<SignalRef*>& SignalManager::definedIn(const Bddexpressionwood* wood) const {
  static const std::vector<SignalRef*> none;
  const auto at = signalrefs_of_wood.find(wood);
  return at == signalrefs_of_wood.end() ? none : at->second;
}

SignalRef* SignalManager::getSignalRefByOccurrence(const Signal* signal, int occurrence) const {
  const std::string& name = signal->getInternalName();
  if (occurrence == 0) return getSignalRefByName(name);
  SignalRef* named = getSignalRefByName(name + "_" + std::to_string(occurrence));
  if (named == nullptr || named->getInternalName() == name) return named;
  // The name was another signal's before: this one has stepped aside.
  const auto further = further_occurrences.find(name);
  if (further != further_occurrences.end())
    for (SignalRef* ref : further->second)
      if (ref->getCurrentOccurrence() == occurrence) return ref;
  return named;
}

template <class See>
void SignalManager::walk_signal(const std::string& internal_name, See see) const {
  SignalRef* first = getSignalRefByName(internal_name);
  if (first != nullptr && first->getInternalName() == internal_name && !see(first)) return;
  auto at = further_occurrences.find(internal_name);
  if (at == further_occurrences.end()) return;
  for (SignalRef* ref : at->second)
    if (!see(ref)) return;
}

std::list<SignalRef*> SignalManager::getAllSignalRef(const Signal* signal,
                                                     const Bddexpressionwood* wood) const {
  std::list<SignalRef*> refs;
  walk_signal(signal->getInternalName(), [&](SignalRef* ref) {
    if (ref->isDefinedWood(wood)) refs.push_back(ref);
    return true;
  });
  return refs;
}

SignalRef* SignalManager::getCurrentOccurrence(const Signal* signal,
                                               const Bddexpressionwood* wood) const {
  SignalRef* latest = nullptr;
  walk_signal(signal->getInternalName(), [&](SignalRef* ref) {
    const bool later =
        latest == nullptr || ref->getCurrentOccurrence() > latest->getCurrentOccurrence();
    if (later && ref->isDefinedWood(wood)) latest = ref;
    return true;
  });
  return latest;
}

SignalRef* SignalManager::firstSignalRef(const Signal* signal,
                                         const Bddexpressionwood* wood) const {
  SignalRef* found = nullptr;
  walk_signal(signal->getInternalName(), [&](SignalRef* ref) {
    if (ref->isDefinedWood(wood)) found = ref;
    return found == nullptr;
  });
  return found;
}

std::string SignalManager::freeName(const std::string& name) {
  if (getSignalRefByName(name) == nullptr) return name;
  std::string& free = last_free_name.try_emplace(name, name).first->second;
  while (getSignalRefByName(free) != nullptr) free += "_bis";
  return free;
}

void SignalManager::duplicate(Bddexpressionwood* from, Bddexpressionwood* to) {
  const std::vector<SignalRef*> refs = definedIn(from);
  for (SignalRef* ref : refs)
    extendSignalRef(ref->getBddStatusId(from), ref->getBddValueId(from), ref, to);
}

void SignalManager::forgetWood(const Bddexpressionwood* wood) {
  for (SignalRef* ref : definedIn(wood)) ref->removeWood(wood);
  signalrefs_of_wood.erase(wood);
}

void SignalManager::deleteWood(Bddexpressionwood* wood) {
  forgetWood(wood);
  if (wood->get_common_bdd_manager() == 0) signalref_id_table.erase(wood->my_bdd_manager());
  EquationTable::destroy_wood(wood);
}

void SignalManager::printSignalTableByName(std::ostream& out) const {
  std::map<std::string_view, const SignalRef*> sorted;
  for (const SignalRef* ref : signalref_table) sorted.emplace(ref->getCurrentName(), ref);
  for (const auto& [name, ref] : sorted) out << name << ": " << *ref << '\n';
}

void SignalManager::printSignalTableById(std::ostream& out) const {
  for (const auto& [wood, refs] : signalrefs_of_wood) {
    out << "wood address:" << wood << ":\n";
    const SignalRefTable& table = *tableOf(wood);
    for (size_t index = 0; index < table.size(); ++index) {
      const SignalRef* ref = table[index];
      if (ref == nullptr || !ref->isDefinedWood(wood)) continue;
      out << index << ": current: " << ref->getCurrentName()
          << "  internal:" << ref->getInternalName() << " original: " << ref->getOriginalName()
          << '\n';
    }
  }
}

}  // namespace kiva
