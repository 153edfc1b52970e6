#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "proof/aig.h"
#include "proof/engine.h"

namespace CaDiCaL {
class Solver;
}

namespace kiva::proof {

/// A SAT solver over the nodes of a graph, which come in as they are needed. The graph may grow.
class Sat {
 public:
  /// `plain` for many small questions: no work ahead of the search.
  explicit Sat(const Aig& aig, bool plain = false);
  ~Sat();
  Sat(const Sat&) = delete;
  Sat& operator=(const Sat&) = delete;

  /// The solver's literal of one of the graph; enters its cone.
  int literal(Literal a);
  /// A variable that no node has.
  int fresh() { return ++variables_; }
  void clause(const std::vector<int>& literals);
  /// Whether clauses and assumptions can hold together; nothing when stopped,
  /// or after so many conflicts, where that is not negative.
  [[nodiscard]] std::optional<bool> solve(const std::vector<int>& assumptions, const Stop& stop,
                                          int conflicts = -1);
  /// After a `true`: whether the literal holds; false for one that was never entered.
  [[nodiscard]] bool value(int literal) const;
  [[nodiscard]] bool value_of(Literal a) const;
  /// After a `false`: whether the assumption had a part in it.
  [[nodiscard]] bool failed(int literal) const;

 private:
  /// What `work` gives. The solver's own tables do not stand a failed allocation: one that
  /// met it cannot be destroyed any more, so its memory is let go.
  template <class Work>
  auto guarded(const Work& work);

  const Aig& aig_;
  bool plain_;
  std::unique_ptr<CaDiCaL::Solver> solver_;
  std::vector<int> variable_of_;  ///< by node; 0 for one that has not come in
  int variables_ = 0;
  long entered_ = 0;  ///< clauses, since the last question
  bool out_of_memory_ = false;
};

}  // namespace kiva::proof
