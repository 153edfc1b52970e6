// Construction from a declaration; names and numbers.

#include "tarn/b_automaton/b_automaton.h"

#include <algorithm>
#include <iostream>
#include <sstream>

namespace kiva {

namespace {

std::string name_at(const std::vector<std::string>& names, int k, const char* operation) {
  if (k >= 0 && k < static_cast<int>(names.size())) return names[static_cast<size_t>(k)];
  std::cerr << "dans b_automaton::" << operation << "() : indice hors limite !\n";
  return "?";
}

int position(const std::vector<std::string>& names, const std::string& name) {
  const auto found = std::find(names.begin(), names.end(), name);
  return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

std::list<std::string> list_of(const std::vector<std::string>& names) {
  return {names.begin(), names.end()};
}

}  // namespace

b_automaton::b_automaton(b_autom_dec* declaration, const int* init, const bdd& assertion,
                         const bdd& invariant)
    : names_(std::move(declaration->names_)),
      initial_values_(init, init + names_.state.size()),
      wood_(std::move(declaration->wood_)),
      assertion_(assertion),
      invariant_(invariant) {
  // Whatever the wood has beyond the declared names is local.
  for (long index = local_index(nb_locals()); index < manager_associe()->Nb_bdd_vars(); ++index)
    names_.locals.push_back(nom_associe(index));
  keep_outputs_registers_equations();
}

std::string b_automaton::nom_state_var(int k) const {
  return name_at(names_.state, k, "nom_state_var");
}

std::string b_automaton::nom_next_state_var(int k) const {
  return name_at(names_.next_state, k, "nom_next_state_var");
}

std::string b_automaton::nom_input(int k) const {
  return name_at(names_.inputs, k, "nom_input");
}

std::string b_automaton::nom_output(int k) const {
  return name_at(names_.outputs, k, "nom_output");
}

std::string b_automaton::nom_local(int k) const {
  return name_at(names_.locals, k, "nom_local");
}

int b_automaton::num_input(const std::string& name) const {
  return position(names_.inputs, name);
}

int b_automaton::num_output(const std::string& name) const {
  return position(names_.outputs, name);
}

int b_automaton::num_local(const std::string& name) const {
  return position(names_.locals, name);
}

void b_automaton::change_nom_input(int k, const std::string& name) {
  if (name_at(names_.inputs, k, "change_nom_input") == "?") return;
  names_.inputs[static_cast<size_t>(k)] = name;
  manager_associe()->Change_name_by_index(input_index(k), name);
}

void b_automaton::change_nom_output(int k, const std::string& name) {
  if (name_at(names_.outputs, k, "change_nom_output") == "?") return;
  names_.outputs[static_cast<size_t>(k)] = name;
  manager_associe()->Change_name_by_index(output_index(k), name);
}

std::list<std::string> b_automaton::state_vars_list() const {
  return list_of(names_.state);
}

std::list<std::string> b_automaton::next_state_vars_list() const {
  return list_of(names_.next_state);
}

std::list<std::string> b_automaton::inputs_list() const {
  return list_of(names_.inputs);
}

std::list<std::string> b_automaton::outputs_list() const {
  return list_of(names_.outputs);
}

std::list<std::string> b_automaton::locals_list() const {
  return list_of(names_.locals);
}

long b_automaton::ident_associe(const std::string& name) const {
  return wood_->Index_var_by_name(name);
}

long b_automaton::ident_associe(const bdd& variable) const {
  return wood_->Index_var_by_bdd(variable);
}

bdd b_automaton::bdd_ident_associe(const std::string& name) const {
  return wood_->Bdd_var_by_name(name);
}

std::string b_automaton::nom_ident_associe(const bdd& variable) const {
  return wood_->Name_var_by_bdd(variable);
}

std::string b_automaton::nom_associe(long ident) const {
  return wood_->Name_var_by_index(ident);
}

bdd b_automaton::bdd_exp_ident_associe(const std::string& name) const {
  const Bddexpression* e = wood_->exp_by_bddname(name);
  return e == nullptr ? bdd() : e->my_bdd_exp();
}

int b_automaton::valeur_initiale_state_var(int k) const {
  if (k >= 0 && k < nb_state_vars()) return initial_values_[static_cast<size_t>(k)];
  std::cerr << "Warning: call of b_automaton::valeur_initiale_state_var() with an id out of "
               "range ...\n";
  return 2;
}

void b_automaton::etat_init(int* literals) const {
  std::fill(literals, literals + manager_associe()->Nb_bdd_vars(), 2);
  std::copy(initial_values_.begin(), initial_values_.end(), literals);
}

bdd b_automaton::bdd_etat_init() const {
  bddpp_manager* manager = manager_associe();
  bdd product = manager->Bdd_one();
  for (int k = nb_state_vars() - 1; k >= 0; --k) {  // from below: no diagram is built twice
    const bdd variable = manager->Bdd_var_by_index(k);
    const bool holds = initial_values_[static_cast<size_t>(k)] == 1;
    product = manager->Bdd_and(holds ? variable : manager->Bdd_not(variable), product);
  }
  return product;
}

void b_automaton::reverse_output(int k) {
  if (name_at(names_.outputs, k, "reverse_output") != "?")
    wood_->append_not_expression(output_index(k));
}

void b_automaton::putbdd(const bdd& f, std::ostream& out, int mode) const {
  out << bddtoString(f, mode);
}

std::string b_automaton::bddtoString(const bdd& f, int mode) const {
  return manager_associe()->Print_sop_to_String("+", ".", "!", "", f, mode);
}

void b_automaton::export_awaited_inputs() const {
  std::cerr << "A REVOIR ...\n";
}

}  // namespace kiva
