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

}  // namespace
}  // namespace kiva::test
