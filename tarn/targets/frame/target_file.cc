#include "tarn/targets/frame/target_file.h"

#include <filesystem>
#include <iostream>

#include "tarn/model/module.h"
#include "tarn/session/diagnostic.h"
#include "tarn/session/session_files.h"

namespace kiva {

std::string print_path(const Module& module, const PrintFile& file, const TargetRules& rules) {
  std::string name = Module::OutputFile().empty() ? module.getName() : Module::OutputFile();
  const bool has_extension = !Module::OutputFile().empty() &&
                             (rules.files ? name.ends_with(file.extension)
                                          : name.find(file.extension) != std::string::npos);
  if (!has_extension) name += file.extension;
  const bool in_folder = (rules.files || file.in_folder) && !Module::OutputDir().empty();
  return in_folder ? Module::OutputDir() + "/" + name : name;
}

void write_print_file(const std::string& path, const std::string& text, const PrintFile& file,
                      const TargetRules& rules) {
  SessionOutput whole(path);
  if ((rules.files || file.tells_existing) && std::filesystem::exists(path))
    std::cerr << "File: " << path << " already exists. File rewrited.\n";
  if (!whole.opened()) {
    if (rules.files || file.tells_failure)
      report_file(path, "cannot be written", "Cannot open output file: " + path);
    return;
  }
  whole.out() << text;
  if (!whole.finish()) report_file(path, "cannot be written", "Cannot write output file: " + path);
}

}  // namespace kiva
