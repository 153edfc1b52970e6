#pragma once

#include <list>
#include <string>

#include "tarn/session/diagnostic.h"

namespace kiva {

class Module;

/// What came of reading a file.
struct [[nodiscard]] ZucRead {
  Module* module = nullptr;  ///< null when the read failed
  bool opened = false;       ///< the file could be opened
  Place where;               ///< file, and line if known, of what made it fail
  std::string reason;        ///< why it failed
  std::string problem;       ///< "FILE: reason" or "FILE:LINE: reason" when it failed
};

/// Reads a compiled module. Only once the file could be opened, the parser's trace goes to a file
/// of its name with ".log" behind it, or where `SessionFiles::trace` says; a trace file that cannot
/// be written does not matter.
/// `instance` is appended to signal names; the awaited lists, where not null or empty, restrict the
/// names of inputs and outputs. Exceptions of the library come back as a problem; a fault that ends
/// the work leaves with its place in the file.
ZucRead read_zuc_file(const std::string& file, const std::string& instance,
                      const std::string& run_instance,
                      const std::list<std::string>* awaited_inputs = nullptr,
                      const std::list<std::string>* awaited_outputs = nullptr);
/// The same; null, with a message on the error stream, when that fails.
Module* read_zuc(const std::string& file, const std::string& instance,
                 const std::string& run_instance, const std::list<std::string>* awaited_inputs,
                 const std::list<std::string>* awaited_outputs);

// Of the files of Module::CompilationFileList.
/// The first whose first line (256 characters at most) holds the module's name; "" for none.
std::string listed_zuc_file(const std::string& module);
/// The `reincarnate` flag of that file; -1 for none.
int listed_zuc_reincarnate(const std::string& module);
/// The same of a file that stands in no list.
int zuc_reincarnate(const std::string& module, const std::string& file);
/// The module in that file; null for none.
Module* read_listed_zuc(const std::string& module, const std::list<std::string>* awaited_inputs,
                        const std::list<std::string>* awaited_outputs);

}  // namespace kiva
