// SystemVerilog: a module of bits. Registers move on the rising edge of the clock, and take their
// first values on reset and at power-up; outputs follow the inputs at once. There is no told form.

#include <algorithm>
#include <ostream>

#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/languages/circuit_family.h"

namespace kiva {

namespace {

// clang-format off
const TargetText::Language language{
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
                  "process", "std", "mailbox", "semaphore", "randomize", "type", "typedef", "union", "unique", "unique0", "unsigned", "until",
                  "until_with", "untyped", "use", "uwire", "var", "vectored", "virtual", "void",
                  "wait", "wait_order", "wand", "weak", "weak0", "weak1", "while", "wildcard",
                  "wire", "with", "within", "wor", "xnor", "xor"}},
    .node_prefix = [](const std::string&) { return "part_"; },
    .own_names =
        [](const std::string&) {
          return std::vector<std::string>{"clk", "rst"};
        }};
// clang-format on

class VerilogText {
 public:
  explicit VerilogText(const TargetJob& job)
      : text_(job.module, language, job.rules.without_told()),
        circuit_(text_,
                 {.and_text = " & ",
                  .or_text = " | ",
                  .not_text = "~",
                  .differ_text = " ^ ",
                  .same_text = " ~^ ",
                  .zero = "1'b0",
                  .one = "1'b1"},
                 true),
        out_(job.out) {}

  void put() const {
    out_ << "module " << text_.module_name() << " (\n";
    put_ports();
    out_ << ");\n\n";
    for (const StateRail& rail : text_.state()) {
      text_.put_note(out_, "  // ", rail.index);
      out_ << "  logic " << text_.state_name(rail.index) << " = " << bit(rail.initial) << ";\n";
    }
    for (const std::string& name : circuit_.wires()) out_ << "  logic " << name << ";\n";
    put_lines();
    put_state_moves();
    out_ << "\nendmodule\n";
  }

 private:
  static const char* bit(bool value) { return value ? "1'b1" : "1'b0"; }

  /// An input that nothing reads is no fault of the text.
  void put_input(const std::string& name, bool is_read, bool is_last = false) const {
    const std::string port = "  input  logic " + name + (is_last ? "\n" : ",\n");
    if (is_read)
      out_ << port;
    else
      out_ << "  /* verilator lint_off UNUSED */\n" << port << "  /* verilator lint_on UNUSED */\n";
  }

  void put_ports() const {
    const std::vector<long> inputs = text_.input_rails(), outputs = text_.output_rails();
    const bool has_state = !text_.state().empty();
    put_input("clk", has_state);
    put_input("rst", has_state, inputs.empty() && outputs.empty());
    for (long index : inputs)
      put_input(text_.name(index), text_.is_read(index), outputs.empty() && index == inputs.back());
    for (long index : outputs)
      out_ << "  output logic " << text_.name(index) << (index == outputs.back() ? "\n" : ",\n");
  }

  /// What reads nothing would never be computed in a process.
  void put_lines() const {
    const auto is_constant = [](const StraightLine& line) { return line.right.starts_with("1'b"); };
    out_ << '\n';
    for (const StraightLine& line : circuit_.lines())
      if (is_constant(line))
        out_ << "  assign " << circuit_.left(line) << " = " << line.right << ";\n";
    for (const auto& [port, from] : circuit_.copies())
      out_ << "  assign " << port << " = " << from << ";\n";
    if (std::ranges::all_of(circuit_.lines(), is_constant)) return;
    out_ << "  always_comb begin\n";
    for (const StraightLine& line : circuit_.lines())
      if (!is_constant(line)) {
        text_.put_note(out_, "    // ", line.index);
        out_ << broken("    " + circuit_.left(line) + " = " + line.right + ";\n");
      }
    out_ << "  end\n";
  }

  void put_state_moves() const {
    if (text_.state().empty()) return;
    out_ << "\n  always_ff @(posedge clk"
         << (text_.rules().asynchronous_reset ? " or posedge rst" : "")
         << ") begin\n    if (rst) begin\n";
    for (const StateRail& rail : text_.state())
      out_ << "      " << text_.state_name(rail.index) << " <= " << bit(rail.initial) << ";\n";
    out_ << "    end else begin\n";
    for (const StateRail& rail : text_.state())
      out_ << "      " << text_.state_name(rail.index) << " <= " << circuit_.read(rail.next)
           << ";\n";
    out_ << "    end\n  end\n";
  }

  TargetText text_;
  CircuitText circuit_;
  std::ostream& out_;
};

const Bench bench{.language = &language,
                  .extension = ".sv",
                  .run = verilog_bench_run,
                  .put = put_verilog_bench,
                  .tool = "iverilog -V"};

}  // namespace

extern const Target verilog_target{
    .option = "verilog",
    .help = "SystemVerilog module, .sv",
    .file = {.extension = ".sv"},
    .put = [](const TargetJob& job) { VerilogText(job).put(); },
    .comment = "// ",
    .use = "Outputs follow the inputs; an instant ends where clk rises.",
    .bench = &bench};

}  // namespace kiva
