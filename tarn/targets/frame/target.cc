// The way of a text to its files, the same for all languages.

#include "tarn/targets/frame/target.h"

#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>

#include "base/text_stream.h"
#include "forms/forms.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"

namespace kiva {

std::vector<std::string> Target::paths(const Module& module, const TargetRules& rules) const {
  std::vector<std::string> files{print_path(module, file, rules)};
  if (!beside.empty())
    files.push_back(files[0].substr(0, files[0].size() - file.extension.size()) + beside);
  return files;
}

void put_target(const Target& target, Module* module, std::ostream& out) {
  std::ostream nowhere(nullptr);
  put_target(target, module, out, nowhere);
}

void put_target(const Target& target, Module* module, std::ostream& out, std::ostream& beside) {
  target.put({target, module, Compilation::target_rules(), out, beside,
              module->getName() + target.beside});
}

namespace {

void show(const std::string& path, const char* title) {
  std::ifstream in(path);
  if (!in) return;  // told already
  std::stringstream text;
  text << "#COLONNE 130 \n" << in.rdbuf();
  OFD_afficheur(text, path, title);
}

}  // namespace

void print_target(const Target& target, Module* module) {
  const TargetRules& rules = Compilation::target_rules();
  if (target.finalises && module->getFinalised() == 0) module->finalize(0);
  const std::vector<std::string> paths = target.paths(*module, rules);
  std::string beside_name = module->getName() + target.beside;
  if (rules.real_header && paths.size() > 1)
    beside_name = std::filesystem::path(paths[1]).filename().string();
  std::vector<TextStream> texts(2);
  target.put({target, module, rules, texts[0], texts[1], beside_name});
  for (size_t i = 0; i < paths.size(); ++i)
    write_print_file(paths[i], texts[i].str(), target.file, rules);
  if (target.shown_as != nullptr) show(paths[0], target.shown_as);
}

}  // namespace kiva
