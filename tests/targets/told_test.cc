// The library's texts by default, to the letter: each file of the folder told was read by eye.

#include <gtest/gtest.h>

#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/targets/frame/target_rules.h"
#include "tests/support/process_end.h"
#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

template <class Put>
std::string text_of(Put put) {
  std::ostringstream out;
  put(out);
  return out.str();
}

/// The operations that give a module's text, by the suffix of the file that holds it.
using S = std::ostream&;
const std::vector<std::pair<std::string, std::function<void(Module&, S, S)>>> texts = {
    {".c .h", [](Module& m, S body, S header) { m.C_put(body, header); }},
    {".blif", [](Module& m, S out, S) { m.BLIF_put(out, 0); }},
    {".vhdl", [](Module& m, S out, S) { m.VHDL_put(out, 0); }},
    {"_altera.vhdl", [](Module& m, S out, S) { m.VHDL_put(out, 1); }},
    {"_sc.cpp _sc.h", [](Module& m, S body, S header) { m.SYSTEMC_put(body, header); }},
    {".smv", [](Module& m, S out, S) { m.NUSMV_put(out, 0, 0); }},
    {".lus", [](Module& m, S out, S) { m.LUSTRE_put(out, 0); }},
    {".strl", [](Module& m, S out, S) { m.ESTEREL_put(out, 0); }},
    {".cs", [](Module& m, S out, S) { m.CSharp_put(out); }},
    {".txt", [](Module& m, S out, S) { m.DOC_put(out, 0); }},
    {".tex", [](Module& m, S out, S) { m.LATEX_put(out); }},
    {".gal", [](Module& m, S out, S) { m.ENCAPSULATEDGAL_put(out); }},
    {".dbg", [](Module& m, S out, S) { m.DEBUG_put(out); }}};

/// Of a finalised module, one that is not, and one with values.
TEST(Told, Texts) {
  int compared = 0;
  for (const std::string name : {"toggle", "open", "thermostat"}) {
    for (const auto& [suffixes, put] : texts) {
      const TargetCase test = named_case(name + ".zuc");  // told tables hold all nodes ever made
      std::ostringstream out, beside;
      run_captured([&] { put(*test.module(), out, beside); });
      std::istringstream words(suffixes);
      std::string suffix;
      for (const std::string& text : {out.str(), beside.str()}) {
        if (!(words >> suffix) || !has_told(name + suffix)) continue;
        expect_told(name + suffix, text);
        ++compared;
      }
    }
  }
  EXPECT_EQ(compared, 38);
}

TEST(Told, VhdlOfAWoodIsThatOfItsModule) {
  const TargetCase test = named_case("toggle.zuc");
  Bddexpressionwood* wood = test.module()->getBddWood();
  std::ostringstream whole, part, one;
  test.module()->VHDL_put(whole, 0);
  wood->Put_vhdl(part, "toggle_node", {"_s_T"}, {"_s_Q"}, {"_s_R <= '0'"}, {"_s_R <= _s_RN"});
  EXPECT_NE(whole.str().find("begin\n-- state and output computation\n" + part.str() + "end "),
            std::string::npos)
      << part.str();
  wood->my_bdd_manager()->Bdd_global_clear_marks();
  for (long index : wood->earliest_sort())
    wood->Exp_table()[index]->put_vhdl(one, "toggle_node", {"_s_Q"});
  EXPECT_TRUE(part.str().ends_with("-- actualisation\n" + one.str())) << one.str();
}

TEST(Told, SumsOfSystemC) {
  std::ostringstream sums;
  named_case("toggle.zuc").module()->getBddWood()->Put_systemc(sums);
  EXPECT_EQ(sums.str(),
            "    _s_Q <= _s_T && ! _s_R || ! _s_T && _s_R;\n"
            "    _v_Q <= _s_T && _s_R || ! _s_T && ! _s_R;\n"
            "    _s_RN <= _s_T && ! _s_R || ! _s_T && _s_R;\n"
            "    _v_RN <= _s_T && _s_R || ! _s_T && ! _s_R;\n");
}

