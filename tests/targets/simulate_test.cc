// The call of the gate-level tool, which a script stands in for.

#include <gmock/gmock.h>

#include <cstdlib>
#include <sstream>

#include "tarn/model/sexception.h"
#include "tests/support/process_end.h"
#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

class Simulate : public testing::Test {
 protected:
  Simulate() : old_folder_(Module::SimulationDir()), old_path_(std::getenv("PATH")) {
    Module::SimulationDir() = dir_.path().string() + "/";
    setenv("PATH", (dir_.path().string() + ":" + old_path_).c_str(), 1);
  }
  ~Simulate() override {
    Module::SimulationDir() = old_folder_;
    setenv("PATH", old_path_.c_str(), 1);
  }
  void add_tool() {
    dir_.write("gate_runner", "#!/bin/sh\necho \"$*\" >'" + dir_.file("called") + "'\nexit 3\n");
    std::filesystem::permissions(dir_.file("gate_runner"), std::filesystem::perms::owner_all);
  }

  TempDir dir_;
  std::string old_folder_, old_path_;
};

TEST_F(Simulate, WritesTheNetlistAndRunsTheTool) {
  add_tool();
  const TargetCase test = named_case("toggle.zuc");
  EXPECT_EQ(run_captured([&] { test.module()->simulate(); }).err, "");
  std::ostringstream netlist;
  test.module()->BLIF_put(netlist, 1);
  EXPECT_EQ(read_text(dir_.file("toggle.blif")), netlist.str());
  EXPECT_EQ(read_text(dir_.file("called")), dir_.file("toggle") + "\n");

  EXPECT_EQ(run_captured([&] { test.module()->simulate(); }).err,
            "File: " + dir_.file("toggle.blif") + " already exists. File rewrited.\n");
}

TEST_F(Simulate, FinalisesAnOpenModule) {
  add_tool();
  const TargetCase test = named_case("open.zuc");
  run_captured([&] { test.module()->simulate(); });
  EXPECT_TRUE(test.finalised());
  EXPECT_THAT(read_text(dir_.file("open.blif")), testing::HasSubstr(".inputs I\n"));
}

TEST_F(Simulate, TellsWhatCannotBeDone) {
  const TargetCase test = named_case("toggle.zuc");
  EXPECT_THAT(run_captured([&] { test.module()->simulate(); }).err,
              testing::HasSubstr("Cannot run: gate_runner " + dir_.file("toggle") + "\n"));
  Module::SimulationDir() = dir_.file("nowhere/");
  EXPECT_EQ(run_captured([&] { test.module()->simulate(); }).err,
            "Cannot open output file: " + dir_.file("nowhere/toggle.blif") + "\n");
  Module module("empty");
  EquationTable* const table = module.getCompilation();
  module.setCompilation(nullptr);
  try {
    module.simulate();
    FAIL();
  } catch (const IllegalOperationException& exception) {
    EXPECT_EQ(exception.first(), "Simulation requires compilation");
  }
  module.setCompilation(table);
}

}  // namespace
}  // namespace kiva::test
