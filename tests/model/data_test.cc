// Data expressions, their types and copies, bindings, and the three tables of data.

#include "tarn/model/data.h"

#include <gmock/gmock.h>

#include <climits>
#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/model/interface.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tests/support/process_end.h"

namespace kiva::test {
namespace {

using testing::UnorderedElementsAre;

/// The two texts of the exception that the call throws; {"nothing", "thrown"} for none.
template <class Exception, class Call>
std::pair<std::string, std::string> thrown(Call call) {
  try {
    call();
  } catch (const Exception& exception) {
    return {exception.first(), exception.second()};
  }
  return {"nothing", "thrown"};
}
using Texts = std::pair<std::string, std::string>;

std::string debug(const auto& printable) {
  std::ostringstream out;
  printable.print_debug(out);
  return out.str();
}

std::string printed(const auto& table, bool numbered) {
  std::ostringstream out;
  table.print(out, numbered);
  return out.str();
}

/// A module with an input i of type int, a local w of type real, a pure output p; constants limit
/// (int, external, index 0) and sum (int, an expression, no index); a method real scale(int).
class Data : public testing::Test {
  Session session_;
  Session::Use use_{session_};

 protected:
  Data() {
    limit = make_kept<ConstantDecl>("int", "limit", nullptr);
    Compilation::constantTable().addConstant(limit);
    sum = make_kept<ConstantDecl>("int", "sum", plus(constant(), constant()));
    Compilation::constantTable().addConstant(sum);
    Compilation::methodTable().addMethod(
        make_kept<MethodDecl>("real", "scale", std::list<std::string>{"int"}));
    i = declare(module, "i");
    i->setInput(true);
    i->setValueType("int", &module);
    module.addInputSignal(i);
    w = declare(module, "w");
    w->setLocal();
    w->setValueType("real", &module);
    module.addLocalSignal(w);
    p = declare(module, "p");
    p->setOutput(true);
    module.addOutputSignal(p);
  }
  static Signal* declare(Module& owner, const std::string& name) {
    return make_kept<Signal>(name, &owner, owner.getBddWood());
  }
  static DataExpr* constant(int id = 0) { return make_kept<DataConstant>(id); }
  static DataExpr* value_of(Signal* signal) { return make_kept<DataSignalValue>(signal); }
  static DataExpr* plus(DataExpr* left, DataExpr* right) {
    return make_kept<DataBinaryOp>(DataExpr::Plus, left, right);
  }
  static DataExpr* minus(DataExpr* e) { return make_kept<DataUnaryOp>(DataExpr::Uminus, e); }
  static DataExpr* scale(DataExpr* e) {
    return make_kept<DataMethodCall>(0, std::list<DataExpr*>{e});
  }