TEST(Told, PartsOfTexts) {
  for (const std::string name : {"toggle", "open", "thermostat"}) {
    Module* module = named_case(name + ".zuc").module();
    Bddexpressionwood* wood = module->getBddWood();
    const bool data = module->getDataTable() != nullptr;
    const auto part = [&](auto put_whole, auto put_part) {
      const std::string whole = text_of(put_whole), text = text_of(put_part);
      EXPECT_NE(whole.find(text), std::string::npos) << text;
    };
    part([&](auto& out) { module->LUSTRE_put(out, 0); },
         [&](auto& out) { module->LUSTRE_put_equation(out, name + "_node"); });
    if (data) continue;
    part([&](auto& out) { module->LUSTRE_put(out, 0); },
         [&](auto& out) { wood->Put_lustre(out, name + "_node"); });
    part([&](auto& out) { module->ESTEREL_put(out, 0); },
         [&](auto& out) { wood->Put_esterel(out); });
  }
  Bddexpressionwood* wood = named_case("toggle.zuc").module()->getBddWood();
  expect_told("toggle_arrayless.lus",
              text_of([&](auto& out) { wood->Put_lustre_arrayless(out, "node"); }));
  expect_told("toggle_sums.lus", text_of([&](auto& out) {
                for (long index : wood->earliest_sort())
                  wood->exp_by_index(index)->put_lustre_compatibilite(out);
              }));
}

TEST(Told, DataOfLustre) {
  EXPECT_EQ(zero_lustre("bool") + zero_lustre("int") + zero_lustre("real") + zero_lustre("length"),
            "false00.0zero_length");
  EXPECT_EQ(DataExpr::LUSTRE_opname(DataExpr::Not), "not");
  EXPECT_EQ(DataExpr::LUSTRE_opname(DataExpr::Neq), " <> ");
  EXPECT_ANY_THROW(DataExpr::LUSTRE_opname(DataExpr::Supe + 1));
  DataTypeTable types;
  types.addType("length");
  EXPECT_EQ(text_of([&](auto& out) { types.LUSTRE_put(out); }), "const length zero_length;\n");
}

TEST(Told, PartsAndDataOfCSharp) {
  Module* module = named_case("thermostat.zuc").module();
  std::ostringstream equations, part, data;
  module->CSharp_put(equations);
  module->CSharp_put_equation(part, "thermostat_node", 0);
  EXPECT_NE(equations.str().find("/* outputs computing */\n" + part.str() + "           if (*"),
            std::string::npos)
      << part.str();
  Compilation::GDataTypeTable->CSharp_put(data);
  Compilation::GDataMethodTable->CSharp_put(data);
  Compilation::GDataConstantTable->CSharp_put(data);
  Compilation::GDataConstantTable->getConstant("ceiling")->CSharp_put(data);
  EXPECT_EQ(data.str(),
            "public const celsius zero_celsius;\npublic const fahrenheit zero_fahrenheit;\n"
            "public celsius lower_of(celsius, celsius);\npublic celsius factory_setting();\n"
            "public fahrenheit to_fahrenheit(celsius);\n"
            "private const celsius margin = 0.5;\npublic const celsius ceiling;\n");
}

TEST(Told, EquationsForPeople) {
  std::ostringstream words, tree, plain;
  Module* module = named_case("toggle.zuc").module();
  Bddexpressionwood* wood = module->getBddWood();
  const long output = module->getOutputSignal("Q")->getInitialBddStatusId(module, wood);
  wood->Exp_table()[output]->put_basic_doc(words);
  EXPECT_EQ(words.str(), "_s_Q = _s_T and not _s_R or not _s_T and _s_R;\n");
  wood->Exp_table()[output]->put_tree(tree);
  EXPECT_TRUE(tree.str().starts_with("_s_Q =\n")) << tree.str();
  EXPECT_NE(tree.str().find("if _s_T (node: "), std::string::npos) << tree.str();
  wood->Put_csharp(plain, "n");
  EXPECT_TRUE(plain.str().ends_with("  _s_RN= !n[18];\n  _v_RN= n[18];\n")) << plain.str();
}

