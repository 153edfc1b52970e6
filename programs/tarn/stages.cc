#include "programs/tarn/stages.h"

#include <unistd.h>

#include <iostream>

namespace kiva::tarn_program {

Stages::Stages() : terminal_(isatty(STDERR_FILENO) != 0) {}

void Stages::begin(const std::string& name) {
  end();
  name_ = name;
  start_ = std::chrono::steady_clock::now();
  if (terminal_) std::cerr << '\r' << name << " ...\033[K" << std::flush;
}

void Stages::end() {
  if (name_.empty()) return;
  times_.emplace_back(
      name_, std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count());
  name_.clear();
  if (terminal_) std::cerr << "\r\033[K" << std::flush;
}

void Stages::print(std::ostream& out) const {
  for (const auto& [name, seconds] : times_) out << "  " << name << ": " << seconds << " s\n";
}

}  // namespace kiva::tarn_program
