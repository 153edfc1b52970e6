// Bradley, "SAT-based model checking without unrolling" (2011), in the form of Een, Mishchenko and
// Brayton (2011). Frame i holds all states reached in i instants or fewer, and others; a clause is
// kept in the highest frame in which it is known to hold, and holds in all below. A state of the
// last frame that is bad is an obligation: it is shown to be out of reach, by a clause made of it
// that one instant from the frame below cannot break, or leads to an obligation one frame below,
// down to the start.
//
//   1. Frame 0 is the start alone; no cube that is blocked holds it.
//   2. The clauses of frame i + 1 hold in frame i, and after an instant from frame i.

#include <algorithm>
#include <deque>

#include "base/check.h"
#include "proof/engine.h"
#include "proof/sat.h"

namespace kiva::proof {

namespace {

/// Latches, from 1, each with the sign of its value; ascending by latch.
using Cube = std::vector<int>;

bool covers(const Cube& larger_set, const Cube& cube) {
  return std::includes(
      cube.begin(), cube.end(), larger_set.begin(), larger_set.end(),
      [](int a, int b) { return std::abs(a) != std::abs(b) ? std::abs(a) < std::abs(b) : a < b; });
}

struct Obligation {
  Cube cube;
  size_t level;
  size_t distance;  ///< instants to the bad one
  std::vector<bool> inputs;
  const Obligation* next;  ///< null where the inputs make the instant bad
};

class FramesSearch : public Engine {
 public:
  explicit FramesSearch(const Machine& machine) : machine_(machine) {
    frames_.resize(1);
    fresh_solver();
  }

  std::string name() const override { return "frames"; }
  size_t good_instants() const override { return good_; }
  std::string so_far() const override {
    size_t clauses = 0;
    for (const std::vector<Cube>& frame : frames_) clauses += frame.size();
    return std::to_string(frames_.size() - 1) + " frames, " + std::to_string(clauses) + " clauses";
  }

  Answer work(const Stop& stop) override {
    stop_ = &stop;
    try {
      return search();
    } catch (const Paused&) {
      return {};
    }
  }

 private:
  struct Paused {};

  Answer search() {
    for (;;) {
      const size_t top = frames_.size() - 1;
      while (ask(assumptions_of(top, {bad_}))) {
        obligations_.clear();
        take_model();
        const Obligation* start = add_obligation(lifted({machine_.bad}), top, inputs_, nullptr);
        if (const Obligation* begin = block(start)) return failing(begin);
      }
      good_ = frames_.size();
      frames_.emplace_back();
      levels_.push_back(solver_->fresh());
      if (const size_t closed = push_clauses()) return holding(closed);
    }
  }

  // The solver -----------------------------------------------------------------------------------

  void fresh_solver() {
    solver_ = std::make_unique<Sat>(machine_.aig, true);
    levels_.clear();
    for (size_t level = 0; level < frames_.size(); ++level) levels_.push_back(solver_->fresh());
    for (const Machine::Latch& latch : machine_.latches)
      solver_->clause({-levels_[0],
                       latch.initial ? solver_->literal(latch.now) : -solver_->literal(latch.now)});
    for (size_t level = 1; level < frames_.size(); ++level)
      for (const Cube& cube : frames_[level]) enter(cube, level);
    bad_ = solver_->literal(machine_.bad);
    lift_ = std::make_unique<Sat>(machine_.aig, true);
    used_up_ = 0;
  }

  bool ask(const std::vector<int>& assumptions) {
    if ((*stop_)()) throw Paused();
    const std::optional<bool> answer = solver_->solve(assumptions, *stop_);
    if (!answer) throw Paused();
    return *answer;
  }

  std::vector<int> assumptions_of(size_t level, std::vector<int> others) const {
    for (size_t k = level; k < levels_.size() && (level > 0 || k == 0); ++k)
      others.push_back(levels_[k]);
    return others;
  }

  static const Machine::Latch& latch(const Machine& machine, int literal) {
    return machine.latches[static_cast<size_t>(std::abs(literal) - 1)];
  }
  int now(int literal) {
    const int variable = solver_->literal(latch(machine_, literal).now);
    return literal > 0 ? variable : -variable;
  }
  int next(int literal) {
    const int variable = solver_->literal(latch(machine_, literal).next);
    return literal > 0 ? variable : -variable;
  }

