// The compiler library from the command line.

#include <CLI/CLI.hpp>
#include <iostream>

#include "forms/forms.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/zuc/zuc_reader.h"

namespace {

constexpr int unusable = 1;
constexpr int wrong_usage = 2;
constexpr const char* program = "tarn: ";

struct Options {
  std::vector<std::string> files;
  std::string folder = ".";
  bool kiva = false;
  bool quiet = false;
};

/// Notices that a writer had to tell its user something; the text itself is on the error stream.
class Complaints : public kiva::message_presenter {
 public:
  Complaints() { kiva::set_message_presenter(this); }
  ~Complaints() override { kiva::set_message_presenter(nullptr); }
  void alert(const std::string&) override { any = true; }
  void message(const std::string&) override { any = true; }
  void big_message(const std::string&, int) override { any = true; }
  bool any = false;
};

/// Reads one file and writes what is asked for; false when either failed.
bool run(const std::string& file, const Options& options) {
  using namespace kiva;
  // The vocabulary of data is the process's: each file starts with none of another's.
  Compilation::GDataTypeTable = nullptr;
  Compilation::GDataMethodTable = nullptr;
  Compilation::GDataConstantTable = nullptr;
  const ZucRead read = read_zuc_file(file, Compilation::EmptyString, Compilation::EmptyString);
  if (read.module == nullptr) {
    std::cerr << program << read.problem << '\n';
    return false;
  }
  const std::string& name = read.module->getName();
  if (!options.kiva) {
    if (!options.quiet) std::cout << file << ": module " << name << '\n';
    return true;
  }
  Complaints complaints;
  try {
    read.module->save_kiva_code();
  } catch (const LibraryException& exception) {
    std::cerr << program << file << ": " << exception.text() << '\n';
    return false;
  }
  if (complaints.any) return false;
  if (!options.quiet) std::cout << Module::SimulationZucDir << "/kiva_" << name << ".cc\n";
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app{"Reads compiled modules and writes them as other text.", "tarn"};
  app.add_option("FILE.zuc", options.files, "modules to read")->required();
  app.add_flag("--kiva", options.kiva, "write the evaluation server, kiva_MODULE.cc");
  app.add_option("-d", options.folder, "folder for what is written (default: this one)")
      ->check(CLI::ExistingDirectory);
  app.add_flag("-q", options.quiet, "do not name what has been read or written");
  app.set_version_flag("--version", "tarn " KIVA_VERSION);
  try {
    app.parse(argc, argv);
    for (const std::string& file : options.files)
      if (!file.ends_with(".zuc"))
        throw CLI::ValidationError("FILE.zuc", "\"" + file + "\" does not end in .zuc");
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : wrong_usage;
  }
  kiva::Module::SimulationZucDir = options.folder;
  bool good = true;
  for (const std::string& file : options.files) good = run(file, options) && good;
  return good ? 0 : unusable;
}
