#pragma once

#include <span>
#include <string>
#include <vector>

#include "tarn/formats/target_file.h"

namespace kiva {

class Module;

/// A target language, as a program offers it.
struct Target {
  const char* option;  ///< of the command line, without "--"
  const char* help;    ///< at most 26 characters: two stand on a line
  PrintFile file;
  void (*print)(Module*);
  /// Extension of a second file beside the first; empty for none.
  std::string beside = {};
  /// Only a finalised module can be written.
  bool finalised_only = false;
  /// Printing finalises a module that is not.
  bool finalises = false;

  /// The files that `print` writes: the second is the first with another extension.
  std::vector<std::string> paths(const Module& module, const TargetRules& rules) const;
};

/// Writes the two texts of `Module::SYSTEMC_put`, which has no print operation of its own.
void print_systemc(Module* module);

/// All target languages.
std::span<const Target> targets();
/// That of an option, which must exist.
const Target& target(const std::string& option);

}  // namespace kiva
