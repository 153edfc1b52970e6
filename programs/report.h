#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tarn/session/diagnostic.h"

namespace kiva::programs {

// Exit statuses of every program.
constexpr int unusable = 1;     ///< a file or module cannot be used, or something cannot be written
constexpr int wrong_usage = 2;  ///< of the command line

/// Prints "FILE:LINE:COLUMN: error: REASON" and a line for each note on the error stream, with the
/// program's name where no file is known; on a terminal, the source line below each. Nothing for a
/// diagnostic without sentence. False, so that a caller can return it.
bool complain(const std::string& program, const Diagnostic& diagnostic);
/// The same of a reason at a place, which may be unknown.
bool complain(const std::string& program, const Place& where, const std::string& reason);

/// What the exception under way says. `file` stands for an unknown place.
Diagnostic fault_under_way(const std::string& file = "");

/// A session of a program while it lives: the current one, with its faults thrown as
/// FatalDiagnostic, ends of the process that lower floors ask for included.
class ProgramSession {
 public:
  explicit ProgramSession(DiagnosticSink* sink = nullptr);
  ~ProgramSession();
  ProgramSession(const ProgramSession&) = delete;
  ProgramSession& operator=(const ProgramSession&) = delete;

 private:
  struct Held;
  std::unique_ptr<Held> held_;
};

/// Runs the body of a `main`: what leaves it is complained about, and gives `unusable`.
int run_reported(const std::string& program, const std::function<int()>& body);

}  // namespace kiva::programs
