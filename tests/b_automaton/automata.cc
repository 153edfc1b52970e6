#include "tests/b_automaton/automata.h"

#include <gtest/gtest.h>

namespace kiva::test {

std::unique_ptr<b_automaton> make_automaton(const AutomatonText& text) {
  b_autom_dec declaration(text.state, text.next_state, text.inputs, text.outputs, text.locals);
  bddpp_manager* manager = declaration.manager_associe();
  if (!text.state.empty()) declaration.add_ident(text.state.front());  // is known
  for (const auto& [name, expression] : text.equations) declaration.add_ident(name);
  for (const auto& [name, expression] : text.equations) {
    int error = 0;
    const bdd f = manager->Parse_expression(expression, &error);
    EXPECT_EQ(error, 0) << expression;
    new Bddexpression(declaration.wood_associee(), manager->Bdd_var_by_name(name), f, 0, 0);
  }
  int error = 0;
  const bdd invariant = text.invariant.empty() ? manager->Bdd_one()
                                               : manager->Parse_expression(text.invariant, &error);
  EXPECT_EQ(error, 0) << text.invariant;
  auto automaton =
      std::make_unique<b_automaton>(&declaration, text.init.data(), manager->Bdd_one(), invariant);
  automaton->sort();
  return automaton;
}

std::unique_ptr<b_automaton> random_automaton(std::mt19937& random, int state, int inputs,
                                              int outputs, int locals, bool read_outputs) {
  const auto names = [](const char* kind, int count) {
    std::list<std::string> list;
    for (int k = 0; k < count; ++k) list.push_back(kind + std::to_string(k));
    return list;
  };
  const auto below = [&](size_t n) { return random() % n; };
  AutomatonText text{names("s", state),
                     names("n", state),
                     names("a", inputs),
                     names("o", outputs),
                     names("l", locals),
                     {},
                     {}};
  std::vector<std::string> known(text.state.begin(), text.state.end());
  known.insert(known.end(), text.inputs.begin(), text.inputs.end());
  const auto formula = [&] {
    static const char* const operators[] = {" and ", " or ", " xor ", " and not "};
    std::string f = "1";
    const size_t count = 1 + below(4);
    for (size_t k = 0; k < count; ++k) {
      const std::string name = known[below(known.size())];
      f = k == 0 ? name : "(" + f + ")" + operators[below(4)] + name;
    }
    return f;
  };
  // Outputs stand among the locals, so that what follows may read them.
  std::vector<std::string> order(text.locals.begin(), text.locals.end());
  order.insert(order.end(), text.outputs.begin(), text.outputs.end());
  std::shuffle(order.begin(), order.end(), random);
  for (const std::string& name : order) {
    text.equations.emplace_back(name, formula());
    if (read_outputs || name[0] != 'o') known.push_back(name);
  }
  for (const std::string& name : text.next_state) text.equations.emplace_back(name, formula());
  for (int k = 0; k < state; ++k) text.init.push_back(static_cast<int>(below(2)));
  return make_automaton(text);
}

std::vector<int> step(const b_automaton& automaton, const std::vector<int>& state,
                      const std::vector<int>& inputs) {
  std::vector<int> literals(static_cast<size_t>(automaton.manager_associe()->Nb_bdd_vars()), 2);
  std::copy(state.begin(), state.end(), literals.begin());
  std::copy(inputs.begin(), inputs.end(), literals.begin() + automaton.input_index(0));
  std::vector<int> values(literals.size());
  EXPECT_EQ(automaton.evaluation_etat_suivant(literals.data(), 1, values.data()), 1);
  return values;
}

std::vector<int> initial_state(const b_automaton& automaton) {
  std::vector<int> literals(static_cast<size_t>(automaton.manager_associe()->Nb_bdd_vars()));
  automaton.etat_init(literals.data());
  literals.resize(static_cast<size_t>(automaton.nb_state_vars()));
  return literals;
}

std::vector<int> next_state_of(const b_automaton& automaton, const std::vector<int>& values) {
  const auto begin = values.begin() + automaton.next_state_index(0);
  return {begin, begin + automaton.nb_state_vars()};
}

std::vector<int> outputs_of(const b_automaton& automaton, const std::vector<int>& values) {
  const auto begin = values.begin() + automaton.output_index(0);
  return {begin, begin + automaton.nb_outputs()};
}

std::vector<int> bits(unsigned number, int n) {
  std::vector<int> all;
  for (int k = 0; k < n; ++k) all.push_back(static_cast<int>(number >> k & 1));
  return all;
}

}  // namespace kiva::test
