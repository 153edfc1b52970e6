// Wires go: an equation of one variable is put into its readers and removed.
//
// Told one after another, n wires that meet in one reader would rebuild its diagram n times. So a
// reader only notes what stands for its variables by now, and is rebuilt once, at the end. Its
// dependences are kept exact all the same, since later steps are decided by them: while no two of
// its variables stand for the same one, nothing can cancel, and the dependences are the images.
// Where two meet, the function is rebuilt at once and asked what it still reads.

#include <unordered_map>

#include "base/list.h"
#include "pert_exp/wood.h"

namespace kiva {

class Bddexpressionwood::Wire_suppression {
 public:
  explicit Wire_suppression(Bddexpressionwood& wood) : w_(wood) {}

  void suppress(long index) {
    rebuild(index);
    const Bddexpression& wire = *w_.exp_table[index];
    const long source = *wire.vars_dependance.begin();
    const bool negated = wire.bdd_exp.link_type() < 0;
    w_.leave_as_reader(index, wire.vars_dependance);
    const index_set readers = w_.amont_dep_table[index];
    for (long reader : readers) {
      w_.amont_dep_table[index].erase(reader);
      if (w_.slot(reader) != nullptr) substitute(reader, index, {source, negated});
    }
    w_.delete_expression(index);
    w_.latest_date_table[index] = 0;
  }

  void rebuild_all() {
    for (const auto& [index, changes] : pending_)
      w_.exp_table[index]->bdd_exp = changed(*w_.exp_table[index], changes);
    pending_.clear();
  }

 private:
  struct Literal {
    long index;
    bool negated;
  };
  /// What stands for variables of a function: by the variable that it reads now, the variable in
  /// the diagram, negated where the one is the complement of the other.
  using Changes = std::unordered_map<long, Literal>;

  bdd changed(const Bddexpression& e, const Changes& changes) {
    std::vector<std::pair<long, bdd>> values;
    values.reserve(changes.size());
    for (const auto& [now, was] : changes) values.emplace_back(was.index, literal(now, was));
    return w_.man->Bdd_vector_compose(e.bdd_exp, values);
  }
  bdd literal(long now, const Literal& was) {
    const bdd variable = w_.man->Bdd_var_by_index(now);
    return was.negated ? w_.man->Bdd_not(variable) : variable;
  }

  void rebuild(long index) {
    const auto at = pending_.find(index);
    if (at == pending_.end()) return;
    w_.exp_table[index]->bdd_exp = changed(*w_.exp_table[index], at->second);
    pending_.erase(at);
  }

  void substitute(long reader, long variable, const Literal& value) {
    Bddexpression& e = *w_.exp_table[reader];
    if (e.vars_dependance.contains(value.index)) {
      rebuild(reader);
      w_.change_function(e, reader,
                         w_.man->Bdd_compose(e.bdd_exp, w_.man->Bdd_var_by_index(variable),
                                             literal(value.index, value)));
      return;
    }
    Changes& changes = pending_[reader];
    Literal was{variable, value.negated};
    if (const auto at = changes.find(variable); at != changes.end()) {
      was = {at->second.index, at->second.negated != value.negated};
      changes.erase(at);
    }
    changes.emplace(value.index, was);
    e.vars_dependance.erase(variable);
    e.vars_dependance.insert(value.index);
    if (w_.in_tables(value.index)) w_.amont_dep_table[value.index].insert(reader);
  }

  Bddexpressionwood& w_;
  std::unordered_map<long, Changes> pending_;
};

void Bddexpressionwood::suppress_wires(const std::list<int>& keep) {
  Wire_suppression suppression(*this);
  for (long index = 0; index < nb_var_bdd; ++index) {
    if (!can_be_inlined(index)) continue;
    const Bddexpression& e = *exp_table[index];
    if (e.vars_dependance.size() != 1 || item_in(keep, e.usertype) || has_abstract_reader(index))
      continue;
    suppression.suppress(index);
  }
  suppression.rebuild_all();
  constants_propagation(keep);
  drop_stale_readers();
  date_by_weight();
}

void Bddexpressionwood::suppress_wires() {
  suppress_wires({});
}

}  // namespace kiva
