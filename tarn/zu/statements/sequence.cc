#include "tarn/zu/statements/sequence.h"

#include <algorithm>

#include "tarn/zu/circuit.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"

namespace kiva {

Statement* Sn::read(class_zu_parser& reader, Statement* left, Statement* right) {
  if (left->isSequence()) return reader.appended(static_cast<Sn*>(left), right);
  return read(reader, std::vector<Statement*>{left, right});
}

Statement* Sn::read(class_zu_parser& reader, std::vector<Statement*> members) {
  return reader.build<Sn>(reader.next_name("Sn", Module::SequenceNumber()), std::move(members));
}

void InSequence::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  Signal* starter = c.set();
  for (Statement* member : members_) {
    c.assign(Circuit::set(*member), starter);
    starter = Circuit::rtl(*member);
  }
  for (Statement* member : members_) c.assign(Circuit::reset(*member), c.reset());
  c.assign(c.rtl(), starter);
}

bool InSequence::reincarnate() {
  return std::all_of(members_.begin(), members_.end(),
                     [](Statement* member) { return member->reincarnate(); });
}

Statement* Sequence::copy(const Copying& copying) const {
  Statement* left = copying.part(getLeft());
  return copying.make(*this, left, copying.part(getRight()));
}

Statement* Sn::copy(const Copying& copying) const {
  return copying.make(*this, copying.parts(members_));
}

}  // namespace kiva
