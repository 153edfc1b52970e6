#include "programs/tarn/translate.h"

#include <algorithm>
#include <iostream>
#include <optional>

#include "base/text_stream.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "programs/tarn/bench.h"
#include "programs/tarn/draw.h"
#include "programs/tarn/notes.h"
#include "programs/tarn/read_module.h"
#include "programs/tarn/stages.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/session/session_files.h"
#include "tarn/targets/frame/target_rules.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/source_map.h"
#include "tarn/zu/statement_walk.h"
#include "tarn/zu/statements/run.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva::tarn_program {

namespace {

/// One file on its way.
class Translation {
 public:
  Translation(const std::string& file, const Options& options, Messages& messages)
      : file_(file), options_(options), messages_(messages) {}

  bool run(std::set<std::string>& met);
  std::vector<Module*> load();

 private:
  bool get_modules();
  bool read_compiled();
  bool compile_source();
  bool compile_modules();
  bool write_compiled(Module* module);
  bool write(Module* module);
  bool write_targets(Module* module);
  bool bench(Module* module);
  bool write_map(Module* module, const std::string& module_file);
  bool write_target(Module* module, const Target& target);
  template <class Print>
  bool print(Print print);
  /// The fault under way, with the place of the module under way where it has none of its own.
  Diagnostic fault() const;

  const std::string& file_;
  const Options& options_;
  Messages& messages_;
  Stages stages_;
  std::vector<Module*> modules_;
  const Module* current_ = nullptr;
};

/// What a module holds.
void print_size(Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  TextStream text;
  text << "module " << module->getName() << ": " << module->getInputSignalList().size()
       << " inputs, " << module->getOutputSignalList().size() << " outputs, "
       << module->getLocalSignalList().size() << " locals, " << module->getRegisterList().size()
       << " registers, " << wood->exp_number() << " equations, "
       << wood->my_bdd_manager()->Bdd_total_size() << " nodes made, " << wood->Nb_level()
       << " levels";
  std::cout << translated(text.str()) << '\n';
}

/// Reads a compiled module as it is.
bool Translation::read_compiled() {
  stages_.begin("read " + file_);
  Module* module = read_module(file_);
  if (module != nullptr) modules_.push_back(module);
  return module != nullptr;
}

namespace {

/// Does the module run one of these, itself or by those that it runs?
bool reaches(const Module* module, const std::set<const Module*>& others) {
  std::set<const Module*> met{module};
  std::vector<const Module*> open{module};
  bool found = others.contains(module);
  while (!open.empty() && !found) {
    const Module* const caller = open.back();
    open.pop_back();
    for_each_statement(caller->getStatement(), [&](const Statement& statement) {
      const auto* run = dynamic_cast<const Run*>(&statement);
      const Module* called =
          run == nullptr ? nullptr : Compilation::ModTable()->get(run->getModuleName());
      if (called == nullptr || !met.insert(called).second) return;
      found = found || others.contains(called);
      open.push_back(called);
    });
  }
  return found;
}

}  // namespace

/// Compiles each module that runs none in which a fault has been told; false if one has.
bool Translation::compile_modules() {
  std::set<const Module*> whole, faulty;
  const auto sort_into = [](std::set<const Module*>& ours, const std::set<const Module*>& others) {
    for (const Module* module : Compilation::ModTable()->in_order())
      if (module->getSet() != nullptr && !others.contains(module)) ours.insert(module);
  };
  for (Module* module : modules_) {
    if (reaches(module, faulty)) continue;
    current_ = module;
    stages_.begin("compile " + module->getName());
    try {
      if (module->getSet() == nullptr) module->compile();  // a run may have needed it
      sort_into(whole, faulty);
    } catch (...) {
      stages_.end();
      fail(fault());
      faulty.insert(module);
      sort_into(faulty, whole);
    }
  }
  return faulty.empty();
}

/// Compiles the modules that are asked for, all of them when none is named; false when a fault has
/// been told.
bool Translation::compile_source() {
  stages_.begin("read " + file_);
  Compilation::zu_parse(file_.c_str());
  for (Module* module : Compilation::ModTable()->in_order()) {
    const bool wanted =
        options_.modules.empty() || std::find(options_.modules.begin(), options_.modules.end(),
                                              module->getName()) != options_.modules.end();
    if (wanted) modules_.push_back(module);
  }
  if (!compile_modules()) return false;
  // All are compiled before the first is finalised: a run takes in equations as compiled.
  for (Module* module : modules_) {
    current_ = module;
    stages_.begin("finalise " + module->getName());
    if (options_.check_over_knowledge) module->check_over_knowledge();
    if (!options_.no_finalize) module->finalize(options_.keep_rtl ? 1 : 0);
  }
  return true;
}

/// Runs a print operation; false when it had to tell its user something.
template <class Print>
bool Translation::print(Print print) {
  const int before = messages_.errors();
  print();
  return messages_.errors() == before;
}

/// Writes a module in a target language. What that target refuses is a fault of this text alone.
bool Translation::write_target(Module* module, const Target& target) {
  const std::string what = module->getName() + ": --" + target.option + ": ";
  if (target.finalised_only && module->getFinalised() == 0)
    return fail(what + "the module is not finalised; finalise it first");
  try {
    if (!print([&] { print_target(target, module); })) return false;
  } catch (...) {
    return fail(what + fault_under_way().sentence);
  }
  if (!options_.quiet)
    for (const std::string& path : target.paths(*module, Compilation::target_rules()))
      std::cout << path << '\n';
  return true;
}

/// Writes a compiled module, and reads it as others will; its map where that is asked for.
bool Translation::write_compiled(Module* module) {
  if (!print([&] { module->save(); })) return false;
  std::string name = options_.output.empty() ? module->getName() : options_.output;
  if (name.find(".zuc") == std::string::npos) name += ".zuc";
  const std::string path = options_.folder + '/' + name;
  if (options_.map && is_source(file_) && !write_map(module, path)) return false;
  if (!options_.quiet) std::cout << path << '\n';
  const programs::ProgramSession session(&messages_);
  SessionFiles::current().trace = nullptr;
  const ZucRead read = read_zuc_file(path, "", "");
  return read.module != nullptr || fail(read.where, read.reason);
}

namespace {

/// The session's texts tell these notes as long as it lives.
class NotesForTexts {
 public:
  explicit NotesForTexts(SourceNotes notes) : notes_(std::move(notes)) {
    Compilation::target_rules().notes = &notes_;
  }
  ~NotesForTexts() { Compilation::target_rules().notes = nullptr; }
  NotesForTexts(const NotesForTexts&) = delete;
  NotesForTexts& operator=(const NotesForTexts&) = delete;

