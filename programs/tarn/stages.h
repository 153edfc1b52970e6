#pragma once

#include <chrono>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace kiva::tarn_program {

/// The stages of a run: their times, and, on a terminal, the one under way with the number of
/// statements compiled so far. One at a time.
class Stages {
 public:
  Stages();
  ~Stages();
  Stages(const Stages&) = delete;
  Stages& operator=(const Stages&) = delete;
  /// Begins a stage, and ends the one before it.
  void begin(const std::string& name);
  void end();
  /// A line for each stage that has ended.
  void print(std::ostream& out) const;

 private:
  void show();

  bool terminal_;
  std::string name_;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point shown_;
  long statements_ = 0;
  std::vector<std::pair<std::string, double>> times_;
};

}  // namespace kiva::tarn_program
