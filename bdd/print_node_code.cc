// Straight-line code that evaluates a diagram, one line a node, each behind the lines of its
// children. The lines of all targets but one have the same parts in the same order (node_code.h).

#include <ostream>

#include "bdd/bddpp.h"
#include "bdd/node_code.h"

namespace kiva {

namespace {

/// Calls put(node) for each unmarked node from `root` down, children before it, then side first,
/// and marks it.
template <class Put>
void for_each_from_below(bdd_node* root, Put put) {
  struct step {
    bdd_node* node;
    bool children_done;
  };
  std::vector<step> open{{root, false}};
  while (!open.empty()) {
    const step now = open.back();
    open.pop_back();
    if (now.children_done) {
      put(*now.node);
      continue;
    }
    if (now.node == nullptr || now.node->is_marked()) continue;
    now.node->mark();
    open.push_back({now.node, true});
    // A variable and the constant are written without what is below them.
    bdd_node* const one = now.node->my_manager()->Bdd_node_one();
    if (now.node == one || now.node->is_var(one)) continue;
    open.push_back({now.node->else_node(), false});
    open.push_back({now.node->then_node(), false});
  }
}

/// As the C-like forms have it: the constant is the negation of what is false there.
node_code_texts infix_texts(const std::string& or_text, const std::string& and_text,
                            const std::string& not_open, const std::string& not_close,
                            const std::string& var_prefix, const std::string& var_suffix,
                            const std::string& constant, const std::string& line_end,
                            const std::string& table) {
  node_code_texts texts;
  texts.table = table;
  texts.or_text = or_text;
  texts.and_text = and_text;
  texts.not_open = not_open;
  texts.not_close = not_close;
  texts.var_prefix = var_prefix;
  texts.var_suffix = var_suffix;
  texts.constant = not_open + constant + not_close;
  texts.line_end = line_end;
  return texts;
}

node_code_texts arrayless(node_code_texts texts) {
  texts.entry_open = "_";
  texts.entry_close = "";
  return texts;
}

node_code_texts starting(const std::string& line_start, node_code_texts texts) {
  texts.line_start = texts.constant_start = line_start;
  return texts;
}

}  // namespace

node_code_texts nusmv_node_texts(const std::string& table) {
  node_code_texts texts = arrayless(infix_texts(" | ", " & ", "!", "", "", "", "", ";", table));
  texts.assign = ":= ";
  texts.constant = "TRUE";
  return texts;
}

node_code_texts vhdl_node_texts(const std::string& array) {
  node_code_texts texts =
      starting("      ", infix_texts(" or ", " and ", "not ", "", "", "", "", ";", array));
  texts.entry_open = "(";
  texts.entry_close = ")";
  texts.assign = " <= ";
  texts.second_open = "(";
  texts.second_close = ")";
  texts.constant = "'1'";
  return texts;
}

void bddpp_manager::Print_node_code(const node_code_texts& t, std::ostream& out, bdd_node* root) {
  const auto put_entry = [&](const bdd_node* node) {
    out << t.table << t.entry_open << (t.number ? t.number(node) : node->global_id())
        << t.entry_close;
  };
  const auto put_name = [&](const bdd_node& node) {
    out << t.var_prefix << (t.name ? t.name(node.var_index()) : Name_var_by_index(node.var_index()))
        << t.var_suffix;
  };
  for_each_from_below(root, [&](const bdd_node& node) {
    const bool is_constant = &node == internal_bdd_node_one;
    out << (is_constant ? t.constant_start : t.line_start);
    put_entry(&node);
    out << t.assign;
    if (is_constant) {
      out << t.constant;
    } else if (node.is_var(internal_bdd_node_one)) {
      put_name(node);
    } else {
      out << t.first_open;
      put_name(node);
      out << t.and_text;
      put_entry(node.then_node());
      out << t.first_close << t.or_text << t.second_open << t.not_open;
      put_name(node);
      out << t.not_close << t.and_text;
      const bool complemented = node.else_link_type() == -1;
      if (complemented) out << t.not_open;
      put_entry(node.else_node());
      if (complemented) out << t.not_close;
      out << t.second_close;
    }
    out << t.line_end << '\n';
  });
}

void bddpp_manager::Print_node_for_eval(const std::string& or_text, const std::string& and_text,
                                        const std::string& not_open, const std::string& not_close,
                                        const std::string& var_prefix,
                                        const std::string& var_suffix, const std::string& constant,
                                        const std::string& line_end, const std::string& table,
                                        std::ostream& out, bdd_node* node) {
  Print_node_code(infix_texts(or_text, and_text, not_open, not_close, var_prefix, var_suffix,
                              constant, line_end, table),
                  out, node);
}

void bddpp_manager::Print_node_for_eval(const std::string& line_start, const std::string& or_text,
                                        const std::string& and_text, const std::string& not_open,
                                        const std::string& not_close, const std::string& var_prefix,
                                        const std::string& var_suffix, const std::string& constant,
                                        const std::string& line_end, const std::string& table,
                                        std::ostream& out, bdd_node* node) {
  Print_node_code(
      starting(line_start, infix_texts(or_text, and_text, not_open, not_close, var_prefix,
                                       var_suffix, constant, line_end, table)),
      out, node);
}

void bddpp_manager::Print_node_for_eval_arrayless(
    const std::string& or_text, const std::string& and_text, const std::string& not_open,
    const std::string& not_close, const std::string& var_prefix, const std::string& var_suffix,
    const std::string& constant, const std::string& line_end, const std::string& table,
    std::ostream& out, bdd_node* node) {
  Print_node_code(arrayless(infix_texts(or_text, and_text, not_open, not_close, var_prefix,
                                        var_suffix, constant, line_end, table)),
                  out, node);
}

void bddpp_manager::Print_node_for_eval_arrayless(
    const std::string& line_start, const std::string& or_text, const std::string& and_text,
    const std::string& not_open, const std::string& not_close, const std::string& var_prefix,
    const std::string& var_suffix, const std::string& constant, const std::string& line_end,
    const std::string& table, std::ostream& out, bdd_node* node) {
  Print_node_code(
      starting(line_start, arrayless(infix_texts(or_text, and_text, not_open, not_close, var_prefix,
                                                 var_suffix, constant, line_end, table))),
      out, node);
}

void bddpp_manager::Print_node_for_eval_NUSMV(const std::string& table, std::ostream& out,
                                              bdd_node* node) {
  Print_node_code(nusmv_node_texts(table), out, node);
}

void bddpp_manager::Print_node_for_eval_VHDL(const std::string& array, std::ostream& out,
                                             bdd_node* node) {
  Print_node_code(vhdl_node_texts(array), out, node);
}

void bddpp_manager::Print_node_for_eval_VHDL_input(const std::string& array, std::ostream& out,
                                                   bdd_node* node) {
  // A variable is one line of the same code.
  if (node != nullptr && node->is_var(internal_bdd_node_one))
    Print_node_code(vhdl_node_texts(array), out, node);
}

void bddpp_manager::Print_node_for_eval_VHDL_reset_input(const std::string& array,
                                                         std::ostream& out,
                                                         const bdd_node* node) const {
  if (node == nullptr) return;
  out << "      " << array << '(' << node->global_id() << ") <= '0';\n";
}

void bddpp_manager::Print_node_for_eval_BLIF(const std::string& table, std::ostream& out,
                                             bdd_node* root) {
  node_code_texts texts;
  texts.table = table;
  Print_node_code_BLIF(texts, out, root);
}

void bddpp_manager::Print_node_code_BLIF(const node_code_texts& t, std::ostream& out,
                                         bdd_node* root) {
  const auto entry = [&](const bdd_node* node) {
    return t.table + "_" + std::to_string(t.number ? t.number(node) : node->global_id());
  };
  for_each_from_below(root, [&](const bdd_node& node) {
    if (&node == internal_bdd_node_one) {
      out << ".names " << entry(&node) << "\n1\n";
      return;
    }
    out << ".names " << (t.name ? t.name(node.var_index()) : Name_var_by_index(node.var_index()))
        << ' ';
    if (node.is_var(internal_bdd_node_one)) {
      out << entry(&node) << "\n1 1\n";
      return;
    }
    // Inputs: the variable, the then side, the else side.
    out << entry(node.then_node()) << ' ' << entry(node.else_node()) << ' ' << entry(&node)
        << "\n11- 1\n0-" << (node.else_link_type() == -1 ? '0' : '1') << " 1\n";
  });
}

std::string bdd::vhdl_node_name(const std::string& array) const {
  if (internal_bdd_node == nullptr) return "";
  return (internal_link_type == -1 ? "not " : "") + array + "(" +
         std::to_string(internal_bdd_node->global_id()) + ")";
}

}  // namespace kiva
