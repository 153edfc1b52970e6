#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/recording.h"
#include "engine/signal_names.h"
#include "engine/simulation.h"

namespace kiva {

/// What a signal of the trace is to be in an instant.
struct Expectation {
  SignalPlace place;
  bool absent = false;  ///< not One, whatever else; `state` is One then
  SignalState state = SignalState::one;
  std::optional<std::string> value;
  std::string written;  ///< as the file has it
};

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
  std::vector<Expectation> expectations;
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
///   -> o !p q=5 r:bottom   what is awaited of outputs, locals and registers: present, not One,
///                     present with that value, in that state (unknown among them)
/// A text with blanks stands in double quotes, \" and \\ in it for the two characters. An empty
/// line is an instant with nothing present; a line that begins with "#" is skipped.
class StimuliReader {
 public:
  StimuliReader(std::istream& in, const Simulation& simulation);

  /// The next instant, nothing at the end of the text; throws StimuliError.
  [[nodiscard]] std::optional<Stimulus> next();
  /// Number of the line read last.
  long line() const { return line_; }

 private:
  friend size_t end_of_choices(const std::string& line);
  struct Token;
  [[nodiscard]] bool read_line(std::string& text);
  Stimulus parse(const std::string& text);
  static Token next_token(const std::string& text, size_t& at);
  SignalState state_of_word(const Token& token, bool awaited) const;
  Stimulus::Choice parse_choice(const Token& token) const;
  Expectation parse_expectation(Token token) const;

  std::istream& in_;
  std::unordered_map<std::string, size_t> rows_;
  std::vector<long> named_on_;  ///< by row: the last line that names it
  std::string text_;            ///< of the line
  SignalNames names_;
  long line_ = 0;
};

/// Sets every input and raises the wires; a wire raised already (set, after a load) stays so.
void apply(const Stimulus& stimulus, Simulation& simulation);

/// Where the choices of a line end: before the blanks and "->" that what is awaited follows.
size_t end_of_choices(const std::string& line);

/// The line that asks for these choices, without its end.
std::string stimulus_line(const Choices& choices, const Simulation& simulation);
/// NAME, NAME=text or NAME:state, as stimuli write it; `text` is "--" for none.
std::string stimulus_text(const std::string& name, SignalState state, const std::string& text);

}  // namespace kiva
