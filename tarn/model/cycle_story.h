#pragma once

#include <list>
#include <optional>
#include <string>
#include <vector>

#include "tarn/model/equationtable.h"

namespace kiva {

/// One shortest cycle among equations that depend on themselves, told in the signals and the lines
/// of the source: which signal follows from which, and what may be done about it.
class CycleStory {
 public:
  /// `members` are the variables on cycles, not none.
  CycleStory(const EquationTable& table, const std::list<long>& members);
  /// Sets place, sentence and notes: a note a step, and one of advice; ten at most.
  void tell(Diagnostic& fault) const;

 private:
  /// A signal by its name, or a statement.
  struct Step {
    std::string label;
    SourceSpan span;
  };

  std::vector<long> shortest(const std::list<long>& members) const;
  std::vector<long> shortest_through(long index, const index_set& members, size_t& budget) const;
  std::string signal_name(long index) const;
  /// What a variable is in the source: a signal's name, or the place of the statement it belongs
  /// to.
  Step member(const EquationTable* table, std::string name) const;
  /// The statement by which a signal hangs on the one before it with no wire between.
  SourceSpan direct_cause(long from, long to) const;
  void gather_steps(const std::vector<long>& cycle);
  void gather_statements(const std::vector<Step>& members);
  void gather_signals(const std::vector<long>& cycle, const std::vector<Step>& members,
                      size_t first);
  std::string text_of(const SourceSpan& span) const;

  const EquationTable& table_;
  std::vector<Step> steps_;  ///< each follows from the one before it, the first from the last
  bool of_signals_ = false;  ///< steps are signals, else statements
  mutable bool strong_abort_ = false;
};

}  // namespace kiva
