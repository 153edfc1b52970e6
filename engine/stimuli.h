#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/simulation.h"

namespace kiva {

/// What one line of stimuli asks of an instant: inputs by row, all others Zero.
struct Stimulus {
  struct Choice {
    size_t row;
    SignalState state;
    std::string text;  ///< value text, "--" where the line gives none
  };
  std::vector<Choice> choices;
  bool set = false;
  bool reset = false;
};

/// A line that cannot be used.
struct StimuliError {
  long line;  ///< from 1
  std::string reason;
};

/// Reads stimuli line by line:
///   NAME              input One            NAME=text       One with that value text
///   NAME:one|zero|top|bottom               NAME:one=text
///   !set, !reset      raises the wire for this instant
/// An empty line is an instant with nothing present; a line that begins with "#" is skipped.
class StimuliReader {
 public:
  StimuliReader(std::istream& in, const Simulation& simulation);
  /// The next instant, nothing at the end of the text; throws StimuliError.
  [[nodiscard]] std::optional<Stimulus> next();
  /// Number of the line read last.
  long line() const { return line_; }

 private:
  Stimulus parse(const std::string& text) const;
  Stimulus::Choice parse_choice(const std::string& token) const;

  std::istream& in_;
  std::unordered_map<std::string, size_t> rows_;
  long line_ = 0;
};

/// Sets every input and raises the wires; a wire raised already (set, after a load) stays so.
void apply(const Stimulus& stimulus, Simulation& simulation);

}  // namespace kiva
