// What all targets share: files, refusals, and texts that do not depend on how the module came in.

#include "tarn/targets/targets.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/targets/frame/data_text.h"
#include "tarn/targets/frame/sum_text.h"
#include "tarn/targets/frame/target_names.h"
#include "tests/support/process_end.h"
#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

/// Puts the statics of printing back.
class Printing : public ::testing::Test {
 protected:
  void TearDown() override {
    Module::OutputDir() = Module::OutputFile() = "";
    Compilation::target_rules() = TargetRules::told();
  }
  TempDir dir;
};

TEST_F(Printing, FilesAreNamedAfterTheModuleOrAsChosen) {
  const TargetCase test = named_case("toggle.zuc");
  Compilation::target_rules() = TargetRules::working();
  Module::OutputDir() = dir.path().string();
  for (const Target& target : targets()) {
    SCOPED_TRACE(target.option);
    const std::string option = target.option;
    if (option == "explicit") continue;  // needs three outputs
    const std::string& extension = target.file.extension;
    for (const auto& [chosen, written] :
         {std::pair<std::string, std::string>{"", "toggle" + extension},
          {"foo", "foo" + extension},
          {"foo" + extension, "foo" + extension},
          {"a" + extension + "b", "a" + extension + "b" + extension}}) {
      Module::OutputFile() = chosen;
      const auto paths = target.paths(*test.module(), Compilation::target_rules());
      for (const std::string& path : paths) std::filesystem::remove(path);
      const Outcome first = run_captured([&] { print_target(target, test.module()); });
      EXPECT_EQ(first.err.find("exists"), std::string::npos) << first.err;
      if (option == "debug") {
        EXPECT_EQ(first.err, "Debugging trace: " + dir.file(written) + "\n");
      }
      EXPECT_NE(read_text(dir.file(written)), "") << written;
      EXPECT_EQ(paths[0], dir.file(written));
      EXPECT_NE(run_captured([&] {
                  print_target(target, test.module());
                }).err.find("File: " + dir.file(written) + " already exists. File rewrited.\n"),
                std::string::npos);
    }
    Module::OutputFile() = "no/such/folder";
    EXPECT_NE(run_captured([&] {
                print_target(target, test.module());
              }).err.find("Cannot open output file: " + dir.file("no/such/folder" + extension)),
              std::string::npos);
  }
}

TEST_F(Printing, ToldFilesOfC) {
  const TargetCase test = named_case("toggle.zuc");
  for (const char* chosen : {"foo.c", "foo"}) {
    Module::OutputFile() = dir.file(chosen);
    test.module()->printC();
    EXPECT_NE(read_text(dir.file("foo.c")).find("#include \"toggle.h\""), std::string::npos);
    EXPECT_TRUE(std::filesystem::remove(dir.file("foo.h")));
  }
  Module::OutputFile() = dir.file("no/such/folder");
  EXPECT_EQ(run_captured([&] { test.module()->printC(); }).err, "");
}

TEST_F(Printing, ATestOnDataWithoutExpressionEndsTheProcess) {
  const TargetCase test = named_case("thermostat.zuc");
  test.module()->removeBinding("cold");
  for (const TargetRules& rules : {TargetRules::told(), TargetRules::working()}) {
    Compilation::target_rules() = rules;
    std::ostringstream body, header;
    const Outcome outcome = run_captured([&] { test.module()->C_put(body, header); });
    EXPECT_TRUE(outcome.ended);
    EXPECT_EQ(outcome.err, "***error: abstract equation without bindind for:_s_cold\n");
  }
}