 private:
  SourceNotes notes_;
};

}  // namespace

/// Writes what is asked for of one module.
bool Translation::write(Module* module) {
  const bool zuc = options_.zuc || !options_.writes_other_text();
  const bool texts = !options_.targets.empty() || options_.bench != nullptr;
  const NotesForTexts notes(texts ? source_notes(module, file_, options_) : SourceNotes());
  if (zuc && !write_compiled(module)) return false;
  if (options_.kiva) {
    if (!print([&] { module->save_kiva_code(); })) return false;
    if (!options_.quiet) std::cout << options_.folder << "/kiva_" << module->getName() << ".cc\n";
  }
  bool good = write_targets(module);
  if (options_.dot || options_.svg) good = draw(module, file_, options_) && good;
  if (options_.bench != nullptr) good = bench(module) && good;
  return good;
}

/// What finalises the module comes last: the other texts show it as it is.
bool Translation::write_targets(Module* module) {
  bool good = true;
  for (const bool finalises : {false, true})
    for (const Target* target : options_.targets)
      if (target->finalises == finalises) good = write_target(module, *target) && good;
  return good;
}

/// Writes a bench, and the text that it is for.
bool Translation::bench(Module* module) {
  const bool written =
      std::ranges::find(options_.targets, options_.bench) != options_.targets.end();
  return (written || write_target(module, *options_.bench)) && write_bench(module, options_);
}

/// Beside the compiled module, which has been written.
bool Translation::write_map(Module* module, const std::string& module_file) {
  const std::string path = module_file + ".map";
  WholeFile file(path);
  if (file.opened())
    file.out() << source_map_text(source_map(module), module->getName(), module_file);
  if (!file.opened() || !file.finish()) return fail({path, 0, 0, 0, 0}, "cannot be written");
  return true;
}

Diagnostic Translation::fault() const {
  Diagnostic fault = fault_under_way();
  if (fault.where.known()) return fault;
  const Module* module = current_ != nullptr ? current_ : TheModule();
  if (module != nullptr) fault.where = place_of(module->getSpan());
  if (!fault.where.known()) fault.where.file = file_;
  if (module != nullptr && !fault.sentence.empty())
    fault.sentence = "module \"" + module->getName() + "\": " + fault.sentence;
  return fault;
}

bool Translation::get_modules() {
  if (!is_source(file_)) return read_compiled();
  const int before = messages_.errors();
  return compile_source() && messages_.errors() == before;
}

std::vector<Module*> Translation::load() {
  try {
    const bool good = get_modules();
    stages_.end();
    return good ? modules_ : std::vector<Module*>();
  } catch (...) {
    stages_.end();
    fail(fault());
    return {};
  }
}

bool Translation::run(std::set<std::string>& met) {
  std::optional<programs::InTextOrder> order(std::in_place, file_);
  try {
    if (!get_modules()) return false;
    order.reset();
    for (const Module* module : modules_) met.insert(module->getName());
    if (modules_.size() > 1 && !options_.output.empty())
      return fail({file_, 0, 0, 0, 0}, "holds several modules; -o names one file");
    if (modules_.size() > 1 && options_.bench != nullptr)
      return fail({file_, 0, 0, 0, 0}, "holds several modules; --module names the one to bench");
    bool good = true;
    for (Module* module : modules_) {
      current_ = module;
      stages_.begin("write " + module->getName());
      good = write(module) && good;
    }
    stages_.end();
    if (options_.stats) {
      for (Module* module : modules_) print_size(module);
      stages_.print(std::cout);
    }
    return good;
  } catch (...) {
    stages_.end();
    return fail(fault());
  }
}

}  // namespace

