#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/process_end.h"
#include "base/whole_file.h"
#include "engine/server_steps.h"
#include "engine/signal_names.h"
#include "kiva/kiva.h"
#include "tarn/model/compilation.h"
#include "tarn/model/fault_under_way.h"
#include "tarn/model/rules.h"
#include "tarn/session/session.h"
#include "tarn/session/session_files.h"
#include "tarn/session/told_texts.h"
#include "tarn/targets/frame/target_rules.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zuc/zuc_reader.h"
#include "tarn/zuc/zuc_writer.h"

namespace kiva::front {

namespace {

[[noreturn]] void throw_end(int) {
  Diagnostic fault;
  fault.sentence = "the library cannot go on with this module";
  throw FatalDiagnostic(std::move(fault));
}

Remark remark_of(const Place& where, const std::string& reason, Remark::Kind kind) {
  return {kind, "", where.file, where.line, where.column, reason};
}

/// Collects what a user of a program would be told.
class Remarks : public DiagnosticSink {
 public:
  void take(const Diagnostic& diagnostic) override {
    if (diagnostic.sentence.empty() ||
        (diagnostic.for_callers && diagnostic.severity != Severity::error))
      return;
    Remark remark = remark_of(diagnostic.where, diagnostic.sentence,
                              diagnostic.severity == Severity::error     ? Remark::Kind::error
                              : diagnostic.severity == Severity::warning ? Remark::Kind::warning
                                                                         : Remark::Kind::note);
    remark.name = diagnostic.name;
    if (remark.kind == Remark::Kind::error) ++errors;
    all.push_back(std::move(remark));
    for (const Diagnostic::Note& note : diagnostic.notes)
      all.push_back(remark_of(note.where, note.sentence, Remark::Kind::note));
  }

  std::vector<Remark> all;
  int errors = 0;
};

}  // namespace

std::string version() {
  return KIVA_VERSION;
}

std::string Remark::text() const {
  const Place where{file, line, column, 0, 0};
  const char* const words[] = {": error: ", ": warning: ", ": note: "};
  return (where.known() ? where.text() : "kiva") + words[static_cast<int>(kind)] + reason;
}

/// The session of a file: modules with equal names in different files do not meet.
struct Workspace::Held {
  struct Unit {
    Session session;
    std::list<std::string> files;
    std::vector<std::pair<std::string, Module*>> modules;
  };

  /// Does work in a session of its own, and keeps it if no error was told.
  template <class Work>
  bool add(const std::string& file, Work work) {
    auto unit = std::make_shared<Unit>();
    Remarks remarks;
    unit->session.set_sink(&remarks);
    unit->session.part<ToldTexts>().written = false;
    {
      const Session::Use use(unit->session);
      const process_end_handler before = set_process_end_handler(throw_end);
      try {
        work(*unit);
      } catch (...) {
        remarks.take(fault_under_way(file));
      }
      set_process_end_handler(before);
    }
    unit->session.set_sink(nullptr);
    said = std::move(remarks.all);
    if (remarks.errors == 0) units.push_back(std::move(unit));
    return remarks.errors == 0;
  }

  std::pair<std::shared_ptr<Unit>, Module*> find(const std::string& name) const {
    for (const std::shared_ptr<Unit>& unit : units)
      for (const auto& [its, module] : unit->modules)
        if (its == name) return {unit, module};
    throw std::runtime_error("no module \"" + name + "\"");
  }

