// A module for people, as a document of LaTeX.

#include <algorithm>
#include <cctype>
#include <ostream>
#include <string_view>

#include "base/markup.h"
#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/targets/frame/document.h"

namespace kiva {

namespace {

const TargetText::Language language{
    .shape = {.target = "LaTeX", .more_characters = ".@", .may_begin_with_digit = true},
    .has_data = true,
    .names_module = false};

/// Text whose long words may be broken.
std::string words(const std::string& plain) {
  std::string all;
  for (const std::string& piece : breakable_pieces(plain))
    all += (all.empty() ? "" : "\\allowbreak{}") + latex_text(piece);
  return all;
}

const DocumentForm form{
    .expressions = {.and_text = " \\AND{} ",
                    .or_text = " \\OR{} ",
                    .not_text = "\\NOT{}",
                    .differ_text = " \\XOR{} ",
                    .same_text = " \\SAME{} ",
                    .zero = "0",
                    .one = "1"},
    .text = words,
    .name = [](const std::string& plain) { return "\\name{" + words(plain) + "}"; }};

/// About how many characters a cell shows.
size_t shown_length(const std::string& markup) {
  size_t length = 0;
  for (size_t at = 0; at < markup.size(); ++at)
    if (markup[at] != '\\')
      length += std::string_view("{}$").find(markup[at]) == std::string::npos ? 1 : 0;
    else if (at = std::min(at + 1, markup.size() - 1); std::isalpha(markup[at]) == 0)
      ++length;
    else
      while (at + 1 < markup.size() && std::isalpha(markup[at + 1]) != 0) ++at;
  return length;
}

/// Parts of the text's width, of all columns together at most one.
std::vector<double> widths(const Document::Table& table) {
  constexpr double character = 0.0135;
  constexpr size_t longest = 50;
  std::vector<double> all;
  double sum = 0;
  for (size_t column = 0; column < table.headings.size(); ++column) {
    size_t most = shown_length(table.headings[column]) + 1;
    for (const auto& row : table.rows) most = std::max(most, shown_length(row[column]));
    all.push_back(static_cast<double>(std::min(most, longest) + 3) * character);
    sum += all.back();
  }
  while (sum > 0.995) {
    double& widest = *std::ranges::max_element(all);
    sum -= widest * 0.05;
    widest *= 0.95;
  }
  return all;
}

class LatexText {
 public:
  explicit LatexText(const TargetJob& job)
      : document_(document_of(job, language, form)), out_(job.out) {}

  void put() const {
    put_preamble();
    out_ << "\\begin{document}\\raggedright\n{\\Large\\bfseries Module " << document_.title
         << "}\\par\n";
    for (const std::string& paragraph : document_.summary)
      out_ << "\\medskip " << broken(paragraph) << "\\par\n";
    for (const Document::Table& table : document_.tables) {
      put_table(table);
      if (&table == &document_.tables.front())  // behind the interface
        for (const DocumentNotes::Picture& picture : document_.pictures) put_picture(picture);
    }
    put_equations("Equations", document_.equations,
                  "\\NOT{}: not, \\AND{}: and, \\OR{}: or, \\XOR{}: one of them, \\SAME{}: both or "
                  "none.");
    put_equations("Values", document_.values, "");
    if (!document_.made.empty())
      out_ << "\\bigskip{\\footnotesize " << document_.made << "\\par}\n";
    out_ << "\\end{document}\n";
  }

 private:
  void put_preamble() const {
    out_ << "\\documentclass[11pt,a4paper]{article}\n\\usepackage[utf8]{inputenc}\n"
            "\\usepackage[margin=25mm]{geometry}\n\\usepackage{array,longtable}\n"
         << (document_.pictures.empty() ? "" : "\\usepackage{tikz}\n")
         << "\\setlength{\\parindent}{0pt}\n\\setlength{\\LTleft}{0pt}\n"
            "\\renewcommand{\\textfraction}{0.05}\n\\renewcommand{\\topfraction}{0.95}\n"
            "\\renewcommand{\\floatpagefraction}{0.7}\n"
            "\\hyphenpenalty=10000\n\\exhyphenpenalty=10000\n"
            "\\newcommand{\\name}[1]{\\textsf{#1}}\n"
            "\\newcommand{\\AND}{$\\land$}\n\\newcommand{\\OR}{$\\lor$}\n"
            "\\newcommand{\\NOT}{$\\lnot$}\n\\newcommand{\\XOR}{$\\oplus$}\n"
            "\\newcommand{\\SAME}{$\\leftrightarrow$}\n"
            "\\newcommand{\\head}[1]{\\par\\vskip0pt plus7\\baselineskip\\penalty-250\\vskip0pt "
            "plus-7\\baselineskip"
            "\\bigskip{\\large\\bfseries #1}\\nopagebreak\\par"
            "\\nopagebreak\\smallskip}\n"
            "\\newcommand{\\place}[1]{\\par\\smallskip{\\footnotesize\\ttfamily "
            "#1\\par}\\nopagebreak}\n"
            "\\newcommand{\\is}[2]{\\par{\\small\\hangindent=2em\\hangafter=1 #1 = #2\\par}}\n";
  }

  void put_picture(const DocumentNotes::Picture& picture) const {
    out_ << "\\begin{figure}[htbp]\\head{" << picture.title << "}\n"
         << picture.tikz << "\\end{figure}\n";
  }

  void put_row(const std::vector<std::string>& cells) const {
    std::string line;
    const char* separator = "";
    for (const std::string& cell : cells) {
      line += separator + cell;
      separator = " & ";
    }
    out_ << broken(line + " \\\\\n");
  }

  void put_table(const Document::Table& table) const {
    out_ << "\\head{" << table.title << "}\n{\\small\\begin{longtable}{";
    for (double width : widths(table))
      out_ << "\n  >{\\raggedright\\arraybackslash}p{\\dimexpr " << width
           << "\\textwidth-2\\tabcolsep}";
    out_ << "}\n";
    put_row(table.headings);
    out_ << "\\hline\\noalign{\\smallskip}\\endhead\n";
    for (const auto& row : table.rows) put_row(row);
    out_ << "\\end{longtable}}\n";
  }

  void put_equations(const char* title, const std::vector<Document::Equation>& equations,
                     const char* signs) const {
    if (equations.empty()) return;
    out_ << "\\head{" << title << "}\n";
    if (*signs != 0) out_ << "{\\footnotesize " << signs << "\\par}\n";
    for (const Document::Equation& equation : equations) {
      if (!equation.place.empty()) out_ << "\\place{" << equation.place << "}\n";
      out_ << broken("\\is{" + equation.left + "}{" + equation.right + "}\n");
    }
  }

  Document document_;
  std::ostream& out_;
};

void put_module(const TargetJob& job) {
  // Told: lines for a document, which "_" stops.
  if (job.rules.own)
    LatexText(job).put();
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
