// The compiler from the command line: source text to compiled modules, and compiled modules to
// other text.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "forms/forms.h"
#include "tarn/formats/target_rules.h"
#include "tarn/formats/targets.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/rules.h"
#include "tarn/zuc/zuc_reader.h"

namespace {

using namespace kiva;

constexpr int unusable = 1;
constexpr int wrong_usage = 2;
constexpr const char* program = "tarn: ";

struct Options {
  std::vector<std::string> files;
  std::vector<std::string> modules;
  std::string folder = ".";
  std::string output;
  bool zuc = false;
  bool kiva = false;
  std::vector<const Target*> targets;
  bool classic = false;
  bool no_finalize = false;
  bool keep_wires = false;
  bool keep_rtl = false;
  bool forget_locals = false;
  bool check_over_knowledge = false;
  bool comments = false;
  bool stats = false;
  bool quiet = false;
};

/// The stages of a run: their times, and, on a terminal, the one under way.
class Stages {
 public:
  /// Begins a stage, and ends the one before it.
  void begin(const std::string& name) {
    end();
    name_ = name;
    start_ = std::chrono::steady_clock::now();
    if (terminal_) std::cerr << '\r' << name << " ...\033[K" << std::flush;
  }
  void end() {
    if (name_.empty()) return;
    times_.emplace_back(
        name_, std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count());
    name_.clear();
    if (terminal_) std::cerr << "\r\033[K" << std::flush;
  }
  void print(std::ostream& out) const {
    for (const auto& [name, seconds] : times_) out << "  " << name << ": " << seconds << " s\n";
  }

