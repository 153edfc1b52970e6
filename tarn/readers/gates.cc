// INPUT(a), OUTPUT(b), b = NAND(a, c), q = DFF(b).

#include <algorithm>
#include <cctype>

#include "tarn/readers/readers.h"
#include "tarn/readers/words.h"

namespace kiva {

namespace {

/// A gate's table over `count` nets; false for a word that is none.
bool table_of(const std::string& word, size_t count, Netlist::Gate& gate) {
  const std::string ones(count, '1'), zeros(count, '0');
  if (word == "AND" || word == "NAND") {
    gate.rows = {ones};
  } else if (word == "OR" || word == "NOR") {
    gate.rows = {zeros};
  } else if (word == "XOR" || word == "XNOR") {
    gate.parity = true;
  } else if (word == "NOT" || word == "BUF" || word == "BUFF") {
    gate.rows = {"1"};
    if (count != 1) return false;
  } else if (word == "VDD" || word == "GND") {
    gate.rows = {""};
    if (count != 0) return false;
  } else {
    return false;
  }
  gate.on =
      word == "AND" || word == "NOR" || word == "XOR" || word.starts_with("BUF") || word == "VDD";
  return count > 0 || word == "VDD" || word == "GND";
}

}  // namespace

Netlist read_gates(std::istream& in) {
  Netlist list;
  list.name.clear();
  WordLines lines(in);
  std::vector<std::string> words;
  std::vector<std::pair<std::string, int>> outputs;
  while (lines.next(words, "(),=")) {
    const int line = lines.line();
    const bool declares = words.size() == 2;
    std::string word = words[declares ? 0 : std::min<size_t>(1, words.size() - 1)];
    for (char& c : word) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (declares && word == "INPUT") {
      list.add_input(words[1], line);
    } else if (declares && word == "OUTPUT") {
      outputs.emplace_back(words[1], line);
    } else {
      if (declares) word = words[1];
      for (char& c : word) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
      Netlist::Gate gate{.line = line};
      for (size_t i = 2; i < words.size(); ++i) gate.reads.push_back(list.net(words[i], line));
      const int net = list.net(words[0], line);
      if (word == "DFF" && gate.reads.size() == 1) {
        list.add_latch(net, gate.reads[0], false, line);
      } else if (words.size() < 2 || !table_of(word, gate.reads.size(), gate)) {
        throw NetlistError(line, "no gate \"" + word + "\" of " +
                                     std::to_string(gate.reads.size()) + " nets is known");
      } else {
        list.add_gate(net, std::move(gate));
      }
    }
  }
  for (const auto& [name, line] : outputs) list.add_output(name, line);
  return list;
}

}  // namespace kiva
