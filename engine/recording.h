#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/signal_names.h"
#include "engine/simulation.h"

namespace kiva {

/// What was chosen for one instant: inputs by row, their value texts, the two wires.
struct Choices {
  std::vector<SignalState> inputs;
  std::vector<std::string> texts;
  bool set = false;
  bool reset = false;

  friend bool operator==(const Choices&, const Choices&) = default;
};
/// Those that stand for the next instant.
[[nodiscard]] Choices choices_of(const SimulationState& state);
void apply(const Choices& choices, Simulation& simulation);

/// The past of a running module: every instant of every branch, each at hand again. It moves the
/// simulation, which nobody else steps meanwhile. Not for two threads at once.
class Recording {
 public:
  /// An instant of a branch; instants up to the one from which the branch departs are its parent's.
  struct Position {
    size_t branch = 0;
    long instant = 0;
    friend bool operator==(const Position&, const Position&) = default;
  };
  static constexpr size_t no_parent = static_cast<size_t>(-1);
  struct BranchInfo {
    size_t parent;     ///< `no_parent` for one that begins at the load or at an Init
    long from;         ///< the parent's instant behind which it departs; without, where it begins
    long last;         ///< its last instant
    bool initialised;  ///< begins at an Init, or its parent does
  };
  enum class Stopped { done, condition, asked };

  /// Begins where the simulation stands, as instant 0 of branch 0. It must outlive the recording.
  explicit Recording(Simulation* simulation);
  ~Recording();
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  Simulation& simulation() const { return *simulation_; }
  Position position() const { return position_; }
  size_t branches() const;
  BranchInfo branch(size_t branch) const;
  /// The same instant, as one of the branch in which it was run.
  Position owner(Position position) const;
  /// Where the branch that is shown, or the ancestor that it comes from, begins.
  long first_instant() const;
  /// The instant in which the signal came to the state that it shows there, from 1 on; 0 where it
  /// has been so since the start, -1 where that lies further back than `most` instants.
  long since(SignalPlace signal, Position position, long most);
  /// Bytes that the past takes.
  size_t memory() const;

  /// One instant with the choices as they stand. Where this instant has been recorded with the same
  /// choices, that one is shown again and no server is asked; with others, a branch begins. An
  /// exception leaves everything as it was.
  void go(Sock socket);
  /// To the start by Init; what was recorded stays.
  void init();
  /// An instant back or on along the branch; false at its ends.
  bool back();
  bool forward();
  /// False where there is no such instant.
  bool to(Position position);

  /// `go` for so many instants, the choices for each made by `choose` (may be null: they stand).
  /// Stops behind the instant for which `until` holds (may be null), or as soon as `stop` is set.
  Stopped run(long instants, Sock socket, const std::function<void()>& choose,
              const std::function<bool(const SimulationState&)>& until,
              const std::atomic<bool>* stop);

  /// The state shown there, a function of the position alone. The reference holds until the next
  /// call. There must be such an instant.
  const SimulationState& state_at(Position position);
  /// The choices with which that instant, from 1 on, was run.
  [[nodiscard]] Choices choices_at(Position position);

 private:
  struct Branch;
  struct Cursor;

  [[nodiscard]] bool exists(Position position) const;
  size_t branch_here();
  void append(size_t branch, const SimulationState& before, const Choices& choices);
  void seek(Position owned);
  void read_next();

  Simulation* simulation_;
  Simulation replay_;  ///< runs the past again, beside the one that is shown
  bool keeps_results_;
  Position position_;
  std::vector<Branch> branches_;
  std::unique_ptr<Cursor> cursor_;
};

}  // namespace kiva
