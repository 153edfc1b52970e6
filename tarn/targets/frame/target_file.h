#pragma once

#include <string>

#include "tarn/targets/frame/target_rules.h"

namespace kiva {

class Module;

/// How a print operation was told to treat its file. In the working form all do the same.
struct PrintFile {
  std::string extension;
  bool in_folder = false;  ///< the file goes to Module::OutputDir()
  bool tells_existing = false;
  bool tells_failure = false;
};

/// Path of the file: Module::OutputFile(), or else the module's name, with the extension.
std::string print_path(const Module& module, const PrintFile& file, const TargetRules& rules);

/// Replaces the file by the text. What goes wrong is told as a message.
void write_print_file(const std::string& path, const std::string& text, const PrintFile& file,
                      const TargetRules& rules);

}  // namespace kiva
