// Verilog: a module of bits. Registers move on the rising edge of the clock, and take their first
// values on reset and at power-up; outputs follow the inputs at once. There is no told form.

#include <ostream>

#include "pert_exp/equation_code.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

// clang-format off
const TargetText::Language language{
    // Reserved words of the language and of its successor, SystemVerilog.
    .shape = {.target = "Verilog",
              .keywords = {
                  "accept_on", "alias", "always", "always_comb", "always_ff", "always_latch",
                  "and", "assert", "assign", "assume", "automatic", "before", "begin", "bind",
                  "bins", "binsof", "bit", "break", "buf", "bufif0", "bufif1", "byte", "case",
                  "casex", "casez", "cell", "chandle", "checker", "class", "clocking", "cmos",
                  "config", "const", "constraint", "context", "continue", "cover", "covergroup",
                  "coverpoint", "cross", "deassign", "default", "defparam", "design", "disable",
                  "dist", "do", "edge", "else", "end", "endcase", "endchecker", "endclass",
                  "endclocking", "endconfig", "endfunction", "endgenerate", "endgroup",
                  "endinterface", "endmodule", "endpackage", "endprimitive", "endprogram",
                  "endproperty", "endspecify", "endsequence", "endtable", "endtask", "enum",
                  "event", "eventually", "expect", "export", "extends", "extern", "final",
                  "first_match", "for", "force", "foreach", "forever", "fork", "forkjoin",
                  "function", "generate", "genvar", "global", "highz0", "highz1", "if", "iff",
                  "ifnone", "ignore_bins", "illegal_bins", "implements", "implies", "import",
                  "incdir", "include", "initial", "inout", "input", "inside", "instance", "int",
                  "integer", "interconnect", "interface", "intersect", "join", "join_any",
                  "join_none", "large", "let", "liblist", "library", "local", "localparam",
                  "logic", "longint", "macromodule", "matches", "medium", "modport", "module",
                  "nand", "negedge", "nettype", "new", "nexttime", "nmos", "nor",
                  "noshowcancelled", "not", "notif0", "notif1", "null", "or", "output", "package",
                  "packed", "parameter", "pmos", "posedge", "primitive", "priority", "program",
                  "property", "protected", "pull0", "pull1", "pulldown", "pullup",
                  "pulsestyle_ondetect", "pulsestyle_onevent", "pure", "rand", "randc",
                  "randcase", "randsequence", "rcmos", "real", "realtime", "ref", "reg",
                  "reject_on", "release", "repeat", "restrict", "return", "rnmos", "rpmos",
                  "rtran", "rtranif0", "rtranif1", "s_always", "s_eventually", "s_nexttime",
                  "s_until", "s_until_with", "scalared", "sequence", "shortint", "shortreal",
                  "showcancelled", "signed", "small", "soft", "solve", "specify", "specparam",
                  "static", "string", "strong", "strong0", "strong1", "struct", "super",
                  "supply0", "supply1", "sync_accept_on", "sync_reject_on", "table", "tagged",
                  "task", "this", "throughout", "time", "timeprecision", "timeunit", "tran",
                  "tranif0", "tranif1", "tri", "tri0", "tri1", "triand", "trior", "trireg",
                  "type", "typedef", "union", "unique", "unique0", "unsigned", "until",
                  "until_with", "untyped", "use", "uwire", "var", "vectored", "virtual", "void",
                  "wait", "wait_order", "wand", "weak", "weak0", "weak1", "while", "wildcard",
                  "wire", "with", "within", "wor", "xnor", "xor"}},
    .node_prefix = [](const std::string& module) { return module + "_node_"; },
    .own_names =
        [](const std::string&) {
          return std::vector<std::string>{"clk", "reset"};
        }};
// clang-format on

class VerilogText {
 public:
  explicit VerilogText(const TargetJob& job)
      : text_(job.module, language, job.rules.without_told()), out_(job.out) {
    texts_.nodes.line_start = texts_.nodes.constant_start = "  wire ";
    texts_.nodes.table = text_.module_name() + "_node";
    texts_.nodes.entry_open = "_";
    texts_.nodes.entry_close = "";
    texts_.nodes.assign = texts_.assign = " = ";
    texts_.nodes.or_text = " | ";
    texts_.nodes.and_text = " & ";
    texts_.nodes.not_open = texts_.not_text = "~";
    texts_.nodes.constant = "1'b1";
    texts_.read = [this](long index) { return text_.state_name(index); };
    texts_.left = [this](long index) {
      return (text_.is_output(index) ? "  assign " : "  wire ") + text_.name(index);
    };
    texts_ = text_.numbered(texts_);
  }

  void put() const {
    const std::vector<long> inputs = text_.input_rails(), outputs = text_.output_rails();
    out_ << "module " << text_.module_name() << "(\n  input wire clk,\n  input wire reset";
    for (long index : inputs) out_ << ",\n  input wire " << text_.name(index);
    for (long index : outputs) out_ << ",\n  output wire " << text_.name(index);
    out_ << "\n);\n";
    for (const StateRail& rail : text_.state())
      out_ << "  reg " << text_.state_name(rail.index) << " = " << bit(rail.initial) << ";\n";
    for (const StateRail& rail : text_.state())
      if (text_.is_output(rail.index))
        out_ << "  assign " << text_.name(rail.index) << " = " << text_.state_name(rail.index)
             << ";\n";
    text_.manager()->Bdd_global_clear_marks();
    for (const TargetEquation& equation : text_.equations())
      put_equation_code(out_, texts_, equation.index, equation.f);
    put_state_moves();
    out_ << "endmodule\n";
  }

 private:
  static const char* bit(bool value) { return value ? "1'b1" : "1'b0"; }

  void put_state_moves() const {
    if (text_.state().empty()) return;
    out_ << "  always @(posedge clk or posedge reset)\n    if (reset) begin\n";
    for (const StateRail& rail : text_.state())
      out_ << "      " << text_.state_name(rail.index) << " <= " << bit(rail.initial) << ";\n";
    out_ << "    end else begin\n";
    for (const StateRail& rail : text_.state())
      out_ << "      " << text_.state_name(rail.index) << " <= " << text_.state_name(rail.next)
           << ";\n";
    out_ << "    end\n";
  }

  TargetText text_;
  std::ostream& out_;
  equation_code_texts texts_;
};

const Bench bench{.language = &language,
                  .extension = ".v",
                  .run = verilog_bench_run,
                  .put = put_verilog_bench,
                  .tool = "iverilog -V"};

}  // namespace

extern const Target verilog_target{.option = "verilog",
                                   .help = "Verilog module, .v",
                                   .file = {.extension = ".v"},
                                   .put = [](const TargetJob& job) { VerilogText(job).put(); },
                                   .bench = &bench};

}  // namespace kiva
