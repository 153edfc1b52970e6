// The way of a text to its files, the same for all languages.

#include "tarn/targets/frame/target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>

#include "base/text_stream.h"
#include "forms/forms.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/targets/frame/source_notes.h"

namespace kiva {

std::vector<std::string> Target::paths(const Module& module, const TargetRules& rules) const {
  std::vector<std::string> files{print_path(module, file, rules)};
  const std::string stem = files[0].substr(0, files[0].size() - file.extension.size());
  for (const std::string& extension : {beside, beside_again})
    if (!extension.empty()) files.push_back(stem + extension);
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

/// What a reader wants to know of the text before its first line.
void put_head(std::ostream& out, const Target& target, const Module& module,
              const TargetRules& rules) {
  const auto list = [&](const char* title, const signal_list& signals) {
    std::string line = std::string(target.comment) + title;
    const char* separator = " ";
    for (const Signal* signal : signals) {
      if (line.size() + signal->getOriginalName().size() > 96) {
        out << line << separator[0] << '\n';
        line = std::string(target.comment) + "  ";
        separator = "";
      }
      line += separator + signal->getOriginalName();
      separator = ", ";
    }
    out << line << (signals.empty() ? " none\n" : "\n");
  };
  out << target.comment << "The module " << module.getName();
  if (rules.notes != nullptr)
    out << ", from " << rules.notes->from << '\n'
        << target.comment << "Written by " << rules.notes->made;
  out << '\n';
  list("Inputs:", module.getInputSignalList());
  list("Outputs:", module.getOutputSignalList());
  if (target.use != nullptr) out << target.comment << target.use << '\n';
  out << '\n';
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
  if (rules.own && rules.comments && target.comment != nullptr)
    for (TextStream& text : texts) put_head(text, target, *module, rules);
  target.put({target, module, rules, texts[0], texts[1], beside_name});
  for (size_t i = 0; i < paths.size(); ++i)
    write_print_file(paths[i], texts[std::min<size_t>(i, 1)].str(), target.file, rules);
  if (target.shown_as != nullptr) show(paths[0], target.shown_as);
}

}  // namespace kiva
