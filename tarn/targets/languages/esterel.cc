// Esterel: a module of pure signals. Each register is a run of the user's module my_pre, and each
// equation an emission under a condition, all of them once in every instant.

#include <ostream>

#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/targets/frame/straight_code.h"
#include "tarn/targets/frame/sum_text.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

const TargetText::Language language{
    .shape = {.target = "Esterel",
              .keywords = {"abort", "and", "assert", "await", "boolean", "call", "case", "combine",
                           "constant", "copymodule", "data", "default", "do", "double", "each",
                           "else", "elsif", "emit", "end", "every", "exec", "exit", "extends",
                           "false", "finalize", "float", "function", "halt", "handle", "host", "if",
                           "immediate", "in", "initially", "input", "inputoutput", "integer",
                           "interface", "loop", "main", "map", "mcrun", "mod", "module", "next",
                           "never", "not", "nothing", "of", "open", "or", "output", "pause",
                           "positive", "pre", "present", "procedure", "reg", "refine", "relation",
                           "repeat", "return", "run", "seq", "sensor", "signal", "string",
                           "suspend", "sustain", "switch", "task", "temp", "then", "tick",
                           "timeout", "times", "trap", "true", "type", "unit", "unsigned", "upto",
                           "uptonext", "value", "var", "watching", "weak", "when", "with", "xor",
                           // The user's module for registers.
                           "my_pre"},
              .may_begin_with_underscore = false},
    .told_wires = true,
    .node_prefix = [](const std::string&) { return std::string("part_"); }};

void put_emission(std::ostream& out, const std::string& signal, const std::string& condition) {
  out << "  present [" << condition << "] then\n    emit " << signal << "\n  end present\n";
}

/// Pure signals are compared by no operator.
ExpressionTexts expression_texts(const TargetText& text) {
  return {.and_text = " and ",
          .or_text = " or ",
          .not_text = "not ",
          .differ_text = {},
          .same_text = {},
          .zero = "not tick",
          .one = "tick",
          .read = [&text](long index) { return text.name(index); },
          .part = [](long number) { return "part_" + std::to_string(number); }};
}

class EsterelText {
 public:
  EsterelText(const TargetText& text, std::ostream& out)
      : text_(text), texts_(expression_texts(text)), out_(out), proper_(text.rules().proper_lists) {
    if (text.rules().own) lines_ = straight_code(text, texts_);
  }

  void put_interface() {
    const std::string m = text_.module_name();
    out_ << "module " << m << ":\n";
    put_names("input", text_.input_rails(), text_.set_reset_rails().size(),
              "s_SET" + m + ", v_SET" + m + ", s_RESET" + m + ", v_RESET" + m);
    put_names("output", text_.output_rails(), text_.rtl_rails().size(), "s_RTL" + m + ",v_RTL" + m);
    out_ << '\n';
  }

  void put_body() {
    const std::vector<std::string> signals = inner_signals();
    const bool heads = !signals.empty() || !proper_;
    if (heads) {
      out_ << "signal ";
      const char* separator = "";
      for (const std::string& signal : signals) {
        out_ << separator << signal;
        separator = ",\n       ";
      }
      out_ << " in\n\n";
    }
    if (!text_.state().empty() || !proper_) {
      put_state();
      out_ << "  ||\n";
    }
    out_ << "  loop\n  [\n";
    text_.rules().own ? put_lines() : put_equations();
    out_ << "  ]\n  each tick\n";
    if (heads) out_ << "end signal \n";
    out_ << "end module\n";
  }

 private:
  std::vector<std::string> inner_signals() const {
    std::vector<std::string> signals;
    if (!text_.rules().own)
      for (long index : text_.locals()) signals.push_back(text_.name(index));
    for (const StraightLine& line : lines_)
      if (line.index < 0 || !text_.is_output(line.index)) signals.push_back(left_of(line, texts_));
    for (const StateRail& rail : text_.state())
      if (!text_.is_output(rail.index)) signals.push_back(text_.name(rail.index));
    return signals;
  }

  /// The told text gives the wires, which are the first `wires` of the rails, as two names each.
  void put_names(const char* heading, const std::vector<long>& rails, size_t wires,
                 const std::string& told_wires) {
    if (rails.empty() && proper_) return;
    out_ << heading << ' ';
    if (proper_) wires = 0;
    if (wires > 0) out_ << told_wires;
    const char* separator = proper_ ? "" : ", ";
    for (size_t i = wires; i < rails.size(); ++i) {
      out_ << separator << text_.name(rails[i]);
      separator = ", ";
    }
    out_ << " ;\n";
  }

