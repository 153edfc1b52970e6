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
    if (silent_.contains(shown.name) || (shown.name.empty() && !shown.where.known())) return;
    if (!shown.name.empty()) shown.sentence += " [-W" + shown.name + "]";
    if (strict_ && shown.severity == Severity::warning) shown.severity = Severity::error;
  }
  if (shown.severity == Severity::error) ++errors_;
  complain(program_, shown);
}

}  // namespace kiva::programs
