// A module as an object that makes one step an instant, as C and C++ have it.

#include "tarn/targets/languages/step_family.h"

#include <algorithm>
#include <ostream>
#include <set>

#include "base/text_stream.h"
#include "tarn/model/compilation.h"

namespace kiva {

namespace {

// Words of C up to C23 and of C++ up to C++23, and macros of the standard headers and of systems.
#define KIVA_C_WORDS                                                                               \
  "auto", "break", "case", "char", "const", "continue", "default", "do", "double", "else", "enum", \
      "extern", "float", "for", "goto", "if", "inline", "int", "long", "register", "restrict",     \
      "return", "short", "signed", "sizeof", "static", "struct", "switch", "typedef", "union",     \
      "unsigned", "void", "volatile", "while", "bool", "true", "false", "asm", "typeof",           \
      "typeof_unqual", "alignas", "alignof", "nullptr", "constexpr", "static_assert",              \
      "thread_local", "and", "and_eq", "bitand", "bitor", "catch", "char8_t", "char16_t",          \
      "char32_t", "class", "compl", "concept", "consteval", "constinit", "const_cast", "co_await", \
      "co_return", "co_yield", "decltype", "delete", "dynamic_cast", "explicit", "export",         \
      "friend", "mutable", "namespace", "new", "noexcept", "not", "not_eq", "operator", "or",      \
      "or_eq", "private", "protected", "public", "reinterpret_cast", "requires", "static_cast",    \
      "template", "this", "throw", "try", "typeid", "typename", "using", "virtual", "wchar_t",     \
      "xor", "xor_eq", "EOF", "NULL", "BUFSIZ", "FILENAME_MAX", "FOPEN_MAX", "L_tmpnam",           \
      "TMP_MAX", "SEEK_CUR", "SEEK_END", "SEEK_SET", "RAND_MAX", "EXIT_FAILURE", "EXIT_SUCCESS",   \
      "MB_CUR_MAX", "CLOCKS_PER_SEC", "CHAR_BIT", "INT_MAX", "INT_MIN", "LONG_MAX", "LONG_MIN",    \
      "UINT_MAX", "SIZE_MAX", "INFINITY", "NAN", "HUGE_VAL", "M_PI", "M_E", "I", "complex",        \
      "imaginary", "noreturn", "errno", "stdin", "stdout", "stderr", "assert", "offsetof",         \
      "linux", "unix", "i386", "NDEBUG", "SIGABRT", "SIGFPE", "SIGILL", "SIGINT", "SIGSEGV",       \
      "SIGTERM", "SIG_DFL", "SIG_ERR", "SIG_IGN", "EDOM", "ERANGE", "EILSEQ", "main"

std::vector<std::string> no_names(const std::string&) {
  return {};
}

const char* const operators[] = {" + ", " - ",  " * ",  " / ", "-",    " && ", " || ",
                                 "!",   " == ", " != ", " < ", " <= ", " > ",  " >= "};

constexpr size_t lines_of_a_part = 80;

}  // namespace

const TargetText::Language c_step_language{.shape = {.target = "C", .keywords = {KIVA_C_WORDS}},
                                           .has_data = true,
                                           .names_module = false,
                                           .own_names = no_names};
const TargetText::Language cpp_step_language{
    .shape = {.target = "C++", .keywords = {KIVA_C_WORDS, "std"}},
    .has_data = true,
    .names_module = true,
    .own_names = [](const std::string&) {
      return std::vector<std::string>{"step", "in", "out", "given", "shown"};
    }};

const TargetText::Language systemc_step_language{
    .shape = {.target = "SystemC", .keywords = {KIVA_C_WORDS, "std"}},
    .has_data = true,
    .names_module = true,
    .own_names = [](const std::string&) {
      // The text's own, and members of the library's modules.
      return std::vector<std::string>{"in",
                                      "out",
                                      "wires",
                                      "given",
                                      "shown",
                                      "clk",
                                      "rst",
                                      "react",
                                      "clear",
                                      "w",
                                      "file",
                                      "prefix",
                                      "name",
                                      "kind",
                                      "wait",
                                      "halt",
                                      "next_trigger",
                                      "sensitive",
                                      "dont_initialize",
                                      "end_module",
                                      "print",
                                      "dump",
                                      "trace",
                                      "basename",
                                      "simcontext",
                                      "timed_out",
                                      "reset_signal_is",
                                      "async_reset_signal_is",
                                      "set_stack_size",
                                      "sc_core",
                                      "sc_trace"};
    }};

std::string StepText::type_text(const std::string& type) {
  return type == "byte" ? "unsigned char" : type == "string" ? "const char *" : type;
}

std::string StepText::zero(const std::string& type) const {
  if (type == "bool") return "false";
  if (type == "string") return "\"\"";
  if (type == "float") return "0.0F";
  if (type == "double") return "0.0";
  if (type == "int" || type == "long" || type == "short" || type == "byte") return "0";
  return style_.cpp ? type + "{}" : "(" + type + "){0}";
}

namespace {

bool is_built_in(const std::string& type) {
  static const std::set<std::string> all{"bool", "string", "float", "double",
                                         "int",  "long",   "short", "byte"};
  return all.contains(type);
}

}  // namespace

StepText::StepText(const TargetText& text, const StepStyle& style) : text_(text), style_(style) {
  for (long index : text.input_rails()) inputs_.insert(index);
  for (const StateRail& rail : text.state()) state_.insert(rail.index);
  for (const std::string& type : data_types()) wants_types_ = wants_types_ || !is_built_in(type);
  data_ = {operators, "DataExpr::C_opname", [this](const Signal* s) { return read_value(s); },
           true};
  expressions_ = {.and_text = " && ",
                  .or_text = " || ",
                  .not_text = "!",
                  .differ_text = " != ",
                  .same_text = " == ",
                  .zero = "false",
                  .one = "true",
                  .read = [this](long index) { return read(index); },
                  .part = [this](long number) { return part_name(number); }};
  const bool has_data = text.module()->getDataTable() != nullptr && !data_types().empty();
  // The first run tells how long the text is, and with that where its locals are.
  lines_ = straight_code(text_, expressions_);
  if (has_data || lines_.size() <= 2 * lines_of_a_part) return;
  parts_ = (lines_.size() + lines_of_a_part - 1) / lines_of_a_part;
  lines_ = straight_code(text_, expressions_);
}

std::string StepText::part_name(long number) const {
  return (parts_ > 1 ? style_.wires : "") + "part_" + std::to_string(number);
}

std::string StepText::read(long index) const {
  if (state_.contains(index)) return style_.state + text_.state_name(index);
  if (inputs_.contains(index)) return style_.in + text_.name(index);
  if (text_.is_output(index)) return style_.out + text_.name(index);
  return (parts_ > 1 ? style_.wires : "") + text_.name(index);
}

std::string StepText::read_value(const Signal* signal) const {
  const std::string name = text_.value_name(signal);
  return inputs_.contains(text_.status(signal)) ? style_.in + name
         : signal->isOutput()                   ? style_.out + name
                                                : name;
}

bool StepText::reads_inputs() const {
  return std::ranges::any_of(inputs_, [&](long index) { return text_.is_read(index); }) ||
         std::ranges::any_of(text_.inputs(), [&](const Signal* input) {
           return text_.is_valued(input) && text_.is_value_read(input);
         });
}

// Comments and fields.

void StepText::put_comment(std::ostream& out, const std::string& start,
                           const std::string& calls) const {
  out << start << text_.module()->getName() << ": " << calls << '\n';
  const auto put_renamed = [&](const std::vector<Signal*>& signals) {
    for (const Signal* signal : signals)
      if (text_.finalised() && text_.name(signal) != signal->getOriginalName())
        out << start << "The signal " << signal->getOriginalName() << " is the field "
            << text_.name(signal) << ".\n";
  };
  put_renamed(text_.inputs());
  put_renamed(text_.outputs());
  if (wants_types_)
    out << start << "You write " << text_.module()->getName()
        << "_types.h, with the types, and the functions and constants declared here.\n";
}

void StepText::put_data_declarations(std::ostream& out, const std::string& margin) const {
  for (const MethodDecl* method : data_methods()) {
    out << margin << (style_.cpp ? "" : "extern ") << type_text(method->getReturnType()) << ' '
        << method->getName() << '(';
    const char* separator = "";
    for (const std::string& type : method->getArgTypeList()) {
      out << separator << type_text(type);
      separator = ", ";
    }
    out << (*separator == 0 ? "void" : "") << ");\n";
  }
  for (const ConstantDecl* constant : data_constants())
    if (constant->getValue() == nullptr)
      out << margin << "extern const " << type_text(constant->getType()) << ' '
          << constant->getName() << ";\n";
}

void StepText::put_constants(std::ostream& out) const {
  const auto read = constants_read(*text_.module());
  for (const ConstantDecl* constant : data_constants())
    if (constant->getValue() != nullptr && read.contains(constant))
      out << (style_.cpp ? "inline const " : "static const ") << type_text(constant->getType())
          << ' ' << constant->getName() << " = " << data_text(data_, *constant->getValue())
          << ";\n";
}

void StepText::put_field(std::ostream& out, const std::string& type, const std::string& name,
                         const std::string& first) const {
  const bool pointer = type.ends_with('*');
  out << (style_.cpp ? "    " : "  ") << type << (pointer ? "" : " ") << name
      << (style_.cpp ? " = " + first : "") << ";\n";
}

void StepText::put_signals(std::ostream& out, const std::vector<long>& rails,
                           const std::vector<Signal*>& signals) const {
  for (long index : rails) {
    put_field(out, "bool", text_.name(index), "false");
    for (const Signal* signal : signals)
      if (text_.status(signal) == index && text_.is_valued(signal))
        put_field(out, type_text(text_.type(signal)), text_.value_name(signal),
                  zero(text_.type(signal)));
  }
  if (rails.empty() && !style_.cpp) out << "  bool nothing; /* a structure wants a field */\n";
}

void StepText::put_inputs(std::ostream& out) const {
  put_signals(out, text_.input_rails(), text_.inputs());
}

void StepText::put_outputs(std::ostream& out) const {
  put_signals(out, text_.output_rails(), text_.outputs());
}

void StepText::put_state(std::ostream& out) const {
  for (const StateRail& rail : text_.state()) {
    text_.put_note(out, "  // ", rail.index);
    out << "  bool " << text_.state_name(rail.index)
        << (style_.cpp ? rail.initial ? " = true" : " = false" : "") << ";\n";
  }
  if (text_.state().empty() && !style_.cpp)
    out << "  bool nothing; /* a structure wants a field */\n";
}

void StepText::put_wires(std::ostream& out) const {
  for (const StraightLine& line : lines_)
    if (line.index < 0 || !text_.is_output(line.index)) {
      const std::string name = left(line);
      out << (style_.cpp ? "    bool " : "  bool ") << name.substr(style_.wires.size())
          << (style_.cpp ? " = false" : "") << ";\n";
    }
}

// The reaction.

void StepText::put_first_values(std::ostream& out, const std::string& margin) const {
  for (const StateRail& rail : text_.state())
    out << margin << style_.state << text_.state_name(rail.index) << " = "
        << (rail.initial ? "true" : "false") << ";\n";
}

std::string StepText::left(const StraightLine& line) const {
  return line.index < 0 ? part_name(line.number) : read(line.index);
}

void StepText::put_test(std::ostream& out, const StraightLine& line,
                        const std::string& margin) const {
  const TargetEquation& equation = *line.equation;
  std::set<std::string> present;  // without a value there is nothing to test
  if (const auto signals = equation.binding->getValue()->computeDependencySet())
    for (const Signal* signal : *signals) present.insert(read(text_.status(signal)));
  out << margin << (text_.is_output(line.index) ? "" : "const bool ") << left(line) << " = ";
  for (const std::string& name : present) out << name << " && ";
  out << (equation.kind == TargetEquation::data_complement ? "!(" : "(")
      << data_text(data_, *equation.binding->getValue()) << ");\n";
}

void StepText::put_value(std::ostream& out, const DataBinding& binding,
                         const std::string& margin) const {
  out << margin << "if (" << read(text_.status(binding.getSignal())) << ") {\n"
      << margin << "  " << read_value(binding.getClock()) << " = "
      << data_text(data_, *binding.getValue()) << ";\n"
      << margin << "}\n";
}

void StepText::put_value_locals(std::ostream& out, const std::string& margin) const {
  for (const Signal* signal : text_.valued_locals()) {
    const std::string type = text_.type(signal), words = type_text(type);
    out << margin << words << (words.ends_with('*') ? "" : " ") << text_.value_name(signal) << " = "
        << zero(type) << ";\n";
    if (!text_.is_value_read(signal))
      out << margin << "(void)" << text_.value_name(signal) << ";\n";
  }
  for (const DataBinding* binding : early_values(text_, lines_)) put_value(out, *binding, margin);
}

void StepText::put_lines(std::ostream& out, size_t part, const std::string& margin) const {
  const size_t from = parts_ == 1 ? 0 : part * lines_of_a_part;
  const size_t to = parts_ == 1 ? lines_.size() : std::min(lines_.size(), from + lines_of_a_part);
  if (part == 0) put_value_locals(out, margin);
  std::unordered_map<long, const TargetEquation*> equation_of;
  for (const TargetEquation& equation : text_.equations())
    equation_of.emplace(equation.index, &equation);
  for (size_t i = from; i < to; ++i) {
    const StraightLine& line = lines_[i];
    if (line.equation != nullptr) {
      put_test(out, line, margin);
      continue;
    }
    const bool is_field = parts_ > 1 || (line.index >= 0 && text_.is_output(line.index));
    text_.put_note(out, margin + "// ", line.index);
    out << broken(margin + (is_field ? "" : "const bool ") + left(line) + " = " + line.right +
                  ";\n");
    if (line.index < 0) continue;
    if (const DataBinding* binding = text_.triggered(*equation_of.at(line.index)))
      put_value(out, *binding, margin);
  }
}

void StepText::put_end(std::ostream& out, const std::string& margin) const {
  for (const Signal* output : text_.outputs()) {
    if (!text_.is_valued(output)) continue;
    const std::string value = style_.out + text_.value_name(output);
    const char* start = "if (";
    out << margin;
    for (const DataBinding* binding : text_.value_bindings(output)) {
      out << start << read(text_.status(output)) << " && "
          << read(text_.status(binding->getSignal())) << ") {\n"
          << margin << "  " << value << " = " << data_text(data_, *binding->getValue()) << ";\n"
          << margin << "} else ";
      start = "if (";
    }
    out << "{\n"
        << margin << "  " << value << " = " << zero(text_.type(output)) << ";\n"
        << margin << "}\n";
  }
  for (const StateRail& rail : text_.state())
    if (text_.is_output(rail.index))
      out << margin << style_.out << text_.name(rail.index) << " = " << read(rail.index) << ";\n";
  // A register that takes over another one's state takes that of this instant.
  TextStream moves;
  for (const StateRail& rail : text_.state()) {
    std::string next = read(rail.next);
    if (state_.contains(rail.next)) {
      out << margin << "const bool next_" << text_.state_name(rail.index) << " = " << next << ";\n";
      next = "next_" + text_.state_name(rail.index);
    }
    moves << margin << style_.state << text_.state_name(rail.index) << " = " << next << ";\n";
  }
  out << moves.str();
}

}  // namespace kiva
