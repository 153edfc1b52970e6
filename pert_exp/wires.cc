// Wires go: an equation of one variable is put into its readers and removed.
//
// Told one after another, n wires that meet in one reader would rebuild its diagram n times. So a
// wire only notes which literal it stands for, and a reader what it would depend on by the letter:
// the wire's variable for the wire. The reader's diagram is rebuilt once, with all that has gone by
// then put in at once: at its own turn, when it must be known whether it is a wire itself, or at
// the end. A wire that a function has lost by cancellation counts as read until then; it goes, and
// nothing misses it. Who reads a variable is noted, too, and put in place at the variable's turn:
// thousands of wires may stand for one.

#include <algorithm>
#include <optional>
#include <utility>

#include "base/list.h"
#include "pert_exp/wood.h"

namespace kiva {

class Bddexpressionwood::Wire_suppression {
 public:
  explicit Wire_suppression(Bddexpressionwood& wood)
      : w_(wood),
        stands_for_(wood.nb_var_bdd),
        outdated_(wood.nb_var_bdd, 0),
        reader_changes_(wood.nb_var_bdd) {}

  void visit(long index, const std::list<int>& keep) {
    const Bddexpression* e = w_.exp_table[index];
    if (e == nullptr || e->abstraction != 0 || item_in(keep, e->usertype)) return;
    rebuild(index);
    if (e->vars_dependance.size() != 1) return;
    place_readers(index);
    if (!w_.can_be_inlined(index) || w_.has_abstract_reader(index)) return;
    const Literal value{*e->vars_dependance.begin(), e->bdd_exp.link_type() < 0};
    note_reader(value.index, index, false);
    for (long reader : std::exchange(w_.amont_dep_table[index], {})) {
      if (w_.slot(reader) == nullptr) continue;
      note_reader(value.index, reader, true);
      outdated_[reader] = 1;
    }
    stands_for_[index] = value;
    w_.delete_expression(index);
    w_.latest_date_table[index] = 0;
  }

  void rebuild_all() {
    for (long index = 0; index < w_.nb_var_bdd; ++index)
      if (w_.exp_table[index] != nullptr) rebuild(index);
    for (long index = 0; index < w_.nb_var_bdd; ++index) place_readers(index);
  }

 private:
  struct Literal {
    long index;
    bool negated;
  };

  void note_reader(long variable, long reader, bool reads) {
    if (w_.in_tables(variable)) reader_changes_[variable].emplace_back(reader, reads);
  }

  /// Of several changes the last counts.
  void place_readers(long variable) {
    auto changes = std::exchange(reader_changes_[variable], {});
    if (changes.empty()) return;
    std::stable_sort(changes.begin(), changes.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    index_set& readers = w_.amont_dep_table[variable];
    std::vector<long> now;
    auto old = readers.begin();
    for (auto at = changes.begin(); at != changes.end(); ++at) {
      if (at + 1 != changes.end() && at[1].first == at->first) continue;
      while (old != readers.end() && *old < at->first) now.push_back(*old++);
      if (old != readers.end() && *old == at->first) ++old;
      if (at->second) now.push_back(at->first);
    }
    now.insert(now.end(), old, readers.end());
    readers = index_set::from_unsorted(std::move(now));
  }

  void rebuild(long index) {
    if (!outdated_[index]) return;
    outdated_[index] = 0;
    Bddexpression& e = *w_.exp_table[index];
    std::vector<long> reads;
    for (long read : e.vars_dependance)
      reads.push_back(w_.in_tables(read) && stands_for_[read] ? resolved(read).index : read);
    e.vars_dependance = index_set::from_unsorted(std::move(reads));
    std::vector<std::pair<long, bdd>> values;
    for (long read : w_.man->set_of_index_depend_on(e.bdd_exp)) {
      if (!w_.in_tables(read) || !stands_for_[read]) continue;
      const Literal now = resolved(read);
      const bdd variable = w_.man->Bdd_var_by_index(now.index);
      values.emplace_back(read, now.negated ? w_.man->Bdd_not(variable) : variable);
    }
    const auto [lost, gained] =
        w_.exchange_function(e, w_.man->Bdd_vector_compose(e.bdd_exp, values));
    for (long old : lost) note_reader(old, index, false);
    for (long now : gained) note_reader(now, index, true);
  }

  /// What a wire that has gone stands for by now; shortens the way there.
  Literal resolved(long wire) {
    std::vector<long> way;
    long last = wire;
    for (; w_.in_tables(last) && stands_for_[last]; last = stands_for_[last]->index)
      way.push_back(last);
    bool negated = false;
    for (auto at = way.rbegin(); at != way.rend(); ++at) {
      negated ^= stands_for_[*at]->negated;
      stands_for_[*at] = {last, negated};
    }
    return *stands_for_[wire];
  }

  Bddexpressionwood& w_;
  std::vector<std::optional<Literal>> stands_for_;  ///< by index; a value for each that has gone
  std::vector<char> outdated_;                      ///< by index: the diagram still reads some
  /// By variable: readers that it loses (false) and gets, in order of arrival.
  std::vector<std::vector<std::pair<long, bool>>> reader_changes_;
};

void Bddexpressionwood::suppress_wires(const std::list<int>& keep) {
  Wire_suppression suppression(*this);
  for (long index = 0; index < nb_var_bdd; ++index) suppression.visit(index, keep);
  suppression.rebuild_all();
  constants_propagation(keep);
  drop_stale_readers();
  date_by_weight();
}

void Bddexpressionwood::suppress_wires() {
  suppress_wires({});
}

}  // namespace kiva
