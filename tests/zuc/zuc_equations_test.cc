// Nodes, equations, bindings and the tables of data.

#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tests/zuc/zuc_fixture.h"

namespace kiva::test {
namespace {

const char* const one_and_i = "2\n0: -1:-3:-3,1\n1: 0:0:0,-1\n";

TEST_F(ZucReading, BuildsSharedDiagramsWhateverTheOrderOfLines) {
  // O = I ? J : not J, the children behind their parent; A = not O's function.
  Module* m = module(with_equations("3\n0: 0:1:1,-1\n1: 2:2:2,-1\n2: -1:-3:-3,1\n",
                                    "1 0 4:0,1,(0 2 )\n2 0 6:0,-1,(0 2 )\n"));
  Bddexpressionwood* wood = m->getBddWood();
  bddpp_manager* manager = wood->my_bdd_manager();
  const bdd i = manager->Bdd_var_by_index(0), j = manager->Bdd_var_by_index(2);
  EXPECT_EQ(wood->exp_by_index(4)->my_bdd_exp(), manager->Bdd_xnor(i, j));
  EXPECT_EQ(wood->exp_by_index(6)->my_bdd_exp(), manager->Bdd_xor(i, j));
  EXPECT_EQ(wood->exp_by_index(4)->my_name(), "_s_O");
  EXPECT_EQ(wood->exp_by_index(4)->getUserType(), Compilation::SOUTPUT);
  // Dates are those of the file.
  EXPECT_EQ(wood->exp_by_index(4)->getEarlyDate(), 1);
  EXPECT_EQ(wood->exp_by_index(6)->getEarlyDate(), 2);
  EXPECT_EQ(wood->set_of_amont_dependances(2), (index_set{4, 6}));
}

TEST_F(ZucReading, PutsChildrenInOrderWhereTheFileDoesNot) {
  // Node 2 tests J above I: the diagram is the function, in the manager's order.
  Module* m =
      module(with_equations("3\n0: -1:-3:-3,1\n1: 0:0:0,-1\n2: 2:1:0,-1\n", "1 0 4:2,1,(0 2 )\n"));
  bddpp_manager* manager = m->getBddWood()->my_bdd_manager();
  EXPECT_EQ(m->getBddWood()->exp_by_index(4)->my_bdd_exp(),
            manager->Bdd_and(manager->Bdd_var_by_index(0), manager->Bdd_var_by_index(2)));
}

TEST_F(ZucReading, SkipsNodeLinesOutsideTheCount) {
  module(with_equations("2\n0: -1:-3:-3,1\n1: 0:0:0,-1\n2: 0:0:0,-1\n-1: 0:0:0,-1\n",
                        "1 0 4:1,1,(0 )\n"));
  const std::string skipped = "detecting bad indice about parsed_nodes_table[]! skipping ...\n";
  EXPECT_EQ(outcome.err, skipped + skipped);
}

TEST_F(ZucReading, MakesAbstractEquationsOfRootMinusThree) {
  Module* m = module(with_equations(one_and_i, "3 1 4:-3,7,(0 1 )\n"));
  const Bddexpression* e = m->getBddWood()->exp_by_index(4);
  EXPECT_NE(e->getAbstraction(), 0);
  EXPECT_EQ(e->my_exp_def(), "VALUE_SIGNAL");
  EXPECT_EQ(e->set_of_var_dependances(), (index_set{0, 1}));
  EXPECT_EQ(e->getEarlyDate(), 3);
}

TEST_F(ZucReading, StopsAtReferencesThatLeadNowhereOrBack) {
  const std::string read_node_0 = "1 0 4:0,1,(0 )\n";
  const struct {
    const char* nodes;
    std::string equations;
    const char* reason;
  } cases[] = {
      {"1\n0: -1:-3:-3,1\n", "1 0 4:5,1,(0 )\n", "10: node number 5 has no line"},
      {"1\n0: -1:-3:-3,1\n", "1 0 4:-2,1,(0 )\n", "10: node number -2 has no line"},
      {"2\n0: 0:1:0,1\n1: -1:-3:-3,1\n", read_node_0, "8: node 0 reaches itself through node 0"},
      {"3\n0: 0:1:2,1\n1: -1:-3:-3,1\n2: 2:1:0,1\n", read_node_0,
       "10: node 2 reaches itself through node 0"},
      {"2\n0: 0:7:1,1\n1: -1:-3:-3,1\n", read_node_0, "8: node 0: child number 7 has no line"},
      {"2\n0: 99:1:1,-1\n1: -1:-3:-3,1\n", read_node_0,
       "8: node 0: variable number 99 is outside the names of the file"},
      {"2\n0: -2:1:1,-1\n1: -1:-3:-3,1\n", read_node_0,
       "8: node 0: variable number -2 is outside the names of the file"},
      {"2\n0: 0:1:1,5\n1: -1:-3:-3,1\n", read_node_0, "8: node 0: else link 5 is neither 1 nor -1"},
      {"1\n0: -1:-3:-3,1\n", "1 0 400:0,1,(0 )\n",
       "10: variable number 400 is outside the names of the file"},
      {"1\n0: -1:-3:-3,1\n", "1 0 4:0,0,(0 )\n", "10: equation link 0 is neither 1 nor -1"},
      {"1\n0: -1:-3:-3,1\n", "1 0 4:-3,1,(0 -5 )\n",
       "10: variable number -5 is outside the names of the file"},
      {"99999999999999999999\n99999999999999999998: -1:-3:-3,1\n", "1 0 4:0,1,(0 )\n",
       "10: node number 0 has no line"},
  };
  for (const auto& c : cases) EXPECT_EQ(refused(with_equations(c.nodes, c.equations)), c.reason);
}

// The lines of a file behind its equations.
std::string data_of(const std::string& bindings, const std::string& evaluations,
                    const std::string& data = "") {
  return "binding:\n" + bindings + "end:\nevaltable:\n" + evaluations + "end:\n" + data;
}
const char* const vocabulary =
    "data:\ntype:\nzint;\nmethod:\nzint zadd(zint, zint);\nconstant:\nzint zlimit \"42\";\n"
    "zint zfree;\nend:\n";

TEST_F(ZucReading, BuildsBindingsOfEveryKindOfEvaluation) {
  Module* m = module(with_equations(
      one_and_i, "1 0 4:-3,1,(0 )\n1 0 5:-3,1,(0 )\n1 0 8:1,1,(0 )\n",
      data_of("(4,5): value: 4;\n(8,9): value: 3 clock: (4,5);\n",
              "0: $0;\n1: %%14(0,1,9);\n2: %0(0,$1);\n3: 2;\n4: %%20(5,1);\n5: %%4(3);\n",
              vocabulary)));
  DataBinding* plain = m->getBinding("O");
  ASSERT_NE(plain, nullptr);
  EXPECT_EQ(plain->getClock(), nullptr);
  std::ostringstream text;
  plain->print_debug(text);
  // 20 = type 1 times 15 plus And; the "$" of an argument counts for nothing.
  const int limit = Compilation::GDataConstantTable()->getConstantIndex("zlimit");
  const int add = Compilation::GDataMethodTable()->getMethodIndex("zadd");
  EXPECT_EQ(text.str(), "signal:O     value:  5(4(" + std::to_string(add) +
                            "(C: " + std::to_string(limit) + ", I)), I)");
  DataBinding* clocked = m->getBinding("B");
  ASSERT_NE(clocked, nullptr);
  EXPECT_EQ(clocked->getClock(), m->getOutputSignal("O"));
  EXPECT_TRUE(m->getOutputSignal("O")->isClock());
  EXPECT_TRUE(m->getLocalSignal("B")->isValue());
  // The binding without clock makes O's equations abstract again, behind what its value reads.
  EXPECT_EQ(m->getBddWood()->exp_by_index(4)->set_of_var_dependances(), (index_set{0, 1}));
  EXPECT_EQ(m->getBddWood()->exp_by_index(4)->getUserType(), Compilation::SOUTPUT);
}

TEST_F(ZucReading, KeepsOneEntryForEachNameOfTheVocabulary) {
  const std::string text = with_equations(one_and_i, "1 0 4:1,1,(0 )\n", vocabulary);
  module(text);
  const size_t methods = Compilation::methodTable().getMethodList().size();
  const size_t constants = Compilation::constantTable().getConstantList().size();
  const int types = Compilation::typeTable().size();
  module(text);
  EXPECT_EQ(Compilation::methodTable().getMethodList().size(), methods);
  EXPECT_EQ(Compilation::constantTable().getConstantList().size(), constants);
  EXPECT_EQ(Compilation::typeTable().size(), types);
  // A file's own numbers lead to the entries of the process.
  Module* m =
      module(with_equations(one_and_i, "1 0 4:1,1,(0 )\n",
                            data_of("(8,9): value: 0;\n", "0: $0;\n",
                                    "data: type: zint; method: constant: zint zfree; end:")));
  const auto* constant = dynamic_cast<const DataConstant*>(m->getBinding("B")->getValue());
  ASSERT_NE(constant, nullptr);
  EXPECT_EQ(constant->getConstantIndex(), Compilation::constantTable().getConstantIndex("zfree"));
  EXPECT_EQ(Compilation::constantTable().getConstant("zlimit")->getValue()->isDataValue(), true);
}

TEST_F(ZucReading, EndsOrStopsAtBindingsThatCannotBe) {
  const auto with = [&](const std::string& bindings, const std::string& evaluations) {
    return with_equations(one_and_i, "1 0 4:1,1,(0 )\n", data_of(bindings, evaluations));
  };
  (void)read(with("(70,71): value: 0;\n", "0: %%14(0,1);\n"));
  EXPECT_EQ(outcome.exit_status, 1);
  EXPECT_EQ(outcome.err, "unknown data signal:70\n");
  (void)read(with("(10,11): value: 0;\n", "0: %%14(0,1);\n"));  // a wire is in no list
  EXPECT_EQ(outcome.err, "unknown data signal:S\n");
  (void)read(with("(4,5): value: 0;\n", "0: %%14(70,71);\n"));
  EXPECT_TRUE(outcome.ended);
  EXPECT_EQ(outcome.err, "binding_declaration_parse::dataexpr: signal not found\n");

  const std::string unknown_line =
      "IllegalOperationException: binding_declaration_parse::get_evalnode node_not_found";
  EXPECT_TRUE(refused(with("(4,5): value: 3;\n", "0: %%14(0,1);\n")).ends_with(unknown_line));
  const std::string invalid =
      "IllegalOperationException: binding_declaration_parse::dataexpr invalid_operator";
  EXPECT_TRUE(refused(with("(4,5): value: 1;\n", "0: %%14(0,1);\n1: %%0();\n")).ends_with(invalid));
  EXPECT_TRUE(
      refused(with("(4,5): value: 1;\n", "0: %%14(0,1);\n1: %%0(0,0,0);\n")).ends_with(invalid));
  EXPECT_EQ(refused(with("(4,5): value: 0;\n", "0: 1;\n1: %%4(2);\n2: %%0(1,1);\n")),
            "19: evaluation line 2 reaches itself through line 1");
  EXPECT_EQ(refused(with("(4,5): value: 0;\n", "0: $3;\n")),
            "17: evaluation line 0: constant number 3 is not declared in the file");
  EXPECT_EQ(refused(with("(4,5): value: 0;\n", "0: %2();\n")),
            "17: evaluation line 0: method number 2 is not declared in the file");
  // A clock number without a signal makes a binding without clock.
  Module* m = module(with("(4,5): value: 0 clock: (70,71);\n", "0: %%14(0,1);\n"));
  EXPECT_EQ(m->getBinding("O")->getClock(), nullptr);
}

TEST_F(ZucReading, DatesAgainOnlyWithBindings) {
  const std::string equations = "9 0 4:1,1,(0 )\n";
  EXPECT_EQ(module(with_equations(one_and_i, equations))->getBddWood()->Nb_level(), 9);
  // A date of the file is never lowered, but its readers are put behind it.
  Module* m =
      module(with_equations("3\n0: -1:-3:-3,1\n1: 0:0:0,-1\n2: 4:0:0,-1\n",
                            equations + "1 0 6:2,1,(4 )\n", "binding: end: evaltable: end:"));
  EXPECT_EQ(m->getBddWood()->exp_by_index(6)->getEarlyDate(), 10);
}

}  // namespace
}  // namespace kiva::test
