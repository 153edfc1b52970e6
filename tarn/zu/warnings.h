#pragma once

#include <vector>

#include "tarn/session/diagnostic.h"

namespace kiva {

class Module;

/// A doubtful place of a program that compiles, which users may silence by its name.
struct WarningRow {
  const char* name;
  const char* about;
};

/// In the order of the documentation, which has a row for each.
const std::vector<WarningRow>& warning_table();

/// The doubtful places of modules that have been read from one source text and not been compiled,
/// in no order.
std::vector<Diagnostic> find_doubtful(const std::vector<Module*>& modules);

}  // namespace kiva
