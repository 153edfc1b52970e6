// Files number inputs first, then latches, then the ands, each behind what it reads.

#include "base/aiger_text.h"

#include <algorithm>
#include <ostream>

namespace kiva::aig {

namespace {

class AigerText {
 public:
  explicit AigerText(const Circuit& circuit) : circuit_(circuit) {
    for (const Circuit::Named& input : circuit.inputs) enter(node_of(input.literal));
    for (const Circuit::Latch& latch : circuit.latches) enter(node_of(latch.now));
    std::vector<Literal> roots;
    for (const Circuit::Latch& latch : circuit.latches) roots.push_back(latch.next);
    for (const auto* list : {&circuit.outputs, &circuit.bad_states})
      for (const Circuit::Named& named : *list) roots.push_back(named.literal);
    for (std::uint32_t node : circuit.graph.cone(roots))
      if (circuit.graph.is_and(node)) {
        enter(node);
        ands_.push_back(node);
      }
  }

  void put(bool binary, std::ostream& out) const {
    out << (binary ? "aig " : "aag ") << number_.size() << ' ' << circuit_.inputs.size() << ' '
        << circuit_.latches.size() << ' ' << circuit_.outputs.size() << ' ' << ands_.size();
    if (!circuit_.bad_states.empty()) out << ' ' << circuit_.bad_states.size();
    out << '\n';
    if (!binary)
      for (const Circuit::Named& input : circuit_.inputs) out << of(input.literal) << '\n';
    for (const Circuit::Latch& latch : circuit_.latches) {
      if (!binary) out << of(latch.now) << ' ';
      out << of(latch.next) << (latch.initial ? " 1" : "") << '\n';
    }
    for (const auto* list : {&circuit_.outputs, &circuit_.bad_states})
      for (const Circuit::Named& named : *list) out << of(named.literal) << '\n';
    for (std::uint32_t node : ands_) put_and(node, binary, out);
    put_symbols(out);
  }

 private:
  void enter(std::uint32_t node) {
    number_.emplace(node, static_cast<std::uint32_t>(number_.size() + 1));
  }

  /// As the files number it.
  std::uint32_t of(Literal literal) const {
    const std::uint32_t node = node_of(literal);
    return 2 * (node == 0 ? 0 : number_.at(node)) + (is_negated(literal) ? 1 : 0);
  }

  void put_and(std::uint32_t node, bool binary, std::ostream& out) const {
    const auto [least, most] =
        std::minmax({of(circuit_.graph.left(node)), of(circuit_.graph.right(node))});
    if (!binary) {
      out << 2 * number_.at(node) << ' ' << most << ' ' << least << '\n';
      return;
    }
    put_difference(2 * number_.at(node) - most, out);
    put_difference(most - least, out);
  }
  static void put_difference(std::uint32_t value, std::ostream& out) {
    for (; value >= 0x80; value >>= 7) out << static_cast<char>((value & 0x7f) | 0x80);
    out << static_cast<char>(value);
  }

  void put_symbols(std::ostream& out) const {
    const auto put_names = [&](char kind, const auto& list) {
      size_t k = 0;
      for (const auto& named : list) out << kind << k++ << ' ' << named.name << '\n';
    };
    put_names('i', circuit_.inputs);
    put_names('l', circuit_.latches);
    put_names('o', circuit_.outputs);
    put_names('b', circuit_.bad_states);
    out << "c\n" << circuit_.name << '\n';
  }

  const Circuit& circuit_;
  std::vector<std::uint32_t> ands_;
  std::unordered_map<std::uint32_t, std::uint32_t> number_;  ///< in the files, by node
};

}  // namespace

void put_aiger_ascii(const Circuit& circuit, std::ostream& out) {
  AigerText(circuit).put(false, out);
}

void put_aiger_binary(const Circuit& circuit, std::ostream& out) {
  AigerText(circuit).put(true, out);
}

}  // namespace kiva::aig
