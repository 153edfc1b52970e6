#pragma once

#include <iosfwd>
#include <optional>
#include <set>
#include <string>

#include "engine/lit_source.h"
#include "engine/why.h"

namespace kiva::console {

/// NAME@INSTANT, and why it is so.
class WhyText {
 public:
  struct Refused {
    std::string reason;
  };
  /// Throws Refused. `map_text` is the map of the source, empty where there is none.
  WhyText(const std::string& text, bool way_down, const Simulation& simulation,
          const std::string& map_text);

  /// A member a line: "button = Zero"; a register with what it says of the source, behind "#".
  /// 0, the status of the program.
  int print(std::ostream& out, const Reasons::Instant& instant);

  long instant = 0;

 private:
  void way_down(std::ostream& out, const std::string& name, const Reasons::Instant& instant,
                int depth);

  std::string words_of(const Cause& cause, const std::vector<Cause>& causes) const;
  std::string states_of(const std::vector<LitSource::CodeBit>& bits) const;
  /// The local that shows a register, if there is one.
  std::optional<size_t> local_of(const Cause& cause) const;

  Reasons reasons_;
  SignalNames names_;
  std::optional<LitSource> source_;
  std::string name_;
  SignalPlace place_{};
  bool way_down_;
  std::set<std::string> told_;
};

}  // namespace kiva::console
