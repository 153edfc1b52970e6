#include "proof/property.h"

#include <algorithm>

#include "proof/diagrams.h"

namespace kiva::proof {

const char* word(Property::Kind kind) {
  switch (kind) {
    case Property::never:
      return "never";
    case Property::always:
      return "always";
    case Property::reach:
      return "reach";
    case Property::assume:
      break;
  }
  return "assume";
}

bool find_kind(const std::string& text, Property::Kind& kind) {
  for (Property::Kind known :
       {Property::never, Property::always, Property::reach, Property::assume})
    if (text == word(known)) return kind = known, true;
  return false;
}

namespace {

/// A latch that remembers a literal for one instant.
Literal before(Machine& machine, Literal literal, const std::string& name) {
  const size_t latch = machine.new_latch(name + "'", false);
  machine.latches[latch].next = literal;
  return machine.latches[latch].now;
}

}  // namespace

Literal expression_literal(ModuleMachine& module, const SignalNames& names, const std::string& text,
                           std::vector<SignalPlace>& named) {
  Literal literal = zero;
  const auto variable = [&](const std::string& word) {
    return module.find_variable(word, literal);
  };
  ConditionText read(text, names, {.before = true, .variable = variable});
  std::vector<Literal> entries;
  for (const ConditionAtom& atom : read.atoms()) {
    if (atom.kind == ConditionAtom::instant || atom.kind == ConditionAtom::value)
      throw ConditionError{1, atom.kind == ConditionAtom::instant
                                  ? "the number of an instant is no part of a property"
                                  : "values are no part of a property"};
    if (atom.kind == ConditionAtom::variable) {
      module.find_variable(atom.text, literal);
    } else {
      literal = module.is_one(atom.place);
      const bool fresh = std::none_of(named.begin(), named.end(), [&](SignalPlace place) {
        return place.list == atom.place.list && place.row == atom.place.row;
      });
      if (fresh) named.push_back(atom.place);
    }
    const std::string name =
        atom.kind == ConditionAtom::variable ? atom.text : names.name(atom.place);
    entries.push_back(atom.before ? before(module.machine, literal, name) : literal);
  }
  return image_of(read.function(), entries, module.machine.aig);
}

void set_bad(Machine& machine, Literal wrong, const std::vector<Literal>& assumed) {
  machine.bad = wrong;
  if (assumed.empty()) return;
  Literal now = one;
  for (Literal literal : assumed) now = machine.aig.both(now, literal);
  const size_t latch = machine.new_latch("!assumed", true);
  const Literal so_far = machine.aig.both(machine.latches[latch].now, now);
  machine.latches[latch].next = so_far;
  machine.bad = machine.aig.both(wrong, so_far);
}

}  // namespace kiva::proof