TEST_F(Printing, NamesDoNotMeet) {
  const NameShape shape{.target = "T",
                        .keywords = {"end"},
                        .case_matters = false,
                        .may_begin_with_underscore = false,
                        .may_end_with_underscore = false,
                        .may_double_underscore = false};
  TargetNames names(shape, true);
  names.reserve("clk");
  names.reserve_numbered("n_");
  std::string given;
  const Outcome outcome = run_captured([&] {
    for (const char* name : {"a", "A", "a_1", "END", "clk", "_x", "vx", "y__z_", "y_z", "9", "...",
                             "n_7", "n_x", "\xc3\xa9t\xc3\xa9"})
      given += names.give(name, "signal", name) + " ";
  });
  EXPECT_EQ(given, "a A_1 a_1_1 END_1 clk_1 v_x vx y_z y_z_1 v_9 v n_7_1 n_x v_t ");
  EXPECT_NE(outcome.err.find("T: signal \"END\" is written as \"END_1\": a keyword there\n"),
            std::string::npos);
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 11);

  TargetNames told(shape, false);
  EXPECT_EQ(told.give("end") + told.give("end"), "endend");

  // So are a type, its first value, a method and a constant.
  const TargetCase test = named_case("thermostat.zuc");
  TargetNames beside_data(shape, true);
  reserve_data_names(beside_data);
  run_captured([&] {
    for (const char* name : {"celsius", "zero_celsius", "lower_of", "margin"})
      EXPECT_EQ(beside_data.give(name), std::string(name) + "_1");
  });
}

TEST_F(Printing, SumsOfProductsHaveALimit) {
  Module* module = make_kept<Module>("sums");
  Bddexpressionwood* wood = module->getBddWood();
  std::vector<bdd> inputs;
  for (int i = 0; i < 32; ++i) {
    Signal* signal = make_kept<Signal>("i" + std::to_string(i), module, wood);
    signal->setInput();
    module->addInputSignal(signal);
    inputs.push_back(signal->getInitialBddStatus(module, wood));
  }
  for (const char* wire : {"S", "R", "T"}) {
    Signal* signal = make_kept<Signal>(wire, module, wood, true);
    wire[0] == 'S'   ? module->setSet(signal)
    : wire[0] == 'R' ? module->setReset(signal)
                     : module->setRtl(signal);
  }
  const TargetText text(module, {.shape = {.target = "T"}}, TargetRules::working());
  bdd parity = wood->Bdd_zero();
  const SumTexts texts{.or_text = " + ", .and_text = ".", .not_text = "/"};
  for (size_t i = 0; i < 2; ++i) parity = wood->Bdd_xor(parity, inputs[i]);
  EXPECT_EQ(sum_text(text, texts, {0, parity}), "_s_i0./_s_i1 + /_s_i0._s_i1");
  EXPECT_EQ(count_products(parity, 100), 2);
  for (size_t i = 2; i < inputs.size(); ++i) parity = wood->Bdd_xor(parity, inputs[i]);
  EXPECT_EQ(count_products(parity, 1L << 40), 1L << 31);
  EXPECT_THROW(sum_text(text, texts, {0, parity}), IllegalOperationException);
}

TEST_F(Printing, RefusesConstantsThatTheTargetCannotBear) {
  const TargetCase test = named_case("toggle.zuc");
  Compilation::target_rules() = TargetRules::working();
  const auto taken = [&](const char* name, const char* value) {
    DataExpr* text = value == nullptr ? nullptr : make_kept<DataValue>(value);
    Compilation::constantTable().addConstant(make_kept<ConstantDecl>("int", name, text));
    std::ostringstream out;
    try {
      test.module()->LUSTRE_put(out, 0);
    } catch (const IllegalOperationException&) {
      out.setstate(std::ios::failbit);
    }
    Compilation::GDataConstantTable() = nullptr;
    return out.good();
  };
  EXPECT_FALSE(taken("node", nullptr));
  for (const char* value : {"1", "-2.", ".5e-3", "0x1F", "true", "\"a; \\\" b\"", "';'"})
    EXPECT_TRUE(taken("k", value)) << value;
  for (const char* value : {"", "1; f()", "a b", "\"a\" \"b\"", "\"a\\\"", "1\n2", "x()", "-"})
    EXPECT_FALSE(taken("k", value)) << value;
}

