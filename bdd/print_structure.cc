// A diagram as an indented tree, in which a node that comes again is named by its number.

#include <iostream>
#include <ostream>

#include "bdd/bddpp.h"
#include "bdd/tdd.h"

namespace kiva {

std::ostream& operator<<(std::ostream& out, const bdd& f) {
  out << "adr manager= " << static_cast<const void*>(f.manager_ref())
      << ", link type =" << f.link_type() << ", adr node= " << static_cast<const void*>(f.node())
      << ", ";
  if (f.node() != nullptr) out << "node signature: " << f.node()->signature();
  return out;
}

void bddpp_manager::Chars(char c, int count, std::ostream& out) {
  if (count > 0) out << std::string(count, c);
}

void bddpp_manager::Print_bdd_structure(std::ostream& out, const bdd& f) {
  Bdd_clear_marks(f);
  Bdd_incremental_id(f.node(), 0);
  Bdd_clear_marks(f);
  if (f.node() == nullptr) return;
  if (f.link_type() == -1) out << "not(\n";
  Print_bdd_structure_loc(out, 0, f.node());
  if (f.link_type() == -1) out << "   )\n";
}

void bddpp_manager::Print_bdd_structure(FILE*, const bdd&) {
  std::cerr << "bddpp_manager::Print_bdd_structure(FILE * file,bdd f) A FAIRE\n";
}

void bddpp_manager::Print_bdd_structure_loc(std::ostream& out, int indent, bdd_node* root) {
  struct step {
    enum { whole, else_part, closing } part;
    int indent;
    bdd_node* node;
  };
  std::vector<step> open{{step::whole, indent, root}};
  const auto place = [&](const bdd_node* node) {
    out << " (node: " << node->local_id() << ",index: " << node->var_index() << ")";
  };
  while (!open.empty()) {
    const step now = open.back();
    open.pop_back();
    bdd_node* node = now.node;
    Chars(' ', now.indent, out);
    if (now.part == step::closing) {
      out << "   )\n";
    } else if (now.part == step::else_part) {
      out << "else (not " << Name_var_by_id(node->var_id()) << ")\n";
      if (node->else_link_type() == -1) {
        Chars(' ', now.indent + 2, out);
        out << "not(\n";
        open.push_back({step::closing, now.indent + 2, node});
      }
      open.push_back({step::whole, now.indent + 2, node->else_node()});
    } else if (node->is_marked()) {
      out << "already found node: " << node->local_id() << '\n';
    } else if (node == internal_bdd_node_one || node->is_var(internal_bdd_node_one)) {
      out << (node == internal_bdd_node_one ? "1" : Name_var_by_id(node->var_id()));
      place(node);
      out << '\n';
    } else {
      node->mark();
      out << "if " << Name_var_by_id(node->var_id());
      place(node);
      out << '\n';
      open.push_back({step::else_part, now.indent, node});
      open.push_back({step::whole, now.indent + 2, node->then_node()});
    }
  }
}

void Tdd::Print_bdd_structure(std::ostream& out) const {
  struct step {
    const Tdd* part;
    int indent;
    std::string heading;  ///< before the part, at two blanks less
  };
  if (manager_ == nullptr) return;
  std::vector<step> open{{this, 0, ""}};
  while (!open.empty()) {
    const step now = open.back();
    open.pop_back();
    if (!now.heading.empty()) {
      manager_->Chars(' ', now.indent - 2, out);
      out << now.heading << '\n';
    }
    const Tdd& here = *now.part;
    if (here.is_constant()) {
      manager_->Chars(' ', now.indent, out);
      out << (here.is_one() ? "1\n" : "0\n");
      continue;
    }
    const std::string name = manager_->Name_var_by_bdd(here.value_);
    open.push_back({here.common_, now.indent + 2, "dont care " + name});
    open.push_back({here.else_, now.indent + 2, "else if !" + name});
    open.push_back({here.then_, now.indent + 2, "if " + name});
  }
}

}  // namespace kiva