  std::vector<std::shared_ptr<Unit>> units;
  std::vector<Remark> said;
};

Workspace::Workspace() : held_(std::make_shared<Held>()) {}
Workspace::~Workspace() = default;
Workspace::Workspace(Workspace&&) noexcept = default;
Workspace& Workspace::operator=(Workspace&&) noexcept = default;

bool Workspace::compile(const std::string& file) {
  return held_->add(file, [&](Held::Unit& unit) {
    Compilation::rules() = Rules::sound();
    Compilation::target_rules() = TargetRules::working();
    unit.session.options.FaultsGathered = true;
    unit.session.options.SourceChecked = true;
    unit.files = {file};
    unit.session.options.CompilationFileList = &unit.files;
    Compilation::zu_parse(file.c_str());
    for (Module* module : Compilation::ModTable()->in_order()) {
      if (module->getSet() == nullptr) module->compile();  // a run may have needed it
      unit.modules.emplace_back(module->getName(), module);
    }
    // All are compiled before the first is finalised: a run takes in equations as compiled.
    for (const auto& [name, module] : unit.modules) module->finalize(0);
  });
}

bool Workspace::read(const std::string& file) {
  return held_->add(file, [&](Held::Unit& unit) {
    const ZucRead read = read_zuc_file(file, "", "");
    if (read.module == nullptr) {
      Diagnostic fault;
      fault.where = read.where;
      fault.sentence = read.reason;
      throw FatalDiagnostic(std::move(fault));
    }
    unit.modules.emplace_back(read.module->getName(), read.module);
  });
}

const std::vector<Remark>& Workspace::remarks() const {
  return held_->said;
}

std::vector<std::string> Workspace::modules() const {
  std::vector<std::string> names;
  for (const auto& unit : held_->units)
    for (const auto& module : unit->modules) names.push_back(module.first);
  return names;
}

void Workspace::write(const std::string& module, const std::string& file) const {
  const auto [unit, found] = held_->find(module);
  const Session::Use use(unit->session);
  WholeFile whole(file);
  if (whole.opened()) write_zuc(found, whole.out(), false);
  if (!whole.opened() || !whole.finish())
    throw std::runtime_error("\"" + file + "\" cannot be written");
}

struct Run::Held {
  Held(std::shared_ptr<Workspace::Held::Unit> its, Module* module)
      : unit(std::move(its)), simulation(module) {
    rest();
  }

  void rest() {
    for (size_t row = 0; row < simulation.input_names().size(); ++row)
      simulation.choose_input(row, SignalState::zero);
  }

  std::shared_ptr<Workspace::Held::Unit> unit;
  Simulation simulation;
  SignalNames names{simulation};
};

Run Workspace::run(const std::string& module) const {
  const auto [unit, found] = held_->find(module);
  const Session::Use use(unit->session);
  auto held = std::make_unique<Run::Held>(unit, found);
  if (held->simulation.asks_for_data())
    throw std::runtime_error("module \"" + module + "\" has values that a server computes");
  return Run(std::move(held));
}

Run::Run(std::unique_ptr<Held> held) : held_(std::move(held)) {}
Run::~Run() = default;
Run::Run(Run&&) noexcept = default;
Run& Run::operator=(Run&&) noexcept = default;

const std::vector<std::string>& Run::inputs() const {
  return held_->simulation.input_names();
}
const std::vector<std::string>& Run::outputs() const {
  return held_->simulation.output_names();
}
const std::vector<std::string>& Run::locals() const {
  return held_->simulation.local_names();
}
const std::vector<std::string>& Run::registers() const {
  return held_->simulation.register_names();
}

void Run::choose(const std::string& input, State state) {
  const std::vector<std::string>& names = inputs();
  const auto at = std::find(names.begin(), names.end(), input);
  if (at == names.end()) throw std::runtime_error("no input \"" + input + "\"");
  if (state == State::unknown) throw std::runtime_error("an input is never unknown");
  held_->simulation.choose_input(static_cast<size_t>(at - names.begin()),
                                 static_cast<SignalState>(state));
}

void Run::step() {
  const Session::Use use(held_->unit->session);
  held_->simulation.step(nullptr);
}

State Run::state(const std::string& signal) const {
  SignalPlace place;
  if (!held_->names.find(signal, place)) throw std::runtime_error("no signal \"" + signal + "\"");
  return static_cast<State>(place.list == SignalPlace::output
                                ? held_->simulation.shown_output(place.row)
                                : shown_state(held_->simulation.state(), place));
}

long Run::instant() const {
  return held_->simulation.instant();
}

void Run::restart() {
  const Session::Use use(held_->unit->session);
  held_->simulation.load();
  held_->rest();
}

}  // namespace kiva::front
