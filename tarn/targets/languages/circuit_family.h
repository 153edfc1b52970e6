#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "tarn/targets/frame/straight_code.h"

namespace kiva {

/// What SystemVerilog and VHDL have in common: ports, and signals for the registers and for what
/// lines compute. An output whose register is of the same name, or that is read where ports cannot
/// be, has a signal of its own.
class CircuitText {
 public:
  /// `reads_ports`: what is computed into an output port may be read there.
  CircuitText(TargetText& text, ExpressionTexts texts, bool reads_ports);

  std::string read(long index) const;
  std::string left(const StraightLine& line) const;
  const std::vector<StraightLine>& lines() const { return lines_; }
  /// Signals that lines compute, in their order, without ports.
  std::vector<std::string> wires() const;
  /// Output ports, and the signals that they show.
  std::vector<std::pair<std::string, std::string>> copies() const;

 private:
  /// All that lines and registers read.
  std::unordered_set<std::string> words() const;

  const TargetText& text_;
  std::unordered_map<long, std::string> inner_;  ///< signals of outputs
  std::vector<StraightLine> lines_;
};

}  // namespace kiva
