// INPUT(a), OUTPUT(b), b = NAND(a, c), q = DFF(b).

#include <algorithm>
#include <cctype>

#include "tarn/readers/readers.h"
#include "tarn/readers/words.h"

namespace kiva {

namespace {

/// What a word makes of its nets: how many it takes, and its table.
struct Kind {
  const char* word;
  size_t least, most;
  char bits;  ///< of the one row; 'x' for none: a parity
  bool on;
};
constexpr size_t any = ~size_t{0};
constexpr Kind kinds[] = {
    {"AND", 1, any, '1', true}, {"NAND", 1, any, '1', false}, {"OR", 1, any, '0', false},
    {"NOR", 1, any, '0', true}, {"XOR", 1, any, 'x', true},   {"XNOR", 1, any, 'x', false},
    {"NOT", 1, 1, '1', false},  {"BUF", 1, 1, '1', true},     {"BUFF", 1, 1, '1', true},
    {"VDD", 0, 0, '1', true},   {"GND", 0, 0, '1', false}};

/// Gives the gate its table; NetlistError for a word that is none.
void take_table(const std::string& word, Netlist::Gate& gate) {
  const size_t count = gate.reads.size();
  for (const Kind& kind : kinds) {
    if (word != kind.word || count < kind.least || count > kind.most) continue;
    gate.parity = kind.bits == 'x';
    if (!gate.parity) gate.rows = {std::string(count, kind.bits)};
    gate.on = kind.on;
    return;
  }
  throw NetlistError(gate.line,
                     "no gate \"" + word + "\" of " + std::to_string(count) + " nets is known");
}

std::string upper(std::string word) {
  for (char& c : word) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return word;
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
    const std::string first = words.size() == 2 ? upper(words[0]) : "";
    if (first == "INPUT") {
      list.add_input(words[1], line);
    } else if (first == "OUTPUT") {
      outputs.emplace_back(words[1], line);
    } else {
      const std::string word = upper(words[std::min<size_t>(1, words.size() - 1)]);
      Netlist::Gate gate{.line = line};
      for (size_t i = 2; i < words.size(); ++i) gate.reads.push_back(list.net(words[i], line));
      const int net = list.net(words[0], line);
      if (word == "DFF" && gate.reads.size() == 1) {
        list.add_latch(net, gate.reads[0], false, line);
        continue;
      }
      take_table(word, gate);
      list.add_gate(net, std::move(gate));
    }
  }
  for (const auto& [name, line] : outputs) list.add_output(name, line);
  return list;
}

}  // namespace kiva
