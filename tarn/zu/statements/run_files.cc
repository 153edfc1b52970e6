#include "tarn/zu/statements/run_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>

#include "parse_zu.hh"
#include "tarn/model/module.h"
#include "tarn/zu/zu_scanner.h"

namespace kiva {

namespace {

namespace fs = std::filesystem;

bool is_file(const std::string& path) {
  std::error_code error;
  return fs::exists(path, error) && !fs::is_directory(path, error);
}

/// Does the source text begin a module of that name?
bool declares(const std::string& file, const std::string& module) {
  std::ifstream in(file, std::ios::binary);
  if (!in || !is_file(file)) return false;
  zu_scanner scanner(&in, &file);
  bool head = false;
  for (int token = scanner.yylex(); token != 0; token = scanner.yylex()) {
    if (head && token == ID && scanner.token() == module) return true;
    head = token == MODULE;
  }
  return false;
}

}  // namespace

RunFiles::RunFiles(const std::string& module, const std::string* location, const SourceSpan& run)
    : module_(module) {  // house: one search, place after place
  if (run.known()) looked_at_.push_back(*run.file);
  if (Module::CompilationFileList() != nullptr)
    for (const std::string& file : *Module::CompilationFileList()) {
      if (std::find(looked_at_.begin(), looked_at_.end(), file) == looked_at_.end())
        looked_at_.push_back(file);
      if (source_.empty() && file.ends_with(".zu") && declares(file, module)) source_ = file;
    }
  if (location == nullptr) return;

  fs::path base = *location;
  if (base.is_relative() && run.known()) base = fs::path(*run.file).parent_path() / base;
  // A declaration without a file name means the file named there, or the folder.
  std::string path = base.string();
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  std::vector<std::string> candidates;
  if (path.ends_with(".zuc") || path.ends_with(".zu")) candidates.push_back(path);
  for (const std::string& stem : {path, path + "/" + module})
    for (const char* suffix : {".zuc", ".zu"}) candidates.push_back(stem + suffix);
  for (const std::string& candidate : candidates) {
    looked_at_.push_back(candidate);
    if (!is_file(candidate)) continue;
    std::string& found = candidate.ends_with(".zuc") ? compiled_ : source_;
    // What the declaration means goes before what merely stands in the list.
    found = candidate;
    return;
  }
}

void RunFiles::tell_missing() const {
  std::cerr << "no module " << module_ << " in " << places() << '\n';
}

std::string RunFiles::missing() const {
  return "there is no module \"" + module_ + "\" in " + places();
}

std::string RunFiles::places() const {
  std::string places;
  for (const std::string& file : looked_at_) places += (places.empty() ? "" : ", ") + file;
  return places;
}

}  // namespace kiva
