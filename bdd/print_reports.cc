// Reports on a manager and on its associations.

#include <ostream>

#include "bdd/bddpp.h"

namespace kiva {

void bddpp_manager::Bdd_stats(std::ostream& out) const {
  out << "BDD MANAGER statistics:\nmemory adress: " << static_cast<const void*>(this)
      << " Version: " << Bdd_version() << "\nbdd constant number: 1\n-: 1 --> "
      << internal_bdd_node_one->signature() << "\nbdd variables number: " << internal_bdd_vars
      << '\n';
  if (internal_bdd_vars > 0) out << "Index: name --> signature\n";
  for (long index = 0; index < internal_bdd_vars; ++index) {
    const bdd_node* variable = internal_variables_table[indextoid(index)];
    out << index << ": " << Name_var_by_index(index) << " --> " << variable->signature() << '\n';
  }
  out << "Map:\nglobal id: var_index then_node else_node else_link_type (refs number)\n";
  long count = 0, useless = 0, references = 0;
  for (const bdd_node* node : internal_bdd_node_map()) {
    out << node->global_id() << ": " << node->signature() << " (" << node->nbrefs() << ")\n";
    ++count;
    if (node->nbrefs() <= 0) ++useless;
    references += node->nbrefs();
  }
  out << "Map Nodes number: " << count << " --> useless: " << useless
      << "\nGlobal references number :" << references
      << "\n----------------------------------------------\n";
}

void bddpp_manager::debug_variables(std::ostream& out) {
  for (long index = 0; index < internal_bdd_vars; ++index) {
    out << Name_var_by_index(index) << " --> ";
    bdd_node* association = internal_assoc_var_table[indextoid(index)];
    if (association == nullptr)
      out << "NULL";
    else
      Print_sop(" or ", " and ", "not ", "", out, bdd(this, 1, association), 0);
    out << '\n';
  }
}

void bddpp_manager::Print_Fixes_Points(std::ostream& out, const bdd& f) {
  const auto sum = [this](const bdd& g) { return Print_sop_to_String(" + ", ".", "", "'", g, 1); };
  int loop;
  const bdd g = Bdd_follow_assoc(f, &loop);
  if (loop < 0) {
    // No variable is designated here: the function itself heads the line.
    out << sum(f) << " = " << sum(g) << '\n';
    return;
  }
  const bdd variable = Bdd_var_by_index(loop);
  const std::string x = Name_var_by_index(loop);
  const bdd where_true = Bdd_reduce(g, variable);
  const bdd where_false = Bdd_reduce(g, Bdd_not(variable));
  const bdd flips = Bdd_and(where_false, Bdd_not(where_true));
  if (Bdd_is_zero_tautologic(flips)) {
    out << "  ==> two stability points : " << x << "'= " << sum(where_false) << ", " << x
        << "''= " << sum(where_true) << '\n';
  } else {
    out << "  ==> oscillation on " << x << "  for " << sum(flips) << "\n  ==> stabilisation when "
        << x << " = " << sum(Bdd_not(flips)) << '\n';
  }
}

}  // namespace kiva
