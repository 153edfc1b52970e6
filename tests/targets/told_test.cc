// The library's texts by default, to the letter: each file of the folder told was read by eye.

#include <gtest/gtest.h>

#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/targets/frame/target_rules.h"
#include "tests/support/process_end.h"
#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

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
      run_captured([&, put = put] { put(*test.module(), out, beside); });
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

void put_nodes(bddpp_manager& m, std::ostream& out) {
  const bdd a = m.Bdd_var_by_name("_s_T"), f = m.Bdd_xor(a, m.Bdd_var_by_name("_s_R"));
  for (const bdd& g : {m.Bdd_one(), f, m.Bdd_not(a)}) {
    m.Bdd_global_clear_marks();
    m.Print_node_for_eval_NUSMV("n", out, g.node());
    m.Bdd_global_clear_marks();
    m.Print_node_for_eval_VHDL("n", out, g.node());
    m.Bdd_global_clear_marks();
    m.Print_node_for_eval_VHDL_reset_input("n", out, g.node());
    m.Print_node_for_eval_VHDL_input("n", out, g.node());
    m.Print_node_for_eval_BLIF("n", out, g.node());
    m.BLIF_print(out, a, g, 1);
    out << g.vhdl_node_name("n") << '\n'
        << m.Print_sop_to_VHDL_String(g, 1) << '\n'
        << m.Print_sop_to_ESTEREL_String(m.Bdd_not(g), 1) << '\n';
  }
}

void put_data_parts(Module& module, std::ostream& out) {
  module.LUSTRE_put_equation(out, "n");
  module.CSharp_put_equation(out, "n", 0);
  module.C_put_equation(out, "n", {"_s_heat"});
  Compilation::GDataTypeTable()->CSharp_put(out);
  Compilation::GDataTypeTable()->LUSTRE_put(out);
  Compilation::GDataMethodTable()->CSharp_put(out);
  Compilation::GDataConstantTable()->CSharp_put(out);
  Compilation::GDataConstantTable()->getConstant("ceiling")->CSharp_put(out);
  for (const char* type : {"bool", "int", "real", "length"}) out << zero_lustre(type) << '\n';
  for (int op : {DataExpr::Not, DataExpr::Neq}) out << DataExpr::LUSTRE_opname(op) << '\n';
}

/// The same operations of woods, equations, data and diagrams.
TEST(Told, PartsOfTexts) {
  std::ostringstream text;
  const auto put = [&](const std::string& title, auto writer) {
    text << "==== " << title << '\n';
    writer(text);
  };
  // Told marks are cleared by woods alone, and numbers follow what was made before.
  const TargetCase toggle = named_case("toggle.zuc"), thermostat = named_case("thermostat.zuc");
  Bddexpressionwood& wood = *toggle.module()->getBddWood();
  bddpp_manager& m = *wood.my_bdd_manager();
  const auto each = [&](auto writer) {
    m.Bdd_global_clear_marks();
    for (long index : wood.earliest_sort()) writer(*wood.Exp_table()[index]);
  };
  put("VHDL", [&](S out) {
    wood.Put_vhdl(out, "n", {"_s_T"}, {"_s_Q"}, {"_s_R <= '0'"}, {"_s_R <= _s_RN"});
    each([&](auto& e) { e.put_vhdl(out, "n", {"_s_Q"}); });
  });
  put("SystemC", [&](S out) { wood.Put_systemc(out); });
  put("C#", [&](S out) { wood.Put_csharp(out, "n"); });
  put("Lustre", [&](S out) { wood.Put_lustre(out, "n"); });
  put("Lustre, variables", [&](S out) { wood.Put_lustre_arrayless(out, "n"); });
  put("Lustre, sums", [&](S out) { each([&](auto& e) { e.put_lustre_compatibilite(out); }); });
  put("Esterel", [&](S out) { wood.Put_esterel(out); });
  put("sums", [&](S out) { wood.Put_basic_doc(out); });
  put("trees", [&](S out) { each([&](auto& e) { e.put_tree(out); }); });
  put("calls", [&](S out) {
    std::vector<int> two_sided(static_cast<size_t>(wood.Nb_bdd_vars()), 1);
    two_sided[3] = 0;  // _v_Q
    wood.Put_ino_grafcet(out, "n", {"_s_Q", "_v_Q"}, "p_", two_sided.data());
  });
  put("nodes and sums", [&](S out) { put_nodes(m, out); });
  put("data", [&](S out) { put_data_parts(*thermostat.module(), out); });
  expect_told("parts.txt", text.str());
  EXPECT_ANY_THROW(DataExpr::LUSTRE_opname(DataExpr::Supe + 1));
}

}  // namespace
}  // namespace kiva::test
