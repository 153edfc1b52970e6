// SystemC: a module as an SC_MODULE with ports. Each rise of the clock is one instant, in which it
// reads its inputs, gives its outputs, and moves its registers.

#include "tarn/targets/languages/systemc_module.h"

#include <ostream>
#include <set>

#include "tarn/targets/languages/step_family.h"

namespace kiva {

namespace {

class SystemcModule {
 public:
  explicit SystemcModule(const TargetJob& job)
      : text_(job.module, systemc_step_language, job.rules),
        c_(text_, {.cpp = true, .state = "", .in = "given.", .out = "shown.", .wires = "w."}),
        m_(text_.module_name()),
        job_(job) {
    for (long index : text_.input_rails())
      ports_.push_back({index, false, "bool", text_.name(index)});
    add_values(text_.inputs(), false);
    for (long index : text_.output_rails())
      ports_.push_back({index, true, "bool", text_.name(index)});
    add_values(text_.outputs(), true);
  }

  void put_header() const {
    std::ostream& out = job_.beside;
    out << "#pragma once\n\n";
    c_.put_comment(out, "// ",
                   "an instant at each rise of clk, in which it gives its outputs; high rst "
                   "puts it back.");
    out << "\n#include <string>\n#include <systemc>\n\n";
    if (c_.wants_types()) out << "#include \"" << job_.module->getName() << "_types.h\"\n\n";
    c_.put_data_declarations(out, "");
    c_.put_constants(out);
    out << "class " << m_ << " : public sc_core::sc_module {\n public:\n"
        << "  sc_core::sc_in<bool> clk{\"clk\"}, rst{\"rst\"};\n";
    for (const Port& port : ports_)
      out << "  sc_core::" << (port.is_output ? "sc_out<" : "sc_in<") << port.type << "> "
          << port.name << "{\"" << port.name << "\"};\n";
    out << "\n  explicit " << m_ << "(const sc_core::sc_module_name& name);\n\n private:\n"
        << "  struct in {\n";
    c_.put_inputs(out);
    out << "  };\n  struct out {\n";
    c_.put_outputs(out);
    out << "  };\n\n  void react();\n  void clear();\n";
    if (c_.parts() > 1) {
      out << "  struct wires {\n";
      c_.put_wires(out);
      out << "  };\n";
      for (size_t part = 0; part < c_.parts(); ++part)
        out << "  void part_" << part << "(const in& given, out& shown, wires& w) const;\n";
    }
    out << '\n';
    c_.put_state(out);
    out << "};\n\n/// Its ports, each behind `prefix`.\nvoid sc_trace(sc_core::sc_trace_file* "
           "file, const "
        << m_ << "& m, const std::string& prefix);\n";
  }

  void put_body() const {
    std::ostream& out = job_.out;
    out << "#include \"" << job_.beside_name << "\"\n\n"
        << m_ << "::" << m_ << "(const sc_core::sc_module_name& name) : sc_module(name) {\n"
        << "  SC_HAS_PROCESS(" << m_ << ");\n  SC_METHOD(react);\n  sensitive << clk.pos();\n"
        << "  dont_initialize();\n}\n\nvoid " << m_ << "::clear() {\n";
    c_.put_first_values(out, "  ");
    for (const Port& port : ports_)
      if (port.is_output) out << "  " << port.name << ".write({});\n";
    out << "}\n\n";
    put_parts();
    put_react();
    out << "\nvoid sc_trace(sc_core::sc_trace_file* file, const " << m_
        << "& m, const std::string& prefix) {\n  using sc_core::sc_trace;\n"
        << "  sc_trace(file, m.clk, prefix + \".clk\");\n  sc_trace(file, m.rst, prefix + "
           "\".rst\");\n";
    for (const Port& port : ports_)
      if (can_be_traced(port.type))
        out << "  sc_trace(file, m." << port.name << ", prefix + \"." << port.name << "\");\n";
    out << "}\n";
  }

 private:
  struct Port {
    long index;
    bool is_output;
    std::string type, name;
  };

  /// Types of the user's own would need a function of theirs.
  static bool can_be_traced(const std::string& type) {
    static const std::set<std::string> types{"bool",  "int",    "long",         "short",
                                             "float", "double", "unsigned char"};
    return types.contains(type);
  }

  void add_values(const std::vector<Signal*>& signals, bool is_output) {
    for (const Signal* signal : signals)
      if (text_.is_valued(signal))
        ports_.push_back({-1, is_output, type_of(signal), text_.value_name(signal)});
  }
  /// Of a port: strings are kept, not pointed at.
  std::string type_of(const Signal* signal) const {
    const std::string type = text_.type(signal);
    return type == "string" ? "std::string" : StepText::type_text(type);
  }

  void put_parts() const {
    std::ostream& out = job_.out;
    for (size_t part = 0; c_.parts() > 1 && part < c_.parts(); ++part) {
      out << "void " << m_ << "::part_" << part
          << "([[maybe_unused]] const in& given, [[maybe_unused]] out& shown, wires& w) const {\n";
      c_.put_lines(out, part, "  ");
      out << "}\n\n";
    }
  }

  void put_react() const {
    std::ostream& out = job_.out;
    out << "void " << m_ << "::react() {\n  if (rst.read()) {\n    clear();\n    return;\n  }\n";
    if (c_.reads_inputs()) out << "  in given;\n";
    for (const Port& port : ports_)
      if (!port.is_output && c_.reads_inputs())
        out << "  given." << port.name << " = " << port.name << ".read()"
            << (port.type == "std::string" ? ".c_str()" : "") << ";\n";
    out << "  out shown;\n";
    if (c_.parts() > 1) {
      out << "  wires w;\n";
      for (size_t part = 0; part < c_.parts(); ++part)
        out << "  part_" << part << '(' << (c_.reads_inputs() ? "given" : "in{}")
            << ", shown, w);\n";
    } else {
      c_.put_lines(out, 0, "  ");
    }
    c_.put_end(out, "  ");
    for (const Port& port : ports_)
      if (port.is_output) out << "  " << port.name << ".write(shown." << port.name << ");\n";
    out << "}\n";
  }

  const TargetText text_;
  const StepText c_;
  const std::string& m_;
  const TargetJob& job_;
  std::vector<Port> ports_;
};

}  // namespace

void put_systemc_module(const TargetJob& job) {
  const SystemcModule module(job);
  module.put_header();
  module.put_body();
}

}  // namespace kiva
