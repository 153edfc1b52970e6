#include "programs/reporter.h"

#include "programs/report.h"

namespace kiva::programs {

void Reporter::choose(const std::string& word) {
  if (word == "error") {
    strict_ = true;
  } else {
    silent_.insert(word.substr(word.find('-') + 1));
  }
}

void Reporter::take(const Diagnostic& diagnostic) {
  Diagnostic shown = diagnostic;
  if (shown.severity != Severity::error) {
    if (shown.for_callers || silent_.contains(shown.name)) return;
    if (!shown.name.empty()) shown.sentence += " [-W" + shown.name + "]";
    if (strict_ && shown.severity == Severity::warning) shown.severity = Severity::error;
  }
  if (shown.severity == Severity::error) ++errors_;
  complain(program_, shown);
}

}  // namespace kiva::programs
