#pragma once

#include <chrono>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace kiva::tarn_program {

/// The stages of a run: their times, and, on a terminal, the one under way.
class Stages {
 public:
  Stages();
  /// Begins a stage, and ends the one before it.
  void begin(const std::string& name);
  void end();
  /// A line for each stage that has ended.
  void print(std::ostream& out) const;

 private:
  bool terminal_;
  std::string name_;
  std::chrono::steady_clock::time_point start_;
  std::vector<std::pair<std::string, double>> times_;
};

}  // namespace kiva::tarn_program
