#pragma once

#include <set>
#include <string>

#include "tarn/session/diagnostic.h"

namespace kiva::programs {

/// Prints what a session's work has to say, a line each, but for what is said to the library's own
/// callers.
class Reporter : public DiagnosticSink {
 public:
  explicit Reporter(std::string program) : program_(std::move(program)) {}

  /// "no-NAME" leaves warnings of that name out, "error" makes errors of those that are left.
  void choose(const std::string& word);

  void take(const Diagnostic& diagnostic) override;
  /// Errors taken so far.
  int errors() const { return errors_; }

 private:
  std::string program_;
  std::set<std::string> silent_;
  bool strict_ = false;
  int errors_ = 0;
};

}  // namespace kiva::programs
