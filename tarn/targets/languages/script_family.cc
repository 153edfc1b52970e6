#include "tarn/targets/languages/script_family.h"

#include <set>
#include <unordered_map>

#include "base/text_stream.h"

namespace kiva {

ScriptText::ScriptText(const TargetText& text, ExpressionTexts texts, Values values,
                       std::string object)
    : text_(text),
      values_(std::move(values)),
      data_{values_.operators, "a script", [&text](const Signal* s) { return text.value_name(s); },
            true, users(text.module_name()) + '.'},
      object_(std::move(object)),
      zero_(texts.zero),
      one_(texts.one),
      and_(texts.and_text),
      not_(texts.not_text) {
  for (const StateRail& rail : text.state()) state_.insert(rail.index);
  texts.read = [this](long index) { return read(index); };
  texts.part = [](long number) { return "part_" + std::to_string(number); };
  lines_ = straight_code(text, texts);
}

std::string ScriptText::read(long index) const {
  return state_.contains(index) ? object_ + text_.state_name(index) : text_.name(index);
}

std::string ScriptText::left(const StraightLine& line) const {
  return line.index < 0 ? "part_" + std::to_string(line.number) : text_.name(line.index);
}

namespace {

std::string list_of(const std::vector<std::string>& names, const std::string& form) {
  std::string list;
  for (const std::string& name : names) {
    if (!list.empty()) list += ", ";
    for (char c : form) list += c == '@' ? name : std::string{c};
  }
  return list;
}

std::string joined_lists(const std::string& first, const std::string& second) {
  return first + (first.empty() || second.empty() ? "" : ", ") + second;
}

}  // namespace

std::string ScriptText::inputs(const std::string& form, const std::string& value_form) const {
  std::vector<std::string> names, values;
  for (long index : text_.input_rails()) names.push_back(text_.name(index));
  for (const Signal* input : text_.inputs())
    if (text_.is_valued(input) && !value_form.empty()) values.push_back(text_.value_name(input));
  return joined_lists(list_of(names, form), list_of(values, value_form));
}

std::string ScriptText::outputs(const std::string& form, const std::string& value_form) const {
  std::vector<std::string> names, values;
  for (long index : text_.output_rails()) names.push_back(text_.name(index));
  for (const Signal* output : text_.outputs())
    if (text_.is_valued(output) && !value_form.empty()) values.push_back(text_.value_name(output));
  return joined_lists(list_of(names, form), list_of(values, value_form));
}

void ScriptText::put_constants(std::ostream& out, const std::string& start,
                               const std::string& behind) const {
  bool any = false;
  const auto read = constants_read(*text_.module());
  for (const ConstantDecl* constant : data_constants()) {
    if (constant->getValue() == nullptr || !read.contains(constant)) continue;
    const std::string value = data_text(data_, *constant->getValue());
    out << start << constant->getName() << " = "
        << (value == "true"    ? one_
            : value == "false" ? zero_
                               : value)
        << values_.end << '\n';
    any = true;
  }
  if (any) out << behind;
}

std::string ScriptText::test(const TargetEquation& equation) const {
  std::set<std::string> present;  // without a value there is nothing to test
  if (const auto signals = equation.binding->getValue()->computeDependencySet())
    for (const Signal* signal : *signals) present.insert(read(text_.status(signal)));
  std::string all;
  for (const std::string& name : present) all += name + and_;
  return all + (equation.kind == TargetEquation::data_complement ? not_ : "") + values_.test_open +
         data_text(data_, *equation.binding->getValue()) + values_.test_close;
}

void ScriptText::put_value(std::ostream& out, const DataBinding& binding,
                           const std::string& margin) const {
  out << margin << values_.if_open << read(text_.status(binding.getSignal())) << then(margin)
      << text_.value_name(binding.getClock()) << " = " << data_text(data_, *binding.getValue())
      << values_.end << '\n';
}

std::string ScriptText::then(const std::string& margin) const {
  return values_.if_close + (values_.end.empty() ? '\n' + margin + "    " : " ");
}

void ScriptText::put_none(std::ostream& out, const Signal* signal,
                          const std::string& margin) const {
  out << margin << values_.local << text_.value_name(signal) << values_.none << values_.end << '\n';
}

void ScriptText::put_local_values(std::ostream& out, const std::string& margin) const {
  for (const Signal* signal : text_.valued_locals()) put_none(out, signal, margin);
  for (const DataBinding* binding : early_values(text_, lines_)) put_value(out, *binding, margin);
}

void ScriptText::put_lines(std::ostream& out, const std::string& margin, const std::string& start,
                           const std::string& comment) const {
  put_local_values(out, margin);
  std::unordered_map<long, const TargetEquation*> equation_of;
  for (const TargetEquation& equation : text_.equations())
    equation_of.emplace(equation.index, &equation);
  for (const StraightLine& line : lines_) {
    text_.put_note(out, margin + comment, line.index);
    const std::string right = line.equation == nullptr ? line.right : test(*line.equation);
    const std::string begin = margin + start + left(line) + " = ",
                      whole = begin + right + values_.end + '\n';
    // A language without ends of lines goes on where a bracket is open.
    if (!values_.end.empty() || broken(whole) == whole)
      out << broken(whole);
    else
      out << begin << "(\n" << broken(margin + "    " + right + ")\n");
    if (line.index < 0 || line.equation != nullptr) continue;
    if (const DataBinding* binding = text_.triggered(*equation_of.at(line.index)))
      put_value(out, *binding, margin);
  }
}

void ScriptText::put_values(std::ostream& out, const std::string& margin) const {
  for (const Signal* output : text_.outputs()) {
    if (!text_.is_valued(output)) continue;
    put_none(out, output, margin);
    const std::string status = text_.name(output);
    std::string others = margin;
    for (const DataBinding* binding : text_.value_bindings(output)) {
      out << others << values_.if_open << status << and_ << read(text_.status(binding->getSignal()))
          << then(margin) << text_.value_name(output) << " = "
          << data_text(data_, *binding->getValue()) << values_.end << '\n';
      others = margin + "el" + (values_.end.empty() ? "" : "se ");
    }
  }
}

std::string ScriptText::first_values(const std::string& margin, const std::string& end,
                                     const std::string& comment) const {
  TextStream lines;
  for (const StateRail& rail : text_.state()) {
    text_.put_note(lines, margin + comment, rail.index);
    lines << margin << read(rail.index) << " = " << (rail.initial ? one_ : zero_) << end << '\n';
  }
  return lines.str();
}

std::string ScriptText::moves(const std::string& margin, const std::string& end) const {
  // All at once: a register may take over another one's state.
  std::string copies, lines;
  for (const StateRail& rail : text_.state()) {
    std::string next = read(rail.next);
    if (state_.contains(rail.next)) {
      const std::string kept = object_ + text_.state_name(rail.index) + "_next";
      copies += margin + kept + " = " + next + end + '\n';
      next = kept;
    }
    lines += margin + read(rail.index) + " = " + next + end + '\n';
  }
  return copies + lines;
}

}  // namespace kiva