  Module module{"m"};
  ConstantDecl *limit, *sum;
  Signal *i, *w, *p;
};

TEST_F(Data, TypesComeFromBelow) {
  EXPECT_EQ(constant()->getType(&module), "int");
  EXPECT_EQ(value_of(w)->getType(&module), "real");
  EXPECT_EQ(minus(value_of(w))->getType(&module), "real");
  EXPECT_EQ(scale(value_of(i))->getType(&module), "real");
  DataExpr* nested = plus(scale(value_of(i)), minus(value_of(w)));
  EXPECT_EQ(nested->getType(), "");
  EXPECT_EQ(nested->getType(&module), "real");
  EXPECT_EQ(nested->getType(), "real");
  // A comparison has the type of what it compares.
  DataBinaryOp less(DataExpr::Inf, value_of(i), constant());
  EXPECT_EQ(less.getType(&module), "int");
  less.setType("flag");
  EXPECT_EQ(less.getType(&module), "flag");
}

TEST_F(Data, TypesThatAreMissing) {
  DataValue literal("0.5");
  EXPECT_EQ(thrown<UndefinedTypeException>([&] { literal.computeType(&module); }),
            Texts("0.5", ""));
  EXPECT_EQ(thrown<UndefinedTypeException>([&] { value_of(p)->computeType(&module); }),
            Texts("p", ""));
  // A constant whose value is an expression has no index, so nothing refers to it by one.
  EXPECT_EQ(thrown<ModuleUndefinedConstantException>([&] { constant(1)->computeType(&module); }),
            Texts("constant", ""));
  EXPECT_EQ(thrown<ModuleUndefinedConstantException>([&] { constant(1)->setIndex(4); }),
            Texts("", "constant_table"));
  EXPECT_EQ(thrown<UndefinedMethodException>([&] { DataMethodCall(7).computeType(&module); }).first,
            "method");
  const Outcome mismatch =
      run_captured([&] { plus(value_of(i), value_of(w))->computeType(&module); });
  EXPECT_EQ(mismatch.err,
            "*** Type check error in binary operator: type: int differs from type: real\n");
  EXPECT_EQ(mismatch.exit_status, 1);
}

TEST_F(Data, TreesTooDeepAreRefusedNotFollowed) {
  for (const bool unary : {true, false}) {
    DataExpr* e = value_of(i);
    for (int level = 0; level < 200000; ++level) e = unary ? minus(e) : plus(e, constant());
    EXPECT_EQ(thrown<IllegalOperationException>([&] { e->computeType(&module); }),
              Texts("DataExpr::computeType", "data expression nested too deep"));
    std::vector<int> context(20, 2);
    EXPECT_EQ(thrown<IllegalOperationException>([&] {
                e->Simul_put(&module, nullptr, nullptr, context.data(), nullptr);
              }).second,
              "data expression nested too deep");
  }
}

TEST_F(Data, AConstantRemembersItsFirstLine) {
  DataExpr *first = constant(), *second = constant();
  EXPECT_FALSE(first->hasIndex());
  first->setIndex(3);
  second->setIndex(8);
  EXPECT_EQ(first->getIndex(), 3);
  EXPECT_EQ(second->getIndex(), 8);
  EXPECT_EQ(limit->getEvalIndex(), 3);
}

TEST_F(Data, KindsAndDebugText) {
  EXPECT_EQ(debug(*plus(scale(value_of(i)), minus(constant()))), " 0(0(i), 4(C: 0))");
  EXPECT_EQ(debug(DataMethodCall(2, {value_of(i), constant()})), "2(i, C: 0)");
  EXPECT_EQ(debug(DataMethodCall(2)), "2()");
  EXPECT_EQ(debug(DataBinding(p, value_of(i), w)), "signal:p     clock:w     value: i");
  EXPECT_EQ(debug(DataBinding(p, make_kept<DataValue>("7"))), "signal:p     value: 7");
  DataExpr* const kinds[] = {make_kept<DataValue>("7"),    constant(),
                             scale(value_of(i)),           value_of(i),
                             plus(constant(), constant()), minus(constant())};
  for (int k = 0; k < 6; ++k) {
    const DataExpr* e = kinds[k];
    const bool is[] = {e->isDataValue(),       e->isDataConstant(), e->isDataMethod(),
                       e->isDataSignalValue(), e->isDataBinaryOp(), e->isDataUnaryOp()};
    for (int asked = 0; asked < 6; ++asked) EXPECT_EQ(is[asked], asked == k) << debug(*e);
  }
}

TEST_F(Data, OperatorsWithoutSpelling) {
  for (int op : {DataExpr::SignalVal, DataExpr::NbPredefOp, -1})
    EXPECT_EQ(thrown<IllegalOperationException>([&] { DataExpr::C_opname(op); }),
              Texts("DataExpr::C_opname", "invalid_operator"));
}

TEST_F(Data, DependencesAreTheSignalsRead) {
  EXPECT_EQ(plus(constant(), make_kept<DataValue>("1"))->computeDependencySet(), nullptr);
  EXPECT_EQ(DataMethodCall(0).computeDependencySet(), nullptr);
  EXPECT_THAT(*plus(constant(), minus(value_of(i)))->computeDependencySet(),
              UnorderedElementsAre(i));
  EXPECT_THAT(*plus(scale(value_of(w)), plus(value_of(i), value_of(w)))->computeDependencySet(),
              UnorderedElementsAre(i, w));
}

TEST_F(Data, CopiesShareWhatTheTreeShares) {
  DataExpr* e = make_kept<DataValue>("1");
  for (int level = 0; level < 60; ++level) e = make_kept<DataBinaryOp>(DataExpr::Plus, e, e);
  EXPECT_EQ(e->written_size(), (1L << 61) - 1);
  const DataExpr* copy = e->duplicate();
  EXPECT_NE(copy, e);
  EXPECT_EQ(copy->written_size(), e->written_size());
  for (int level = 60; level < 70; ++level) e = make_kept<DataBinaryOp>(DataExpr::Plus, e, e);
  EXPECT_EQ(e->written_size(), LONG_MAX);
  for (int level = 0; level < 100000; ++level) e = make_kept<DataUnaryOp>(DataExpr::Uminus, e);
  EXPECT_EQ(e->duplicate()->written_size(), LONG_MAX);
}

TEST_F(Data, CopiesStartWithoutTypeAndIndex) {
  DataExpr* e = plus(scale(value_of(i)), minus(value_of(w)));
  e->computeType(&module);
  e->setIndex(5);
  DataExpr* copy = e->duplicate();
  EXPECT_NE(copy, e);
  EXPECT_EQ(debug(*copy), debug(*e));
  EXPECT_EQ(copy->getType(), "");
  EXPECT_FALSE(copy->hasIndex());
  EXPECT_THAT(*copy->computeDependencySet(), UnorderedElementsAre(i, w));
  DataValue owned("1", limit);
  EXPECT_EQ(static_cast<DataValue*>(owned.changeModule(&module, &module))->getConstant(), limit);
}

TEST_F(Data, ChangeOfModuleFindsSignalsByInternalName) {
  Module to("n");
  Signal *to_i = declare(to, "i"), *to_w = declare(to, "w");
  to.addInputSignal(to_i);
  const auto missing = [](const char* what) {
    return "DataDinding::DataBinding: no " + std::string(what) + " in new module for:";
  };
  EXPECT_THAT(*minus(value_of(i))->changeModule(&to, &module)->computeDependencySet(),
              UnorderedElementsAre(to_i));
  EXPECT_EQ(
      thrown<IllegalOperationException>([&] { scale(value_of(w))->changeModule(&to, &module); }),
      Texts("DataSignalValue::changeModule: no signal in new module for:", "w"));
  DataBinding binding(w, value_of(i), p);
  const auto change = [&] { DataBinding(binding, &to, &module); };
  EXPECT_EQ(thrown<IllegalOperationException>(change), Texts(missing("signal"), "w"));
  to.addLocalSignal(to_w);
  EXPECT_EQ(thrown<IllegalOperationException>(change), Texts(missing("clock"), "p"));
  Signal* to_p = declare(to, "p");
  to.addOutputSignal(to_p);
  const DataBinding changed(binding, &to, &module);
  EXPECT_EQ(changed.getSignal(), to_w);
  EXPECT_EQ(changed.getClock(), to_p);
  EXPECT_THAT(*changed.getValue()->computeDependencySet(), UnorderedElementsAre(to_i));
}

TEST_F(Data, InclusionFindsSignalsByTheirMark) {
  Interface interface;
  const auto instanciate = [&](Signal* signal) {
    return [&interface, signal] { minus(value_of(signal))->instanciate(&interface); };
  };
  EXPECT_EQ(thrown<IllegalOperationException>(instanciate(i)),
            Texts("Interface::getInputSignal", "i"));
  EXPECT_EQ(thrown<IllegalOperationException>(instanciate(p)),
            Texts("Interface::getOutputSignal", "p"));
  EXPECT_EQ(thrown<IllegalOperationException>(instanciate(w)),
            Texts("Interface::getLocalSignal", "w"));
  Signal* unmarked = declare(module, "u");
  EXPECT_EQ(thrown<IllegalOperationException>(instanciate(unmarked)),
            Texts("DataSignalValue::instanciate", "u"));

  Module outer("outer");
  Signal *outer_i = declare(outer, "oi"), *outer_w = declare(outer, "ow");
  interface.addInput("i", outer_i);
  interface.addLocal("w", outer_w);
  const DataBinding binding(w, plus(value_of(i), value_of(w)), i);
  const DataBinding* included = binding.instanciate(&interface);
  EXPECT_EQ(included->getSignal(), outer_w);
  EXPECT_EQ(included->getClock(), outer_i);
  EXPECT_THAT(*included->getValue()->computeDependencySet(),
              UnorderedElementsAre(outer_i, outer_w));
  const Outcome outcome =
      run_captured([&] { DataBinding(w, constant(), p).instanciate(&interface); });
  EXPECT_EQ(outcome.err, " not in interface:p\n");
  EXPECT_EQ(outcome.exit_status, 1);
}

TEST_F(Data, TypeTable) {
  DataTypeTable types;
  for (const char* name : {"real", "int", "real"}) types.addType(name);
  EXPECT_EQ(types.size(), 2);
  EXPECT_EQ(types.getIndex("int"), 1);
  EXPECT_EQ(types.getIndex("word"), -1);
  EXPECT_TRUE(types.isDefined("real"));
  EXPECT_EQ(types.getTypeById(0), "real");
  EXPECT_EQ(types.getTypeById(2), "undefined");
  EXPECT_EQ(types.getTypeById(-1), "undefined");
  EXPECT_EQ(printed(types, false), "type:\nreal;\nint;\n");
  EXPECT_EQ(printed(types, true), "type:\n   0: real;\n   1: int;\n");
}

TEST_F(Data, MethodTable) {
  DataMethodTable& methods = Compilation::methodTable();
  const std::string type = "int";
  methods.addMethod(make_kept<MethodDecl>(&type, nullptr, std::list<std::string>{"int", "real"}));
  EXPECT_EQ(methods.getMethodIndex("scale"), 0);
  EXPECT_EQ(methods.getMethodIndex(""), 1);
  EXPECT_EQ(methods.getMethodIndex("turn"), -1);
  EXPECT_EQ(methods.getMethodById(1), methods.getMethod(""));
  EXPECT_EQ(methods.getMethodById(2), nullptr);
  MethodDecl again("int", "scale", {});
  EXPECT_EQ(thrown<AlreadyDefinedException>([&] { methods.addMethod(&again); }),
            Texts("scale", "overloading_of_method_not_yet_implemented"));
  EXPECT_EQ(printed(methods, true), "method:\n   0: real scale(int);\n   1: int (int, real);\n");
}

TEST_F(Data, ConstantTable) {
  DataConstantTable& constants = Compilation::constantTable();
  constants.addConstant(make_kept<ConstantDecl>("int", "three", make_kept<DataValue>("3")));
  EXPECT_EQ(constants.getConstantIndex("limit"), 0);
  EXPECT_EQ(constants.getConstantIndex("sum"), -1);
  EXPECT_EQ(constants.getConstantIndex("three"), 1) << "one without index does not count";
  EXPECT_EQ(constants.getConstant("sum"), sum);
  EXPECT_EQ(constants.getConstantById(1), constants.getConstant("three"));
  EXPECT_EQ(constants.getConstantById(2), nullptr);
  ConstantDecl again("real", "sum", nullptr);
  EXPECT_EQ(thrown<AlreadyDefinedException>([&] { constants.addConstant(&again); }),
            Texts("sum", "constant"));
  EXPECT_EQ(printed(constants, false),
            "constant:\nint sum value:  0(C: 0, C: 0);\nint limit;\nint three value: 3;\n");
}

TEST_F(Data, BindingsOfAModule) {
  Bddexpressionwood* wood = module.getBddWood();
  // Without clock, the two equations become abstract ones over what the expression reads.
  module.addSignalBinding(minus(value_of(i)), p);
  const long p_id = p->getBddStatusId(&module, wood), i_id = i->getBddStatusId(&module, wood);
  for (const long id : {p_id, p_id + 1}) {
    const Bddexpression* e = wood->exp_by_index(id);
    ASSERT_NE(e, nullptr);
    EXPECT_NE(e->getAbstraction(), 0);
    EXPECT_EQ(e->set_of_var_dependances(), (index_set{i_id, i_id + 1}));
  }
  EXPECT_EQ(module.getBinding("p")->getClock(), nullptr);
  EXPECT_FALSE(p->isValue());

  // With a clock there are none; a later binding of the same signal replaces the first.
  module.addSignalBinding(constant(), w, i);
  module.addSignalBinding(value_of(i), w, i);
  EXPECT_EQ(wood->exp_by_index(w->getBddStatusId(&module, wood)), nullptr);
  EXPECT_TRUE(w->isValue());
  EXPECT_TRUE(i->isClock());
  EXPECT_EQ(module.getDataTable()->size(), 2u);
  EXPECT_EQ(debug(*module.getBinding("w")), "signal:w     clock:i     value: i");
  EXPECT_THAT(*module.getSignalBindingByClock(i), testing::ElementsAre(w));
  EXPECT_THAT(*module.getSignalBindingByClock(p), testing::ElementsAre());
  EXPECT_EQ(module.getDataBindingByClock(p), nullptr);
  module.removeBinding("w");
  EXPECT_EQ(module.getBinding("w"), nullptr);
}

}  // namespace
}  // namespace kiva::test
