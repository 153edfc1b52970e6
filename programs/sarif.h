#pragma once

#include <string>
#include <vector>

#include "tarn/session/diagnostic.h"

namespace kiva::programs {

/// What a program has complained about while one lives, as a file in SARIF 2.1.0, which editors and
/// servers of continuous integration read.
class Sarif {
 public:
  /// `path` is "" for none: then nothing is kept.
  Sarif(std::string program, std::string path);
  /// What is not finished is written all the same, as after a fault that ends the program.
  ~Sarif();
  Sarif(const Sarif&) = delete;
  Sarif& operator=(const Sarif&) = delete;

  /// False, which has been told, where the file cannot be written.
  bool finish();
  /// Keeps it in the one that lives, if one does.
  static void keep(const Diagnostic& diagnostic);

 private:
  std::string text() const;

  std::string program_, path_;
  std::vector<Diagnostic> kept_;
};

}  // namespace kiva::programs
