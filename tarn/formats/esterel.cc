// A module of pure signals: each register is a run of the user's module my_pre, and each equation
// an emission under a condition, all of them once in every instant.

#include <ostream>

#include "tarn/formats/sum_text.h"
#include "tarn/formats/target_text.h"
#include "tarn/model/compilation.h"

namespace kiva {

namespace {

const TargetText::Target esterel_target{
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
    .told_wires = true};

class EsterelText {
 public:
  EsterelText(const TargetText& text, std::ostream& out)
      : text_(text), out_(out), proper_(text.rules().proper_lists) {}

  void put_interface() {
    const std::string m = text_.module_name();
    out_ << "module " << m << ":\n";
    put_names("input", text_.input_rails(), text_.set_reset_rails().size(),
              "s_SET" + m + ", v_SET" + m + ", s_RESET" + m + ", v_RESET" + m);
    put_names("output", text_.output_rails(), text_.rtl_rails().size(), "s_RTL" + m + ",v_RTL" + m);
    out_ << '\n';
  }

  void put_body() {
    std::vector<long> signals = text_.locals();
    for (const StateRail& rail : text_.state())
      if (!text_.is_output(rail.index)) signals.push_back(rail.index);
    const bool heads = !signals.empty() || !proper_;
    if (heads) {
      out_ << "signal ";
      const char* separator = "";
      for (long index : signals) {
        out_ << separator << text_.name(index);
        separator = ",\n       ";
      }
      out_ << " in\n\n";
    }
    if (!text_.state().empty() || !proper_) {
      put_state();
      out_ << "  ||\n";
    }
    out_ << "  loop\n  [\n";
    put_equations();
    out_ << "  ]\n  each tick\n";
    if (heads) out_ << "end signal \n";
    out_ << "end module\n";
  }

 private:
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
      out_ << "    run my_pre [signal " << text_.name(rail.next) << " / S, "
           << text_.name(rail.index) << " / preS]\n";
    }
    out_ << "  ]\n";
  }

  void put_equations() {
    const SumTexts sums{.or_text = " or ",
                        .and_text = " and ",
                        .not_text = "not ",
                        .zero = "not tick",
                        .one = "tick",
                        .level = 0};
    bool first = true;
    for (const TargetEquation& equation : text_.equations()) {
      if (proper_ && !first) out_ << "  ||\n";
      first = false;
      put_esterel_emission(out_, text_.name(equation.index), sum_text(text_, sums, equation));
    }
    if (proper_ && first) out_ << "  nothing\n";
  }

  const TargetText& text_;
  std::ostream& out_;
  bool proper_;
};

}  // namespace

void Module::ESTEREL_put(std::ostream& out, int) {
  const TargetText text(this, esterel_target, Compilation::target_rules());
  EsterelText esterel(text, out);
  esterel.put_interface();
  esterel.put_body();
}

}  // namespace kiva
