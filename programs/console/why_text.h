#pragma once

#include <iosfwd>
#include <set>
#include <string>

#include "engine/why.h"

namespace kiva::console {

/// NAME@INSTANT, and why it is so.
class WhyText {
 public:
  struct Refused {
    std::string reason;
  };
  /// Throws Refused.
  WhyText(const std::string& text, bool way_down, const Simulation& simulation);

  /// A member a line: "button = Zero". 0, the status of the program.
  int print(std::ostream& out, const Reasons::Instant& instant);

  long instant = 0;

 private:
  void way_down(std::ostream& out, const std::string& name, const Reasons::Instant& instant,
                int depth);

  Reasons reasons_;
  std::string name_;
  SignalPlace place_{};
  bool way_down_;
  std::set<std::string> told_;
};

}  // namespace kiva::console