TEST(Told, CallsOfActions) {
  const TargetCase test = named_case("toggle.zuc");
  Bddexpressionwood* wood = test.module()->getBddWood();
  std::vector<int> two_sided(static_cast<size_t>(wood->Nb_bdd_vars()), 1);
  std::ostringstream out;
  two_sided[3] = 0;  // _v_Q
  wood->Put_ino_grafcet(out, "n", {"_s_Q", "_v_Q"}, "p_", two_sided.data());
  EXPECT_EQ(out.str(),
            "  n[6]= p__s_R;\n"
            "  n[18]= p__s_T && n[6] || !p__s_T && !n[6];\n"
            "  if(!n[18])\n  {\n     _s_Q_true();\n  }\n  else\n  {\n     _s_Q_false();\n  }\n"
            "  if(n[18])\n  {\n     _v_Q();\n  }\n"
            "  p__s_RN= !n[18];\n  p__v_RN= n[18];\n");
}

TEST(Told, NodesAndSumsOfTheTargets) {
  bddpp_manager m;
  const bdd a = m.New_var_last("a"), b = m.New_var_last("b"), f = m.Bdd_xor(a, b);
  const bdd one = m.Bdd_one(), zero = m.Bdd_zero(), and_not = m.Bdd_and(a, m.Bdd_not(b));
  const auto id = [](const bdd& g) { return std::to_string(g.node()->global_id()); };
  const auto nodes = [&](auto print) {
    m.Bdd_global_clear_marks();
    return text_of(print);
  };
  EXPECT_EQ(nodes([&](auto& out) {
              m.Print_node_for_eval_NUSMV("node", out, one.node());
              m.Print_node_for_eval_NUSMV("node", out, f.node());
            }),
            "   node_1:= TRUE;\n  node_" + id(b) + ":= b;\n  node_" + id(f) + ":= a & node_" +
                id(b) + " | !a & !node_" + id(b) + ";\n");
  EXPECT_EQ(nodes([&](auto& out) {
              m.Print_node_for_eval_VHDL("M", out, one.node());
              m.Print_node_for_eval_VHDL("M", out, f.node());
            }),
            "      M(1) <= '1';\n      M(" + id(b) + ") <= b;\n      M(" + id(f) + ") <= a and M(" +
                id(b) + ") or (not a and not M(" + id(b) + "));\n");
  EXPECT_EQ(nodes([&](auto& out) {
              m.Print_node_for_eval_VHDL_reset_input("M", out, a.node());
              m.Print_node_for_eval_VHDL_input("M", out, a.node());
              m.Print_node_for_eval_VHDL("M", out, a.node());
            }),
            "      M(" + id(a) + ") <= '0';\n      M(" + id(a) + ") <= a;\n");
  EXPECT_EQ(nodes([&](auto& out) { m.Print_node_for_eval_BLIF("M_node", out, f.node()); }),
            ".names b M_node_" + id(b) + "\n1 1\n.names a M_node_" + id(b) + " M_node_" + id(b) +
                " M_node_" + id(f) + "\n11- 1\n0-0 1\n");
  EXPECT_EQ(m.Bdd_not(a).vhdl_node_name("M"), "not M(" + id(a) + ")");
  EXPECT_EQ(text_of([&](auto& out) {
              m.BLIF_print(out, b, f, 1);
              m.BLIF_print(out, b, one, 1);
            }),
            ".names  a b b\n10 1\n01 1\n.names  b\n1\n");
  EXPECT_EQ(m.Print_sop_to_VHDL_String(one, 1) + m.Print_sop_to_VHDL_String(zero, 1), "'1''0'");
  EXPECT_EQ(m.Print_sop_to_VHDL_String(and_not, 1), "a and not b");
  EXPECT_EQ(m.Print_sop_to_VHDL_String(f, 1), "(a and not b) or (not a and b)");
  EXPECT_EQ(m.Print_sop_to_ESTEREL_String(one, 1) + m.Print_sop_to_ESTEREL_String(zero, 1),
            "ticknot tick");
  EXPECT_EQ(m.Print_sop_to_ESTEREL_String(and_not, 1), "a and not b");
}

}  // namespace
}  // namespace kiva::test
