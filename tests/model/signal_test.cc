// Signals, their occurrences and references, and the modules that hold them.

#include "tarn/model/signal.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/model/interface.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tests/support/process_end.h"

namespace kiva::test {
namespace {

/// The texts of the exception that a call throws.
std::string thrown_by(const std::function<void()>& call) {
  try {
    call();
  } catch (const LibraryException& exception) {
    return exception.text();
  }
  return "nothing";
}

class Model : public testing::Test {
 protected:
  Model() : module("m"), wood(module.getBddWood()), manager(wood->my_bdd_manager()) {}
  Signal* signal(const std::string& name) { return make_kept<Signal>(name, &module, wood); }
  Signal* output(const std::string& name) {
    Signal* made = signal(name);
    made->setOutput();
    module.addOutputSignal(made);
    return made;
  }
  Signal* local(const std::string& name) {
    Signal* made = signal(name);
    made->setLocal();
    module.addLocalSignal(made);
    return made;
  }
  Module module;
  Bddexpressionwood* wood;
  bddpp_manager* manager;
};

TEST_F(Model, SignalsHaveTwoConsecutiveVariablesEach) {
  Signal* a = signal("a");
  Signal* b = make_kept<Signal>("b", "b@2", &module, wood);
  EXPECT_EQ(a->getBddStatusId(&module, wood), 0);
  EXPECT_EQ(b->getBddValueId(&module, wood), 3);
  EXPECT_EQ(manager->Name_var_by_index(2), "_s_b@2");
  EXPECT_EQ(b->getStatusName(&module), "_s_b@2");
  EXPECT_EQ(Compilation::bddNameToSignalName("_v_b@2"), "b@2");
  EXPECT_THROW(Compilation::bddNameToSignalName("_v"), std::out_of_range);
  EXPECT_EQ(module.getSignalNameById(3, wood), "b@2");
  EXPECT_EQ(module.getOtherBddId(2, wood), 3);
  EXPECT_EQ(module.getOtherBddId(3, wood), 2);
  EXPECT_EQ(thrown_by([&] { module.getSignalNameById(9, wood); }),
            "IllegalOperationException: Module::getSignalNameById: no signal reference for this "
            "bdd id 9");
  // A second signal of a name shares the reference; as a wire it has no occurrence.
  EXPECT_EQ(signal("a")->getBddStatusId(&module, wood), 0);
  Signal* wire = make_kept<Signal>("a", &module, wood, true);
  EXPECT_TRUE(wire->isWire() && wire->isRegister());
  EXPECT_EQ(thrown_by([&] { wire->getCurrentOccurrence(wood); }),
            "IllegalOperationException: Signal:getCurrentOccurrence: no current occurrence for the "
            "considered wood a");
  EXPECT_EQ(thrown_by([&] { wire->getBddStatusId(&module, wood); }),
            "IllegalOperationException: Signal::getBddStatusId: no current occurrence for this "
            "wood a");
}

TEST_F(Model, OccurrencesFollowEachOther) {
  Signal* x = output("x");
  x->setValueType("int", &module);
  for (int n = 1; n <= 10; ++n) {
    EXPECT_EQ(x->newOccurrence(wood, &module), x);
    EXPECT_EQ(x->getName(&module), "x_" + std::to_string(n));
  }
  SignalManager* manager_of_names = module.getSignalManager();
  SignalRef* tenth = manager_of_names->getCurrentOccurrence(x, wood);
  EXPECT_EQ(tenth->getCurrentName(), "x_10");  // not the last by name
  EXPECT_TRUE(tenth->isPre());
  EXPECT_EQ(tenth->getType(), "int");
  EXPECT_FALSE(manager_of_names->getSignalRefByName("x")->isPre());
  const std::list<long> ids = x->getAllBddId(&module, wood);
  EXPECT_EQ(ids.size(), 22u);
  EXPECT_EQ(*std::next(ids.begin(), 4), 4);
  std::string names;
  for (const SignalRef* ref : manager_of_names->getAllSignalRef(x, wood))
    names += ref->getCurrentName() + " ";
  EXPECT_EQ(names, "x x_1 x_10 x_2 x_3 x_4 x_5 x_6 x_7 x_8 x_9 ");
  EXPECT_EQ(x->getBddStatus(&module, wood), manager->Bdd_var_by_index(20));
  EXPECT_EQ(x->getInitialBddValue(&module, wood), manager->Bdd_var_by_index(1));
  EXPECT_EQ(manager_of_names->getSignalRefByOccurrence(x, 3)->getCurrentName(), "x_3");
  // Inputs have no further occurrences, and their ids are asked one by one.
  Signal* in = signal("in");
  in->setInput();
  const long variables = manager->Nb_bdd_vars();
  EXPECT_EQ(in->newOccurrence(wood, &module), in);
  EXPECT_EQ(manager->Nb_bdd_vars(), variables);
  EXPECT_EQ(thrown_by([&] { in->getAllBddId(&module, wood); }),
            "IllegalOperationException: Signal::getAllBddId in");
}

TEST_F(Model, ReferencesKnowEachWood) {
  Signal* a = output("a");
  SignalManager* names = module.getSignalManager();
  SignalRef* ref = names->getSignalRefByName("a");
  EXPECT_EQ(thrown_by([&] { ref->addBddIds(0, 1, wood); }),
            "IllegalOperationException: SignalRef::addBddIds: wood already added a");
  auto* other = new Bddexpressionwood;
  EXPECT_EQ(thrown_by([&] { ref->getBddValueId(other); }),
            "IllegalOperationException: SignalRef::getBddValueId:unknown wood a");
  EXPECT_EQ(names->getSignalRefById(0, other), nullptr);
  for (int i = 0; i < 20; ++i)
    other->New_var_last("v" + std::string(1, static_cast<char>('a' + i)));
  names->extendSignalRef(15, 16, ref, other);
  EXPECT_EQ(names->getSignalRefById(15, other), ref);
  EXPECT_EQ(names->getSignalRefById(99, other), nullptr);
  EXPECT_EQ(
      thrown_by([&] { names->addSignalRefIdTable(16, 17, names->getSignalRefByName("a"), other); }),
      "IllegalOperationException: addSignalRef (excep1) a");
  names->deleteWood(other);
  EXPECT_FALSE(ref->isDefinedWood(other));
  EXPECT_TRUE(ref->isDefinedWood(wood));
  auto* copy = new Bddexpressionwood(wood);
  names->duplicate(wood, copy);
  EXPECT_EQ(ref->getBddValueId(copy), 1);
  EXPECT_EQ(names->getSignalRefById(1, copy), ref);
  names->deleteWood(copy);
  auto lost = std::make_unique<Bddexpressionwood>();
  const Outcome outcome = run_captured([&] { a->getCurrentSignalRef(lost.get(), &module); });
  EXPECT_EQ(outcome.exit_status, 1);
}

TEST_F(Model, UserTypesComeFromTheFirstMark) {
  Signal* s = signal("s");
  EXPECT_EQ(s->computeStatusType(), Compilation::STAT);
  s->setWire();
  EXPECT_EQ(s->computeValueType(), Compilation::VWIRE);
  s->setClock();
  EXPECT_EQ(s->computeStatusType(), Compilation::SCLOCK);
  s->setRegister();
  EXPECT_EQ(s->computeValueType(), Compilation::VREG);
  s->setOutput();
  EXPECT_EQ(s->computeStatusType(), Compilation::SOUTPUT);
  s->setInput();
  EXPECT_EQ(s->computeStatusType(), Compilation::SINPUT);
}

TEST_F(Model, ModulesFindSignalsAsAWalkWould) {
  Signal* input = make_kept<Signal>("s", "s@1", &module, wood);
  module.addInputSignal(input);
  Signal* twin = local("s");
  EXPECT_EQ(module.getSignal("s"), input);
  EXPECT_EQ(module.getLocalSignal("s"), twin);
  EXPECT_EQ(module.getInputSignal("s@1"), nullptr);
  EXPECT_EQ(module.getSignalFromInternalName("s@1"), input);
  EXPECT_EQ(module.getSignalFromInternalName("s"), twin);
  EXPECT_EQ(module.getOutputLocalSignal("s"), twin);
  Signal* second = local("s");
  EXPECT_EQ(module.getLocalSignal("s"), twin);
  module.getLocalSignalList().remove(twin);
  EXPECT_EQ(module.getLocalSignal("s"), second);
  EXPECT_EQ(module.getSignalById(0, wood), nullptr);  // s@1 goes by its original name
}

TEST_F(Model, ModulesKeepRegistersRunsAndTables) {
  module.addRegisterDecl("R", 1, "RN");
  ASSERT_EQ(module.getRegisterList().size(), 1u);
  EXPECT_EQ(module.getLocalSignalList()[0]->getInternalName(), "R");
  EXPECT_TRUE(module.getLocalSignal("RN")->isRegister() && module.getLocalSignal("RN")->isWire() &&
              module.getLocalSignal("RN")->isLocal());
  std::ostringstream text;
  text << *module.getRegisterList()[0];
  EXPECT_EQ(text.str(), "RN R 1");
  module.addRunDecl("child", "child.zuc", "lib");
  EXPECT_EQ(*module.getModuleLocation("child"), "lib/child.zuc");
  EXPECT_EQ(module.getModuleLocation("other"), nullptr);
  EXPECT_EQ(thrown_by([&] { module.addRunDecl("child", "x", "y"); }),
            "IllegalOperationException: Run module already exists:  child");
  int counter = 4;
  EXPECT_EQ(module.generateName("Pause", counter), "mPause_4");
  EXPECT_EQ(counter, 5);

  ModuleTable table(&std::cout);
  table.add(&module);
  EXPECT_EQ(table.get("m"), &module);
  EXPECT_EQ(thrown_by([&] { table.add(&module); }), "HashTableAddException: m");
  Interface interface;
  interface.addInput("a", signal("a"));
  interface.addLocal("a", signal("b"));
  EXPECT_EQ(interface.getSignal("a")->getInternalName(), "a");
  EXPECT_EQ(thrown_by([&] { interface.addLocal("a", nullptr); }),
            "IllegalOperationException: Interface::addLocal a");

  Signal* lost = signal("lost");
  EXPECT_EQ(thrown_by([&] {
              regclass reg(lost, nullptr, 0);
              auto* w = new Bddexpressionwood;
              const std::unique_ptr<Bddexpressionwood> owner(w);
              Module broken("broken", {}, {}, {}, {}, {&reg}, {nullptr, nullptr, nullptr}, w);
            }),
            "IllegalOperationException: Register not declared local:  lost");
  EXPECT_EQ(my_getenv("a variable that is not set"), "./");
}

TEST_F(Model, UserTypesOfARegisterThatIsAClockAreAClocks) {
  module.addRegisterDecl("R", 0, "RN");
  Signal* o = output("o");
  const auto equation = [&](Signal* s) {
    for (long id : {s->getBddStatusId(&module, wood), s->getBddValueId(&module, wood)})
      new Bddexpression(wood, manager->Bdd_var_by_index(id), manager->Bdd_one(), 0, 0);
    return wood->exp_by_index(s->getBddStatusId(&module, wood));
  };
  Bddexpression* actual = equation(module.getLocalSignal("R"));
  Bddexpression* next = equation(module.getLocalSignal("RN"));
  Bddexpression* out = equation(o);
  module.getLocalSignal("R")->setClock();
  module.update_user_type();
  EXPECT_EQ(actual->getUserType(), Compilation::SCLOCK);
  EXPECT_EQ(next->getUserType(), Compilation::SREG);
  EXPECT_EQ(out->getUserType(), Compilation::SOUTPUT);
  EXPECT_EQ(wood->exp_by_index(o->getBddValueId(&module, wood))->getUserType(),
            Compilation::VOUTPUT);
}

TEST_F(Model, BindingsReplaceAndAnswerByClock) {
  Signal* a = local("a");
  Signal* b = local("b");
  Signal* clock = output("clock");
  clock->setValueType("int", &module);
  EXPECT_EQ(module.getSignalBindingByClock(clock), nullptr);
  EXPECT_EQ(module.getBinding("a"), nullptr);
  auto* literal = make_kept<DataValue>("1");
  module.addSignalBinding(literal, a, static_cast<Signal*>(nullptr));
  EXPECT_TRUE(a->isValue());
  EXPECT_TRUE(module.getSignalBindingByClock(clock)->empty());
  EXPECT_EQ(module.getDataBindingByClock(clock), nullptr);
  module.addSignalBinding(literal, b, clock);
  module.addSignalBinding(literal, a, clock);
  EXPECT_TRUE(clock->isClock());
  EXPECT_EQ(*module.getSignalBindingByClock(clock), (std::vector<Signal*>{a, b}));
  DataBinding* first = module.getBinding("a");
  module.addBinding(make_kept<DataBinding>(a, literal));
  EXPECT_NE(module.getBinding("a"), first);
  EXPECT_EQ(module.getDataBindingByClock(clock)->size(), 1u);
  module.removeBinding("b");
  EXPECT_EQ(module.getBinding("b"), nullptr);
}

TEST_F(Model, IntermediateValuesGetSignalsOfTheirOwn) {
  Signal* read = local("read");
  read->setValueType("int", &module);
  Signal* clock = output("clock");
  DataExpr::Indexation() = 5;
  Signal* plain = module.addSignalBinding(make_kept<DataSignalValue>(read), "p");
  EXPECT_EQ(plain->getInternalName(), "IData_p5");
  EXPECT_EQ(plain->getValueType(&module), "int");
  EXPECT_TRUE(plain->isValue());
  const auto reads = [&](Signal* s) {
    return wood->exp_by_index(s->getBddStatusId(&module, wood))->set_of_var_dependances();
  };
  EXPECT_EQ(reads(plain), (index_set{0, 1}));
  Signal* clocked = module.addSignalBinding(make_kept<DataSignalValue>(read), clock, wood);
  EXPECT_EQ(clocked->getInternalName(), "clockData6");
  EXPECT_EQ(reads(clocked), (index_set{0, 1, 2, 3}));
  EXPECT_EQ(DataExpr::Indexation(), 7);
}

TEST_F(Model, CopiesOfModulesShareNothing) {
  Signal* in = signal("in");
  in->setInput();
  module.addInputSignal(in);
  Signal* out = output("out");
  out->setValueType("int", &module);
  out->newOccurrence(wood, &module);
  module.setReincarnate(true);
  module.addRegisterDecl("R", 1, "RN");
  for (const char* wire : {"set", "reset", "rtl"}) make_kept<Signal>(wire, &module, wood, true);
  Signal* set = make_kept<Signal>(std::string("SETm"), &module, wood, true);
  module.setSet(set);
  module.setFinalised(1);
  module.addSignalBinding(make_kept<DataSignalValue>(in), out, static_cast<Signal*>(nullptr));
  new Bddexpression("eq", wood, out->getInitialBddStatus(&module, wood),
                    in->getBddStatus(&module, wood), 1, 0);
  {
    Module copy(module);
    EXPECT_EQ(copy.getFinalised(), 1);
    Signal* copied = copy.getOutputSignal("out");
    EXPECT_NE(copied, out);
    EXPECT_EQ(copied->getName(&copy), "out_1");
    EXPECT_TRUE(copy.getReincarnate());
    const SignalRef* latest = copied->getSignalRef(&copy);
    EXPECT_TRUE(latest->isPre());
    EXPECT_EQ(latest->getType(), "int");
    EXPECT_TRUE(copy.getSet()->isWire());
    ASSERT_EQ(copy.getRegisterList().size(), 1u);
    EXPECT_EQ(copy.getRegisterList()[0]->actual_var(), copy.getLocalSignal("R"));
    EXPECT_NE(copy.getRegisterList()[0]->actual_var(), module.getLocalSignal("R"));
    Bddexpressionwood* copied_wood = copy.getBddWood();
    EXPECT_NE(copied_wood, wood);
    EXPECT_EQ(
        copied_wood->exp_by_index(copied->getInitialBddStatusId(&copy, copied_wood))->my_name(),
        "eq");
    const auto* value = dynamic_cast<DataSignalValue*>(copy.getBinding("out")->getValue());
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->getSignal(), copy.getInputSignal("in"));
  }
  ModuleTable table(&std::cerr);
  table.add(&module);
  table.remove(module.getName());
  EXPECT_EQ(table.get(module.getName()), nullptr);
  // The copy is gone; what it was made from stands.
  EXPECT_EQ(wood->exp_number(), 1);
}

}  // namespace
}  // namespace kiva::test
