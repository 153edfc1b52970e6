// A net for each variable of the graph, and one for each output, which may be a complement. Names
// come at the end of the file, so numbers are read first.

#include <algorithm>
#include <istream>
#include <sstream>
#include <unordered_set>

#include "tarn/readers/readers.h"

namespace kiva {

namespace {

constexpr long most_inputs = 1000000;  // the binary form has none of them in the file

class AigerReader {
 public:
  explicit AigerReader(std::istream& in) : in_(in) {}

  Netlist read() {
    read_head();
    for (long k = 0; k < count_[0]; ++k) inputs_.push_back(binary_ ? 2 * (k + 1) : numbers(1)[0]);
    for (long k = 0; k < count_[1]; ++k) read_latch(k);
    for (long k = 0; k < count_[2] + count_[4]; ++k) outputs_.push_back(literal(numbers(1)[0]));
    for (long k = 0; k < count_[3]; ++k) read_and(k);
    read_names();
    return make();
  }

 private:
  struct And {
    long left, first, second;
    int line;
  };
  struct Flop {
    long now, next, initial;
  };

  [[noreturn]] void fail(const std::string& reason) const { throw NetlistError(line_, reason); }

  std::string next_line() {
    ++line_;
    std::string line;
    if (!std::getline(in_, line)) fail("ends too early");
    if (line.ends_with('\r')) line.pop_back();
    return line;
  }

  /// The numbers of the next line, at least `least` of them.
  std::vector<long> numbers(size_t least) {
    std::istringstream line(next_line());
    std::vector<long> all;
    for (long number; line >> number;) all.push_back(number);
    if (all.size() < least || !line.eof()) fail(std::to_string(least) + " numbers are awaited");
    return all;
  }

  long literal(long number) const {
    if (number < 0 || number / 2 > most_) fail(std::to_string(number) + " is no literal here");
    return number;
  }

  void read_head() {
    std::istringstream line(next_line());
    std::string form;
    line >> form;
    if (form != "aag" && form != "aig") fail("begins neither with aag nor with aig");
    binary_ = form == "aig";
    std::vector<long> all;
    for (long number; line >> number;) all.push_back(number);
    if (all.size() < 5 || std::ranges::any_of(all, [](long n) { return n < 0 || n > (1L << 30); }))
      fail("the head wants five numbers: M I L O A");
    for (size_t k = 6; k < all.size(); ++k)
      if (all[k] != 0) fail("constraints, justice and fairness are not read");
    most_ = all[0];
    for (size_t k = 0; k < 4; ++k) count_[k] = all[k + 1];
    count_[4] = all.size() > 5 ? all[5] : 0;
    if (count_[0] > most_inputs) fail("more than " + std::to_string(most_inputs) + " inputs");
    if (count_[0] + count_[1] + count_[3] > most_) fail("more variables than the head's M");
  }

  void read_latch(long k) {
    std::vector<long> all = numbers(binary_ ? 1 : 2);
    if (binary_) all.insert(all.begin(), 2 * (count_[0] + k + 1));
    const long initial = all.size() > 2 ? all[2] : 0;
    latches_.push_back({literal(all[0]), literal(all[1]), initial == 1});
  }

  long difference() {
    long value = 0;
    for (int shift = 0; shift < 35; shift += 7) {
      const int byte = in_.get();
      if (byte == std::istream::traits_type::eof()) fail("ends too early");
      value |= static_cast<long>(byte & 0x7f) << shift;
      if ((byte & 0x80) == 0) return value;
    }
    fail("a number that is too long");
  }

  void read_and(long k) {
    if (!binary_) {
      const std::vector<long> all = numbers(3);
      ands_.push_back({literal(all[0]), literal(all[1]), literal(all[2]), line_});
      return;
    }
    const long left = 2 * (count_[0] + count_[1] + k + 1), first = left - difference();
    ands_.push_back({left, literal(first), literal(first - difference()), line_});
  }

