// A signal has an occurrence for each place that defines it anew in an instant; its reference in a
// wood is that of the occurrence reached last.

#include "tarn/model/signal.h"

#include "base/text_stream.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/model/signal_manager.h"
#include "tarn/session/session.h"

namespace kiva {

Signal::Signal(const std::string& name, Module* module, Bddexpressionwood* wood)
    : Signal(name, name, module, wood) {}

Signal::Signal(const std::string& original, const std::string& internal, Module* module,
               Bddexpressionwood* wood)
    : original_name(original), internal_name(internal) {
  occurrences_ = std::make_shared<OccurrenceTable>();
  if (module->getSignalManager()->getSignalRefByName(internal) == nullptr)
    make_kept<SignalRef>(original, internal, module, wood);
  occurrences_->enter(wood, 0);
}

Signal::Signal(const std::string& name, Module* module, Bddexpressionwood* wood, bool wire)
    : Signal(name, name, module, wood, wire) {}

Signal::Signal(const std::string& original, const std::string& internal, Module* module,
               Bddexpressionwood* wood, bool wire)
    : Expression(wire),
      original_name(original),
      internal_name(internal),
      is_wire(wire),
      is_register(wire) {
  occurrences_ = std::make_shared<OccurrenceTable>();
  if (module->getSignalManager()->getSignalRefByName(internal) != nullptr) return;
  make_kept<SignalRef>(original, internal, module, wood);
  occurrences_->enter(wood, 0);
}

Signal::Signal(const Signal& other, Module* to, Module* from)
    : Signal(other, to, to->getBddWood(), from) {}

Signal::Signal(const Signal& other, Module* to, Bddexpressionwood* wood, Module* from)
    : Signal(other) {
  Bddexpressionwood* from_wood = from->getBddWood();
  occurrences_ = std::make_shared<OccurrenceTable>();
  for (SignalRef* ref : from->getSignalManager()->getAllSignalRef(&other, from_wood)) {
    if (to->getSignalManager()->getSignalRefByName(ref->getCurrentName()) != nullptr) continue;
    auto* copy =
        make_kept<SignalRef>(ref->getOriginalName(), ref->getInternalName(), ref->getCurrentName(),
                             ref->getCurrentOccurrence(), to, wood, ref->isValued());
    copy->setType(ref->getType());
    copy->setIsPre(ref->isPre());
  }
  int occurrence = 0;
  if (other.occurrences_ != nullptr)
    if (const int* current = other.occurrences_->find(from_wood)) occurrence = *current;
  occurrences_->enter(wood, occurrence);
}

int Signal::getCurrentOccurrence(Bddexpressionwood* wood) const {
  const int* occurrence = occurrences_ == nullptr ? nullptr : occurrences_->find(wood);
  if (occurrence == nullptr)
    throw IllegalOperationException(
        "Signal:getCurrentOccurrence: no current occurrence for the considered wood",
        internal_name);
  return *occurrence;
}

void Signal::setCurrentOccurrence(Bddexpressionwood* wood, int occurrence) {
  int* current = occurrences_ == nullptr ? nullptr : occurrences_->find(wood);
  if (current == nullptr)
    throw IllegalOperationException("Signal::setCurrentOccurrence: no wood for signal",
                                    internal_name);
  *current = occurrence;
}

void Signal::extendCurrentOccurrenceTable(Bddexpressionwood* wood, int occurrence) {
  if (occurrences_ == nullptr) occurrences_ = std::make_shared<OccurrenceTable>();
  occurrences_->enter(wood, occurrence);
}

bool Signal::hasOccurrence(Bddexpressionwood* wood) const {
  return occurrences_ != nullptr && occurrences_->find(wood) != nullptr;
}

Signal* Signal::newOccurrence(Bddexpressionwood* wood, Module* module) {
  if (!is_local && !is_output) return this;
  SignalManager* manager = module->getSignalManager();
  const int occurrence = getCurrentOccurrence(wood) + 1;
  std::string name = internal_name + "_" + std::to_string(occurrence);
  if (const SignalRef* taken = manager->getSignalRefByName(name);
      taken != nullptr && taken->getInternalName() != internal_name &&
      Compilation::rules().copies) {
    const SignalRef* made_before = manager->getSignalRefByOccurrence(this, occurrence);
    name = made_before == taken ? manager->freeName(name) : made_before->getCurrentName();
  }
  const SignalRef* before = getSignalRef(manager, wood);
  const bool valued = before != nullptr && before->isValued();
  const std::string type = valued ? before->getType() : std::string();

  setCurrentOccurrence(wood, occurrence);
  if (SignalRef* known = manager->getSignalRefByName(name)) {
    if (known->isDefinedWood(wood))
      throw IllegalOperationException(
          "Signal::newOccurrence: signal ref already exits for the current wood", internal_name);
    const long status_index = SignalRef::computeId("_s_" + name, wood);
    const long value_index = SignalRef::computeId("_v_" + name, wood);
    manager->extendSignalRef(status_index, value_index, known, wood);
    return this;
  }
  auto* made =
      make_kept<SignalRef>(original_name, internal_name, name, occurrence, module, wood, valued);
  made->setIsPre(true);
  if (valued) made->setType(type);
  return this;
}

void Signal::forgetWood(const Bddexpressionwood* wood) {
  if (occurrences_ != nullptr) occurrences_->remove(wood);
}

std::string Signal::getName(Module* module, Bddexpressionwood* wood) const {
  const int occurrence = getCurrentOccurrence(wood);
  if (occurrence == 0) return internal_name;
  const SignalRef* ref =
      module == nullptr ? nullptr
                        : module->getSignalManager()->getSignalRefByOccurrence(this, occurrence);
  return ref != nullptr ? ref->getCurrentName() : internal_name + "_" + std::to_string(occurrence);
}

std::string Signal::getName(Module* module) const {
  return getName(module, module->getBddWood());
}

SignalRef* Signal::getSignalRef(SignalManager* manager, Bddexpressionwood* wood) const {
  return manager->getSignalRefByOccurrence(this, getCurrentOccurrence(wood));
}

SignalRef* Signal::getSignalRef(Module* module, Bddexpressionwood* wood) const {
  return getSignalRef(module->getSignalManager(), wood);
}

SignalRef* Signal::getSignalRef(Module* module) const {
  return getSignalRef(module, module->getBddWood());
}

SignalRef* Signal::getCurrentSignalRef(Bddexpressionwood* wood, Module* module) const {
  const SignalManager* manager = module->getSignalManager();
  SignalRef* ref = manager->firstSignalRef(this, wood);
  if (ref != nullptr) return ref;
  TextStream report;
  report << "Signal::getCurrentSignalRef: no reference for signal: " << internal_name
         << " in wood: " << wood << '\n';
  manager->printSignalTableById(report);
  std::string told = report.str();
  told.pop_back();
  end_with(told);
}

SignalRef& Signal::referenceOrThrow(Module* module, Bddexpressionwood* wood,
                                    const char* no_occurrence, const char* no_reference) const {
  if (!hasOccurrence(wood)) throw IllegalOperationException(no_occurrence, internal_name);
  SignalRef* ref = getSignalRef(module, wood);
  if (ref == nullptr) throw IllegalOperationException(no_reference, internal_name);
  return *ref;
}

long Signal::getBddStatusId(Module* module, Bddexpressionwood* wood) const {
  return referenceOrThrow(module, wood,
                          "Signal::getBddStatusId: no current occurrence for this wood",
                          "Signal::getBddStatusId: no ref for signal")
      .getBddStatusId(wood);
}

long Signal::getBddValueId(Module* module, Bddexpressionwood* wood) const {
  return referenceOrThrow(module, wood,
                          "Signal::getBddStatusId: no current occurrence for this wood",
                          "Signal::getBddValueId: no ref for signal")
      .getBddValueId(wood);
}

long Signal::getInitialBddStatusId(Module* module, Bddexpressionwood* wood) const {
  const SignalRef* ref = module->getSignalManager()->getSignalRefByName(internal_name);
  if (ref == nullptr)
    throw IllegalOperationException("Signal::getBddStatusId:no signal ref for signal",
                                    internal_name);
  return ref->getBddStatusId(wood);
}

long Signal::getInitialBddValueId(Module* module, Bddexpressionwood* wood) const {
  const SignalRef* ref = module->getSignalManager()->getSignalRefByName(internal_name);
  if (ref == nullptr)
    throw IllegalOperationException("Signal::getBddValueId:no signal ref for signal",
                                    internal_name);
  return ref->getBddValueId(wood);
}

std::list<long> Signal::getAllBddId(Module* module, Bddexpressionwood* wood) const {
  if (!is_local && !is_wire && !is_output)
    throw IllegalOperationException("Signal::getAllBddId", internal_name);
  std::list<long> indices;
  const int current = getCurrentOccurrence(wood);
  for (int occurrence = 0; occurrence <= current; ++occurrence) {
    const SignalRef* ref = module->getSignalManager()->getSignalRefByOccurrence(this, occurrence);
    if (ref == nullptr)
      throw IllegalOperationException(" Signal::getAllBddId: Unknown Signal Ref", internal_name);
    indices.push_back(ref->getBddStatusId(wood));
    indices.push_back(ref->getBddValueId(wood));
  }
  return indices;
}

bdd Signal::getBddStatus(Module* module, Bddexpressionwood* wood) {
  const SignalRef* ref = module->getSignalManager()->getCurrentOccurrence(this, wood);
  if (ref == nullptr)
    throw IllegalOperationException("Signal::getBddStatus:no signal ref for signal", internal_name);
  return wood->Bdd_var_by_index(ref->getBddStatusId(wood));
}

bdd Signal::getBddValue(Module* module, Bddexpressionwood* wood) {
  const SignalRef* ref = module->getSignalManager()->getCurrentOccurrence(this, wood);
  if (ref == nullptr)
    throw IllegalOperationException("Signal::getBddValue:no signal ref for signal", internal_name);
  return wood->Bdd_var_by_index(ref->getBddValueId(wood));
}

bdd Signal::getInitialBddStatus(Module* module, Bddexpressionwood* wood) {
  const SignalRef* ref = module->getSignalManager()->getSignalRefByName(internal_name);
  if (ref == nullptr)
    throw IllegalOperationException("Signal::getBddStatus:no signal ref for signal", internal_name);
  return wood->Bdd_var_by_index(ref->getBddStatusId(wood));
}

bdd Signal::getInitialBddValue(Module* module, Bddexpressionwood* wood) {
  const SignalRef* ref = module->getSignalManager()->getSignalRefByName(internal_name);
  if (ref == nullptr)
    throw IllegalOperationException("Signal::getBddValue:no signal ref for signal", internal_name);
  return wood->Bdd_var_by_index(ref->getBddValueId(wood));
}

std::string Signal::getStatusName(Module* module) const {
  Bddexpressionwood* wood = module->getBddWood();
  return wood->Name_var_by_index(getBddStatusId(module, wood));
}

std::string Signal::getValueName(Module* module) const {
  Bddexpressionwood* wood = module->getBddWood();
  return wood->Name_var_by_index(getBddValueId(module, wood));
}

void Signal::setValueType(const std::string& type, Module* module, Bddexpressionwood* wood) {
  SignalRef* ref = getCurrentSignalRef(wood, module);
  ref->setType(type);
  ref->setIsValued(true);
}

void Signal::setValueType(const std::string& type, Module* module) {
  setValueType(type, module, module->getBddWood());
}

bool Signal::isValued(Module* module, Bddexpressionwood* wood) const {
  return getCurrentSignalRef(wood, module)->isValued();
}

bool Signal::isValued(Module* module) const {
  return isValued(module, module->getBddWood());
}

std::string Signal::getValueType(Module* module) const {
  return getCurrentSignalRef(module->getBddWood(), module)->getType();
}

int Signal::computeStatusType() const {
  if (is_input) return Compilation::SINPUT;
  if (is_output) return Compilation::SOUTPUT;
  if (is_register) return Compilation::SREG;
  if (is_clock) return Compilation::SCLOCK;
  if (is_wire) return Compilation::SWIRE;
  return Compilation::STAT;
}

int Signal::computeValueType() const {
  return computeStatusType() + 1;
}

Expression* Signal::duplicate() {
  return make_kept<Signal>(*this);
}

void Signal::print(std::ostream& out) const {
  out << internal_name;
}

void Signal::printSignalOccurrence(std::ostream& out) const {
  out << internal_name << ":";
  if (occurrences_ != nullptr)
    occurrences_->for_each([&out](const Bddexpressionwood* wood, int occurrence) {
      out << " wood " << wood << ": " << occurrence;
    });
  out << '\n';
}

std::ostream& operator<<(std::ostream& out, const Signal* signal) {
  return out << '{' << signal->getInternalName() << '}';
}

}  // namespace kiva
