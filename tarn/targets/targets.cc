#include "tarn/targets/targets.h"

// The table: a row a language, in the order of the command line. A row is NAME where the language's
// file in languages/ defines NAME_target.
// clang-format off
#define KIVA_TARGETS(row) \
  row(c) \
  row(c_functions) \
  row(cpp) \
  row(python) \
  row(javascript) \
  row(json) \
  row(aiger) \
  row(blif) \
  row(vhdl) \
  row(vhdl_altera) \
  row(verilog) \
  row(systemc) \
  row(smv) \
  row(lustre) \
  row(esterel) \
  row(csharp) \
  row(gal) \
  row(wren) \
  row(doc) \
  row(latex) \
  row(html) \
  row(debug)
// clang-format on

namespace kiva {

#define KIVA_DECLARE(name) extern const Target name##_target;
KIVA_TARGETS(KIVA_DECLARE)
#undef KIVA_DECLARE

std::span<const Target> targets() {
#define KIVA_ROW(name) name##_target,
  static const std::vector<Target> table{KIVA_TARGETS(KIVA_ROW)};
#undef KIVA_ROW
  return table;
}

}  // namespace kiva
