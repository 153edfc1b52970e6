#include "engine/condition.h"

namespace kiva {

namespace {

bool compares(long left, const std::string& op, long right) {
  if (op == "<") return left < right;
  if (op == "<=") return left <= right;
  if (op == ">") return left > right;
  if (op == ">=") return left >= right;
  return (left == right) == (op != "!=");
}

}  // namespace

struct Condition::Form {
  ConditionText read;
  std::vector<int> context;
};

Condition::Condition(const std::string& text, const Simulation& simulation)
    : text_(text), form_(new Form{ConditionText(text, SignalNames(simulation), {}), {}}) {
  form_->context.resize(form_->read.atoms().size());
}

Condition::~Condition() = default;
Condition::Condition(Condition&&) noexcept = default;
Condition& Condition::operator=(Condition&&) noexcept = default;

bool Condition::holds(const SimulationState& state) const {
  ConditionText& read = form_->read;
  for (size_t i = 0; i < read.atoms().size(); ++i) {
    const ConditionAtom& atom = read.atoms()[i];
    const bool present =
        atom.kind != ConditionAtom::instant && shown_state(state, atom.place) == SignalState::one;
    form_->context[i] = atom.kind == ConditionAtom::instant
                            ? compares(state.instant, atom.text, atom.number)
                            : present && (atom.kind == ConditionAtom::presence ||
                                          shown_value(state, atom.place) == atom.text);
  }
  return read.manager().Bdd_eval_for_literal(read.function(), form_->context.data()) == 1;
}

}  // namespace kiva