 private:
  bool terminal_ = isatty(STDERR_FILENO) != 0;
  std::string name_;
  std::chrono::steady_clock::time_point start_;
  std::vector<std::pair<std::string, double>> times_;
};

/// Notices that a writer had to tell its user something; the text itself is on the error stream.
class Complaints : public message_presenter {
 public:
  Complaints() { set_message_presenter(this); }
  ~Complaints() override { set_message_presenter(nullptr); }
  void alert(const std::string&) override { any = true; }
  void message(const std::string&) override { any = true; }
  void big_message(const std::string&, int) override { any = true; }
  bool any = false;
};

bool fail(const std::string& what) {
  std::cerr << program << what << '\n';
  return false;
}

/// The vocabulary of data is the process's: each file starts with none of another's.
void forget_vocabulary() {
  Compilation::GDataTypeTable = nullptr;
  Compilation::GDataMethodTable = nullptr;
  Compilation::GDataConstantTable = nullptr;
}

/// What a module holds.
void print_size(Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  std::cout << "module " << module->getName() << ": " << module->getInputSignalList().size()
            << " inputs, " << module->getOutputSignalList().size() << " outputs, "
            << module->getLocalSignalList().size() << " locals, "
            << module->getRegisterList().size() << " registers, " << wood->exp_number()
            << " equations, " << wood->my_bdd_manager()->Bdd_total_size() << " nodes made, "
            << wood->Nb_level() << " levels\n";
}

/// Reads a compiled module as it is.
bool read_compiled(const std::string& file, std::vector<Module*>& modules) {
  const ZucRead read = read_zuc_file(file, Compilation::EmptyString, Compilation::EmptyString);
  if (read.module == nullptr) return fail(read.problem);
  modules.push_back(read.module);
  return true;
}

/// Compiles the modules of a source file that are asked for; all of them when none is named. What a
/// fault says of its place in the file comes from the reader.
bool compile_source(const std::string& file, const Options& options, Stages& stages,
                    std::vector<Module*>& modules) {
  stages.begin("read " + file);
  const size_t known = Compilation::ModTable->in_order().size();
  Compilation::zu_parse(file.c_str());
  const std::vector<Module*>& all = Compilation::ModTable->in_order();
  for (auto at = all.begin() + static_cast<std::ptrdiff_t>(known); at != all.end(); ++at) {
    const bool wanted =
        options.modules.empty() || std::find(options.modules.begin(), options.modules.end(),
                                             (*at)->getName()) != options.modules.end();
    if (wanted) modules.push_back(*at);
  }
  for (Module* module : modules) {
    stages.begin("compile " + module->getName());
    module->compile();
  }
  // All are compiled before the first is finalised: a run takes in equations as compiled.
  for (Module* module : modules) {
    stages.begin("finalise " + module->getName());
    if (options.check_over_knowledge) module->check_over_knowledge();
    if (!options.no_finalize) module->finalize(options.keep_rtl ? 1 : 0);
  }
  return true;
}

/// Writes a module in a target language. What that target refuses is a fault of this text alone.
bool write_target(Module* module, const Target& target, const Options& options) {
  const std::string what = module->getName() + ": --" + target.option + ": ";
  if (target.finalised_only && module->getFinalised() == 0)
    return fail(what + "the module is not finalised; finalise it first");
  Complaints complaints;
  try {
    target.print(module);
  } catch (const LibraryException& exception) {
    return fail(what + exception.text());
  }
  if (complaints.any) return false;
  if (!options.quiet)
    for (const std::string& path : target.paths(*module, Compilation::target_rules))
      std::cout << path << '\n';
  return true;
}

/// Writes what is asked for of one module.
bool write(Module* module, const Options& options) {
  Complaints complaints;
  if (options.zuc || (!options.kiva && options.targets.empty())) {
    module->save();
    if (complaints.any) return false;
    if (!options.quiet) {
      std::string name = options.output.empty() ? module->getName() : options.output;
      if (name.find(".zuc") == std::string::npos) name += ".zuc";
      std::cout << options.folder << '/' << name << '\n';
    }
  }
  if (options.kiva) {
    module->save_kiva_code();
    if (complaints.any) return false;
    if (!options.quiet) std::cout << options.folder << "/kiva_" << module->getName() << ".cc\n";
  }
  bool good = true;
  // What finalises the module comes last: the other texts show it as it is.
  for (bool finalises : {false, true})
    for (const Target* target : options.targets)
      if (target->finalises == finalises) good = write_target(module, *target, options) && good;
  return good;
}

bool run(const std::string& file, const Options& options) {
  forget_vocabulary();
  std::vector<Module*> modules;
  Stages stages;
  try {
    if (file.ends_with(".zuc")) stages.begin("read " + file);
    const bool read = file.ends_with(".zuc") ? read_compiled(file, modules)
                                             : compile_source(file, options, stages, modules);
    if (!read) return false;
    if (modules.size() > 1 && !options.output.empty())
      return fail(file + ": holds several modules; -o names one file");
    bool good = true;
    for (Module* module : modules) {
      stages.begin("write " + module->getName());
      good = write(module, options) && good;
    }
    stages.end();
    if (options.stats) {
      for (Module* module : modules) print_size(module);
      stages.print(std::cout);
    }
    return good;
  } catch (const LibraryException& exception) {
    const std::string place = exception.where().known() ? exception.where().text() : file;
    return fail(place + ": " + exception.text());
  } catch (const std::exception& exception) {
    return fail(file + ": " + exception.what());
  }
}

/// The options of the target languages, two a line.
std::string target_list() {
  std::ostringstream list;
  list << "Target texts of MODULE, beside each other as wanted:\n" << std::left;
  bool second = false;
  for (const Target& target : targets()) {
    list << "  --" << std::setw(14) << target.option << std::setw(second ? 0 : 27) << target.help
         << (second ? "\n" : "");
    second = !second;
  }
  return list.str() + (second ? "\n" : "");
}

void choose(const Options& options) {
  Compilation::rules = options.classic ? Rules::classic() : Rules::sound();
  Compilation::target_rules = options.classic ? TargetRules::told() : TargetRules::working();
  Compilation::target_rules.files = true;  // -d and -o hold for every text
  Compilation::KeepWiresFlag = options.keep_wires;
  Compilation::ForgetLocalsNameFlag = options.forget_locals;
  Compilation::CheckOverKnowledgeFlag = options.check_over_knowledge;
  Compilation::DebugFlag = options.comments;
  Module::OutputDir = options.folder;
  Module::SimulationZucDir = options.folder;
  Module::OutputFile = options.output;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app{"Compiles ZU source text to modules, and writes compiled modules as other text.",
               "tarn"};
  app.add_option("FILE", options.files, "source text (.zu) or compiled modules (.zuc)")->required();
  app.add_flag("--zuc", options.zuc, "write the compiled module, MODULE.zuc (the default)");
  app.add_flag("--kiva", options.kiva, "write the evaluation server, kiva_MODULE.cc");
  for (const Target& target : targets())
    app.add_flag_callback(
           std::string("--") + target.option,
           [&options, &target] { options.targets.push_back(&target); }, target.help)
        ->group("");  // the footer lists them closer
  app.add_option("--module", options.modules, "compile this module only; repeatable")
      ->take_all()
      ->allow_extra_args(false);
  app.add_option("-d", options.folder, "folder for what is written (default: this one)")
      ->check(CLI::ExistingDirectory);
  app.add_option("-o", options.output, "name of the file that is written");
  app.add_flag("--classic", options.classic,
               "compile by the classic rules, write classic target texts");
  app.add_flag("--no-finalize", options.no_finalize, "leave the module as compiled");
  app.add_flag("--keep-wires", options.keep_wires, "keep equations that copy another");
  app.add_flag("--keep-rtl", options.keep_rtl, "keep the wire that tells the end of the module");
  app.add_flag("--forget-locals", options.forget_locals, "write numbers for the names of locals");
  app.add_flag("--check-over-knowledge", options.check_over_knowledge,
               "add an output that tells of outputs in Top");
  app.add_flag("--comments", options.comments, "write comments beside the equations");
  app.add_flag("--stats", options.stats, "tell the size of each module and the time of each stage");
  app.add_flag("-q", options.quiet, "do not name what has been written");
  app.set_version_flag("--version", "tarn " KIVA_VERSION);
  app.footer(target_list() +
             "\ntarn program.zu                   compiles every module of the file\n"
             "tarn -d out --module lift plant.zu   compiles one of them into a folder\n"
             "tarn --kiva thermostat.zuc        writes the evaluation server of a module");
  try {
    app.parse(argc, argv);
    for (const std::string& file : options.files)
      if (!file.ends_with(".zuc") && !file.ends_with(".zu"))
        throw CLI::ValidationError("FILE", "\"" + file + "\" ends neither in .zu nor in .zuc");
    if (options.files.size() > 1 && !options.output.empty())
      throw CLI::ValidationError("-o", "names one file, and there are several modules");
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : wrong_usage;
  }
  choose(options);
  bool good = true;
  for (const std::string& file : options.files) good = run(file, options) && good;
  // A broken file may hide a module: its own message is enough.
  for (const std::string& name : good ? options.modules : std::vector<std::string>())
    if (Compilation::ModTable->get(name) == nullptr)
      good = fail("no file holds a module \"" + name + "\"");
  return good ? 0 : unusable;
}