void choose(Options& options) {
  Compilation::rules() = options.classic ? Rules::classic() : Rules::sound();
  Compilation::target_rules() = options.classic ? TargetRules::told() : TargetRules::working();
  Compilation::target_rules().files = true;  // -d and -o hold for every text
  Compilation::target_rules().asynchronous_reset = options.asynchronous_reset;
  if (options.no_comments) Compilation::target_rules().comments = false;
  Compilation::KeepWiresFlag() = options.keep_wires || options.map;
  Compilation::MapFlag() = options.map;
  Compilation::ForgetLocalsNameFlag() = options.forget_locals;
  Compilation::StripFlag() = options.strip;
  Compilation::CheckOverKnowledgeFlag() = options.check_over_knowledge;
  Compilation::DebugFlag() = options.comments;
  Session::current().options.FaultsGathered = true;
  Session::current().options.SourceChecked = !options.classic;
  Module::OutputDir() = options.folder;
  Module::SimulationZucDir() = options.folder;
  Module::OutputFile() = options.output;
  Module::CompilationFileList() = &options.files;
  SessionFiles::current().keep_read = !options.in_place;
  SessionFiles::current().trace = options.trace;
  for (const std::string& file : options.files) SessionFiles::current().note_read(file);
}

std::vector<Module*> load_modules(const std::string& file, Options& options, Messages& messages) {
  choose(options);
  return Translation(file, options, messages).load();
}

std::vector<Module*> outer_modules(const std::vector<Module*>& modules) {
  std::vector<Module*> outer;
  for (Module* module : modules)
    if (std::none_of(modules.begin(), modules.end(), [module](const Module* other) {
          return other != module && other->getStatement() != nullptr && reaches(other, {module});
        }))
      outer.push_back(module);
  return outer;
}

bool translate(const std::string& file, Options& options, Messages& messages,
               std::set<std::string>& met) {
  const programs::ProgramSession session(&messages);
  choose(options);
  return Translation(file, options, messages).run(met);
}

}  // namespace kiva::tarn_program
