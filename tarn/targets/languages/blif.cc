// BLIF: a module as a netlist, a latch for each bit of state, a table for each node.

#include <iostream>

#include "pert_exp/equation_code.h"
#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/model/equationtable.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

// Names that begin with a digit are taken by some tools and changed by others.
const TargetText::Language language{
    .shape = {.target = "BLIF", .more_characters = ".@"},
    .told_wires = true,
    .names_module = false,
    .node_prefix = [](const std::string& module) { return module + "_node_"; }};

/// A table for each unmarked node from `root` down, children first, which marks them. Of the texts
/// only `table`, `number` and `name` count.
void put_nodes(const node_code_texts& t, const bddpp_manager& manager, std::ostream& out,
               bdd_node* root) {
  const auto entry = [&](const bdd_node* node) {
    return t.table + "_" + std::to_string(t.number ? t.number(node) : node->global_id());
  };
  for_each_from_below(root, [&](const bdd_node& node) {
    if (&node == manager.Bdd_node_one()) {
      out << ".names " << entry(&node) << "\n1\n";
      return;
    }
    out << ".names "
        << (t.name ? t.name(node.var_index()) : manager.Name_var_by_index(node.var_index())) << ' ';
    if (node.is_var(manager.Bdd_node_one())) {
      out << entry(&node) << "\n1 1\n";
      return;
    }
    // Inputs: the variable, the then side, the else side.
    out << entry(node.then_node()) << ' ' << entry(node.else_node()) << ' ' << entry(&node)
        << "\n11- 1\n0-" << (node.else_link_type() == -1 ? '0' : '1') << " 1\n";
  });
}

/// The tables of f, where `left` and `read` name the two variables.
void put_equation(std::ostream& out, const equation_code_texts& texts, long index, const bdd& f) {
  bddpp_manager* manager = f.manager_ref();
  if (is_copy(f)) {
    out << ".names " << texts.read(manager->Bdd_if_index(f)) << ' ' << texts.left(index)
        << "\n1 1\n";
    return;
  }
  put_nodes(texts.nodes, *manager, out, f.node());
  out << ".names " << texts.nodes.table << '_'
      << (texts.nodes.number ? texts.nodes.number(f.node()) : f.node()->global_id()) << ' '
      << texts.left(index) << (f.link_type() == -1 ? "\n0 1\n" : "\n1 1\n");
}

void put_module(const TargetJob& job) {
  Module* module = job.module;
  const char* missing =
      module->getCompilation() == nullptr ? "equationtable"
      : module->getBddWood() == nullptr || module->getBddWood()->my_bdd_manager() == nullptr
          ? "bdd manager"
          : nullptr;
  if (missing != nullptr) {
    std::cerr << "ERROR in Module::BLIF_put(): no " << missing << " defined! " << module->getName()
              << '\n';
    return;
  }
  std::ostream& out = job.out;
  const TargetText text(module, language, job.rules);
  const auto put_names = [&](const std::vector<long>& rails) {
    for (long index : rails) out << ' ' << text.name(index);
    out << '\n';
  };
  out << ".model " << text.module_name() << "\n.inputs";
  put_names(text.input_rails());
  out << ".outputs";
  put_names(text.output_rails());
  for (const StateRail& rail : text.state())
    out << ".latch " << text.name(rail.next) << ' ' << text.name(rail.index) << ' '
        << (rail.initial ? 1 : 0) << '\n';
  out << '\n';
  equation_code_texts texts;
  texts.nodes.table = text.module_name() + "_node";
  texts = text.numbered(texts);
  text.manager()->Bdd_global_clear_marks();
  for (const TargetEquation& equation : text.equations())
    put_equation(out, texts, equation.index, equation.f);
  out << ".end\n\n";
}

/// `marks` may be null: everything.
void put_automaton(std::ostream& out, const b_automaton& automaton, const std::string& name,
                   const int* marks) {
  const auto marked = [&](long index) { return marks == nullptr || marks[index] != 0; };
  out << ".model " << name << '\n';
  std::string inputs;
  for (int k = 0; k < automaton.nb_inputs(); ++k)
    if (marked(automaton.input_index(k))) inputs += ' ' + automaton.nom_input(k);
  if (automaton.nb_inputs() > 0) out << ".inputs" << inputs;
  out << '\n';
  if (automaton.nb_outputs() > 0)
    out << ".outputs " << joined(automaton.outputs_list(), " ") << '\n';
  for (int k = 0; k < automaton.nb_state_vars(); ++k)
    if (marked(k))
      out << ".latch " << automaton.nom_next_state_var(k) << ' ' << automaton.nom_state_var(k)
          << ' ' << (automaton.valeur_initiale_state_var(k) == 1 ? "1" : "0") << '\n';
  out << '\n';
  automaton.wood_associee()->Put_blif(out, "node", marks);
  out << "\n.end\n\n";
}

const Bench bench{.language = &language,
                  .extension = ".v",
                  .run = blif_bench_run,
                  .put = put_blif_bench,
                  .tool = "berkeley-abc -h | head -n 1"};

}  // namespace

extern const Target blif_target{
    .option = "blif",
    .help = "netlist, .blif",
    .file = {.extension = ".blif", .in_folder = true, .tells_failure = true},
    .put = put_module,
    .comment = "# ",
    .bench = &bench};

// A boolean automaton.

void b_automaton::BLIF_put(std::ostream& out, int, const std::string& name) const {
  put_automaton(out, *this, name, nullptr);
}

void b_automaton::BLIF_restrict_put(std::ostream& out, int, const std::string& name,
                                    const std::vector<int>& marks) const {
  put_automaton(out, *this, name, marks.data());
}

// The told operations of other classes.

void Module::BLIF_put(std::ostream& out, int) {
  put_target(blif_target, this, out);
}

void Module::printBLIF() {
  print_target(blif_target, this);
}

void Bddexpression::put_blif(std::ostream& out, const std::string& prefix) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  equation_code_texts texts;
  texts.nodes.table = prefix;
  texts.read = texts.left = [manager](long index) { return manager->Name_var_by_index(index); };
  put_equation(out, texts, my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_blif(std::ostream& out, const std::string& prefix) {
  Put_blif(out, prefix, nullptr);
}

void Bddexpressionwood::Put_blif(std::ostream& out, const std::string& prefix, const int* marks) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort())
    if (marks == nullptr || marks[index] != 0) exp_table[index]->put_blif(out, prefix);
}

void bddpp_manager::Print_node_for_eval_BLIF(const std::string& table, std::ostream& out,
                                             bdd_node* root) {
  node_code_texts texts;
  texts.table = table;
  put_nodes(texts, *this, out, root);
}

void bddpp_manager::BLIF_print(std::ostream& out, const bdd& var, const bdd& f, int mode) {
  PLA_print_pref_suff(out, var, f, "", "", ".names  ", "\n", "\n", "\n", "", mode);
}

}  // namespace kiva
