// The library's texts by default, to the letter: each file of the folder told was read by eye.

#include <gtest/gtest.h>

#include <sstream>

#include "tarn/formats/target_rules.h"
#include "tarn/model/compilation.h"
#include "tests/formats/target_case.h"

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

}  // namespace
}  // namespace kiva::test
