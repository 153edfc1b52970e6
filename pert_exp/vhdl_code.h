#pragma once

#include <iosfwd>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

#include "pert_exp/equation_code.h"

namespace kiva {

/// A process and the equations of one module in VHDL. On the rising edge of the clock the process
/// copies the inputs into their entries of the node table; on the falling edge it gives the outputs
/// and moves the registers; equations are concurrent assignments between the two.
struct vhdl_code_texts {
  equation_code_texts code;
  /// The port of an input or output.
  std::function<std::string(long index)> port;
  std::vector<long> inputs, outputs;
  /// Outputs that are assigned outside the process, as code.left has it, and copied by it.
  std::unordered_set<long> inner = {};
  /// Assignments to registers, without ";".
  std::vector<std::string> resets, updates;
};

struct vhdl_equation {
  long index;
  bdd f;
};

/// The texts of equations over the names of the manager's variables.
equation_code_texts vhdl_equation_texts(bddpp_manager* manager, const std::string& array);

/// Writes the process, then the equations in their order.
void put_vhdl_code(std::ostream& out, const vhdl_code_texts& texts, bddpp_manager* manager,
                   std::span<const vhdl_equation> equations);

}  // namespace kiva
