// Variables: their tables, order and names.
//
// Ids never move; an insertion into the order only raises the indices behind it. Diagrams stay
// valid, because nodes hold ids and the relative order of the old variables is unchanged.

#include <iostream>

#include "base/process_end.h"
#include "bdd/bddpp.h"
#include "bdd/internals.h"

namespace kiva {

bdd_node* bddpp_manager::new_variable(long index, const std::string& name) {
  if (internal_bdd_vars == internal_max_bdd_vars) {
    internal_max_bdd_vars *= 2;
    internal_names_table.reserve(internal_max_bdd_vars);
    internal_variables_table.reserve(internal_max_bdd_vars);
    internal_idtoindex_table.reserve(internal_max_bdd_vars);
    internal_indextoid_table.reserve(internal_max_bdd_vars);
    internal_assoc_var_table.reserve(internal_max_bdd_vars);
  }
  const int id = static_cast<int>(internal_bdd_vars);
  const auto [known, is_new] = internal_first_names.enter(name);
  if (!is_new) return internal_variables_table[known];

  bdd_node* node = internal_unique_table.make_variable(id);
  internal_names_table.push_back(name);
  if (internal_ids_of_name_known) internal_ids_of_name[name].insert(id);
  internal_variables_table.push_back(node);
  internal_assoc_var_table.push_back(node);
  if (index < id) {
    for (int& moved : internal_idtoindex_table) moved += moved >= index ? 1 : 0;
  }
  internal_idtoindex_table.push_back(static_cast<int>(index));
  internal_indextoid_table.insert(internal_indextoid_table.begin() + index, id);
  ++internal_bdd_vars;
  return node;
}

bdd_node* bddpp_manager::New_node_var_last(const std::string& name) {
  return new_variable(internal_bdd_vars, name);
}

bdd_node* bddpp_manager::New_node_var_before(long index, const std::string& name) {
  if (index < 0 || index >= internal_bdd_vars) {
    std::cerr << "Error in new_node_var_before(): abnormal index ...\n";
    return nullptr;
  }
  return new_variable(index, name);
}

bdd_node* bddpp_manager::New_node_var_after(long index, const std::string& name) {
  if (index == internal_bdd_vars - 1) return New_node_var_last(name);
  if (index >= internal_bdd_vars) {
    std::cerr << "Error in new_node_var_after(): abnormal id ...\n";
    return nullptr;
  }
  return New_node_var_before(index + 1, name);
}

bdd bddpp_manager::variable_handle(bdd_node* node) {
  return node == nullptr ? bdd() : bdd(this, 1, node);
}

bdd bddpp_manager::New_var_last(const std::string& name) {
  return variable_handle(New_node_var_last(name));
}

bdd bddpp_manager::New_var_before(long index, const std::string& name) {
  return variable_handle(New_node_var_before(index, name));
}

bdd bddpp_manager::New_var_before(const bdd& var, const std::string& name) {
  return New_var_before(Index_var_by_bdd(var), name);
}

bdd bddpp_manager::New_var_after(long index, const std::string& name) {
  return variable_handle(New_node_var_after(index, name));
}

bdd bddpp_manager::New_var_after(const bdd& var, const std::string& name) {
  return New_var_after(Index_var_by_bdd(var), name);
}

bdd bddpp_manager::Bdd_var_by_id(long id) {
  if (id < 0 || id >= internal_bdd_vars) {
    std::cerr << "calling bddpp_manager::Bdd_var_by_id() with id= " << id << " :out of range!\n";
    return Bdd_zero();
  }
  return bdd(this, 1, internal_variables_table[id]);
}

bdd bddpp_manager::Bdd_var_by_index(long index) {
  if (index == -1) return Bdd_one();
  if (index < 0 || index >= internal_bdd_vars) {
    std::cerr << "calling bddpp_manager::Bdd_var_by_index() with index= " << index
              << " :out of range!\n";
    return bdd();
  }
  return bdd(this, 1, internal_variables_table[internal_indextoid_table[index]]);
}

bdd bddpp_manager::Bdd_var_by_name(const std::string& name) {
  const long id = Id_var_by_name(name);
  return id < 0 ? Bdd_zero() : Bdd_var_by_id(id);
}

long bddpp_manager::Id_var_by_name(const std::string& name) const {
  return internal_first_names.find(name);
}

long bddpp_manager::Index_var_by_name(const std::string& name) const {
  const long id = Id_var_by_name(name);
  return id < 0 ? -1 : idtoindex(id);
}

long bddpp_manager::Bdd_if_id(const bdd& f) const {
  if (f.manager_ref() != this || f.node() == nullptr) {
    std::cerr << "Error in bddpp_manager::Bdd_if_id(): bad Bdd manager or bdd not initialized!\n";
    return -3;
  }
  return f.node()->var_id();
}

long bddpp_manager::Bdd_if_index(const bdd& f) const {
  if (f.manager_ref() != this || f.node() == nullptr) {
    std::cerr
        << "Error in bddpp_manager::Bdd_if_index(): bad Bdd manager or bdd not initialized!\n";
    return -3;
  }
  return f.node()->var_index();
}

std::string bddpp_manager::Name_var_by_id(long id) const {
  return internal_names_table[id];
}

std::string bddpp_manager::Name_var_by_index(long index) const {
  return internal_names_table[internal_indextoid_table[index]];
}

std::string bddpp_manager::Name_var_by_bdd(const bdd& f) const {
  const long id = Bdd_if_id(f);
  if (id == -1) return f.link_type() == 1 ? "1" : "0";
  if (id >= 0 && id < internal_bdd_vars) return internal_names_table[id];
  std::cerr << "error in bddpp_manager::Name_var_by_bdd()\nbdd defined by: " << f
            << ", is not correct ...\n(typebdd = " << id << ")\n";
  end_process();
}

void bddpp_manager::Change_name_by_id(long id, const std::string& name) {
  std::string& current = internal_names_table[id];
  if (internal_ids_of_name_known) {
    internal_ids_of_name[current].erase(id);
    internal_ids_of_name[name].insert(id);
  }
  current = name;
}

void bddpp_manager::Change_name_by_index(long index, const std::string& name) {
  Change_name_by_id(internal_indextoid_table[index], name);
}

void bddpp_manager::Rename_var(const std::string& new_name, const std::string& old_name) {
  if (!internal_ids_of_name_known) {
    internal_ids_of_name.clear();
    for (long id = 0; id < internal_bdd_vars; ++id)
      internal_ids_of_name[internal_names_table[id]].insert(id);
    internal_ids_of_name_known = true;
  }
  const auto first_id = [this](const std::string& name) {
    const auto found = internal_ids_of_name.find(name);
    return found == internal_ids_of_name.end() || found->second.empty() ? -1
                                                                        : found->second.front();
  };
  const auto refuse = [](const std::string& name, const char* reason) {
    std::cerr << "in bdd_manager::Rename_var(): WARNING " << name << reason
              << "\nrenaming process aborted ...\n";
  };
  if (first_id(new_name) >= 0) return refuse(new_name, " ALREADY DEFINED !");
  const long id = first_id(old_name);
  if (id < 0) return refuse(old_name, " NOT FOUND !");
  Change_name_by_id(id, new_name);
}

void bddpp_manager::Replace_char_in_all_names(char from, char to) {
  internal_ids_of_name_known = false;
  for (std::string& name : internal_names_table) {
    for (char& c : name) {
      if (c == from) c = to;
    }
  }
}

void bddpp_manager::No_begin_underscore_name() {
  internal_ids_of_name_known = false;
  for (std::string& name : internal_names_table) {
    if (!name.empty() && name.front() == '_') name.insert(name.begin(), 'v');
  }
}

}  // namespace kiva
