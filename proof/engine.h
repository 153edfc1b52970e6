#pragma once

#include <atomic>
#include <chrono>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "proof/machine.h"

namespace kiva::proof {

/// When work shall pause: at a time, when asked, or after so many steps. Steps are counted by what
/// is done, and take about a nanosecond each: turns that end by them are the same whenever the same
/// is asked.
class Stop {
 public:
  using Clock = std::chrono::steady_clock;
  /// `asked` may be null.
  Stop(Clock::time_point end, const std::atomic<bool>* asked,
       double steps = std::numeric_limits<double>::infinity())
      : end_(end), asked_(asked), steps_(steps) {}
  /// For so many seconds from now on.
  static Stop after(double seconds, const std::atomic<bool>* asked = nullptr);
  /// For as many steps as take about so many seconds.
  static Stop about(double seconds, const std::atomic<bool>* asked,
                    Clock::time_point end = Clock::time_point::max()) {
    return {end, asked, seconds * 1e9};
  }
  /// Whoever works tells how many steps it took.
  void count(double steps) const { steps_ -= steps; }
  bool operator()() const {
    return steps_ <= 0 || (asked_ != nullptr && asked_->load(std::memory_order_relaxed)) ||
           Clock::now() >= end_;
  }

 private:
  Clock::time_point end_;
  const std::atomic<bool>* asked_;
  mutable double steps_;  ///< left
};

/// A set of states that holds the start, that no instant leaves, and in which nothing is bad.
struct Invariant {
  Aig aig;
  std::vector<Literal> latches;  ///< variables, by place among the machine's latches
  Literal holds = one;
};

enum class Verdict { unknown, holds, fails };

struct [[nodiscard]] Answer {
  Verdict verdict = Verdict::unknown;
  std::string engine = {};                  ///< whose answer it is
  Run run = {};                             ///< of `fails`: `bad` is 1 in its last instant
  bool shortest = true;                     ///< of that run
  std::optional<Invariant> invariant = {};  ///< of `holds`, where the engine gives one
  std::string how = {};                     ///< of `holds`: by what, for a person
};

/// One way to an answer for a machine, which must outlive it.
class Engine {
 public:
  virtual ~Engine() = default;
  virtual std::string name() const = 0;
  /// Goes on from where the last call paused. `unknown` when stopped, or when `exhausted`.
  virtual Answer work(const Stop& stop) = 0;
  /// No more work will give an answer.
  [[nodiscard]] virtual bool exhausted() const { return false; }
  /// How far it came, for a person; "" before anything is known.
  virtual std::string so_far() const = 0;
  /// Instants of all runs in which nothing is bad, as far as this engine knows.
  virtual size_t good_instants() const { return 0; }
};

/// 64 random runs at a time; never says that something holds. Its runs may not be the shortest.
[[nodiscard]] std::unique_ptr<Engine> random_search(const Machine& machine);
/// All runs of one, two, three instants by SAT: finds the shortest.
[[nodiscard]] std::unique_ptr<Engine> bounded_search(const Machine& machine);
/// A run of so many instants without bad ones is followed by a good one, when no state repeats.
[[nodiscard]] std::unique_ptr<Engine> induction(const Machine& machine);
/// Sets of states around those reached in so many instants, refined until one is closed.
[[nodiscard]] std::unique_ptr<Engine> frames_search(const Machine& machine);
/// Layers of reachable states as diagrams: finds the shortest run, too.
[[nodiscard]] std::unique_ptr<Engine> state_walk(const Machine& machine);

}  // namespace kiva::proof
