// What the package writes, against texts worked out by hand. That node code and sums compute their
// function is seen in the target texts.

#include <gmock/gmock.h>

#include <sstream>

#include "bdd/node_code.h"
#include "bdd/tdd.h"
#include "tests/bdd/truth_model.h"
#include "tests/support/process_end.h"

namespace kiva::test {

namespace {

using ::testing::HasSubstr;

class Printing : public ::testing::Test {
 protected:
  bddpp_manager m;
  bdd a = m.New_var_last("a"), b = m.New_var_last("b"), c = m.New_var_last("c");
  bdd one = m.Bdd_one(), zero = m.Bdd_zero();

  bdd n(const bdd& f) { return m.Bdd_not(f); }
  template <class Print>
  static std::string text(Print print) {
    std::ostringstream out;
    print(out);
    return out.str();
  }
};

std::string number(long n) {
  return std::to_string(n);
}

}  // namespace

TEST_F(Printing, Products) {
  const bdd cube = m.Bdd_and(a, m.Bdd_and(n(b), c));
  EXPECT_EQ(m.Print_product_to_String(" and ", "not ", "", cube), "a and not b and c");
  EXPECT_EQ(m.Print_product_to_String(".", "", "'", cube), "a.b'.c");
  EXPECT_EQ(m.Print_product_to_String_pref_suff("*", "~(", ")", cube, "<", ">"), "<a>*~(<b>)*<c>");
  EXPECT_EQ(m.Print_product_to_String_pref_suff("*", "~", "", one, "<", ">"), "1");
  EXPECT_EQ(m.Print_product_to_String_pref_suff("*", "~", "", zero, "<", ">"), "0");
  EXPECT_EQ(text([&](auto& out) { m.Print_product("&", "!", "", out, m.Bdd_and(n(a), c)); }),
            "!a&c");
  EXPECT_EQ(text([&](auto& out) { m.Print_product_pref_suff("&", "!", "", out, n(b), "p.", "_"); }),
            "!p.b_");
  EXPECT_EQ(text([&](auto& out) { m.Print_wren_product("&&", "!", "", out, cube, "_c"); }),
            "_c[0]&&!_c[1]&&_c[2]");
}

TEST_F(Printing, Sums) {
  const bdd sum = m.Bdd_or(a, b);
  EXPECT_EQ(m.Print_sop_to_String(" + ", ".", "", "'", sum, 0), "a + a'.b");
  EXPECT_EQ(m.Print_sop_to_String(" + ", ".", "", "'", sum, 1), "a + b");
  for (int mode = 0; mode < 4; ++mode) {
    EXPECT_EQ(m.Print_sop_to_String("|", "&", "!", "", zero, mode), "0");
    EXPECT_EQ(m.Print_sop_to_String("|", "&", "!", "", one, mode), "1");
  }
  EXPECT_EQ(m.Print_sop_to_String_pref_suff("|", "&", "!", "", n(sum), "_s_", "_", 2),
            "!_s_a_&!_s_b_");
  EXPECT_EQ(
      text([&](auto& out) { m.Print_sop_pref_suff("|", "&", "!", "", out, sum, "s", "t", 1); }),
      "sat|sbt");
  EXPECT_EQ(text([&](auto& out) {
              m.Print_wren_sop(" || ", "&&", "!", "", out, m.Bdd_xor(a, c), "t", 2);
            }),
            "t[0]&&!t[2] || !t[0]&&t[2]");
  EXPECT_EQ(text([&](auto& out) { m.Print_wren_sop(" || ", "&&", "!", "", out, zero, "t", 0); }),
            "0");
  EXPECT_EQ(text([&](auto& out) { m.Print_debug_bdd(out, m.Bdd_xor(a, b)); }), "a . !b + !a . b");
  // Names are those that stand now.
  m.Rename_var("new", "a");
  EXPECT_EQ(m.Print_sop_to_String(" or ", "&", "!", "", sum, 1), "new or b");
}

TEST_F(Printing, NodeLines) {
  EXPECT_EQ(text([&](auto& out) { m.Print_bdds_list_by_nodes_list(out, {zero}, nullptr); }),
            "1\n0: -1:-3:-3,1\n");
  const bdd f = m.Bdd_xor(a, b);
  EXPECT_EQ(text([&](auto& out) { m.Print_bdd_by_nodes_list(out, f); }),
            "nombre de noeud trouves: 3\n"
            "0: 0:1:1,-1\n"
            "1: 1:2:2,-1\n"
            "2: -1:-3:-3,1\n");
  const long corr[] = {7, 5, 6};
  EXPECT_EQ(text([&](auto& out) { m.Print_bdd_by_nodes_list(out, f, corr); }),
            "0: 7:1:1,-1\n"
            "1: 5:2:2,-1\n"
            "2: -1:-3:-3,1\n");
  // Shared nodes are written and counted once, and marks of before do not matter.
  m.Bdd_incremental_id(f.node(), 40);
  const std::list<bdd> list{m.Bdd_ite(a, b, c), n(c), bdd(), b};
  EXPECT_EQ(text([&](auto& out) { m.Print_bdds_list_by_nodes_list(out, list, corr); }),
            "4\n"
            "0: 7:1:3,1\n"
            "1: 5:2:2,-1\n"
            "2: -1:-3:-3,1\n"
            "3: 6:2:2,-1\n");
  EXPECT_EQ(text([&](auto& out) { m.Print_bdds_list_by_nodes_list(out, list); }),
            "bdd_vars: 3\n"
            "bdd_nodes: 4\n"
            "0: 0:1:3,1\n"
            "1: 1:2:2,-1\n"
            "2: -1:-3:-3,1\n"
            "3: 2:2:2,-1\n");
  EXPECT_EQ(text([&](auto& out) { m.Print_bdd_node(out, c.node()); }), "3: 2:2:2,-1\n");
  EXPECT_EQ(text([&](auto& out) { Print_bdd_node(out, c.node()); }), "3: 2:2:2,-1\n");
  EXPECT_EQ(text([&](auto& out) { m.Print_bdd_node(out, c.node(), corr); }), "3: 6:2:2,-1\n");
  EXPECT_EQ(text([&](auto& out) { m.Print_bdd_node(out, one.node(), corr); }), "2: -1:-3:-3,1\n");
  std::ostringstream address;
  address << "3: 2:2:2,-1 " << static_cast<const void*>(c.node()) << '\n';
  EXPECT_EQ(text([&](auto& out) { m.Print_bdd_node_with_adress(out, c.node()); }), address.str());
}

TEST_F(Printing, Tables) {
  const bdd f = m.Bdd_ite(a, b, c);
  const bdd g = m.New_var_last("g");
  const long corr[] = {10, 20, 30, 40};
  EXPECT_EQ(text([&](auto& out) { m.ZUC_print(out, corr, g, f, 1); }),
            "10 20 30 40:\n"
            "1 1 -  1,\n"
            "0 - 1  1;\n");
  EXPECT_EQ(text([&](auto& out) { m.ZUC_print(out, corr, g, one, 1); }), "40:\n1;\n");
  EXPECT_EQ(text([&](auto& out) {
              m.PLA_print_pref_suff(out, g, n(c), "<", ">", "head ", "|\n", ",", ".", ";", 2);
            }),
            "head <c> <g>|\n0; 1.");
}

TEST_F(Printing, NodeCodeByHand) {
  const auto id = [](const bdd& f) { return number(f.node()->global_id()); };
  const auto c_code = [&](const bdd& f) {
    m.Bdd_global_clear_marks();
    return text([&](auto& out) {
      m.Print_node_for_eval(" || ", " && ", "!(", ")", "s.", "_", "0", ";", "t", out, f.node());
    });
  };
  EXPECT_EQ(c_code(zero), "   t[1]= !(0);\n");
  EXPECT_EQ(c_code(n(b)), "  t[" + id(b) + "]= s.b_;\n");
  const bdd f = m.Bdd_xor(a, b);
  EXPECT_EQ(c_code(f), "  t[" + id(b) + "]= s.b_;\n  t[" + id(f) + "]= s.a_ && t[" + id(b) +
                           "] || !(s.a_) && !(t[" + id(b) + "]);\n");
  // A node that is marked is not written again; a shared one is written once.
  EXPECT_EQ(text([&](auto& out) {
              m.Print_node_for_eval("|", "&", "!", "", "", "", "0", ";", "t", out, f.node());
              m.Print_node_for_eval("|", "&", "!", "", "", "", "0", ";", "t", out, nullptr);
            }),
            "");
  const auto other = [&](auto print) {
    m.Bdd_global_clear_marks();
    return text(print);
  };
  EXPECT_EQ(
      other([&](auto& out) {
        m.Print_node_for_eval("\t", "|", "&", "!", "", "", "", "0", ";", "t", out, f.node());
      }),
      "\tt[" + id(b) + "]= b;\n\tt[" + id(f) + "]= a&t[" + id(b) + "]|!a&!t[" + id(b) + "];\n");
  EXPECT_EQ(
      other([&](auto& out) {
        m.Print_node_for_eval_arrayless("|", "&", "!", "", "", "", "0", ";", "t", out, one.node());
        m.Print_node_for_eval_arrayless("--", "|", "&", "!", "", "", "", "0", ";", "t", out,
                                        f.node());
      }),
      "   t_1= !0;\n--t_" + id(b) + "= b;\n--t_" + id(f) + "= a&t_" + id(b) + "|!a&!t_" + id(b) +
          ";\n");
  // A writer that gives its own numbers and names.
  node_code_texts texts{.line_start = "",
                        .table = "M",
                        .entry_open = "(",
                        .entry_close = ")",
                        .assign = " <= ",
                        .or_text = " or ",
                        .and_text = " and ",
                        .not_open = "not "};
  texts.first_open = texts.second_open = "(";
  texts.first_close = texts.second_close = ")";
  texts.number = [&](const bdd_node* node) { return node == f.node() ? 0 : 1; };
  texts.name = [&](long index) { return "in" + number(index); };
  EXPECT_EQ(other([&](auto& out) { m.Print_node_code(texts, out, f.node()); }),
            "M(1) <= in1;\nM(0) <= (in0 and M(1)) or (not in0 and not M(1));\n");
}

TEST_F(Printing, DeepDiagrams) {
  bddpp_manager deep;
  constexpr int count = 100000;
  for (int i = 0; i < count; ++i) deep.New_var_last(name_of(i));
  bdd f = deep.Bdd_zero();
  for (int i = count; i-- > 0;) f = deep.Bdd_xor(deep.Bdd_var_by_index(i), f);
  std::ostringstream nodes, code;
  deep.Print_bdd_by_nodes_list(nodes, f);
  EXPECT_THAT(nodes.str(), ::testing::StartsWith("nombre de noeud trouves: 100001\n0: 0:1:1,-1\n"));
  deep.Bdd_global_clear_marks();
  deep.Print_node_for_eval("|", "&", "!", "", "", "", "0", ";", "n", code, f.node());
  EXPECT_THAT(code.str(), ::testing::HasSubstr("= x99999;\n"));
}

TEST_F(Printing, Structure) {
  EXPECT_EQ(text([&](auto& out) { Tdd(&m, m.Bdd_or(a, b)).Print_bdd_structure(out); }),
            "if a\n"
            "  1\n"
            "else if !a\n"
            "  if b\n"
            "    1\n"
            "  else if !b\n"
            "    0\n"
            "  dont care b\n"
            "    0\n"
            "dont care a\n"
            "  if b\n"
            "    1\n"
            "  else if !b\n"
            "    0\n"
            "  dont care b\n"
            "    0\n");
  const Outcome file = run_captured([&] { m.Print_bdd_structure(stdout, a); });
  EXPECT_EQ(file.err, "bddpp_manager::Print_bdd_structure(FILE * file,bdd f) A FAIRE\n");
}

TEST_F(Printing, Reports) {
  std::ostringstream address;
  address << static_cast<const void*>(&m);
  const std::string stats = text([&](auto& out) { m.Bdd_stats(out); });
  EXPECT_EQ(stats.substr(0, stats.find("Map:")),
            "BDD MANAGER statistics:\n"
            "memory adress: " +
                address.str() +
                " Version: 4.1\n"
                "bdd constant number: 1\n"
                "-: 1 --> -1 *2E32 + 4294967295\n"
                "bdd variables number: 3\n"
                "Index: name --> signature\n"
                "0: a --> 0 *2E32 + 2097154\n"
                "1: b --> 512 *2E32 + 2097154\n"
                "2: c --> 1024 *2E32 + 2097154\n");
  EXPECT_THAT(stats,
              HasSubstr("Map:\nglobal id: var_index then_node else_node else_link_type (refs "
                        "number)\n2: 0 *2E32 + 2097154 ("));
  EXPECT_THAT(stats, HasSubstr("\nMap Nodes number: 3 --> useless: 0\nGlobal references number :"));

  m.Bdd_assoc_bdd_to_var(m.Bdd_and(b, c), a);
  EXPECT_EQ(text([&](auto& out) { m.debug_variables(out); }), "a --> b and c\nb --> b\nc --> c\n");
  EXPECT_EQ(text([&](auto& out) { m.Print_Fixes_Points(out, a); }), "a = b.c\n");
}

TEST_F(Printing, FixedPoints) {
  const bdd d = m.New_var_last("d");
  // a becomes a or b: it stays or settles at b. c becomes (c and d)': it flips while d holds.
  m.Bdd_assoc_bdd_to_var(m.Bdd_or(a, b), a);
  EXPECT_EQ(text([&](auto& out) { m.Print_Fixes_Points(out, a); }),
            "  ==> two stability points : a'= b, a''= 1\n");
  // An association is taken without complement: the one of c is read as its node's function.
  const bdd flip = m.Bdd_xor(c, d);
  m.Bdd_assoc_bdd_to_var(flip.link_type() == 1 ? flip : n(flip), c);
  const std::string report = text([&](auto& out) { m.Print_Fixes_Points(out, c); });
  const bool as_is = flip.link_type() == 1;
  EXPECT_EQ(report, std::string("  ==> oscillation on c  for ") + (as_is ? "d" : "d'") +
                        "\n  ==> stabilisation when c = " + (as_is ? "d'" : "d") + "\n");
}

}  // namespace kiva::test
