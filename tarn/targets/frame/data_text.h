#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "tarn/targets/frame/target_text.h"

namespace kiva {

/// How a target writes data expressions.
struct DataTexts {
  /// By operator code, from Plus to Supe.
  const char* const* operators;
  /// The operation that another code is refused in the name of.
  const char* operation;
  /// The value of a signal.
  std::function<std::string(const Signal*)> value;
  /// Operands that are operations stand in brackets.
  bool brackets = false;
  /// What stands in front of the names that the user defines: functions, constants without value.
  std::string users = {};
};

/// Writes the expression; refuses one that is deeper than `DataExpr::deepest`, has more than a
/// million nodes when written out, or names what does not exist, with IllegalOperationException.
void put_data(std::ostream& out, const DataTexts& texts, const DataExpr& e);
std::string data_text(const DataTexts& texts, const DataExpr& e);

/// The types, methods and constants of the process; empty without a table.
std::vector<std::string> data_types();
std::vector<MethodDecl*> data_methods();
std::vector<ConstantDecl*> data_constants();

/// The constants that the module's bindings read.
std::set<const ConstantDecl*> constants_read(const Module& module);

/// Reserves the user's names and the zeros of the types. IllegalOperationException for one that the
/// target cannot bear (the user's own text has to define it), and for a constant whose value is not
/// a number, a quoted string or a name there.
void reserve_data_names(TargetNames& names);

}  // namespace kiva
