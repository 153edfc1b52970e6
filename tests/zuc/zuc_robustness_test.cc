// Files that no writer wrote, and files as large as real work makes them.

#include <random>

#include "tests/zuc/zuc_fixture.h"

namespace kiva::test {
namespace {

std::string numbered(const std::string& prefix, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += prefix + std::to_string(i) + ' ';
  return text;
}

TEST_F(ZucReading, TakesLargeFiles) {
  // 60,000 nodes, each used by the one before it: a chain as deep as the file.
  constexpr int depth = 60000;
  std::string nodes = std::to_string(depth + 1) + "\n";
  for (int i = 0; i < depth; ++i)
    nodes += std::to_string(i) + ": " + std::to_string(2 * i) + ":" + std::to_string(i + 1) + ":" +
             std::to_string(depth) + ",-1\n";
  nodes += std::to_string(depth) + ": -1:-3:-3,1\n";
  Module* m = module("module: m 0 1 input: " + numbered("I", depth) + "; output: O ; " +
                     "connexion: S R T; equation_def: " + nodes + "expressions: 1 0 " +
                     std::to_string(2 * depth) + ":0,1,() end:\n");
  bddpp_manager* manager = m->getBddWood()->my_bdd_manager();
  EXPECT_EQ(manager->Bdd_size(m->getBddWood()->exp_by_index(2 * depth)->my_bdd_exp()), depth + 1);
}

TEST_F(ZucReading, TakesManyNamesRegistersAndSlashes) {
  constexpr int names = 100000, registers = 20000;
  std::string text = "module: m 0 1 local: " + numbered("L", names) + "; register: ";
  for (int i = 0; i < registers; ++i)
    text += "L" + std::to_string(i) + " L" + std::to_string(names - 1 - i) + " 0;\n";
  Module* m = module(text + "connexion: S R T; equation_def: 0 expressions: end:\n" +
                     std::string(256 * 1024, '/'));
  EXPECT_EQ(m->getLocalSignalList().size(), static_cast<size_t>(names));
  EXPECT_EQ(m->getRegisterList().size(), static_cast<size_t>(registers));
}

TEST_F(ZucReading, TakesDeepAndSharedEvaluationTables) {
  constexpr int depth = 20000;
  std::string lines = "0: %%14(0,1);\n";
  for (int i = 1; i <= depth; ++i)
    lines += std::to_string(i) + ": %%4(" + std::to_string(i - 1) + ");\n";
  Module* m = module(with_equations("0\n", "",
                                    "binding: (4,5): value: " + std::to_string(depth) +
                                        "; end: evaltable: " + lines + " end:\n"));
  EXPECT_EQ(*m->getBinding("O")->getValue()->computeDependencySet(),
            (std::set<Signal*>{m->getInputSignal("I")}));
  // Each line uses the one before it twice: 2^60 paths, 60 lines.
  lines = "0: %%14(0,1);\n";
  for (int i = 1; i <= 60; ++i) {
    const std::string before = std::to_string(i - 1);
    lines += std::to_string(i) + ": %%0(" + before + "," + before + ");\n";
  }
  module(
      with_equations("0\n", "", "binding: (4,5): value: 60; end: evaltable: " + lines + " end:\n"));
}

TEST_F(ZucReading, TakesNodeNumbersThatAreSparseOrRepeated) {
  // Numbers out of order, far apart, and one given twice: the last line of a number counts.
  Module* m = module(with_equations(
      "9000000000\n5: 0:3:3,-1\n8999999999: 2:3:3,-1\n3: -1:-3:-3,1\n0: 0:3:3,-1\n0: 2:3:3,-1\n",
      "1 0 4:5,1,(0 )\n1 0 5:8999999999,1,(2 )\n1 0 6:0,1,(2 )\n"));
  Bddexpressionwood* wood = m->getBddWood();
  bddpp_manager* manager = wood->my_bdd_manager();
  EXPECT_EQ(wood->exp_by_index(4)->my_bdd_exp(), manager->Bdd_var_by_index(0));
  EXPECT_EQ(wood->exp_by_index(5)->my_bdd_exp(), manager->Bdd_var_by_index(2));
  EXPECT_EQ(wood->exp_by_index(6)->my_bdd_exp(), manager->Bdd_var_by_index(2));
}

TEST_F(ZucReading, StopsAtTooManyDeclarations) {
  std::string types;
  for (int i = 0; i < 32768; ++i) types += "same;\n";
  const std::string text = with_equations("0\n", "", "data: type: " + types + " method: end:\n");
  EXPECT_EQ(refused(text), "32777: more than 32767 types in one file");
}

/// Every way of cutting, changing or doubling a file gives a module or a reason, never more.
TEST_F(ZucReading, SurvivesMutilatedFiles) {
  const std::string good = with_equations(
      "3\n0: 0:1:1,-1\n1: 2:2:2,-1\n2: -1:-3:-3,1\n", "1 0 4:0,1,(0 2 )\n1 0 8:-3,1,(4 )\n",
      "binding:\n(8,9): value: 2 clock: (4,5);\nend:\nevaltable:\n0: $0;\n1: %%14(0,1);\n"
      "2: %%0(0,1);\nend:\ndata:\ntype:\nint;\nmethod:\nconstant:\nint c \"1\";\nend:\n");
  module(good);
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  for (size_t length = 0; length < good.size(); length += 3) (void)read(good.substr(0, length));
  for (int round = 0; round < 1500; ++round) {
    std::string text = good;
    for (unsigned changes = 1 + random() % 4; changes > 0; --changes) {
      const size_t at = random() % text.size();
      switch (random() % 4) {
        case 0:
          text[at] = static_cast<char>(random());
          break;
        case 1:
          text[at] = "0123456789-:,;()$%"[random() % 18];
          break;
        case 2:
          text.erase(at, 1 + random() % 20);
          break;
        default:
          text.insert(at, text.substr(random() % text.size(), random() % 30));
      }
      if (text.empty()) text = " ";
    }
    const ZucRead result = read(text);
    if (!outcome.ended && result.module == nullptr) {
      EXPECT_TRUE(result.problem.starts_with(file + ":")) << text;
    }
  }
}

}  // namespace
}  // namespace kiva::test
