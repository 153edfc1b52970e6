#pragma once

#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace kiva::test {

/// A condition over signals, each present or not.
struct Condition {
  enum class Kind { signal, negation, both, either, always, never };
  Kind kind = Kind::always;
  std::string signal;
  std::vector<Condition> parts;

  bool holds(const std::set<std::string>& present) const;
  std::string text() const;
};

/// A program as a tree of values, in the language's own constructs.
struct Program {
  enum class Kind {
    nothing,
    halt,
    pause,
    emit,
    sustain,
    wait,
    loop,
    sequence,
    parallel,
    present,
    weak_abort,
    strong_abort,
    repeat
  };
  Kind kind = Kind::nothing;
  std::string signal;          ///< emit, sustain
  Condition condition;         ///< sustain, wait, present, aborts
  int count = 1;               ///< wait, repeat
  std::vector<Program> parts;  ///< `present` has one or two

  std::string text() const;
  int size() const;
  /// All programs that are one step smaller.
  std::vector<Program> smaller() const;
};

inline const std::vector<std::string> input_names{"x", "y", "z"};
inline const std::vector<std::string> output_names{"a", "b", "c"};
inline const std::vector<std::string> local_names{"L", "M"};

/// The text of a module with that body.
std::string module_text(const Program& body);

/// A program of about `size` statements.
Program random_program(std::mt19937& random, int size);

}  // namespace kiva::test
