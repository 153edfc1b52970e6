#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "tarn/targets/frame/target_file.h"
#include "tarn/targets/frame/target_rules.h"

namespace kiva {

class Module;
struct Bench;
struct Target;

/// What a language's writer is handed: the module, by which rules, and where the text goes.
struct TargetJob {
  const Target& target;
  Module* module;
  const TargetRules& rules;
  std::ostream& out;
  std::ostream& beside;     ///< the second file of a language that has one
  std::string beside_name;  ///< by which the first includes the second
};

/// A target language as programs offer it. Its file in tarn/targets/languages defines it, and a row
/// of the table in tarn/targets/targets.cc registers it.
struct Target {
  const char* option;  ///< of the command line, without "--"
  const char* help;    ///< at most 26 characters: two stand on a line
  PrintFile file;
  void (*put)(const TargetJob& job);
  /// Extension of a second file beside the first; empty for none.
  std::string beside = {};
  /// Extension under which the second file is written once more, for tools that look for it there.
  std::string beside_again = {};
  /// Only a finalised module can be written.
  bool finalised_only = false;
  /// Printing finalises a module that is not.
  bool finalises = false;
  /// The text has the properties of the module, too.
  bool with_properties = false;
  /// Title of the message window that shows the file once it is written; null for none.
  const char* shown_as = nullptr;
  /// What a line of comment begins with; null for a text without a head.
  const char* comment = nullptr;
  /// Of a comment: how the text is used.
  const char* use = nullptr;
  /// How the text is proved in the target's own tools; null where it cannot be run.
  const Bench* bench = nullptr;

  /// The files that are printed: the second is the first with another extension.
  std::vector<std::string> paths(const Module& module, const TargetRules& rules) const;
};

/// Writes the text of a module, which includes a second one by the module's name. The rules are
/// those of the session.
void put_target(const Target& target, Module* module, std::ostream& out);
void put_target(const Target& target, Module* module, std::ostream& out, std::ostream& beside);

/// Writes the target's files: all of them, or none where the writer throws.
void print_target(const Target& target, Module* module);

}  // namespace kiva