TEST_F(Printing, ChangedNamesAreTold) {
  const TargetCase test = named_case("names.zuc");
  for (const auto& [option, lines] : std::map<std::string, std::vector<std::string>>{
           {"--vhdl",
            {"VHDL: signal \"signal\" is written as \"signal_1\": a keyword there",
             "\"clk\" is written as \"clk_1\": the name is taken",
             "\"O_1\" is written as \"O_1_2\": the name is taken",
             "\"p__q\" is written as \"p_q\": no name there",
             "\"z_\" is written as \"z\": no name there"}},
           {"--csharp",
            {"C#: signal \"in\" is written as \"in_1\": a keyword there\n",
             "C#: signal \"A.b\" is written as \"A_b\": no name there\n",
             "C#: signal \"2x\" is written as \"v_2x\": no name there\n"}}}) {
    const std::string told = test.write(option);
    for (const std::string& line : lines)
      EXPECT_NE(told.find(line), std::string::npos) << line << '\n' << told;
  }
}

TEST(Comments, TellWhereInTheSourceThingsStand) {
  const TempDir dir;
  const auto text = [&](const std::string& file, const std::string& options) {
    run_tool(KIVA_PROGRAMS "/tarn -q " + options +
                 " " KIVA_SOURCE
                 "/examples/watchdog/watchdog.zu && "
                 "sed -i '/^[^ ]* Written by/d' " +
                 file,
             dir.path());
    return read_text(dir.file(file));
  };
  for (const auto& [file, option, comment] :
       std::vector<std::array<std::string, 3>>{{"watchdog.c", "--c", "// "},
                                               {"watchdog.py", "--python", "# "},
                                               {"watchdog.sv", "--verilog", "// "},
                                               {"watchdog.vhdl", "--vhdl", "-- "}}) {
    const std::string told = text(file, option);
    EXPECT_TRUE(told.starts_with(comment + "The module watchdog, from watchdog.zu, FNV-1a "))
        << told;
    EXPECT_NE(told.find(comment + "watchdog.zu:12 wait 3 tick\n"), std::string::npos) << told;
    EXPECT_NE(told.find("active_12_1"), std::string::npos) << told;
    EXPECT_EQ(text(file, option), told);
    EXPECT_EQ(text(file, "--no-comments " + option).find(comment + "watchdog"), std::string::npos);
  }
}

TEST(DataTexts, RefuseWhatSharingMakesTooLong) {
  DataExpr* e = make_kept<DataValue>("1");
  for (int level = 0; level < 60; ++level) e = make_kept<DataBinaryOp>(DataExpr::Plus, e, e);
  std::ostringstream out;
  const TargetCase any = named_case("toggle.zuc");
  EXPECT_THROW(e->C_put(out, any.module()), IllegalOperationException);
  EXPECT_EQ(out.str(), "");
}

TEST(RandomModules, AreWrittenAndReadAgain) {
  for_random_cases(20, [](const TargetCase& test) {
    const TempDir again;
    run_tool(
        KIVA_PROGRAMS "/tarn -q -d '" + again.path().string() + "' '" + test.file("main.zuc") + "'",
        again.path());
    const std::string text = read_text(again.file("main.zuc"));
    std::string stimuli;
    for (const auto& instant : test.instants()) {
      for (size_t i = 0; i < test.inputs().size(); ++i)
        if (instant.inputs[i] == SignalState::one)
          stimuli += test.inputs()[i]->getOriginalName() + " ";
      stimuli += "\n";
    }
    const TargetCase reread("main.zuc", text, stimuli);
    ASSERT_EQ(reread.instants().size(), test.instants().size());
    for (size_t i = 0; i < test.instants().size(); ++i)
      EXPECT_EQ(reread.instants()[i].outputs, test.instants()[i].outputs) << "instant " << i + 1;
    run_tool(KIVA_PROGRAMS "/tarn -q -d '" + again.path().string() + "' '" +
                 reread.file("main.zuc") + "'",
             again.path(), false);
    EXPECT_EQ(read_text(again.file("main.zuc")), text)
        << "from the second writing on the same text";
  });
}

}  // namespace
}  // namespace kiva::test
