// A module for people: as a symbolic transition system, and as a document of LaTeX.

#include <ostream>

#include "tarn/formats/sum_text.h"
#include "tarn/formats/target_text.h"
#include "tarn/formats/targets.h"
#include "tarn/model/compilation.h"

namespace kiva {

namespace {

const TargetText::Target doc_target{
    .shape = {.target = "DOC",
              .keywords = {"state", "inputs", "outputs", "locals", "initial", "transition",
                           "definitions", "not", "and", "or", "true", "false"},
              .more_characters = ".@",
              .may_begin_with_digit = true},
    .told_wires = true,
    .names_module = false};

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

void put_doc(Module* module, const TargetRules& rules, std::ostream& out) {
  const TargetText text(module, doc_target, rules);
  const auto put_name = [&](long index) { out << text.name(index); };
  if (rules.doc_names)
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
  if (!rules.doc_names) {
    module->getBddWood()->Put_doc(out, "node");
    return;
  }
  equation_code_texts texts = doc_equation_texts(text.manager(), "node");
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
    put_doc_equation(out, texts, equation.index, equation.f);
}

const TargetText::Target latex_target{
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
  LatexText(Module* module, const TargetRules& rules) : text_(module, latex_target, rules) {}

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

}  // namespace

void Module::DOC_put(std::ostream& out, int) {
  put_doc(this, Compilation::target_rules(), out);
}

void Module::LATEX_put(std::ostream& out) {
  const TargetRules& rules = Compilation::target_rules();
  if (rules.latex_document)
    LatexText(this, rules).put(out);
  else
    getBddWood()->Put_latex(out);
}

}  // namespace kiva
