#pragma once

#include <optional>
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
  std::vector<std::string> signals() const;
};

struct AutomatonState;
struct Transition;
struct Program;
class Meaning;

/// Where a running statement stands. Which fields count depends on the statement.
struct Running {
  int at = 0;                                 ///< member, branch, state; times left of a wait
  std::vector<std::optional<Running>> parts;  ///< empty: that part has ended
  std::set<const struct Program*> of = {};    ///< the statements that stand so
};
using State = std::optional<Running>;  // empty: ended

/// What the tests know of one statement, apart from its equations.
struct Kind {
  const char* name;     ///< of its row in the statement table
  int alone = 0;        ///< how often random programs draw it where no other fits inside,
  int around = 0;       ///< and as what stands around others
  size_t least = 1;     ///< parts that it cannot do without
  bool writes = false;  ///< it has a signal
  /// Chooses conditions and counts; gives the number of parts. None chooses nothing.
  int (*draw)(Program& p, std::mt19937& random, int size) = nullptr;
  std::string (*text)(const Program& p);
  // Its instant of start, and a further one: what it leaves for the next.
  State (*start)(Meaning& m, const Program& p);
  State (*resume)(Meaning& m, const Program& p, const Running& state) = nullptr;
};
/// One for each statement that random programs hold (kinds.cc).
const std::vector<const Kind*>& kinds();
const Kind* kind(const std::string& name);
extern const Kind automaton_kind, mealy_kind;  // machines.cc

/// An equation of a Mealy machine.
struct MealyEquation {
  std::string signal;
  Condition right;
};

/// A program as a tree of values, in the language's own constructs. An automaton or a Mealy machine
/// stands alone.
struct Program {
  const Kind* kind = test::kind("nothing");
  std::string signal;  ///< empty where its kind writes none
  Condition condition;
  int count = 1;               ///< wait, repeat
  std::vector<Program> parts;  ///< `present` has one or two
  std::vector<AutomatonState> states;
  std::vector<Transition> transitions;
  std::vector<MealyEquation> equations;

  std::string text() const { return kind->text(*this); }
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

// Choices.
int pick(std::mt19937& random, int below);
template <class Member>
const Member& pick(std::mt19937& random, const std::vector<Member>& names) {
  return names[pick(random, static_cast<int>(names.size()))];
}
const std::string& written_signal(std::mt19937& random);
Condition random_condition(std::mt19937& random, int depth);

/// The text of module "main" with that body, and of the modules that its states run.
std::string module_text(const Program& body);

/// A program of about `size` statements.
Program random_program(std::mt19937& random, int size);
/// An automaton of up to about `size` transitions, deterministic.
Program random_automaton(std::mt19937& random, int size);
/// A machine of up to about `size` equations.
Program random_mealy(std::mt19937& random, int size);

}  // namespace kiva::test
