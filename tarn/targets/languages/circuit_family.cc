#include "tarn/targets/languages/circuit_family.h"

#include <cctype>

namespace kiva {

CircuitText::CircuitText(TargetText& text, ExpressionTexts texts, bool reads_ports) : text_(text) {
  for (const StateRail& rail : text.state())
    if (text.is_output(rail.index)) inner_[rail.index] = text.state_name(rail.index);
  texts.read = [this](long index) { return read(index); };
  texts.part = [](long number) { return "part_" + std::to_string(number); };
  lines_ = straight_code(text, texts);
  if (reads_ports) return;
  const std::unordered_set<std::string> read_names = words();
  for (long index : text.output_rails())
    if (!inner_.contains(index) && read_names.contains(text.name(index)))
      inner_[index] = text.own_name(text.name(index) + "_inner");
  lines_ = straight_code(text, texts);
}

std::unordered_set<std::string> CircuitText::words() const {
  std::unordered_set<std::string> words;
  for (const StateRail& rail : text_.state()) words.insert(read(rail.next));
  for (const StraightLine& line : lines_) {
    std::string word;
    for (char c : line.right + ' ') {
      if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_') {
        word += c;
      } else {
        words.insert(word);
        word.clear();
      }
    }
  }
  return words;
}

std::string CircuitText::read(long index) const {
  const auto at = inner_.find(index);
  return at == inner_.end() ? text_.name(index) : at->second;
}

std::string CircuitText::left(const StraightLine& line) const {
  return line.index < 0 ? "part_" + std::to_string(line.number) : read(line.index);
}

std::vector<std::string> CircuitText::wires() const {
  std::vector<std::string> names;
  for (const StraightLine& line : lines_)
    if (line.index < 0 || !text_.is_output(line.index) || inner_.contains(line.index))
      names.push_back(left(line));
  return names;
}

std::vector<std::pair<std::string, std::string>> CircuitText::copies() const {
  std::vector<std::pair<std::string, std::string>> copies;
  for (long index : text_.output_rails())
    if (inner_.contains(index)) copies.emplace_back(text_.name(index), inner_.at(index));
  return copies;
}

}  // namespace kiva
