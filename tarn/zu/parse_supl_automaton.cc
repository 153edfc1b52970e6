// The parts of automata and Mealy machines.

#include "tarn/model/expression.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statements/run.h"

namespace kiva {

void class_zu_parser::begin_automaton() {
  TheCurrentStateTable() = make_kept<Automaton::StateTable>();
}

State* class_zu_parser::known_state(const std::string& name) {
  if (State* state = Automaton::findState(*TheCurrentStateTable(), name)) return state;
  return new_state(name);
}

State* class_zu_parser::new_state(const std::string& name) {
  State* state = make_kept<State>(name);
  state->span = span_;
  return (*TheCurrentStateTable())[name] = state;
}

void class_zu_parser::state(const std::string& name, bool final_state, Statement* run,
                            const SignalActions* actions, const GeometryTriple* geometry) {
  if (const State* other = Automaton::findState(*TheCurrentStateTable(), name)) {
    const std::string sentence = "two states have the name \"" + name + '"';
    if (gathers())
      return fault(sentence, span_, {{place_of(other->span), "the other one stands here"}});
    fatal("ERROR: two states or more have the same name: " + name + "\n\nAbortion ...", sentence);
  }
  State* state = new_state(name);
  state->declared = true;
  state->final_state = final_state;
  state->run = static_cast<Run*>(run);
  if (actions != nullptr) state->actions.assign(actions->begin(), actions->end());
  if (geometry != nullptr) state->geometry = std::make_unique<GeometryTriple>(*geometry);
}

Transition* class_zu_parser::transition(const std::string& from, const trigger_class& trigger,
                                        const SignalActions* actions, int tpe,
                                        const std::string& to, const GeometryPair* geometry) {
  Transition* transition = make_kept<Transition>();
  if (actions != nullptr) transition->action.assign(actions->begin(), actions->end());
  transition->initial = from == initial_name;
  if (!transition->initial) transition->from = known_state(from);
  transition->to = known_state(to);
  transition->tpe = tpe;
  transition->priority = trigger.priority;
  transition->trigger = trigger.expression;
  if (geometry != nullptr) transition->geometry = std::make_unique<GeometryPair>(*geometry);
  transition->span = span_;
  return transition;
}

trigger_class* class_zu_parser::trigger(int priority, Expression* expression) {
  return made<trigger_class>(
      trigger_class{priority, expression == nullptr ? make_kept<TrueExpression>() : expression});
}

trigger_class* class_zu_parser::value_trigger(int priority, DataExpr* data) {
  return trigger(priority, bind_condition(data, TheModule()->generateName(
                                                    "TRANS", Module::TransitionNumber())));
}

void class_zu_parser::add_action(SignalActions& actions, const std::string& name, DataExpr* data) {
  Signal* signal = emitted(name);
  if (signal == nullptr) {
    refuse(ModuleUnknownSignalException(name), not_emitted(name));
    signal = stand_in(name);
  }
  actions.push_back(signal);
  check_emission(signal, data);
  if (data == nullptr) return;
  Signal* bound = bind(data, name + "_Val", signal);
  place_local(bound);
  actions.push_back(bound);
}

void class_zu_parser::declare_register(const std::string& name, int initial,
                                       const std::string& next) {
  refuse_doubled(name);
  refuse_doubled(next);
  tolerate([&] { TheModule()->addRegisterDecl(name.c_str(), initial, next.c_str()); });
  for (const std::string& variable : {name, next})
    if (Signal* signal = TheModule()->getLocalSignal(variable)) signal->setDeclared();
}

Expression* class_zu_parser::equation_signal(const std::string& name) {
  Signal* signal = TheModule()->getSignal(name);
  if (signal != nullptr) return signal;
  refuse(StatementSignalException(name), undeclared(name));
  return stand_in(name);
}

Expression* class_zu_parser::equation_constant(int number) {
  if (number == 0) return expression<FalseExpression>();
  if (number == 1) return expression<TrueExpression>();
  refuse(StatementSignalException(" constant right part is not a Boolean value"),
         "the constants of an equation are 0 and 1, not " + std::to_string(number));
  return expression<FalseExpression>();
}

Expression* class_zu_parser::equation_nor(Expression* left, Expression* right) {
  return expression<AndExpression>(expression<NotExpression>(left),
                                   expression<NotExpression>(right));
}

Expression* class_zu_parser::equation_xor(Expression* left, Expression* right) {
  return expression<OrExpression>(
      expression<AndExpression>(left, expression<NotExpression>(right)),
      expression<AndExpression>(expression<NotExpression>(left), right));
}

Expression* class_zu_parser::equation_nand(Expression* left, Expression* right) {
  return expression<OrExpression>(expression<NotExpression>(left),
                                  expression<NotExpression>(right));
}

EquationList* class_zu_parser::equation(Signal* variable, DataExpr* data, Expression* right) {
  EquationList* equations = made<EquationList>();
  equations->push_back(make_kept<Equation>(Equation{variable, right, span_}));
  check_emission(variable, data);
  if (data == nullptr) return equations;
  Signal* bound = bind(data, variable->getOriginalName() + "_value", variable);
  place_like(bound, variable);
  equations->push_back(make_kept<Equation>(Equation{bound, right, span_}));
  return equations;
}

}  // namespace kiva
