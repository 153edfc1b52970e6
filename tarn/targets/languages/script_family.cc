#include "tarn/targets/languages/script_family.h"

#include "base/text_stream.h"

namespace kiva {

ScriptText::ScriptText(const TargetText& text, ExpressionTexts texts, std::string object)
    : text_(text), object_(std::move(object)), zero_(texts.zero), one_(texts.one) {
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

}  // namespace

std::string ScriptText::inputs(const std::string& form) const {
  std::vector<std::string> names;
  for (long index : text_.input_rails()) names.push_back(text_.name(index));
  return list_of(names, form);
}

std::string ScriptText::outputs(const std::string& form) const {
  std::vector<std::string> names;
  for (long index : text_.output_rails()) names.push_back(text_.name(index));
  return list_of(names, form);
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
