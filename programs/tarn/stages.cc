#include "programs/tarn/stages.h"

#include <unistd.h>

#include <iostream>

#include "base/translation.h"
#include "programs/told_text.h"
#include "tarn/zu/progress.h"

namespace kiva::tarn_program {

Stages::Stages() : terminal_(isatty(STDERR_FILENO) != 0) {
  stage_begun() = [this](const std::string& name) { begin(name); };
  if (!terminal_) return;
  statement_begun() = [this] {
    ++statements_;
    if (std::chrono::steady_clock::now() - shown_ >= std::chrono::milliseconds(100)) show();
  };
}

Stages::~Stages() {
  end();
  stage_begun() = nullptr;
  if (terminal_) statement_begun() = nullptr;
}

void Stages::show() {
  shown_ = std::chrono::steady_clock::now();
  programs::errors() << '\r' << translated(name_);
  if (statements_ > 0)
    programs::errors() << ": " << translated(std::to_string(statements_) + " statements");
  programs::errors() << " ...\033[K" << std::flush;
}

void Stages::begin(const std::string& name) {
  end();
  name_ = name;
  start_ = std::chrono::steady_clock::now();
  statements_ = 0;
  if (terminal_) show();
}

void Stages::end() {
  if (name_.empty()) return;
  times_.emplace_back(
      name_, std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count());
  name_.clear();
  if (terminal_) programs::errors() << "\r\033[K" << std::flush;
}

void Stages::print(std::ostream& out) const {
  for (const auto& [name, seconds] : times_)
    out << "  " << translated(name) << ": " << seconds << " s\n";
}

}  // namespace kiva::tarn_program
