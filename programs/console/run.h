#pragma once

#include <iosfwd>

#include "programs/console/options.h"

namespace kiva::console {

constexpr const char* program = "kiva-console";
constexpr int values_missing = 3;  ///< exit status: the evaluation server did not give them

/// Complains about the file; the status with which the program ends.
int refuse(const std::string& file, long line, const std::string& reason);

struct Ended {
  int status;          ///< with which the program ends
  bool whole = false;  ///< the trace is, whatever it was held against
};
/// Runs the module as the options say and writes the trace.
Ended run(const Options& options, std::ostream& out);

}  // namespace kiva::console
