#include "language/checks.h"

#include <algorithm>
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
  void compile(const std::function<void()>& guard) {
    const WorkGuard guarded(guard);
    statement_begun() = guard;
    stage_begun() = [&guard](const std::string&) { guard(); };
    for (Module* module : Compilation::ModTable()->in_order())
      if (module->getSet() == nullptr) tolerate(module, [module] { module->compile(); });
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
                const std::function<void()>& guard,
                const std::function<void(const std::vector<Diagnostic>&)>& tell) {
  Check check(path, texts);
  const bool good = check.read();
  tell(check.found());
  if (!good) return;
  const size_t before = check.found().size();
  check.compile(guard);
  if (check.found().size() != before) tell(check.found());
}

}  // namespace kiva::language
