// The wood's tables, and the ways in and out of it for equations.
//
// Three tables run parallel, by variable index: the equation that defines the variable, the indices
// of the equations that read it, its late date. They cover the first `nb_var_bdd` variables of the
// manager; a shared manager may be ahead of them until update_bdd_vars().
//
// Invariants, between calls:
//   1. A learnt equation stands in the slot of its own variable.
//   2. If equation i reads d, i stands in the readers of d.
//   3. Set_of_exp() holds the indices whose slot is filled.
//   4. The tables are as long as nb_var_bdd, which is at most the manager's number of variables.
//   5. Where entries are noted, all others are empty: no equation, no readers, date 0.

#include "pert_exp/wood.h"

#include <algorithm>
#include <iostream>
#include <memory>

#include "base/check.h"
#include "base/list.h"
#include "pert_exp/table_capacity.h"

namespace kiva {

namespace {

std::list<long> as_list(const index_set& set) {
  return {set.begin(), set.end()};
}

/// `members` after a variable was inserted at `new_index`.
index_set shifted(const index_set& members, long new_index) {
  index_set moved;
  for (long member : members) moved.insert(member < new_index ? member : member + 1);
  return moved;
}

/// The indices in `to` of the variables that `from` has at `members`, by name.
index_set by_name(Bddexpressionwood& to, const Bddexpressionwood& from, const index_set& members) {
  std::vector<long> found;
  for (long member : members) {
    if (member < 0 || member >= from.my_bdd_manager()->Nb_bdd_vars()) continue;
    found.push_back(to.Index_new_var_last(from.Name_var_by_index(member)));
  }
  return index_set::from_unsorted(std::move(found));
}

}  // namespace

Bddexpressionwood::Bddexpressionwood() : man(new bddpp_manager) {}

Bddexpressionwood::Bddexpressionwood(bddpp_manager* manager) : common_bdd_manager(1), man(manager) {
  if (man == nullptr) return;
  nb_max_var_bdd = doubled_capacity(nb_max_var_bdd, man->Nb_bdd_vars(), "Bddexpression");
  resize_tables(man->Nb_bdd_vars());
}

// A wood that stands before it copies is cleared where the copying fails.
Bddexpressionwood::Bddexpressionwood(const Bddexpressionwood* other)
    : Bddexpressionwood(static_cast<bddpp_manager*>(nullptr)) {
  if (other != nullptr) copy_from(*other);
}

Bddexpressionwood& Bddexpressionwood::operator=(const Bddexpressionwood& other) {
  if (this == &other) return *this;
  clear();
  copy_from(other);
  return *this;
}

Bddexpressionwood::~Bddexpressionwood() {
  clear();
}

void Bddexpressionwood::empty() {
  for (long index : entries_in_use_) {  // whatever their order, and again
    delete exp_table[index];
    exp_table[index] = nullptr;
    amont_dep_table.drop_page_of(index);
    latest_date_table.drop_page_of(index);
  }
  entries_in_use_.clear();
  sorted_entries_ = 0;
  ens_exp.clear();
  ens_exp_in_step = true;
  nb_level = 0;
}

const std::vector<long>& Bddexpressionwood::entries_in_use() const {
  if (sorted_entries_ == entries_in_use_.size()) return entries_in_use_;
  const auto added = entries_in_use_.begin() + static_cast<std::ptrdiff_t>(sorted_entries_);
  std::sort(added, entries_in_use_.end());
  std::inplace_merge(entries_in_use_.begin(), added, entries_in_use_.end());
  entries_in_use_.erase(std::unique(entries_in_use_.begin(), entries_in_use_.end()),
                        entries_in_use_.end());
  sorted_entries_ = entries_in_use_.size();
  return entries_in_use_;
}

void Bddexpressionwood::copy_from(const Bddexpressionwood& other) {
  nb_level = other.nb_level;
  ens_exp = other.Set_of_exp();
  ens_exp_in_step = true;
  const bool own = other.man != nullptr && other.common_bdd_manager == 0;
  man = own ? new bddpp_manager(other.man) : other.man;
  common_bdd_manager = other.common_bdd_manager;
  nb_max_var_bdd = doubled_capacity(other.nb_max_var_bdd, other.nb_var_bdd, "Bddexpression");
  resize_tables(other.nb_var_bdd);
  amont_dep_table = other.amont_dep_table;
  latest_date_table = other.latest_date_table;
  for (long index = 0; index < nb_var_bdd; ++index) {
    const Bddexpression* e = other.exp_table[index];
    if (e != nullptr) exp_table[index] = new Bddexpression(this, *e);
  }
}

/// Equations first, the manager last: no handle may outlive its manager.
void Bddexpressionwood::clear() {
  amont_dep_table.clear();
  latest_date_table.clear();
  for (Bddexpression* e : exp_table) delete e;
  exp_table.clear();
  ens_exp.clear();
  ens_exp_in_step = true;
  if (common_bdd_manager == 0) delete man;
  man = nullptr;
  nb_var_bdd = 0;
  nb_max_var_bdd = 1;
  nb_level = 0;
}

bdd Bddexpressionwood::New_var_last(const std::string& name) {
  bdd var = man->New_var_last(name);
  update_bdd_vars();
  return var;
}

long Bddexpressionwood::Index_new_var_last(const std::string& name) {
  return man->Index_var_by_bdd(New_var_last(name));
}

bdd Bddexpressionwood::New_var_before_by_bdd(const bdd& var, const std::string& name) {
  return New_var_before_by_index(man->Index_var_by_bdd(var), name);
}

bdd Bddexpressionwood::New_var_before_by_index(long index, const std::string& name) {
  const long before = man->Nb_bdd_vars();
  bdd var = man->New_var_before(index, name);
  // A name that exists already, or a bad index, inserts nothing.
  if (man->Nb_bdd_vars() != before) update_bdd_vars(index);
  return var;
}

bdd Bddexpressionwood::New_var_after_by_bdd(const bdd& var, const std::string& name) {
  return New_var_after_by_index(man->Index_var_by_bdd(var), name);
}

bdd Bddexpressionwood::New_var_after_by_index(long index, const std::string& name) {
  const long before = man->Nb_bdd_vars();
  bdd var = man->New_var_after(index, name);
  if (man->Nb_bdd_vars() != before) update_bdd_vars(index + 1);
  return var;
}

/// Capacity is reserved in one step, so that Exp_table() stays where it is until the capacity
/// grows.
void Bddexpressionwood::resize_tables(long nb_vars) {
  exp_table.reserve(nb_max_var_bdd);
  exp_table.resize(nb_vars);
  amont_dep_table.resize(nb_vars);
  latest_date_table.resize(nb_vars);
  nb_var_bdd = nb_vars;
}

void Bddexpressionwood::update_bdd_vars() {
  if (man == nullptr || man->Nb_bdd_vars() <= nb_var_bdd) return;
  const long capacity = doubled_capacity(nb_max_var_bdd, man->Nb_bdd_vars(), "Bddexpressionwood");
  if (capacity != nb_max_var_bdd) {
    nb_max_var_bdd = capacity;
    for_each_entry([this](long index) {
      if (Bddexpression* e = exp_table[index]) e->internal_build_dependances();
    });
  }
  resize_tables(man->Nb_bdd_vars());
}

void Bddexpressionwood::update_bdd_vars(long new_index) {
  const long awaited = man->Nb_bdd_vars() - 1;
  if (nb_var_bdd != awaited || new_index < 0 || new_index > nb_var_bdd) {
    std::cerr << "Internal error in update_bdd_vars(nouv_index):\n"
              << "awaited " << awaited << " variables, found: " << nb_var_bdd << '\n';
    return;
  }
  nb_max_var_bdd = doubled_capacity(nb_max_var_bdd, nb_var_bdd + 1, "Bddexpressionwood");
  resize_tables(nb_var_bdd + 1);
  notes_entries_ = false;  // they move
  std::rotate(exp_table.begin() + new_index, exp_table.end() - 1, exp_table.end());
  amont_dep_table.rotate_last_to(new_index);
  latest_date_table.rotate_last_to(new_index);
  for (long index = 0; index < nb_var_bdd; ++index)
    amont_dep_table[index] = shifted(amont_dep_table[index], new_index);
  ens_exp_in_step = false;
  for (Bddexpression* e : exp_table) {
    if (e != nullptr) e->vars_dependance = shifted(e->vars_dependance, new_index);
  }
}

/// The tables then hold the variable.
void Bddexpressionwood::reach_entry(long index) {
  if (index >= nb_var_bdd || notes_entries_) update_bdd_vars();
  if (notes_entries_) entries_in_use_.push_back(index);
}

void Bddexpressionwood::enter_expression(Bddexpression* e, const index_set* extra) {
  const char* refusal = nullptr;
  long index = -3;
  if (e == nullptr) {
    refusal = "no expression !!!";
  } else {
    index = e->my_index_var();
    if (index < 0) {
      refusal = "no left member in expression";
    } else if (man == nullptr || index >= man->Nb_bdd_vars()) {
      refusal = "bdd variable doesn't exist in Bdd manager";
    }
  }
  if (refusal != nullptr) {
    std::cerr << "INTERNAL ERROR in Bddexpressionwood::learn_expression():\n" << refusal << '\n';
    return;
  }
  reach_entry(index);
  const Bddexpression* old = exp_table[index];
  if (old == e) return;
  if (old != nullptr) leave_as_reader(index, old->vars_dependance);
  enter_as_reader(index, e->vars_dependance);
  if (extra != nullptr) {
    for (long reader : *extra) {
      if (in_tables(reader)) add_reader(index, reader);
    }
  }
  if (old == nullptr) note_filled(index);
  exp_table[index] = e;  // when nothing can fail any more: until then it is its maker's
  nb_level = std::max({nb_level, e->earliest_date, latest_date_table[index]});
  KIVA_CHECK(1, exp_table[index]->my_index_var() == index);
  KIVA_CHECK(2, std::all_of(e->vars_dependance.begin(), e->vars_dependance.end(), [&](long dep) {
               return !in_tables(dep) || amont_dep_table[dep].contains(index);
             }));
  KIVA_CHECK(4,
             static_cast<long>(exp_table.size()) >= nb_var_bdd && nb_var_bdd <= man->Nb_bdd_vars());
}

void Bddexpressionwood::learn_expression(Bddexpression* e) {
  enter_expression(e, nullptr);
}

void Bddexpressionwood::learn_abstract_expression(Bddexpression* e, const index_set* extra) {
  enter_expression(e, extra);
}

void Bddexpressionwood::integrate_wood(Bddexpressionwood* other) {
  if (other == nullptr || other == this || other->man == nullptr) return;
  for (long from_index : other->Set_of_exp()) {
    const Bddexpression& from = *other->exp_table[from_index];
    auto e = std::make_unique<Bddexpression>(this);
    e->name = from.name;
    e->exp_def = from.exp_def;
    e->w = from.w;
    e->earliest_date = from.earliest_date;
    e->usertype = from.usertype;
    e->abstraction = from.abstraction;
    const long index = Index_new_var_last(other->Name_var_by_index(from_index));
    e->bdd_var = man->Bdd_var_by_index(index);
    if (from.abstraction == 0) {
      e->bdd_exp = Bdd_isomorphe_by_name(man, other->man, from.bdd_exp);
      e->build_normal_dependances();
    } else {
      e->vars_dependance = by_name(*this, *other, from.vars_dependance);
    }
    const Bddexpression* old = slot(index);
    latest_date_table[index] = other->latest_date_table[from_index];
    if (from.abstraction == 0) {
      learn_expression(e.get());
    } else {
      const index_set readers = by_name(*this, *other, other->amont_dep_table[from_index]);
      learn_abstract_expression(e.get(), &readers);
    }
    static_cast<void>(e.release());  // the wood's now
    delete old;
  }
  nb_level = std::max(nb_level, other->nb_level);
}

Bddexpression* Bddexpressionwood::forgettable(long index) const {
  if (!in_tables(index)) {
    std::cerr << "Error in Bddexpressionwood::forget_expression_by_bddid(): " << index
              << " value not found ...\n";
    return nullptr;
  }
  return amont_dep_table[index].empty() ? exp_table[index] : nullptr;
}

const index_set& Bddexpressionwood::Set_of_exp() const {
  if (!ens_exp_in_step) {
    ens_exp.clear();
    for_each_entry([this](long index) {
      if (exp_table[index] != nullptr) ens_exp.insert(index);
    });
    ens_exp_in_step = true;
  }
  return ens_exp;
}

void Bddexpressionwood::note_filled(long index) {
  if (ens_exp_in_step && (ens_exp.empty() || ens_exp.back() < index)) {
    ens_exp.insert(index);
  } else {
    ens_exp_in_step = false;
  }
}

void Bddexpressionwood::delete_expression(long index) {
  delete exp_table[index];
  exp_table[index] = nullptr;
  if (ens_exp_in_step && !ens_exp.empty() && ens_exp.back() == index) {
    ens_exp.erase(index);
  } else {
    ens_exp_in_step = false;
  }
}

void Bddexpressionwood::forget_expression_by_bddid(long index) {
  const Bddexpression* e = forgettable(index);
  if (e == nullptr) return;
  leave_as_reader(index, e->vars_dependance);
  delete_expression(index);
  latest_date_table[index] = 0;
}

void Bddexpressionwood::absolute_forget_expression_by_bddid(long index) {
  if (forgettable(index) != nullptr) delete_expression(index);
}

void Bddexpressionwood::enter_as_reader(long user_index, const index_set& deps) {
  if (!in_tables(user_index)) return;
  for (long dep : deps) {
    if (in_tables(dep)) add_reader(dep, user_index);
  }
}

void Bddexpressionwood::leave_as_reader(long user_index, const index_set& deps) {
  for (long dep : deps) {
    if (in_tables(dep)) amont_dep_table[dep].erase(user_index);
  }
}

void Bddexpressionwood::add_amont_dependance(long var_index, long user_index) {
  if (!in_tables(var_index)) update_bdd_vars();
  if (in_tables(var_index)) add_reader(var_index, user_index);
}

void Bddexpressionwood::sup_amont_dependance(long var_index, long user_index) {
  if (in_tables(var_index)) amont_dep_table[var_index].erase(user_index);
}

const index_set& Bddexpressionwood::set_of_amont_dependances(long index) const {
  static const index_set none;
  return in_tables(index) ? amont_dep_table[index] : none;
}

void Bddexpressionwood::append_not_expression(long index) {
  Bddexpression* e = exp_by_index(index);
  if (e != nullptr) e->append_not_exp();
}

index_set Bddexpressionwood::Set_of_index_used_variables() const {
  std::vector<long> used;
  for (long index : Set_of_exp()) {
    const Bddexpression* e = slot(index);
    if (e == nullptr) {
      std::cerr << "internal error in Bddexpressionwood::Set_of_index_used_variables(): expression "
                   "not found!!!\n";
      continue;
    }
    used.push_back(index);
    used.insert(used.end(), e->vars_dependance.begin(), e->vars_dependance.end());
  }
  return index_set::from_unsorted(std::move(used));
}

void Bddexpressionwood::setLateDate(const bdd& var, long date) {
  const long index = man->Index_var_by_bdd(var);
  if (in_tables(index)) latest_date_table[index] = date;
}

long Bddexpressionwood::getLateDate(const bdd& var) const {
  return getLateDate(man->Index_var_by_bdd(var));
}

long Bddexpressionwood::getLateDate(long index) const {
  return in_tables(index) ? latest_date_table[index] : 0;
}

void Bddexpressionwood::coherence_dependances_check(std::ostream& out) const {
  std::vector<index_set> computed(nb_var_bdd);
  for (long index = 0; index < nb_var_bdd; ++index) {
    if (exp_table[index] == nullptr) continue;
    for (long dep : exp_table[index]->vars_dependance) {
      if (in_tables(dep)) computed[dep].insert(index);
    }
  }
  for (long index = 0; index < nb_var_bdd; ++index) {
    if (computed[index] == amont_dep_table[index]) continue;
    out << "incoherence sur table des amonts pour la variable " << man->Name_var_by_index(index)
        << ": calcule: " << as_list(computed[index]) << " trouve" << as_list(amont_dep_table[index])
        << '\n';
  }
}

void Bddexpressionwood::delete_prefixe_names(const std::string&) {
  std::cerr << "a faire\n";
}

}  // namespace kiva