  void enter(const Cube& cube, size_t level) {
    std::vector<int> clause{-levels_[level]};
    for (int literal : cube) clause.push_back(-now(literal));
    solver_->clause(clause);
  }

  /// Whether an instant leads from the frame, outside the cube, into the cube. If not, `cube`
  /// becomes the part of it that was needed to see that.
  bool reached(Cube& cube, size_t from) {
    if (++used_up_ > 3000) fresh_solver();
    const int outside = solver_->fresh();
    std::vector<int> clause{-outside}, nexts;
    for (int literal : cube) {
      clause.push_back(-now(literal));
      nexts.push_back(next(literal));
    }
    solver_->clause(clause);
    std::vector<int> assumptions = assumptions_of(from, nexts);
    assumptions.push_back(outside);
    const bool is = ask(assumptions);
    if (is) {
      take_model();
    } else {
      Cube core;
      for (size_t k = 0; k < cube.size(); ++k)
        if (solver_->failed(nexts[k])) core.push_back(cube[k]);
      cube = away_from_start(core, cube);
    }
    solver_->clause({-outside});
    return is;
  }

  // Cubes ----------------------------------------------------------------------------------------

  bool is_initial(int literal) const { return latch(machine_, literal).initial == (literal > 0); }
  bool holds_start(const Cube& cube) const {
    return std::all_of(cube.begin(), cube.end(), [this](int l) { return is_initial(l); });
  }
  /// The part, with a literal of the whole that keeps the start out.
  Cube away_from_start(Cube part, const Cube& whole) const {
    if (!holds_start(part)) return part;
    for (int literal : whole) {
      if (is_initial(literal)) continue;
      part.push_back(literal);
      std::sort(part.begin(), part.end(), [](int a, int b) { return std::abs(a) < std::abs(b); });
      break;
    }
    return part;
  }

  void take_model() {
    model_.clear();
    for (size_t k = 0; k < machine_.latches.size(); ++k) {
      const int id = static_cast<int>(k) + 1;
      model_.push_back(solver_->value_of(machine_.latches[k].now) ? id : -id);
    }
    inputs_.clear();
    for (const Machine::Input& input : machine_.inputs)
      inputs_.push_back(solver_->value_of(input.literal));
  }
  /// The part of the model's state that makes one of the literals 1 under the model's inputs, where
  /// `all` are to be.
  Cube lifted(const std::vector<Literal>& all) {
    const int goal = lift_->fresh();
    std::vector<int> clause{-goal}, assumptions{goal};
    for (Literal literal : all) clause.push_back(-lift_->literal(literal));
    lift_->clause(clause);
    for (size_t k = 0; k < inputs_.size(); ++k) {
      const int input = lift_->literal(machine_.inputs[k].literal);
      assumptions.push_back(inputs_[k] ? input : -input);
    }
    std::vector<int> states;
    for (int literal : model_) {
      const int variable = lift_->literal(latch(machine_, literal).now);
      states.push_back(literal > 0 ? variable : -variable);
    }
    assumptions.insert(assumptions.end(), states.begin(), states.end());
    const std::optional<bool> found = lift_->solve(assumptions, *stop_);
    if (!found) throw Paused();
    KIVA_CHECK(2, !*found);
    Cube cube;
    for (size_t k = 0; k < states.size(); ++k)
      if (lift_->failed(states[k])) cube.push_back(model_[k]);
    lift_->clause({-goal});
    return cube;
  }

  // Obligations ----------------------------------------------------------------------------------

  const Obligation* add_obligation(Cube cube, size_t level, std::vector<bool> inputs,
                                   const Obligation* next) {
    obligations_.push_back({std::move(cube), level, next == nullptr ? 0 : next->distance + 1,
                            std::move(inputs), next});
    return &obligations_.back();
  }

  bool blocked(const Cube& cube, size_t level) const {
    for (size_t k = level; k < frames_.size(); ++k)
      for (const Cube& known : frames_[k])
        if (covers(known, cube)) return true;
    return false;
  }

