// What C and its kin have in common: data, the reaction and its equations.

#include "tarn/targets/languages/c_family.h"

#include <algorithm>
#include <ostream>
#include <unordered_set>

#include "tarn/model/compilation.h"

namespace kiva {

namespace {

constexpr const char* told_operators[] = {" + ", " - ",  " * ",  " / ", " -",   " && ", " | ",
                                          "!",   " == ", " != ", " < ", " <= ", " > ",  " >= "};
constexpr const char* working_operators[] = {" + ", " - ",  " * ",  " / ", " -",   " && ", " || ",
                                             "!",   " == ", " != ", " < ", " <= ", " > ",  " >= "};

DataTexts data_texts(const TargetRules& rules, const char* operation,
                     std::function<std::string(const Signal*)> value) {
  return {c_family_rules(rules.own).logical_or ? working_operators : told_operators, operation,
          std::move(value), rules.brackets};
}

}  // namespace

equation_code_texts c_equation_texts(bddpp_manager* manager, const std::string& array,
                                     const std::list<std::string>& outputs,
                                     const std::string& prefix, const std::string& suffix) {
  equation_code_texts texts;
  texts.nodes.table = array;
  texts.nodes.or_text = " || ";
  texts.nodes.and_text = " && ";
  texts.nodes.not_open = "!";
  texts.nodes.constant = "!0";
  texts.nodes.var_prefix = prefix;
  texts.nodes.var_suffix = suffix;
  texts.read = [=](long index) { return prefix + manager->Name_var_by_index(index) + suffix; };
  texts.left = [=, read = texts.read](long index) {
    const bool is_output = std::find(outputs.begin(), outputs.end(),
                                     manager->Name_var_by_index(index)) != outputs.end();
    return (is_output ? "  *" : "  ") + read(index);
  };
  return texts;
}

CFamilyText::CFamilyText(const TargetText& text, std::string array,
                         const std::list<std::string>* pointers, const CFamilyStyle& style)
    : text_(text),
      rules_(c_family_rules(text.rules().own)),
      array_(std::move(array)),
      pointers_(pointers),
      style_(style) {
  texts_ = c_equation_texts(text.manager(), array_, {}, "", "");
  texts_.nodes.constant = style.truth;
  texts_.nodes.line_start = style.margin + texts_.nodes.line_start;
  texts_.nodes.constant_start = style.margin + texts_.nodes.constant_start;
  texts_.read = [this](long index) {
    return rules_.pointer_reads ? read(index) : text_.name(index);
  };
  texts_.left = [this](long index) { return left(index); };
  texts_ = text.numbered(texts_);
  data_ = data_texts(text.rules(), style.operation,
                     [this](const Signal* signal) { return read_value(signal); });
}

std::string CFamilyText::read(long index) const {
  const std::string state = text_.state_name(index);
  return text_.is_output(index) && rules_.pointer_reads && !style_.plain_outputs &&
                 state == text_.name(index)
             ? "(*" + state + ")"
             : state;
}

std::string CFamilyText::read_value(const Signal* signal) const {
  const std::string name = text_.value_name(signal);
  if (!signal->isOutput() || style_.plain_outputs) return name;
  return rules_.pointer_reads ? "(*" + name + ")" : "*" + name;
}

std::string CFamilyText::left(long index) const {
  const std::string name = text_.name(index);
  if (style_.plain_outputs) return std::string(style_.margin) + "  " + name;
  const bool is_pointer = pointers_ == nullptr ? text_.is_output(index)
                                               : std::find(pointers_->begin(), pointers_->end(),
                                                           name) != pointers_->end();
  return style_.margin + ((is_pointer ? "  *" : "  ") + name);
}

std::string CFamilyText::expression(const DataBinding& binding) const {
  return data_text(data_, *binding.getValue());
}

void CFamilyText::put_truth(std::ostream& body) const {
  const bool guarded = rules_.guarded_truth;
  if (guarded)
    body << "#if !defined(__cplusplus) && !defined(false) && !defined(true) && "
            "(!defined(__STDC_VERSION__) || __STDC_VERSION__ < 202311L)\n";
  body << "#define false 0\n#define true (!false)\n";
  if (guarded) body << "#endif\n";
}

void CFamilyText::put_data_declarations(std::ostream& body, std::ostream& header) const {
  if (Compilation::GDataTypeTable() != nullptr) Compilation::GDataTypeTable()->C_put(header);
  if (Compilation::GDataMethodTable() != nullptr) Compilation::GDataMethodTable()->C_put(header);
  const auto read = constants_read(*text_.module());
  for (const ConstantDecl* constant : data_constants()) {
    const bool has_value = constant->getValue() != nullptr;
    if (has_value && rules_.no_leftovers && !read.contains(constant)) continue;
    if (has_value && rules_.static_state) body << "static ";
    constant->C_put(body, header);
  }
}

void CFamilyText::put_state_names(std::ostream& out, bool with_first_values) const {
  const char* separator = "";
  for (const StateRail& rail : text_.state()) {
    out << separator << text_.state_name(rail.index);
    if (with_first_values) out << "= " << (rail.initial ? 1 : 0);
    separator = ",\n    ";
  }
}

void CFamilyText::put_reset_function(std::ostream& body, std::ostream& header) const {
  header << "extern void " << text_.module_name() << "_reset_automaton();\n";
  body << "void " << text_.module_name() << "_reset_automaton()\n{\n";
  for (const StateRail& rail : text_.state())
    body << "  " << text_.state_name(rail.index) << "= " << (rail.initial ? 1 : 0) << ";\n";
  body << "}\n";
}

void CFamilyText::put_reaction_head(std::ostream& body, std::ostream& header) const {
  body << "void " << text_.module_name() << "_automaton(";
  put_parameters(body, "int ");
  body << ")\n{\n";
  header << "extern void " << text_.module_name() << "_automaton(";
  put_parameters(header, "int  ");
  header << ");\n";
}

std::vector<CParameter> c_parameters(const TargetText& text) {
  std::vector<CParameter> all;
  const auto add_signals = [&](const std::vector<Signal*>& signals, bool outputs) {
    for (const Signal* signal : signals)
      all.push_back({text.status(signal), outputs, text.is_valued(signal) ? signal : nullptr});
    if (text.finalised()) return;
    for (const Signal* signal : signals) all.push_back({text.value(signal), outputs, nullptr});
  };
  for (long index : text.set_reset_rails()) all.push_back({index, false, nullptr});
  add_signals(text.inputs(), false);
  for (long index : text.further_inputs()) all.push_back({index, false, nullptr});
  for (long index : text.rtl_rails()) all.push_back({index, true, nullptr});
  add_signals(text.outputs(), true);
  return all;
}

void CFamilyText::put_parameters(std::ostream& out, const std::string& integer) const {
  const char* separator = "";
  for (const CParameter& parameter : c_parameters(text_)) {
    const std::string pointer = parameter.is_output ? "* " : " ";
    out << separator
        << (parameter.is_output ? "int* "
            : *separator == 0   ? "int "
                                : integer)
        << text_.name(parameter.index);
    separator = ", ";
    if (parameter.valued != nullptr)
      out << ", " << text_.type(parameter.valued) << pointer << text_.value_name(parameter.valued);
  }
}

void CFamilyText::put_locals(std::ostream& out) const {
  for (long index : text_.locals()) out << "  int " << text_.name(index) << ";\n";
  for (const Signal* signal : text_.valued_locals()) {
    const std::string type = text_.type(signal);
    out << "  " << type << "  " << text_.value_name(signal) << " = zero_" << type << ";\n";
    if (rules_.no_leftovers && !text_.is_value_read(signal))
      out << "  (void)" << text_.value_name(signal) << ";\n";
  }
  if (!rules_.no_leftovers) return;
  for (long index : text_.input_rails())
    if (!text_.is_read(index)) out << "  (void)" << text_.name(index) << ";\n";
  for (const Signal* input : text_.inputs())
    if (text_.is_valued(input) && !text_.is_value_read(input))
      out << "  (void)" << text_.value_name(input) << ";\n";
}

void CFamilyText::put_test(std::ostream& out, const TargetEquation& equation) const {
  const std::string test = expression(*equation.binding);
  out << left(equation.index) << " = ";
  if (text_.rules().data_tests) {
    // Without a value there is nothing to test.
    if (const auto signals = equation.binding->getValue()->computeDependencySet()) {
      std::set<std::string> present;  // in an order of its own
      for (const Signal* signal : *signals) present.insert(read(text_.status(signal)));
      for (const std::string& name : present) out << name << " && ";
    }
    out << (equation.kind == TargetEquation::data_complement ? "!(" : "(") << test << ");\n";
  } else {
    out << test << ";\n";
  }
}

void CFamilyText::put_local_value(std::ostream& out, const DataBinding& binding) const {
  const std::string name = text_.value_name(binding.getClock());
  const std::string trigger = read(text_.status(binding.getSignal()));
  if (text_.rules().data_triggers) {
    out << style_.margin << "  if (" << trigger << ")\n    " << style_.margin << name << " = "
        << expression(binding) << ";\n";
    return;
  }
  const std::string zero = "zero_" + text_.type(binding.getClock());
  const char* m = style_.margin;
  out << m << "   if (" << trigger << ") \n"
      << m << "      {\n"
      << m << "          if (" << text_.name(binding.getClock()) << ") \n"
      << m << "            {\n"
      << m << "               " << name << " = " << expression(binding) << ";\n"
      << m << "            }\n"
      << m << "         else\n"
      << m << "            {\n"
      << m << "               " << name << " = " << zero << ";\n"
      << m << "            }\n"
      << m << "         }\n";
}

void CFamilyText::put_equations(std::ostream& out) const {
  text_.manager()->Bdd_global_clear_marks();
  if (text_.rules().data_triggers && text_.module()->getDataTable() != nullptr) {
    // A trigger that no equation computes is known from the start.
    std::unordered_set<long> computed;
    for (const TargetEquation& equation : text_.equations()) computed.insert(equation.index);
    for (const auto& [bound, binding] : *text_.module()->getDataTable())
      if (binding->getClock() != nullptr && !binding->getClock()->isOutput() &&
          !computed.contains(text_.status(binding->getSignal())))
        put_local_value(out, *binding);
  }
  for (const TargetEquation& equation : text_.equations()) {
    if (equation.kind != TargetEquation::function) {
      put_test(out, equation);
      continue;
    }
    put_equation_code(out, texts_, equation.index, equation.f);
    if (const DataBinding* binding = text_.triggered(equation)) put_local_value(out, *binding);
  }
}

void CFamilyText::put_valued_outputs(std::ostream& out, const ValuedOutputTexts& texts,
                                     bool value_rails) const {
  for (const Signal* output : text_.outputs()) {
    const auto bindings = text_.value_bindings(output);
    if (bindings.empty()) continue;
    const std::string star = style_.plain_outputs ? "" : "*";
    const std::string value =
        star + (value_rails ? text_.name(text_.value(output)) + "_val" : text_.value_name(output));
    out << texts.open_if << star << text_.name(output) << texts.open;
    const char* start = texts.first;
    for (const DataBinding* binding : bindings) {
      out << start << texts.test << read(text_.status(binding->getSignal())) << ") {" << value
          << " = " << expression(*binding) << ";}\n";
      start = texts.other;
    }
    out << texts.otherwise << value << " = zero_" << text_.type(output) << ";}\n" << texts.close;
  }
}

void CFamilyText::put_state_moves(std::ostream& out, const char* margin) const {
  for (const StateRail& rail : text_.state())
    if (const std::string state = text_.state_name(rail.index); state != text_.name(rail.index))
      out << margin << (style_.plain_outputs ? "" : "*") << text_.name(rail.index) << "= " << state
          << ";\n";
  for (const StateRail& rail : text_.state())
    out << margin << text_.state_name(rail.index) << "= " << read(rail.next) << ";\n";
}

void put_told_c_data(std::ostream& out, const char* operation, const DataExpr& e, Module* module) {
  const auto value = [&](const Signal* signal) {
    const long index = signal->isOutput()
                           ? signal->getInitialBddStatusId(module, module->getBddWood())
                           : signal->getBddStatusId(module, module->getBddWood());
    return (signal->isOutput() ? "*" : "") + module->getBddWood()->Name_var_by_index(index) +
           "_val";
  };
  put_data(out, data_texts(TargetRules::told(), operation, value), e);
}

}  // namespace kiva