  void read_names() {
    for (std::string line; std::getline(in_, line) && line != "c";) {
      ++line_;
      if (line.ends_with('\r')) line.pop_back();
      const size_t blank = line.find(' ');
      if (blank == std::string::npos || std::string("ilob").find(line[0]) == std::string::npos)
        fail("\"" + line + "\" names nothing");
      std::string place = line.substr(0, blank);
      if (place[0] == 'b') place = "o" + std::to_string(count_[2] + std::atol(place.c_str() + 1));
      names_[place] = line.substr(blank + 1);
    }
  }

  std::string name(char kind, size_t k) const {
    const std::string place = kind + std::to_string(k);
    const auto at = names_.find(place);
    return at == names_.end() ? place : at->second;
  }

  std::string unique(std::string name) {
    while (!taken_.insert(name).second) name += '_';
    return name;
  }

  const std::string& name_variable(long number, const std::string& name) {
    if (number < 2 || number % 2 != 0) fail(std::to_string(number) + " is no variable");
    const auto [at, made] = variables_.emplace(number / 2, unique(name));
    if (!made) fail(std::to_string(number) + " is defined twice");
    return at->second;
  }

  int net_of(long number, int line) {
    const long variable = number / 2;
    if (!variables_.contains(variable))
      variables_[variable] = unique("_" + std::to_string(variable));
    return list_.net(variables_[variable], line);
  }

  static const char* sign(long number) { return number % 2 == 0 ? "1" : "0"; }

  /// What is the literal; 0 and 1 are constants.
  Netlist::Gate copy(long number, int line) {
    if (number < 2) return {.line = line, .rows = {""}, .on = number == 1};
    return {.line = line, .reads = {net_of(number, line)}, .rows = {sign(number)}};
  }

  void make_and(const And& gate) {
    if (gate.left < 2 || gate.left % 2 != 0)
      throw NetlistError(gate.line, "no and has that literal");
    const int net = net_of(gate.left, gate.line);
    const long least = std::min(gate.first, gate.second);
    if (least < 2)
      return list_.add_gate(net,
                            copy(least == 0 ? 0 : std::max(gate.first, gate.second), gate.line));
    list_.add_gate(net, {.line = gate.line,
                         .reads = {net_of(gate.first, gate.line), net_of(gate.second, gate.line)},
                         .rows = {std::string(sign(gate.first)) + sign(gate.second)}});
  }

  Netlist make() {
    list_.name.clear();
    for (size_t k = 0; k < inputs_.size(); ++k)
      list_.add_input(name_variable(literal(inputs_[k]), name('i', k)), 0);
    for (size_t k = 0; k < latches_.size(); ++k) name_variable(latches_[k].now, name('l', k));
    std::vector<std::string> output_names;
    for (size_t k = 0; k < outputs_.size(); ++k) output_names.push_back(unique(name('o', k)));
    for (const And& gate : ands_) make_and(gate);
    for (size_t k = 0; k < latches_.size(); ++k) {
      const int next = list_.net(unique(name('l', k) + ".d"), 0);
      list_.add_gate(next, copy(latches_[k].next, 0));
      list_.add_latch(net_of(latches_[k].now, 0), next, latches_[k].initial == 1, 0);
    }
    for (size_t k = 0; k < outputs_.size(); ++k) {
      list_.add_gate(list_.net(output_names[k], 0), copy(outputs_[k], 0));
      list_.add_output(output_names[k], 0);
    }
    return std::move(list_);
  }

  Netlist list_;
  std::unordered_map<long, std::string> variables_;  ///< names
  std::unordered_set<std::string> taken_;
  std::istream& in_;
  int line_ = 0;
  bool binary_ = false;
  long most_ = 0;
  long count_[5] = {};  ///< inputs, latches, outputs, ands, bad states
  std::vector<long> inputs_, outputs_;
  std::vector<Flop> latches_;
  std::vector<And> ands_;
  std::unordered_map<std::string, std::string> names_;  ///< by place: i0, l0, o0
};

}  // namespace

Netlist read_aiger(std::istream& in) {
  return AigerReader(in).read();
}

}  // namespace kiva
