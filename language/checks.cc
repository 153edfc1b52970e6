#include "language/checks.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "base/process_end.h"
#include "bdd/work_guard.h"
#include "language/folder.h"
#include "tarn/model/compilation.h"
#include "tarn/model/fault_under_way.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/session/open_texts.h"
#include "tarn/session/session.h"
#include "tarn/session/told_texts.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/progress.h"

namespace kiva::language {

namespace {

[[noreturn]] void throw_end(int) {
  Diagnostic fault;
  fault.sentence = "the compiler cannot go on with this module";
  throw FatalDiagnostic(std::move(fault));
}

/// Collects what a user is told, each thing once.
class Remarks : public DiagnosticSink {
 public:
  void take(const Diagnostic& diagnostic) override {
    const bool error = diagnostic.severity == Severity::error;
    if (diagnostic.sentence.empty() || (diagnostic.for_callers && !error)) return;
    for (const Diagnostic& known : all)
      if (known.sentence == diagnostic.sentence && known.where.text() == diagnostic.where.text())
        return;
    all.push_back(diagnostic);
    wrong = wrong || error;
  }
  std::vector<Diagnostic> all;
  bool wrong = false;
};

/// A cycle of which nobody knows yet whether it settles.
struct OpenCycle {
  using Clock = std::chrono::steady_clock;

  void begin(Diagnostic met) {
    warning = std::move(met);
    running = true;
    since = Clock::now();
  }
  bool is_due() const { return running && Clock::now() - since > patience; }

  static constexpr std::chrono::milliseconds patience{300};
  Diagnostic warning;
  Clock::time_point since;
  bool running = false, told = false;
};

/// A session for one text, with its ends of the process thrown.
class Check {
 public:
  Check(const std::string& path, const std::map<std::string, std::string>& texts)
      : path_(path), use_(session_), before_(set_process_end_handler(throw_end)) {
    session_.set_sink(&remarks_);
    session_.part<ToldTexts>().written = false;
    session_.part<OpenTexts>().texts = texts;
    session_.options.FaultsGathered = session_.options.SourceChecked = true;
    files_ = source_files(std::filesystem::path(path).parent_path().string(), false);
    files_.remove(path);
    files_.push_front(path);
    session_.options.CompilationFileList = &files_;
    Compilation::rules() = Rules::sound();
  }
  ~Check() { set_process_end_handler(before_); }
  Check(const Check&) = delete;
  Check& operator=(const Check&) = delete;

  /// Does a part of the work; false where it has brought an error.
  template <class Work>
  bool tolerate(const Module* module, Work work) {
    try {
      work();
    } catch (const FatalDiagnostic&) {
      take_fault(module);
    } catch (const std::exception&) {
      take_fault(module);
    }
    return !remarks_.wrong;
  }

  bool read() {
    return tolerate(nullptr, [this] { Compilation::zu_parse(path_.c_str()); });
  }
  /// Tells of a cycle before it is judged, where that takes long; and in the end, where there is
  /// anything new.
  void compile(const std::function<void()>& guard, const Tell& tell) {
    const size_t before = remarks_.all.size();
    OpenCycle open;
    const auto look = [&] {
      guard();
      if (!open.is_due()) return;
      std::vector<Diagnostic> all = remarks_.all;
      all.push_back(open.warning);
      open.running = false;
      open.told = true;
      tell(all);
    };
    const WorkGuard guarded(look);
    statement_begun() = look;
    stage_begun() = [&look](const std::string&) { look(); };
    cycle_met() = [&open](Diagnostic warning) { open.begin(std::move(warning)); };
    for (Module* module : Compilation::ModTable()->in_order()) {
      if (module->getSet() == nullptr) tolerate(module, [module] { module->compile(); });
      open.running = false;
    }
    if (open.told || remarks_.all.size() != before) tell(remarks_.all);
  }
  const std::vector<Diagnostic>& found() const { return remarks_.all; }

 private:
  void take_fault(const Module* module) {
    Diagnostic fault = fault_under_way();
    if (!fault.where.known() && module != nullptr) fault.where = place_of(module->getSpan());
    if (!fault.where.known()) fault.where.file = path_;
    remarks_.take(fault);
  }

  const std::string& path_;
  Remarks remarks_;
  Session session_;
  Session::Use use_;
  process_end_handler before_;
  std::list<std::string> files_;
};

}  // namespace

void check_text(const std::string& path, const std::map<std::string, std::string>& texts,
                const std::function<void()>& guard, const Tell& tell) {
  Check check(path, texts);
  const bool good = check.read();
  tell(check.found());
  if (good) check.compile(guard, tell);
}

}  // namespace kiva::language
