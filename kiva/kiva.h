#pragma once

/// The front of the library, for programs of others: compile ZU source text or read compiled
/// modules, hear what is wrong with them, run them an instant at a time.
///
///     kiva::front::Workspace workspace;
///     if (!workspace.compile("lamp.zu"))
///       for (const kiva::front::Remark& remark : workspace.remarks()) std::cerr << remark.text()
///       << '\n';
///     kiva::front::Run lamp = workspace.run("lamp");
///     lamp.choose("button", kiva::front::State::one);
///     lamp.step();
///     bool lit = lamp.state("light") == kiva::front::State::one;
///
/// Workspaces know nothing of each other and may be used in different threads, each in one at a
/// time. What goes wrong is a std::runtime_error where it is not a remark.

#include <memory>
#include <string>
#include <vector>

namespace kiva::front {

/// "MAJOR.MINOR.PATCH" of the library.
std::string version();

/// The state of a signal in one instant: present, absent, contradictory, without information, and
/// not computed yet.
enum class State { one, zero, top, bottom, unknown };

/// What there is to say about a text.
struct Remark {
  enum class Kind { error, warning, note };
  Kind kind = Kind::error;
  std::string name;  ///< of a warning, for whoever wants to leave it out
  std::string file;  ///< "" where no place is known
  int line = 0;      ///< from 1; 0 where it is not known
  int column = 0;    ///< in bytes, from 1; 0 where it is not known
  std::string reason;

  /// "FILE:LINE:COLUMN: error: REASON", as far as known.
  std::string text() const;
};

class Run;

/// Modules, and what has been said of them.
class Workspace {
 public:
  Workspace();
  ~Workspace();
  Workspace(Workspace&&) noexcept;
  Workspace& operator=(Workspace&&) noexcept;

  /// Compiles each module of a source file (.zu). False when a remark tells an error.
  [[nodiscard]] bool compile(const std::string& file);
  /// Reads a compiled module (.zuc). False when a remark tells an error.
  [[nodiscard]] bool read(const std::string& file);

  /// What the last compile() or read() had to say, in order of the text.
  const std::vector<Remark>& remarks() const;
  /// The names of all modules so far, in order of arrival.
  std::vector<std::string> modules() const;
  /// Writes a compiled module (.zuc) whole, or not at all and throws.
  void write(const std::string& module, const std::string& file) const;
  /// A run of the module from its start. Throws where there is no module of this name, or where it
  /// has signals whose values an evaluation server computes.
  Run run(const std::string& module) const;

 private:
  struct Held;
  std::shared_ptr<Held> held_;
  friend class Run;
};

/// A module being run; it keeps alive what it needs of its workspace, and is used in one thread
/// with it.
class Run {
 public:
  ~Run();
  Run(Run&&) noexcept;
  Run& operator=(Run&&) noexcept;

  const std::vector<std::string>& inputs() const;
  const std::vector<std::string>& outputs() const;
  const std::vector<std::string>& locals() const;
  const std::vector<std::string>& registers() const;

  /// The input's state from the next instant on, One, Zero, Top or Bottom. Inputs are Zero at
  /// first. Throws for an unknown name.
  void choose(const std::string& input, State state);
  /// One instant.
  void step();
  /// How a signal stood in the last instant, a register how it stands after it; unknown before the
  /// first. Throws for an unknown name. In a long run asking for outputs alone is faster by far
  /// than for any other signal.
  State state(const std::string& signal) const;
  /// Instants since the start.
  long instant() const;
  /// Back to the start, all inputs Zero.
  void restart();

 private:
  struct Held;
  explicit Run(std::unique_ptr<Held> held);
  std::unique_ptr<Held> held_;
  friend class Workspace;
};

}  // namespace kiva::front
