// An equation keeps its dependences those of its function, and its wood's readers in step with
// them: all changes of the right member go through replace_function. An abstract equation keeps
// what it was told.

#include "pert_exp/equation.h"

#include <iostream>

#include "pert_exp/wood.h"

namespace kiva {

namespace {

/// f in the manager `to`, whose variables have the order of f's own manager.
bdd copied_to(bddpp_manager* to, const bdd& f) {
  if (!f.initialised() || f.manager_ref() == to) return f;
  return Bdd_isomorphe(to, f.manager_ref(), f);
}

}  // namespace

Bddexpression::Bddexpression(const std::string& name, Bddexpressionwood* wood, const bdd& var,
                             const bdd& exp, long early, long late, int usertype)
    : Bddexpression(name, wood, var, exp, "", early, late, usertype) {}

Bddexpression::Bddexpression(const std::string& name, Bddexpressionwood* wood, const bdd& var,
                             const bdd& exp, const std::string& exp_def, long early, long late,
                             int usertype)
    : pw(wood), name(name), exp_def(exp_def), earliest_date(early), usertype(usertype) {
  if (wood == nullptr) return;
  bdd_var = var;
  if (!exp_def.empty()) {
    learn_abstract(nullptr, late);
    return;
  }
  bdd_exp = exp;
  abstraction = 0;
  build_normal_dependances();
  wood->learn_expression(this);
  setLateDate(late);
}

Bddexpression::Bddexpression(Bddexpressionwood* wood, const bdd& var, const bdd& exp, long early,
                             long late)
    : Bddexpression(wood == nullptr ? "" : wood->Name_var_by_bdd(var), wood, var, exp, "", early,
                    late, 0) {}

Bddexpression::Bddexpression(long index, Bddexpressionwood* wood, const index_set* deps,
                             const index_set* extra, long early, long late)
    : Bddexpression(index, wood, deps, extra, "", early, late) {}

Bddexpression::Bddexpression(long index, Bddexpressionwood* wood, const index_set* deps,
                             const index_set* extra, const std::string& exp_def, long early,
                             long late)
    : pw(wood), exp_def(exp_def), earliest_date(early) {
  if (deps != nullptr) vars_dependance = *deps;
  if (wood == nullptr) return;
  bdd_var = wood->Bdd_var_by_index(index);
  learn_abstract(extra, late);
}

Bddexpression::Bddexpression(long index, Bddexpressionwood* wood, const index_set& deps,
                             const std::string& exp_def, long early, long late)
    : Bddexpression(index, wood, &deps, nullptr, exp_def, early, late) {}

Bddexpression::Bddexpression(Bddexpressionwood* wood, const Bddexpression& other)
    : Bddexpression(wood, other.pw == nullptr ? wood : other.pw, other) {}

Bddexpression::Bddexpression(Bddexpressionwood* to, Bddexpressionwood* from,
                             const Bddexpression& other)
    : pw(to),
      name(other.name),
      exp_def(other.exp_def),
      w(other.w),
      vars_dependance(other.vars_dependance),
      earliest_date(other.earliest_date),
      usertype(other.usertype) {
  if (to == nullptr || from == nullptr) return;
  bdd_var = copied_to(to->man, other.bdd_var);
  abstraction = other.abstraction;
  if (abstraction == 0) bdd_exp = copied_to(to->man, other.bdd_exp);
  setLateDate(other.getLateDate());
}

bool operator==(const Bddexpression& a, const Bddexpression& b) {
  return a.abstraction == b.abstraction && a.bdd_var == b.bdd_var && a.bdd_exp == b.bdd_exp &&
         a.usertype == b.usertype && a.w == b.w && a.name == b.name && a.exp_def == b.exp_def;
}

std::string Bddexpression::my_bddname() const {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised()) return "";
  return pw->man->Name_var_by_bdd(bdd_var);
}

bddpp_manager* Bddexpression::my_bdd_manager() const {
  return pw == nullptr ? nullptr : pw->man;
}

long Bddexpression::my_index_var() const {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised()) return -3;
  return pw->man->Bdd_if_index(bdd_var);
}

long Bddexpression::getLateDate() const {
  return pw == nullptr ? 0 : pw->getLateDate(my_index_var());
}

void Bddexpression::setLateDate(long date) {
  if (pw == nullptr) {
    std::cerr << "internal error in Bddexpression::setLateDate(): no wood found!\n";
    return;
  }
  const long index = my_index_var();
  if (pw->in_tables(index)) pw->latest_date_table[index] = date;
}

index_set Bddexpression::set_of_index_used_variables() const {
  index_set used = vars_dependance;
  const long index = my_index_var();
  if (index >= 0) used.insert(index);
  return used;
}

bool Bddexpression::has_wood(const char* operation) const {
  if (my_bdd_manager() != nullptr) return true;
  std::cerr << "In Bddexpression::" << operation << "(): \n"
            << "   no wood defined! Aborted  ...\n";
  return false;
}

void Bddexpression::replace_function(const bdd& f) {
  const long index = my_index_var();
  pw->leave_as_reader(index, vars_dependance);
  bdd_exp = f;
  abstraction = 0;
  build_normal_dependances();
  pw->enter_as_reader(index, vars_dependance);
}

void Bddexpression::setBddExp(const bdd& f) {
  if (!has_wood("setBddExp")) return;
  replace_function(f);
  // For their warnings only. The order of the two reports is that of the walks: readers first.
  const long index = my_index_var();
  pw->down_critical_path(index, 0, 0);
  pw->up_critical_path(index, 0, 1);
}

void Bddexpression::setBddExp(const bdd& f, long early, long late) {
  if (!has_wood("setBddExp")) return;
  replace_function(f);
  earliest_date = early;
  setLateDate(late);
}

void Bddexpression::append_or_exp(const bdd& g) {
  if (has_wood("append_or_exp")) setBddExp(pw->Bdd_or(bdd_exp, g));
}

void Bddexpression::append_and_exp(const bdd& g) {
  if (has_wood("append_or_exp")) setBddExp(pw->Bdd_and(bdd_exp, g));
}

void Bddexpression::append_not_exp() {
  if (has_wood("append_not_exp")) bdd_exp = pw->Bdd_not(bdd_exp);
}

void Bddexpression::setBddVar(bddpp_manager*, const bdd& var) {
  if (pw != nullptr) {
    std::cerr << "In Bddexpression::setBddVar(bddpp_manager *, bdd): \n";
    return;
  }
  bdd_var = var;
}

void Bddexpression::setBddExp(bddpp_manager* manager, const bdd& f) {
  if (pw != nullptr) {
    std::cerr << "In Bddexpression::setBddExp(bddpp_manager *, bdd): \n";
    return;
  }
  bdd_exp = f;
  abstraction = 0;
  internal_build_dependances(manager);
}

void Bddexpression::build_normal_dependances() {
  if (pw == nullptr) return;
  pw->update_bdd_vars();
  internal_build_dependances();
}

void Bddexpression::internal_build_dependances() {
  internal_build_dependances(my_bdd_manager());
}

void Bddexpression::internal_build_dependances(bddpp_manager* manager) {
  if (abstraction == 0 && manager != nullptr) {
    vars_dependance = manager->set_of_index_depend_on(bdd_exp);
  }
}

void Bddexpression::learn_abstract(const index_set* extra, long late) {
  pw->learn_abstract_expression(this, extra);
  setLateDate(late);
}

}  // namespace kiva
