// A module for people, as a document of LaTeX.

#include <ostream>

#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/targets/frame/sum_text.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

const TargetText::Language language{
    .shape = {.target = "LaTeX", .more_characters = ".@", .may_begin_with_digit = true},
    .names_module = false};

/// A name as one symbol of a formula.
std::string symbol(const std::string& name) {
  std::string text = "\\mathit{";
  for (char c : name) text += c == '_' ? std::string("\\_") : std::string(1, c);
  return text + "}";
}

/// Sums with more products are shown by their nodes.
constexpr long most_products = 200;

class LatexText {
 public:
  LatexText(Module* module, const TargetRules& rules) : text_(module, language, rules) {}

  void put(std::ostream& out) const {
    out << "\\documentclass[11pt,a4paper]{article}\n\\setlength{\\parindent}{0pt}\n"
           "\\setlength{\\parskip}{4pt}\n\\sloppy\n"
           "\\renewcommand{\\labelitemi}{$\\bullet$}\n\\begin{document}\n"
           "\\begin{center}\n{\\huge module: $"
        << symbol(text_.module()->getName()) << "$}\n\\end{center}\n";
    put_items(out, "Inputs", text_.input_rails(), [&](long index) { return name(index); });
    put_items(out, "Outputs", text_.output_rails(), [&](long index) { return name(index); });
    put_items(out, "Registers", text_.state(), [&](const StateRail& rail) {
      return name(rail.index) + " = \\mathrm{" + (rail.initial ? "true" : "false") + "}$, then $" +
             name(rail.next);
    });
    if (!text_.equations().empty()) out << "\\section*{Equations}\n";
    text_.manager()->Bdd_global_clear_marks();
    for (const TargetEquation& equation : text_.equations()) put_equation(out, equation);
    out << "\\end{document}\n";
  }

 private:
  std::string name(long index) const { return symbol(text_.name(index)); }

  /// A list, which LaTeX wants to have items.
  template <class List, class Item>
  static void put_items(std::ostream& out, const char* title, const List& list, Item item) {
    if (list.empty()) return;
    out << "\\section*{" << title << "}\n\\begin{itemize}\n";
    for (const auto& element : list) out << "\\item $" << item(element) << "$\n";
    out << "\\end{itemize}\n";
  }

  void put_equation(std::ostream& out, const TargetEquation& equation) const {
    if (count_products(equation.f, most_products + 1) > most_products) {
      put_equation_code(out, node_texts(), equation.index, equation.f);
      return;
    }
    const SumTexts texts{.or_text = " + ",
                         .and_text = ".\\allowbreak ",
                         .not_text = "\\overline{",
                         .not_end = "}",
                         .name = [this](long index) { return name(index); }};
    out << '$' << name(equation.index) << " = " << sum_text(text_, texts, equation) << "$\\par\n";
  }

  equation_code_texts node_texts() const {
    equation_code_texts texts;
    texts.nodes.line_start = texts.nodes.constant_start = "$";
    texts.nodes.table = "\\mathit{node}";
    texts.nodes.entry_open = "_{";
    texts.nodes.entry_close = "}";
    texts.nodes.assign = texts.assign = " = ";
    texts.nodes.or_text = " + ";
    texts.nodes.and_text = ".";
    texts.nodes.not_open = "\\overline{";
    texts.nodes.not_close = "}";
    texts.nodes.constant = "1";
    texts.nodes.line_end = texts.end = "$\\par";
    texts.nodes.name = texts.read = [this](long index) { return name(index); };
    texts.left = [this](long index) { return "$" + name(index); };
    texts.not_text = "\\neg ";
    texts = text_.numbered(texts);
    texts.nodes.first_open = texts.nodes.first_close = "";  // "." binds closer than "+"
    texts.nodes.second_open = texts.nodes.second_close = "";
    return texts;
  }

  TargetText text_;
};

void put_module(const TargetJob& job) {
  // Told: lines for a document, which "_" stops.
  if (job.rules.own)
    LatexText(job.module, job.rules).put(job.out);
  else
    job.module->getBddWood()->Put_latex(job.out);
}

}  // namespace

extern const Target latex_target{.option = "latex",
                                 .help = "LaTeX document, .tex",
                                 .file = {.extension = ".tex"},
                                 .put = put_module,
                                 .comment = "% "};

// A boolean automaton.

void b_automaton::LATEX_put(std::ostream& out, int, const std::string& name) const {
  out << "\\documentclass[11pt,a4paper]{article}\n\\usepackage[francais]{babel}\n"
         "\\usepackage{epsfig}\n\\usepackage{float}\n\\usepackage{amsmath}\n"
         "\\usepackage{amssymb}\n\\usepackage{times}\n"
         "\\setlength{\\textwidth}{16cm}\n\\setlength{\\textheight}{24cm}\n"
         "\\setlength{\\oddsidemargin}{0cm}\n\\setlength{\\topmargin}{-1cm}\n"
         "\\pagestyle{empty}\n\\begin{document}\n\\begin{center}\n{\\huge module: "
      << name << "}\n\\end{center}\n\n";
  const auto section = [&](const std::string& title, const std::vector<std::string>& names) {
    if (names.empty()) return;
    out << "\\section{" << title << "\n\\begin{itemize}\n";
    put_lines(out, names, "\\item $", "$");
    out << "\\end{itemize}\n\n";
  };
  section("Entr\\'ee(s) bool\\'eenne(s):} ", names_.inputs);
  section("Sortie(s) bool\\'eenne(s):} ", names_.outputs);
  if (nb_state_vars() > 0) {
    out << "\\section{Registre(s):}\n\\begin{itemize}\n";
    for (int k = 0; k < nb_state_vars(); ++k)
      out << "\\item $" << nom_state_var(k) << "$ valeur initiale: $"
          << initial_word(valeur_initiale_state_var(k)) << "$, nouvelle valeur sur front: $"
          << nom_next_state_var(k) << "$\n";
    out << "\\end{itemize}\n\n";
  }
  if (nb_equ_def() > 0) {
    out << "\\section{\\'Equation(s):}\n\n";
    wood_->Put_latex(out);
  }
  out << "\\end{document}\n";
}

// The told operations of other classes.

void Module::LATEX_put(std::ostream& out) {
  put_target(latex_target, this, out);
}

void Bddexpression::put_latex(std::ostream& out) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  out << '$' << my_bddname() << " = ";
  my_bdd_manager()->Print_sop(" + ", ".", "\\overline{", "}", out, bdd_exp, 1);
  out << "$\n";
}

void Bddexpressionwood::Put_latex(std::ostream& out) {
  for (long index : earliest_sort()) exp_table[index]->put_latex(out);
}

}  // namespace kiva
