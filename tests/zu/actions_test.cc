// What the productions leave: names and counters, signals and their marks, bindings, tables, runs,
// automata and Mealy machines.

#include <sstream>

#include "tarn/model/expression.h"
#include "tarn/model/rules.h"
#include "tarn/zu/statements/emit.h"
#include "tarn/zu/statements/present.h"
#include "tarn/zu/statements/run.h"
#include "tarn/zu/statements/sustain.h"
#include "tarn/zu/statements/wait.h"
#include "tests/zu/zu_fixture.h"

namespace kiva::test {

namespace {

using ZuActions = ZuReading;

const char* const int_data =
    "data: Type: int; Method: int f(int); Constant: int p; int 1; end data\n";

std::string names(const signal_list& list) {
  std::string text;
  for (const Signal* signal : list) text += (text.empty() ? "" : " ") + signal->getInternalName();
  return text;
}

std::string marks(const Signal* signal) {
  return std::string(signal->isInput() ? "i" : "") + (signal->isOutput() ? "o" : "") +
         (signal->isLocal() ? "l" : "") + (signal->isClock() ? "c" : "") +
         (signal->isValue() ? "v" : "");
}

/// All statements' names, depth first, a statement before its children.
std::string statement_names(const Statement* statement) {
  std::string text = statement->getName();
  for (const Statement* child : statement->children()) text += " " + statement_names(child);
  return text;
}

TEST_F(ZuActions, ANameForEachStatement) {
  EXPECT_EQ(statement_names(body("nothing >> halt >> pause >> emit x >> noemit x")),
            "mSn_0 mN_0 mH_0 mPS_0 mE_0 mNE_0");
  // Counters go on from module to module.
  EXPECT_EQ(statement_names(body("pause || pause >> loop { pause }")),
            "mPn_0 mPS_1 mSn_1 mPS_2 mL_0 mPS_3");
  EXPECT_EQ(statement_names(body("present a wait b else weak abort { pause } when b >> "
                                 "strong abort { pause } when b")),
            "mSn_2 mPR_0 mW_0 mA_0 mPS_4 mSA_1 mPS_5");
  EXPECT_EQ(statement_names(body("sustain x until a >> run sub >> run sub")),
            "mSn_3 mSU_0 mR_sub_0 mR_sub_1");
  EXPECT_EQ(statement_names(body("")), "mN_1");
  EXPECT_EQ(statement_names(body("wait 3 a")), "mSn_4 mW_1 mW_2 mW_3");
  EXPECT_EQ(statement_names(body("wait 1 a")), "mW_4");
  // The repeated statement itself is no member; copies of runs drop what they rename.
  EXPECT_EQ(statement_names(body("repeat 2 { pause >> wait a }")),
            "mSn_6 mSn_50 mPS_60 mW_50 mSn_51 mPS_61 mW_51");
  EXPECT_EQ(tree("repeat 2 { emit x || run s[a \\ b] }"),
            "Sn(Pn(emit x, run s), Pn(emit x, run s))");
  EXPECT_EQ(Module::RunNumber(), 3);
}

TEST_F(ZuActions, WaitsShareTheirExpression) {
  const Statement* waits = body("wait 2 a and b");
  const auto expression = [&](size_t i) {
    return dynamic_cast<Wait*>(waits->children()[i])->getExpression();
  };
  EXPECT_EQ(expression(0), expression(1));
}

TEST_F(ZuActions, InterfacesInTheirOrder) {
  Module* m = module(
      "module m: Input: a, b: int; Output: x: bool, y; Local: l, k: int;\n"
      "Run: \"lib/sub/file\": one; \"here\": two; \"c\\\\d\": three: four; emit x\nend");
  EXPECT_EQ(names(m->getInputSignalList()), "a b");
  EXPECT_EQ(names(m->getOutputSignalList()), "x y");
  EXPECT_EQ(names(m->getLocalSignalList()), "l k");
  EXPECT_EQ(marks(m->getSignal("b")), "i");
  EXPECT_EQ(marks(m->getSignal("x")), "o");
  EXPECT_EQ(marks(m->getSignal("k")), "l");
  EXPECT_EQ(m->getSignal("b")->getValueType(m), "int");
  EXPECT_EQ(m->getSignal("x")->getValueType(m), "bool");
  EXPECT_FALSE(m->getSignal("a")->isValued(m));
  EXPECT_EQ(*m->getModuleLocation("one"), "lib/sub/file");
  EXPECT_EQ(*m->getModuleLocation("two"), "here/");
  EXPECT_EQ(*m->getModuleLocation("four"), "c//d/three");
  EXPECT_EQ(tree_text(m->getStatement()), "emit x");
}

TEST_F(ZuActions, ModulesInBracesAndMoreThanOne) {
  Module* n = module("module m: { Output: x; {emit x} }\nmodule n: end", "n");
  EXPECT_EQ(tree_text(n->getStatement()), "nothing");
  EXPECT_EQ(tree_text(Compilation::ModTable()->get("m")->getStatement()), "emit x");
}

TEST_F(ZuActions, EmittedValuesAreBound) {
  const std::string head = "module m: Input: v: int; Output: o: int; Local: l: int; ";
  Module* m = module(int_data + head +
                     "emit o(f(1)) >> emit l(#v) >> sustain o(p) until v >> "
                     "sustain l(1) until v end");
  const auto members = m->getStatement()->children();
  const auto bound = [&](const Statement* statement) {
    if (auto* emit = dynamic_cast<const Emit*>(statement)) return emit->getDataSignal();
    return dynamic_cast<const SustainUntil*>(statement)->getDataSignal();
  };
  // An emitted value is a local; a sustained one is what its signal is.
  EXPECT_EQ(names(m->getLocalSignalList()), "l mE_0Data0 mE_1Data1 mSU_1Data3");
  EXPECT_EQ(names(m->getOutputSignalList()), "o mSU_0Data2");
  EXPECT_EQ(marks(bound(members[0])), "lv");
  EXPECT_EQ(marks(bound(members[2])), "ov");
  EXPECT_EQ(marks(m->getSignal("o")), "oc");
  const DataBinding* binding = m->getBinding("mE_1Data1");
  ASSERT_NE(binding, nullptr);
  EXPECT_EQ(binding->getSignal(), bound(members[1]));
  EXPECT_EQ(binding->getClock(), m->getSignal("l"));
  EXPECT_EQ(tree_text(binding->getValue()), "#v");
  EXPECT_EQ(bound(members[1])->getValueType(m), "int");
}

TEST_F(ZuActions, ConditionsOnDataAreInputs) {
  Module* m = module(std::string(int_data) + "module m: Input: v: int; if #v == p halt end");
  EXPECT_EQ(names(m->getDataSignalList()), "IData_mIF_00");
  EXPECT_EQ(marks(m->getDataSignalList()[0]), "iv");
  EXPECT_EQ(m->getBinding("IData_mIF_00")->getClock(), nullptr);
  EXPECT_EQ(dynamic_cast<Present*>(m->getStatement())->getExpression(), m->getDataSignalList()[0]);
}

TEST_F(ZuActions, TheDataPartFillsTheTables) {
  module(
      "data: Type: int, bool;\n"
      "Method: int add(int, any); bool a.b.c();\n"
      "Constant: int zero := 0; int late; bool yes := \"true\"; int -2.50; int sum := zero + "
      "late;\n"
      "bool empty := ; int \"\";\n"
      "end data\nmodule m: end");
  EXPECT_EQ(Compilation::typeTable().getIndex("bool"), 1);
  const MethodDecl* method = Compilation::methodTable().getMethod("a.b.c");
  ASSERT_NE(method, nullptr);
  EXPECT_EQ(method->getReturnType(), "bool");
  EXPECT_EQ(Compilation::methodTable().getMethod("add")->getArgTypeList(),
            (std::list<std::string>{"int", "any"}));
  std::string constants;
  for (const ConstantDecl* constant : Compilation::constantTable().getConstantList())
    constants += constant->getName() + ":" + constant->getType() + "=" +
                 (constant->getValue() == nullptr ? "-" : tree_text(constant->getValue())) + " ";
  EXPECT_EQ(constants,
            "zero:int=0 late:int=- yes:bool=true C__-2.50:int=-2.50 sum:int=(zero + late) "
            "empty:bool=- C__:int= ");
  const ConstantDecl* zero = Compilation::constantTable().getConstant("zero");
  EXPECT_EQ(zero->getValue()->getType(), "int");
  EXPECT_EQ(dynamic_cast<DataValue*>(zero->getValue())->getConstant(), zero);
}

TEST_F(ZuActions, RenamingsGoFromFormalToActual) {
  const auto* run = dynamic_cast<kiva::Run*>(body("run sub[a \\ left, x \\ right]"));
  ASSERT_NE(run, nullptr);
  EXPECT_EQ(run->getModuleName(), "sub");
  EXPECT_EQ(run->getRenamingSignal("left")->getInternalName(), "a");
  EXPECT_EQ(run->getRenamingSignal("right")->getInternalName(), "x");
  EXPECT_EQ(run->getRenamingSignal("a"), nullptr);
}

// One line a transition: source, type, priority, trigger, actions, target, geometry.
std::string transition_text(const Transition& t) {
  std::string text = t.initial ? "I" : t.from->name;
  text += " " + std::to_string(t.tpe) + " " + std::to_string(t.priority) + " [" +
          tree_text(t.trigger) + "]";
  for (const Signal* signal : t.action) text += " /" + signal->getInternalName();
  text += " -> " + t.to->name;
  if (t.geometry != nullptr)
    text += " <" + std::to_string(int(t.geometry->first * 10)) + "," +
            std::to_string(int(t.geometry->second * 10)) + ">";
  return text + "\n";
}

TEST_F(ZuActions, Automata) {
  Module* m = module(std::string(int_data) +
                     "module m: Input: a, b, v: int; Output: x, o: int;\n"
                     "automaton geometry: <1.5,2>\n"
                     "state: s run sub[a \\ f] /x, o(f(1)) geometry: <1,2.5> -3.;\n"
                     "state: e final;\n"
                     "transition:\n"
                     "initial-> s;\n"
                     "s [a] /x -> t;\n"
                     "s 2 [a or b] strong-> s geometry: <1,2>;\n"
                     "s other [] weak-> e;\n"
                     "s normalterm-> e;\n"
                     "t 3 [value: #v == p] /o(#v), x weak-> initial->;\n"
                     "t [] s;\n"
                     "t other [b] -> s;\n"
                     "end");
  const auto* automaton = dynamic_cast<Automaton*>(m->getStatement());
  ASSERT_NE(automaton, nullptr);
  EXPECT_TRUE(automaton->isAutomaton());
  EXPECT_EQ(automaton->getName(), "mAUT_0");
  EXPECT_EQ(*automaton->getGeometry(), GeometryPair(1.5, 2));

  std::string transitions;
  for (const Transition* t : *automaton->getTransitionList()) transitions += transition_text(*t);
  EXPECT_EQ(transitions,
            "I 1 0 [1] -> s\n"
            "s 1 0 [a] /x -> t\n"
            "s 1 2 [(a+b)] -> s <10,20>\n"
            "s 2 -1 [1] -> e\n"
            "s 3 0 [1] -> e\n"
            "t 2 3 [IData_mTRANS_01] /o /o_ValData2 /x -> I->\n"
            "t 1 0 [1] -> s\n"
            "t 1 -1 [b] -> s\n");

  const auto& states = *automaton->getStateTable();
  ASSERT_EQ(states.size(), 4u);  // with t and "I->", which only transitions name
  const State& s = *states.at("s");
  EXPECT_EQ(tree_text(s.run), "run sub f=a");
  ASSERT_EQ(s.actions.size(), 3u);
  EXPECT_EQ(s.actions[1], m->getSignal("o"));
  EXPECT_EQ(s.actions[2]->getInternalName(), "o_ValData0");
  EXPECT_EQ(*s.geometry, (GeometryTriple{1, 2.5, -3}));
  EXPECT_FALSE(s.final_state);
  EXPECT_TRUE(states.at("e")->final_state);
  EXPECT_EQ(automaton->children(), std::vector<Statement*>{s.run});
  EXPECT_EQ(names(m->getLocalSignalList()), "o_ValData0 o_ValData2");
  EXPECT_EQ(names(m->getDataSignalList()), "IData_mTRANS_01");
}

TEST_F(ZuActions, EachAutomatonHasItsOwnStates) {
  module(
      "module m: automaton state: s; transition: initial-> s; end\n"
      "module n: automaton state: s; transition: initial-> s; end");
  const auto state = [](const char* name) {
    return Compilation::ModTable()->get(name)->getStatement()->getStateTable()->at("s");
  };
  EXPECT_NE(state("m"), state("n"));
}

TEST_F(ZuActions, MealyMachines) {
  Module* m = module(std::string(int_data) +
                     "module m: Input: a; Output: o: int, x; Local: l: int;\n"
                     "Mealy Machine Register: r: 1: rn, q: 0: qn;\n"
                     "rn = a; o(f(1)) = r xor a; l(p) = a; x = a; x = not r;\nend");
  const auto* machine = dynamic_cast<MealyMachine*>(m->getStatement());
  ASSERT_NE(machine, nullptr);
  EXPECT_EQ(machine->getName(), "mMM_0");
  std::string equations;
  for (const auto& [name, equation] : machine->getMachineTable())
    equations += name + "=" + tree_text(equation->expression) + " ";
  // A second equation of a signal replaces the first; a value has its signal's right part.
  EXPECT_EQ(equations,
            "l=a l_valueData1=a o=((r*~a)+(~r*a)) o_valueData0=((r*~a)+(~r*a)) rn=a x=np r ");
  EXPECT_EQ(names(m->getOutputSignalList()), "o x o_valueData0");
  EXPECT_EQ(names(m->getLocalSignalList()), "l r rn q qn l_valueData1");
  ASSERT_EQ(m->getRegisterList().size(), 2u);
  const regclass& first = *m->getRegisterList()[0];
  EXPECT_EQ(first.actual_var()->getInternalName(), "r");
  EXPECT_EQ(first.next_var()->getInternalName(), "rn");
  EXPECT_EQ(first.is_initialy_true(), 1);
}

TEST_F(ZuActions, DuplicatesBySuffix) {
  Statement* original = body(
      "loop { present a wait b else {emit x || sustain y until c} >> strong abort "
      "{ weak abort { halt } when a } when b >> noemit x >> pause >> nothing }");
  Statement* copy = original->duplicate(nullptr, nullptr);
  EXPECT_EQ(tree_text(copy), tree_text(original));
  std::string expected;
  std::istringstream words(statement_names(original));
  for (std::string word; words >> word;) expected += (expected.empty() ? "" : " ") + word + "_bis";
  EXPECT_EQ(statement_names(copy), expected);
  EXPECT_EQ(copy->getSpan().text(), original->getSpan().text());
  EXPECT_EQ(copy->getModule(), original->getModule());
}

TEST_F(ZuActions, WhatCanEndAndStartInOneInstant) {
  const std::pair<const char*, bool> cases[] = {
      {"nothing", true},
      {"emit x >> noemit y", true},
      {"emit x >> pause", false},
      {"emit x || pause", true},
      {"pause || halt", false},
      {"wait a", false},
      {"sustain x until a", false},
      {"weak abort { pause } when a", true},
      {"strong abort { halt } when a", true},
      {"loop { pause }", false},
      {"present a pause", false},
      {"present a pause else emit x", true},
      {"present a emit x else pause", true},
      {"present a pause else halt", false},
      {"automaton state: s; transition: initial-> s;", false},
      {"Mealy Machine x = a;", false},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(body(text)->reincarnate(), expected) << text;

  Compilation::rules() = Rules::sound();
  EXPECT_TRUE(body("present a pause")->reincarnate());
  EXPECT_FALSE(body("present a pause else halt")->reincarnate());
  Compilation::rules() = Rules::classic();
}

}  // namespace

}  // namespace kiva::test
