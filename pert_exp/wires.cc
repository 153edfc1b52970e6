// Wires go: an equation of one variable is put into its readers and removed.
//
// Told one after another, n wires that meet in one reader would rebuild its diagram n times. So a
// wire only notes which literal it stands for, and a reader what it would depend on by the letter:
// the wire's variable for the wire. The reader's diagram is rebuilt once, with all that has gone by
// then put in at once: at its own turn, when it must be known whether it is a wire itself, or at
// the end. A wire that a function has lost by cancellation counts as read until then; it goes, and
// nothing misses it.

#include <optional>

#include "base/list.h"
#include "pert_exp/wood.h"

namespace kiva {

class Bddexpressionwood::Wire_suppression {
 public:
  explicit Wire_suppression(Bddexpressionwood& wood)
      : w_(wood), stands_for_(wood.nb_var_bdd), outdated_(wood.nb_var_bdd, 0) {}

  void visit(long index, const std::list<int>& keep) {
    const Bddexpression* e = w_.exp_table[index];
    if (e == nullptr || e->abstraction != 0 || item_in(keep, e->usertype)) return;
    rebuild(index);
    if (e->vars_dependance.size() != 1 || !w_.can_be_inlined(index) ||
        w_.has_abstract_reader(index))
      return;
    const Literal value{*e->vars_dependance.begin(), e->bdd_exp.link_type() < 0};
    w_.leave_as_reader(index, e->vars_dependance);
    const index_set readers = w_.amont_dep_table[index];
    for (long reader : readers) {
      w_.amont_dep_table[index].erase(reader);
      if (w_.slot(reader) != nullptr) read_instead(reader, index, value.index);
    }
    stands_for_[index] = value;
    w_.delete_expression(index);
    w_.latest_date_table[index] = 0;
  }

  void rebuild_all() {
    for (long index = 0; index < w_.nb_var_bdd; ++index)
      if (w_.exp_table[index] != nullptr) rebuild(index);
  }

 private:
  struct Literal {
    long index;
    bool negated;
  };

  void read_instead(long reader, long wire, long variable) {
    index_set& deps = w_.exp_table[reader]->vars_dependance;
    deps.erase(wire);
    deps.insert(variable);
    if (w_.in_tables(variable)) w_.add_reader(variable, reader);
    outdated_[reader] = 1;
  }

  void rebuild(long index) {
    if (!outdated_[index]) return;
    outdated_[index] = 0;
    Bddexpression& e = *w_.exp_table[index];
    std::vector<std::pair<long, bdd>> values;
    for (long read : w_.man->set_of_index_depend_on(e.bdd_exp)) {
      if (!w_.in_tables(read) || !stands_for_[read]) continue;
      const Literal now = resolved(read);
      const bdd variable = w_.man->Bdd_var_by_index(now.index);
      values.emplace_back(read, now.negated ? w_.man->Bdd_not(variable) : variable);
    }
    w_.change_function(e, index, w_.man->Bdd_vector_compose(e.bdd_exp, values));
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
