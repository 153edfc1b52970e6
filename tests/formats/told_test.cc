// The library's texts by default, to the letter: each file of the folder told was read by eye.

#include <gtest/gtest.h>

#include <sstream>

#include "tarn/formats/target_rules.h"
#include "tarn/model/compilation.h"
#include "tests/formats/target_case.h"
#include "tests/support/process_end.h"

namespace kiva::test {
namespace {

/// Calls check(module, file name without extension) for a finalised module, one that is not, and
/// one with values.
void for_each_told(const std::function<void(Module*, const std::string&)>& check) {
  for (const std::string name : {"toggle", "open", "thermostat"}) {
    const TargetCase test = named_case(name + ".zuc");
    check(test.module(), name);
  }
}

TEST(Told, C) {
  for_each_told([](Module* module, const std::string& name) {
    std::ostringstream body, header;
    module->C_put(body, header);
    expect_told(name + ".c", body.str());
    expect_told(name + ".h", header.str());
  });
}

TEST(Told, Blif) {
  for_each_told([](Module* module, const std::string& name) {
    std::ostringstream out;
    module->BLIF_put(out, 0);
    expect_told(name + ".blif", out.str());
  });
}

TEST(Told, Vhdl) {
  for_each_told([](Module* module, const std::string& name) {
    std::ostringstream bits, logic;
    module->VHDL_put(bits, 0);
    module->VHDL_put(logic, 1);
    expect_told(name + ".vhdl", bits.str());
    if (name == "toggle") expect_told("toggle_altera.vhdl", logic.str());
  });
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

TEST(Told, SystemC) {
  for_each_told([](Module* module, const std::string& name) {
    std::ostringstream body, header;
    module->SYSTEMC_put(body, header);
    expect_told(name + "_sc.cpp", body.str());
    expect_told(name + "_sc.h", header.str());
  });
  std::ostringstream sums;
  named_case("toggle.zuc").module()->getBddWood()->Put_systemc(sums);
  EXPECT_EQ(sums.str(),
            "    _s_Q <= _s_T && ! _s_R || ! _s_T && _s_R;\n"
            "    _v_Q <= _s_T && _s_R || ! _s_T && ! _s_R;\n"
            "    _s_RN <= _s_T && ! _s_R || ! _s_T && _s_R;\n"
            "    _v_RN <= _s_T && _s_R || ! _s_T && ! _s_R;\n");
}

template <class Put>
std::string text_of(Put put) {
  std::ostringstream out;
  put(out);
  return out.str();
}

TEST(Told, Smv) {
  for_each_told([](Module* module, const std::string& name) {
    expect_told(name + ".smv", text_of([&](auto& out) { module->NUSMV_put(out, 0, 0); }));
  });
}

TEST(Told, Lustre) {
  for_each_told([](Module* module, const std::string& name) {
    const std::string text = text_of([&](auto& out) { module->LUSTRE_put(out, 0); });
    expect_told(name + ".lus", text);
    const std::string equations =
        text_of([&](auto& out) { module->LUSTRE_put_equation(out, name + "_node"); });
    EXPECT_NE(text.find(equations), std::string::npos) << equations;
    if (module->getDataTable() != nullptr) return;
    Bddexpressionwood* wood = module->getBddWood();
    EXPECT_EQ(text_of([&](auto& out) { wood->Put_lustre(out, name + "_node"); }), equations);
  });
  Bddexpressionwood* wood = named_case("toggle.zuc").module()->getBddWood();
  expect_told("toggle_arrayless.lus",
              text_of([&](auto& out) { wood->Put_lustre_arrayless(out, "node"); }));
  expect_told("toggle_sums.lus", text_of([&](auto& out) {
                for (long index : wood->earliest_sort())
                  wood->exp_by_index(index)->put_lustre_compatibilite(out);
              }));
}

TEST(Told, Esterel) {
  for_each_told([](Module* module, const std::string& name) {
    const std::string text = text_of([&](auto& out) { module->ESTEREL_put(out, 0); });
    expect_told(name + ".strl", text);
    if (module->getDataTable() != nullptr) return;
    const std::string equations =
        text_of([&](auto& out) { module->getBddWood()->Put_esterel(out); });
    EXPECT_NE(text.find(equations), std::string::npos) << equations;
  });
}

TEST(Told, CSharp) {
  for (const std::string name : {"open", "thermostat"}) {
    std::ostringstream out;
    named_case(name + ".zuc").module()->CSharp_put(out);
    expect_told(name + ".cs", out.str());
  }
  Module* module = named_case("thermostat.zuc").module();
  std::ostringstream equations, part, data;
  module->CSharp_put(equations);
  module->CSharp_put_equation(part, "thermostat_node", 0);
  EXPECT_NE(equations.str().find("/* outputs computing */\n" + part.str() + "           if (*"),
            std::string::npos)
      << part.str();
  Compilation::GDataTypeTable()->CSharp_put(data);
  Compilation::GDataMethodTable()->CSharp_put(data);
  Compilation::GDataConstantTable()->CSharp_put(data);
  Compilation::GDataConstantTable()->getConstant("ceiling")->CSharp_put(data);
  EXPECT_EQ(data.str(),
            "public const celsius zero_celsius;\npublic const fahrenheit zero_fahrenheit;\n"
            "public celsius lower_of(celsius, celsius);\npublic celsius factory_setting();\n"
            "public fahrenheit to_fahrenheit(celsius);\n"
            "private const celsius margin = 0.5;\npublic const celsius ceiling;\n");
}

TEST(Told, DocumentsAndSections) {
  for_each_told([](Module* module, const std::string& name) {
    std::ostringstream doc, debug, gal;
    module->DOC_put(doc, 0);
    expect_told(name + ".txt", doc.str());
    if (name == "thermostat") return;
    module->ENCAPSULATEDGAL_put(gal);
    expect_told(name + ".gal", gal.str());
    run_captured([&] { module->DEBUG_put(debug); });
    expect_told(name + ".dbg", debug.str());
  });
  std::ostringstream latex, words, tree, plain;
  Module* module = named_case("toggle.zuc").module();
  module->LATEX_put(latex);
  expect_told("toggle.tex", latex.str());
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

}  // namespace
}  // namespace kiva::test
