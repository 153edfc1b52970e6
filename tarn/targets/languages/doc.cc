// A module for people, as a symbolic transition system.

#include <ostream>

#include "pert_exp/equation_code.h"
#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

const TargetText::Language language{
    .shape = {.target = "DOC",
              .keywords = {"state", "inputs", "outputs", "locals", "initial", "transition",
                           "definitions", "not", "and", "or", "true", "false"},
              .more_characters = ".@",
              .may_begin_with_digit = true},
    .told_wires = true,
    .names_module = false};

equation_code_texts equation_texts(bddpp_manager* manager, const std::string& prefix) {
  equation_code_texts texts;
  texts.nodes.table = prefix;
  texts.nodes.entry_open = "_";
  texts.nodes.entry_close = "";
  texts.nodes.or_text = " or ";
  texts.nodes.and_text = " and ";
  texts.nodes.not_open = "!";
  texts.nodes.constant = "true";
  texts.read = texts.left = [manager](long index) { return manager->Name_var_by_index(index); };
  return texts;
}

/// The definition of a variable; a constant is a word.
void put_equation(std::ostream& out, const equation_code_texts& texts, long index, const bdd& f) {
  if (f.manager_ref()->Bdd_is_tautology(f) == 0) {
    put_equation_code(out, texts, index, f);
    return;
  }
  out << texts.left(index) << texts.assign << (f.link_type() == 1 ? "true" : "false") << texts.end
      << '\n';
}

/// `put(item)` for each, with the separator between them and ";" behind.
template <class List, class Put>
void put_list(std::ostream& out, const char* title, const char* separator, const List& list,
              Put put) {
  out << title;
  const char* between = "";
  for (const auto& item : list) {
    out << between;
    put(item);
    between = separator;
  }
  out << ";\n";
}

void put_module(const TargetJob& job) {
  Module* module = job.module;
  const TargetRules& rules = job.rules;
  std::ostream& out = job.out;
  // Told: value names of registers, and nodes under names that a signal may have.
  const bool status_names = rules.own;
  const TargetText text(module, language, rules);
  const auto put_name = [&](long index) { out << text.name(index); };
  if (status_names)
    put_list(out, "state ", ", ", text.state(),
             [&](const StateRail& rail) { out << text.name(rail.index); });
  else
    put_list(out, "state ", ", ", module->getRegisterList(),
             [&](const regclass* reg) { out << reg->actual_var()->getValueName(module); });
  put_list(out, "inputs ", ", ", text.input_rails(), put_name);
  put_list(out, "outputs ", ", ", text.output_rails(), put_name);
  put_list(out, "locals ", ", ", text.locals(), put_name);
  out << '\n';
  put_list(out, "initial ", " and ", text.state(), [&](const StateRail& rail) {
    out << (rail.initial ? "" : "not ") << text.name(rail.index);
  });
  out << "\ntransition\n";
  for (const StateRail& rail : text.state())
    out << text.name(rail.index) << "' = " << text.name(rail.next) << ";\n";
  out << "\ndefinitions\n";
  if (!status_names) {
    module->getBddWood()->Put_doc(out, "node");
    return;
  }
  equation_code_texts texts = equation_texts(text.manager(), "node");
  texts.read = texts.left = nullptr;
  texts = text.numbered(texts);
  texts.nodes.first_open = texts.nodes.second_open = rules.brackets ? "(" : "";
  texts.nodes.first_close = texts.nodes.second_close = rules.brackets ? ")" : "";
  texts.nodes.entry_open = "[";
  texts.nodes.entry_close = "]";
  texts.nodes.not_open = texts.not_text = "not ";
  texts.nodes.constant_start = texts.nodes.line_start;
  texts.nodes.assign = texts.assign = " = ";
  text.manager()->Bdd_global_clear_marks();
  for (const TargetEquation& equation : text.equations())
    put_equation(out, texts, equation.index, equation.f);
}

}  // namespace

extern const Target doc_target{.option = "doc",
                               .help = "transition system, .txt",
                               .file = {.extension = ".txt"},
                               .put = put_module};

// A boolean automaton.

void b_automaton::DOC_put(std::ostream& out, int, const std::string& name) const {
  out << "module: " << name << "\n\n";
  const auto ports = [&](const std::string& kind, const std::vector<std::string>& names) {
    if (names.empty())
      out << "Aucune " << kind << " ...\n\n";
    else
      out << kind << "(s) booleenne(s): " << joined(names, ", ") << "\n\n";
  };
  ports("Entree", names_.inputs);
  ports("Sortie", names_.outputs);
  out << "Registre(s):\n";
  for (int k = 0; k < nb_state_vars(); ++k)
    out << " - " << nom_state_var(k)
        << "valeur initiale: " << initial_word(valeur_initiale_state_var(k))
        << ", prochaine valeur: " << nom_next_state_var(k) << '\n';
  out << '\n';
  if (nb_equ_def() > 0) {
    out << "Equation(s):\n";
    wood_->Put_basic_doc(out);
    out << '\n';
  }
  out << "fin de la documentation ...\n";
}

// The told operations of other classes.

void Module::DOC_put(std::ostream& out, int) {
  put_target(doc_target, this, out);
}

void Bddexpression::put_doc(std::ostream& out, const std::string& prefix) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised())
    put_undefined_doc(out, my_bddname().empty() ? name : my_bddname());
  else
    put_equation(out, equation_texts(manager, prefix), my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_doc(std::ostream& out, const std::string& prefix) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_doc(out, prefix);
}

}  // namespace kiva
