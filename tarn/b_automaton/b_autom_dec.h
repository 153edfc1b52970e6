#pragma once

#include <list>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "pert_exp/Bddexpression.h"

namespace kiva {

/// The names of a boolean automaton by kind, in order. The variables of its wood come in the order
/// of the members: state, next state (one for each of state), inputs, outputs, locals.
struct automaton_names {
  std::vector<std::string> state, next_state, inputs, outputs, locals;

  /// Ends the process after a report by `operation` where one name stands twice.
  void refuse_twins(const std::string& operation) const;
  /// Makes the variables.
  void create(Bddexpressionwood& wood) const;
};

/// The declaration of a boolean automaton: its names, and the wood that its equations are entered
/// in. It is handed to a b_automaton, which takes both over.
class b_autom_dec {
 public:
  /// Ends the process after a report when the first two lists differ in length, or when a name
  /// stands twice.
  b_autom_dec(const std::list<std::string>& state, const std::list<std::string>& next_state,
              const std::list<std::string>& inputs, const std::list<std::string>& outputs,
              const std::list<std::string>& locals);
  b_autom_dec(const std::list<std::string>& state, const std::list<std::string>& next_state,
              const std::set<std::string>& inputs, const std::set<std::string>& outputs,
              const std::set<std::string>& locals);

  /// The variable of that name, made as a new local where there is none.
  bdd add_ident(const std::string& name);
  /// Both null once the declaration has been handed over.
  bddpp_manager* manager_associe() const { return wood_ ? wood_->my_bdd_manager() : nullptr; }
  Bddexpressionwood* wood_associee() const { return wood_.get(); }
  const automaton_names& names() const { return names_; }

 private:
  friend class b_automaton;
  b_autom_dec(automaton_names names, const char* form);

  automaton_names names_;
  std::unique_ptr<Bddexpressionwood> wood_;
};

}  // namespace kiva
