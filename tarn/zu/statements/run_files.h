#pragma once

#include <string>
#include <vector>

#include "tarn/model/source_span.h"

namespace kiva {

/// The files that may hold the module of a run: where its caller's declaration says, relative to
/// the folder of the caller's source text, and without a declaration the source files of
/// Module::CompilationFileList().
class RunFiles {
 public:
  /// `location` is null for a run without declaration.
  RunFiles(const std::string& module, const std::string* location, const SourceSpan& run);
  /// The compiled file; "" when there is none.
  const std::string& compiled() const { return compiled_; }
  /// The source file; "" when there is none.
  const std::string& source() const { return source_; }
  /// Says on the error stream where the module has been looked for.
  void tell_missing() const;
  /// The same as a sentence.
  std::string missing() const;

 private:
  std::string places() const;

  std::string module_;
  std::string compiled_;
  std::string source_;
  std::vector<std::string> looked_at_;
};

}  // namespace kiva