  /// Null when the obligation is met, else the one that holds the start.
  const Obligation* block(const Obligation* first) {
    const size_t top = frames_.size() - 1;
    std::vector<std::vector<const Obligation*>> open(top + 1);
    open[first->level].push_back(first);
    for (size_t level = first->level; level <= top;) {
      if (open[level].empty()) {
        ++level;
        continue;
      }
      const Obligation* o = open[level].back();
      if (holds_start(o->cube)) return o;
      Cube cube = o->cube;
      if (!blocked(cube, level)) {
        if (reached(cube, level - 1)) {
          std::vector<Literal> nexts;
          for (int literal : o->cube)
            nexts.push_back(negated_if(latch(machine_, literal).next, literal < 0));
          const Obligation* before = add_obligation(lifted(nexts), level - 1, inputs_, o);
          open[--level].push_back(before);
          continue;
        }
        learn(cube, level);
      }
      open[level].pop_back();
      if (level < top) open[level + 1].push_back(o);
    }
    return nullptr;
  }

  /// Blocks the cube, and what can be blocked with it, in the frame and as far behind as it holds.
  void learn(Cube cube, size_t level) {
    for (size_t k = 0; k < cube.size() && cube.size() > 1;) {
      Cube smaller = cube;
      const int dropped = smaller[k];
      smaller.erase(smaller.begin() + static_cast<std::ptrdiff_t>(k));
      if (holds_start(smaller) || reached(smaller, level - 1)) {
        ++k;
        continue;
      }
      cube = smaller;
      // Those before k have been tried.
      k = static_cast<size_t>(std::count_if(
          cube.begin(), cube.end(), [&](int l) { return std::abs(l) < std::abs(dropped); }));
    }
    Cube same = cube;
    while (level + 1 < frames_.size() && !reached(same, level)) {
      cube = same;
      ++level;
    }
    add_clause(cube, level);
  }

  void add_clause(const Cube& cube, size_t level) {
    for (size_t k = 1; k <= level; ++k)
      std::erase_if(frames_[k], [&](const Cube& known) { return covers(cube, known); });
    frames_[level].push_back(cube);
    enter(cube, level);
  }

  /// Moves each clause as far as it holds; the first frame that has none left, 0 for none.
  size_t push_clauses() {
    for (size_t level = 1; level + 1 < frames_.size(); ++level) {
      for (const Cube& cube : std::vector<Cube>(frames_[level])) {
        Cube part = cube;
        if (!reached(part, level)) add_clause(part, level + 1);
      }
      if (frames_[level].empty()) return level;
    }
    return 0;
  }

  // Answers --------------------------------------------------------------------------------------

  Answer failing(const Obligation* begin) const {
    Answer answer{.verdict = Verdict::fails, .engine = name(), .shortest = false};
    for (const Obligation* o = begin; o != nullptr; o = o->next) answer.run.push_back(o->inputs);
    // A predecessor's inputs may be bad at once.
    answer.run.resize(first_bad(machine_, answer.run));
    return answer;
  }

  Answer holding(size_t closed) const {
    Answer answer{.verdict = Verdict::holds, .engine = name()};
    Invariant& invariant = answer.invariant.emplace();
    for (size_t k = 0; k < machine_.latches.size(); ++k)
      invariant.latches.push_back(invariant.aig.variable());
    size_t clauses = 0;
    for (size_t level = closed + 1; level < frames_.size(); ++level)
      for (const Cube& cube : frames_[level]) {
        ++clauses;
        Literal inside = one;
        for (int literal : cube)
          inside = invariant.aig.both(
              inside, negated_if(invariant.latches[static_cast<size_t>(std::abs(literal) - 1)],
                                 literal < 0));
        invariant.holds = invariant.aig.both(invariant.holds, negated(inside));
      }
    answer.how = "an invariant of " + std::to_string(clauses) +
                 (clauses == 1 ? " clause" : " clauses") + ", found with " +
                 std::to_string(frames_.size() - 1) + " frames";
    return answer;
  }

  const Machine& machine_;
  std::unique_ptr<Sat> solver_;
  std::unique_ptr<Sat> lift_;  ///< the machine without frames
  const Stop* stop_ = nullptr;
  std::vector<int> levels_;                ///< by frame: raised for its clauses to hold
  std::vector<std::vector<Cube>> frames_;  ///< cubes that the frame, and those below, do not hold
  int bad_ = 0;
  int used_up_ = 0;  ///< questions that left something behind in the solver
  size_t good_ = 0;
  std::deque<Obligation> obligations_;
  Cube model_;
  std::vector<bool> inputs_;
};

}  // namespace

std::unique_ptr<Engine> frames_search(const Machine& machine) {
  return std::make_unique<FramesSearch>(machine);
}

}  // namespace kiva::proof
