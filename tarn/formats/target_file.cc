#include "tarn/formats/target_file.h"

#include <filesystem>
#include <fstream>
#include <iostream>

#include "forms/forms.h"
#include "tarn/model/module.h"

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
  if ((rules.files || file.tells_existing) && std::filesystem::exists(path))
    std::cerr << "File: " << path << " already exists. File rewrited.\n";
  std::ofstream out(path);
  if (!out) {
    if (rules.files || file.tells_failure) fl_show_Smessages("Cannot open output file: " + path);
    return;
  }
  out << text;
  if (!out.flush()) fl_show_Smessages("Cannot write output file: " + path);
}

}  // namespace kiva
