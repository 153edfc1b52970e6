// Reports on a wood for people: its levels, and the tree of what an equation reads.

#include <algorithm>
#include <map>
#include <ostream>

#include "base/list.h"
#include "pert_exp/wood_graph.h"

namespace kiva {

/// A level is a date that an equation or a variable holds: a file's dates may leave gaps of any
/// size.
void Bddexpressionwood::stat(std::ostream& out) {
  const long manager_vars = man == nullptr ? 0 : man->Nb_bdd_vars();
  out << "wood Bddexpression statistics:\n"
      << "  - adress: " << this << '\n'
      << "  - bbd variables number of the bdd manager: " << manager_vars << '\n'
      << "  - variables number used : " << nb_var_bdd << '\n'
      << "  - arrays's length  : " << nb_max_var_bdd << '\n'
      << "  - expression ids set " << std::list<long>(Set_of_exp().begin(), Set_of_exp().end())
      << '\n'
      << "  - nb levels " << nb_level << '\n';
  if (nb_var_bdd != manager_vars) {
    out << "INTERNAL ERROR: bdd variables number doesn't corresponding !!!\n";
  }
  struct Level {
    std::list<long> early, late;
  };
  std::map<long, Level> levels;
  for (long index = 0; index < nb_var_bdd; ++index) {
    if (exp_table[index] != nullptr) {
      levels[exp_table[index]->earliest_date].early.push_back(index);
    }
    levels[latest_date_table[index]].late.push_back(index);
  }
  for (const auto& [date, level] : levels) {
    out << "      level: " << date << '\n'
        << "        early date: " << level.early << '\n'
        << "        late date: " << level.late << '\n';
  }
  out << "   earliest date sorting:" << earliest_sort() << '\n'
      << "   latest date sorting:" << latest_sort() << '\n';
}

void Bddexpressionwood::stat_early_dep(std::ostream& out, long index) {
  std::list<long> seen;
  internal_stat_early_dep(out, index, 0, &seen);
}

/// A variable of `seen` gets its line and no branch; what is branched out enters `seen`.
void Bddexpressionwood::internal_stat_early_dep(std::ostream& out, long index, int indent,
                                                std::list<long>* seen) {
  if (!in_tables(index)) return;
  struct Nothing {};
  const Dependences graph{*this};
  std::vector<char> branched_out(nb_var_bdd, 0);
  for (long member : *seen) {
    if (in_tables(member)) branched_out[member] = 1;
  }
  const auto show = [&](long v, long edges) -> std::optional<Nothing> {
    for (long column = 0; column < indent + edges; ++column) out << "| ";
    const Bddexpression* e = exp_table[v];
    out << man->Name_var_by_index(v) << " (" << (e == nullptr ? 0 : e->earliest_date) << ") -->\n";
    if (branched_out[v]) return std::nullopt;
    branched_out[v] = 1;
    seen->push_back(v);
    return Nothing{};
  };
  const auto edge = [&](const auto&, long next, long edges) {
    return in_tables(next) ? show(next, edges + 1) : std::nullopt;
  };
  if (show(index, 0))
    walk_depth_first(graph, index, Nothing{}, edge, [](const auto&, const auto*) {});
}

}  // namespace kiva
