// VHDL: a module as one entity with one architecture. Registers move on the rising edge of the
// clock, and outputs follow the inputs at once. The told form is in vhdl_told.cc.

#include "tarn/targets/languages/vhdl.h"

#include <ostream>

#include "tarn/model/compilation.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/languages/circuit_family.h"

namespace kiva {

extern const TargetText::Language vhdl_language{
    // Reserved words of all revisions of the language.
    .shape = {.target = "VHDL",
              .keywords = {"abs", "access", "after", "alias", "all", "and", "architecture", "array",
                           "assert", "assume", "assume_guarantee", "attribute", "begin", "block",
                           "body", "buffer", "bus", "case", "component", "configuration",
                           "constant", "context", "cover", "default", "disconnect", "downto",
                           "else", "elsif", "end", "entity", "exit", "fairness", "file", "for",
                           "force", "function", "generate", "generic", "group", "guarded", "if",
                           "impure", "in", "inertial", "inout", "is", "label", "library", "linkage",
                           "literal", "loop", "map", "mod", "nand", "new", "next", "nor", "not",
                           "null", "of", "on", "open", "or", "others", "out", "package",
                           "parameter", "port", "postponed", "procedure", "process", "property",
                           "protected", "private", "pure", "range", "record", "register", "reject",
                           "release", "rem", "report", "restrict", "restrict_guarantee", "return",
                           "rol", "ror", "select", "sequence", "severity", "shared", "signal",
                           "sla", "sll", "sra", "srl", "strong", "subtype", "then", "to",
                           "transport", "type", "unaffected", "units", "until", "use", "variable",
                           "view", "vmode", "vprop", "vunit", "wait", "when", "while", "with",
                           "xnor", "xor",

                           // Types and packages that the text names.
                           "bit", "std_logic", "std_logic_1164", "ieee", "std", "work"},
              .case_matters = false,
              .may_begin_with_underscore = false,
              .may_end_with_underscore = false,
              .may_double_underscore = false},
    .node_prefix = [](const std::string&) { return "part_"; },
    .own_names =
        [](const std::string&) {
          return std::vector<std::string>{"rst", "clk", "reaction"};
        }};

namespace {

class VhdlEntity {
 public:
  VhdlEntity(const TargetJob& job, const std::string& type)
      : text_(job.module, vhdl_language, job.rules),
        circuit_(text_,
                 {.and_text = " and ",
                  .or_text = " or ",
                  .not_text = "not ",
                  .differ_text = " xor ",
                  .same_text = " xnor ",
                  .zero = "'0'",
                  .one = "'1'"},
                 false),
        type_(type),
        out_(job.out) {}

  void put() const {
    const std::string& m = text_.module_name();
    if (type_ != "bit") out_ << "library ieee;\nuse ieee.std_logic_1164.all;\n\n";
    out_ << "entity " << m << " is\n  port (\n    clk : in " << type_ << ";\n    rst : in "
         << type_;
    for (long index : text_.input_rails())
      out_ << ";\n    " << text_.name(index) << " : in " << type_;
    for (long index : text_.output_rails())
      out_ << ";\n    " << text_.name(index) << " : out " << type_;
    out_ << "\n  );\nend " << m << ";\n\narchitecture reaction of " << m << " is\n";
    for (const StateRail& rail : text_.state()) {
      text_.put_note(out_, "  -- ", rail.index);
      out_ << "  signal " << text_.state_name(rail.index) << " : " << type_
           << " := " << bit(rail.initial) << ";\n";
    }
    for (const std::string& name : circuit_.wires())
      out_ << "  signal " << name << " : " << type_ << ";\n";
    out_ << "begin\n";
    for (const StraightLine& line : circuit_.lines()) {
      text_.put_note(out_, "  -- ", line.index);
      out_ << broken("  " + circuit_.left(line) + " <= " + line.right + ";\n");
    }
    for (const auto& [port, from] : circuit_.copies())
      out_ << "  " << port << " <= " << from << ";\n";
    put_state_moves();
    out_ << "end reaction;\n";
  }

 private:
  static const char* bit(bool value) { return value ? "'1'" : "'0'"; }

  void put_assignments(const std::string& margin, bool resets) const {
    for (const StateRail& rail : text_.state())
      out_ << margin << text_.state_name(rail.index)
           << " <= " << (resets ? bit(rail.initial) : circuit_.read(rail.next)) << ";\n";
  }

  void put_state_moves() const {
    if (text_.state().empty()) return;
    const bool at_once = text_.rules().asynchronous_reset;
    const char* edge = "clk'event and clk = '1'";
    out_ << "\n  process (clk" << (at_once ? ", rst" : "") << ")\n  begin\n";
    if (at_once) {
      out_ << "    if rst = '1' then\n";
      put_assignments("      ", true);
      out_ << "    elsif " << edge << " then\n";
      put_assignments("      ", false);
    } else {
      out_ << "    if " << edge << " then\n      if rst = '1' then\n";
      put_assignments("        ", true);
      out_ << "      else\n";
      put_assignments("        ", false);
      out_ << "      end if;\n";
    }
    out_ << "    end if;\n  end process;\n";
  }

  TargetText text_;
  CircuitText circuit_;
  std::string type_;
  std::ostream& out_;
};

void put(const TargetJob& job, const std::string& type) {
  if (job.rules.own)
    VhdlEntity(job, type).put();
  else
    put_told_vhdl(job, type);
}

const Bench bench{.language = &vhdl_language,
                  .extension = ".vhdl",
                  .run = vhdl_bench_run,
                  .put = put_vhdl_bench,
                  .tool = "ghdl --version"};
const Bench altera_bench{.language = &vhdl_language,
                         .extension = ".vhdl",
                         .run = vhdl_bench_run,
                         .put = put_vhdl_altera_bench,
                         .tool = "ghdl --version"};

}  // namespace

extern const Target vhdl_target{
    .option = "vhdl",
    .help = "VHDL of bits, .vhdl",
    .file = {.extension = ".vhdl"},
    .put = [](const TargetJob& job) { put(job, "bit"); },
    .comment = "-- ",
    .use = "Outputs follow the inputs; an instant ends where clk rises.",
    .bench = &bench};

extern const Target vhdl_altera_target{
    .option = "vhdl-altera",
    .help = "VHDL of std_logic, .vhdl",
    .file = {.extension = ".vhdl"},
    .put = [](const TargetJob& job) { put(job, "std_logic"); },
    .comment = "-- ",
    .use = "Outputs follow the inputs; an instant ends where clk rises.",
    .bench = &altera_bench};

void Module::VHDL_put(std::ostream& out, int altera) {
  put_target(altera != 0 ? vhdl_altera_target : vhdl_target, this, out);
}

void Module::printVHDL() {
  print_target(Compilation::VHDLALTERAFlag() ? vhdl_altera_target : vhdl_target, this);
}

}  // namespace kiva
