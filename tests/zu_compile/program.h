#pragma once

#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace kiva::test {

/// A condition over signals, each present or not.
struct Condition {
  enum class Kind { signal, negation, both, either, neither, not_both, differ, always, never };
  Kind kind = Kind::always;
  std::string signal;
  std::vector<Condition> parts;

  bool holds(const std::set<std::string>& present) const;
  std::string text() const;
};

struct AutomatonState;
struct Transition;

/// An equation of a Mealy machine.
struct MealyEquation {
  std::string signal;
  Condition right;
};

/// A program as a tree of values, in the language's own constructs. An automaton or a Mealy machine
/// stands alone.
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
    repeat,
    automaton,
    mealy
  };
  Kind kind = Kind::nothing;
  std::string signal;          ///< emit, sustain
  Condition condition;         ///< sustain, wait, present, aborts
  int count = 1;               ///< wait, repeat
  std::vector<Program> parts;  ///< `present` has one or two
  std::vector<AutomatonState> states;
  std::vector<Transition> transitions;
  std::vector<MealyEquation> equations;

  std::string text() const;
  int size() const;
  /// All programs that are one step smaller.
  std::vector<Program> smaller() const;
};

struct AutomatonState {
  bool final_state = false;
  std::vector<std::string> actions;
  std::vector<Program> run;  ///< at most one; the module it runs has this body
};

/// A transition by the places of its states; from -1 for an initial one.
struct Transition {
  enum class Kind { strong, weak, normal_termination };
  Kind kind = Kind::strong;
  int from = -1;
  int to = 0;
  int priority = 0;  ///< -1: other
  Condition trigger;
  std::vector<std::string> actions;
};

inline const std::vector<std::string> input_names{"x", "y", "z"};
inline const std::vector<std::string> output_names{"a", "b", "c"};
inline const std::vector<std::string> local_names{"L", "M"};

/// The registers of every Mealy machine, with their initial values and next variables.
struct MealyRegister {
  std::string name;
  bool initial;
  std::string next;
};
inline const std::vector<MealyRegister> mealy_registers{{"r", false, "nr"}, {"s", true, "ns"}};

/// The text of module "main" with that body, and of the modules that its states run.
std::string module_text(const Program& body);

/// A program of about `size` statements.
Program random_program(std::mt19937& random, int size);
/// An automaton of up to about `size` transitions, deterministic.
Program random_automaton(std::mt19937& random, int size);
/// A machine of up to about `size` equations.
Program random_mealy(std::mt19937& random, int size);

}  // namespace kiva::test
