#include "tarn/b_automaton/b_autom_dec.h"
#include "tarn/session/diagnostic.h"

#include <unordered_set>

namespace kiva {

namespace {

template <class Names>
std::vector<std::string> array_of(const Names& names) {
  return {names.begin(), names.end()};
}

}  // namespace

void automaton_names::refuse_twins(const std::string& operation) const {
  std::unordered_set<std::string> met;
  for (const auto* kind : {&state, &next_state, &inputs, &outputs, &locals})
    for (const std::string& name : *kind)
      if (!met.insert(name).second) {
        end_with("Error in " + operation + ": the name \"" + name + "\" stands twice");
      }
}

void automaton_names::create(Bddexpressionwood& wood) const {
  for (const auto* kind : {&state, &next_state, &inputs, &outputs, &locals})
    for (const std::string& name : *kind) wood.New_var_last(name);
}

b_autom_dec::b_autom_dec(automaton_names names, const char* form) : names_(std::move(names)) {
  const std::string operation = std::string("b_autom_dec::b_autom_dec(") + form + ")";
  if (names_.state.size() != names_.next_state.size()) {
    end_with("Parameters error in " + operation);
  }
  names_.refuse_twins(operation);
  wood_ = std::make_unique<Bddexpressionwood>();
  names_.create(*wood_);
}

b_autom_dec::b_autom_dec(const std::list<std::string>& state,
                         const std::list<std::string>& next_state,
                         const std::list<std::string>& inputs,
                         const std::list<std::string>& outputs,
                         const std::list<std::string>& locals)
    : b_autom_dec({array_of(state), array_of(next_state), array_of(inputs), array_of(outputs),
                   array_of(locals)},
                  "lists") {}

b_autom_dec::b_autom_dec(const std::list<std::string>& state,
                         const std::list<std::string>& next_state,
                         const std::set<std::string>& inputs, const std::set<std::string>& outputs,
                         const std::set<std::string>& locals)
    : b_autom_dec({array_of(state), array_of(next_state), array_of(inputs), array_of(outputs),
                   array_of(locals)},
                  "sets") {}

bdd b_autom_dec::add_ident(const std::string& name) {
  if (wood_->Index_var_by_name(name) >= 0) return wood_->Bdd_var_by_name(name);
  names_.locals.push_back(name);
  return wood_->New_var_last(name);
}

}  // namespace kiva
