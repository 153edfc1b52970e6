// Looking up: by index, variable or name. The first by index answers for a name that several bear.

#include <iostream>
#include <iterator>

#include "base/list.h"
#include "pert_exp/wood.h"

namespace kiva {

Bddexpression* Bddexpressionwood::exp_by_index(long index) const {
  if (!in_tables(index)) {
    std::cerr << "ERROR in Bddexpressionwood::exp_by_index : id `" << index << "' not found!\n";
    return nullptr;
  }
  return exp_table[index];
}

Bddexpression* Bddexpressionwood::exp_by_bddname(const std::string& name) const {
  const long index = man->Index_var_by_name(name);
  if (!in_tables(index)) {
    std::cerr << "ERROR in Bddexpressionwood::exp_by_bddname : `" << name << "' not found!\n";
    return nullptr;
  }
  return exp_table[index];
}

Bddexpression* Bddexpressionwood::exp_by_bdd(const bdd& f) const {
  const long index = man->Index_var_by_bdd(f);
  if (!in_tables(index)) {
    std::cerr << "ERROR in Bddexpressionwood::exp_by_bdd : bdd not found!\n";
    return nullptr;
  }
  return exp_table[index];
}

Bddexpression* Bddexpressionwood::exp_by_name(const std::string& name) const {
  for (Bddexpression* e : exp_table) {
    if (e != nullptr && e->name == name) return e;
  }
  std::cerr << "ERROR in Bddexpressionwood::exp_by_name : `" << name << "' not found!\n";
  return nullptr;
}

Bddexpression* Bddexpressionwood::exp(int n) const {
  if (n < 0 || n >= exp_number()) {
    const std::list<long> possible(Set_of_exp().begin(), Set_of_exp().end());
    std::cerr << "ERROR in Bddexpressionwood::exp(): " << n << " bad number ...\n"
              << "possible: " << possible << '\n';
    return nullptr;
  }
  return exp_table[*std::next(Set_of_exp().begin(), n)];
}

long Bddexpressionwood::Index_exp_by_name(const std::string& name) const {
  for (long index = 0; index < nb_var_bdd; ++index) {
    if (exp_table[index] != nullptr && exp_table[index]->name == name) return index;
  }
  std::cerr << "ERROR in Bddexpressionwood::Index_exp_by_name : `" << name << "' not found!\n";
  return -1;
}

long Bddexpressionwood::Index_exp_by_bdd(const bdd& f) const {
  const long index = man->Index_var_by_bdd(f);
  if (slot(index) != nullptr) return index;
  std::cerr << "ERROR in Bddexpressionwood::Index_exp_by_bdd : bdd not found!\n";
  return -1;
}

long Bddexpressionwood::Index_exp_by_bddname(const std::string& name) const {
  const long index = man->Index_var_by_name(name);
  if (slot(index) != nullptr) return index;
  std::cerr << "ERROR in Bddexpressionwood::Index_exp_by_bddname : `" << name << "' not found!\n";
  return -1;
}

std::string Bddexpressionwood::Bddname_exp_by_index(long index) const {
  if (const Bddexpression* e = slot(index)) return e->my_bddname();
  std::cerr << "ERROR: in Bddexpressionwood::Bddname_exp_by_index(): id " << index
            << " not found!\n";
  return "";
}

std::string Bddexpressionwood::Name_exp_by_index(long index) const {
  if (const Bddexpression* e = slot(index)) return e->name;
  std::cerr << "ERROR: in Bddexpressionwood::Name_exp_by_index(): index " << index
            << " not found!\n";
  return "";
}

std::string Bddexpressionwood::Bddname_exp_by_bdd(const bdd& f) const {
  if (const Bddexpression* e = slot(man->Index_var_by_bdd(f))) return e->my_bddname();
  std::cerr << "ERROR: in Bddexpressionwood::Bddname_exp_by_bdd(): bdd not found!\n";
  return "";
}

std::string Bddexpressionwood::Name_exp_by_bdd(const bdd& f) const {
  if (const Bddexpression* e = slot(man->Index_var_by_bdd(f))) return e->name;
  std::cerr << "ERROR: in Bddexpressionwood::Name_exp_by_bdd(): bdd not found!\n";
  return "";
}

}  // namespace kiva