  void put_state() {
    bool first = true;
    const auto put_parallel = [&] {
      if (proper_ && !first) out_ << "  ||\n";
      first = false;
    };
    out_ << "  [\n";
    for (const StateRail& rail : text_.state())
      if (rail.initial) {
        put_parallel();
        out_ << "    emit " << text_.name(rail.index) << (proper_ ? "\n" : ";\n");
      }
    for (const StateRail& rail : text_.state()) {
      put_parallel();
      text_.put_note(out_, "    % ", rail.index);
      out_ << "    run my_pre [signal " << text_.name(rail.next) << " / S, "
           << text_.name(rail.index) << " / preS]\n";
    }
    out_ << "  ]\n";
  }

  void put_lines() {
    const char* separator = "";
    for (const StraightLine& line : lines_) {
      out_ << separator;
      separator = "  ||\n";
      text_.put_note(out_, "  % ", line.index);
      out_ << broken("  present [" + line.right + "] then\n") << "    emit "
           << left_of(line, texts_) << "\n  end present\n";
    }
    if (lines_.empty()) out_ << "  nothing\n";
  }

  void put_equations() {
    const SumTexts sums{.or_text = " or ",
                        .and_text = " and ",
                        .not_text = "not ",
                        .zero = "not tick",
                        .one = "tick",
                        .level = 0};
    for (const TargetEquation& equation : text_.equations())
      put_emission(out_, text_.name(equation.index), sum_text(text_, sums, equation));
  }

  const TargetText& text_;
  ExpressionTexts texts_;
  std::vector<StraightLine> lines_;  ///< of the working form
  std::ostream& out_;
  bool proper_;
};

void put_module(const TargetJob& job) {
  const TargetText text(job.module, language, job.rules);
  EsterelText esterel(text, job.out);
  esterel.put_interface();
  esterel.put_body();
}

}  // namespace

extern const Target esterel_target{.option = "esterel",
                                   .help = "Esterel module, .strl",
                                   .file = {.extension = ".strl"},
                                   .put = put_module,
                                   .comment = "% ",
                                   .use = "my_pre, which delays a signal by an instant, is yours."};

// A boolean automaton.

void b_automaton::ESTEREL_put(std::ostream& out, int, const std::string& name) const {
  out << "module " << name << ":\n"
      << "input " << joined(names_.inputs, ",\n       ") << ";\n"
      << "output " << joined(names_.outputs, ",\n        ") << ";\n\n";
  std::vector<std::string> inner = names_.state;
  inner.insert(inner.end(), names_.next_state.begin(), names_.next_state.end());
  inner.insert(inner.end(), names_.locals.begin(), names_.locals.end());
  out << "signal " << joined(inner, ", ") << " in\n";
  for (int k = 0; k < nb_state_vars(); ++k) {
    out << "  [\n";
    if (valeur_initiale_state_var(k) == 1) out << "    emit " << nom_state_var(k) << ";\n";
    out << "    run my_pre [signal " << nom_next_state_var(k) << " / S, " << nom_state_var(k)
        << " / preS]\n  ]\n  ||\n";
  }
  if (nb_equ_def() > 0) {
    out << "  loop\n    [\n";
    wood_->Put_esterel(out);
    out << "    ]\n  each tick\n";
  }
  out << "end signal\nend module\n";
}

// The told operations of other classes.

void Module::ESTEREL_put(std::ostream& out, int) {
  put_target(esterel_target, this, out);
}

void Bddexpression::put_esterel(std::ostream& out) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_emission(out, my_bddname(), my_bdd_manager()->Print_sop_to_ESTEREL_String(bdd_exp, 0));
}

void Bddexpressionwood::Put_esterel(std::ostream& out) {
  for (long index : earliest_sort()) exp_table[index]->put_esterel(out);
}

std::string bddpp_manager::Print_sop_to_ESTEREL_String(const bdd& f, int mode) {
  if (Bdd_is_tautology(f)) return Bdd_is_one_tautologic(f) ? "tick" : "not tick";
  return Print_sop_to_String(" or ", " and ", "not ", "", f, mode);
}

}  // namespace kiva
