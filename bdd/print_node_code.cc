// Straight-line code that evaluates a diagram, one line a node, each behind the lines of its
// children. The lines of all targets but one have the same parts in the same order (node_code.h).

#include <ostream>

#include "bdd/bddpp.h"
#include "bdd/node_code.h"

namespace kiva {

void for_each_from_below(bdd_node* root, const std::function<void(const bdd_node&)>& put) {
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

namespace {

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

}  // namespace kiva
