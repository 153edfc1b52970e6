// The text of compiled modules, and that it is read back to the same module.

#include <gmock/gmock.h>

#include <random>
#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tests/support/random_module.h"
#include "tests/zuc/zuc_fixture.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class ZucWriting : public ZucReading {
 protected:
  static void forget() {
    Compilation::GDataTypeTable() = nullptr;
    Compilation::GDataMethodTable() = nullptr;
    Compilation::GDataConstantTable() = nullptr;
  }
  static std::string text(Module* module, int forget_locals = 0) {
    std::ostringstream os;
    module->ZUC_put(os, 2, 1, forget_locals);
    return os.str();
  }
};

std::string between(const std::string& text, const std::string& from, const std::string& to) {
  const size_t begin = text.find(from);
  const size_t end = text.find(to, begin);
  return begin == std::string::npos ? "" : text.substr(begin, end - begin);
}

const char* const two_rails =
    "module: demo  1 0\n"
    "input: I J : int ;\n"
    "output: O : int ;\n"
    "data_signal: D ;\n"
    "local: L : int M;\n"
    "register:\n"
    "M L 1;\n"
    "\n"
    "connexion: S R T;\n"
    "\n"
    "equation_def:\n"
    "5\n"
    "0: 0:1:2,-1\n"
    "1: 8:2:2,-1\n"
    "2: -1:-3:-3,1\n"
    "3: 4:2:2,-1\n"
    "4: 0:2:2,-1\n"
    "expressions:\n"
    "3 5 4:0,1,(0 8 )\n"
    "4 0 5:3,-1,(4 )\n"
    "1 0 9:-3,-3,(2 12 )\n"
    "0 2 10:4,1,(0 )\n"
    "end:\n"
    "\n";

TEST_F(ZucWriting, WritesEachSectionInItsForm) {
  EXPECT_EQ(text(module(two_rails)), two_rails);
  const std::string numbered = text(module(two_rails), 1);
  EXPECT_THAT(numbered, HasSubstr("output: O : int ;\n"));
  EXPECT_THAT(numbered, HasSubstr("local:  V8  V10;\nregister:\n V10 V8 1;\n\n"));
  EXPECT_THAT(numbered, HasSubstr("connexion: S R T;\n"));
  EXPECT_EQ(between(numbered, "equation_def:", "end:"),
            between(two_rails, "equation_def:", "end:"));
}

TEST_F(ZucWriting, LeavesEmptySectionsOut) {
  const std::string empty =
      "module: none  0 1\nconnexion: S R T;\n\nequation_def:\n0\nexpressions:\nend:\n\n";
  EXPECT_EQ(text(module(empty)), empty);
  // The first name of the file has number 0, whatever section it stands in.
  const std::string only_output =
      "module: one  0 1\noutput: O ;\nconnexion: S R T;\n\nequation_def:\n2\n0: 2:1:1,-1\n"
      "1: -1:-3:-3,1\nexpressions:\n0 0 0:0,1,(2 )\nend:\n\n";
  EXPECT_EQ(text(module(only_output)), only_output);
}

TEST_F(ZucWriting, CommentsTellWhatIsNotWritten) {
  Module* const m = module(two_rails);
  Bddexpressionwood* const wood = m->getBddWood();
  const long stray = SignalRef::computeId("stray", wood);
  new Bddexpression(wood, wood->Bdd_var_by_index(stray),
                    wood->Bdd_or(wood->Bdd_var_by_index(2), wood->Bdd_var_by_index(6)), 0, 0);
  EXPECT_EQ(text(m), two_rails) << "neither its equation nor its nodes have a place in the file";
  Compilation::DebugFlag() = true;
  const std::string commented = text(m);
  EXPECT_THAT(commented, HasSubstr("// expression 4:"));
  EXPECT_THAT(commented, HasSubstr("// no generate expression about:" + std::to_string(stray)));
  Compilation::DebugFlag() = false;
  EXPECT_EQ(text(module(commented)), two_rails);
}

/// x and its sum with a constant, a method of the output's value, and two occurrences of the
/// output.
struct Valued {
  explicit Valued(const std::string& name) : module(make_kept<Module>(name)) {
    Bddexpressionwood* const wood = module->getBddWood();
    Compilation::typeTable().addType("int");
    if (Compilation::GDataMethodTable() == nullptr) {
      Compilation::GDataMethodTable() = make_kept<DataMethodTable>();
      Compilation::GDataMethodTable()->addMethod(
          make_kept<MethodDecl>("int", "f", std::list<std::string>{"int", "int"}));
      k = make_kept<ConstantDecl>("int", "k-", nullptr);
      k->setValue(make_kept<DataValue>("3", k));
      z = make_kept<ConstantDecl>("int", "k+", nullptr);
      Compilation::constantTable().addConstant(k);
      Compilation::constantTable().addConstant(z);
    }
    x = make_kept<Signal>("x", module, wood);
    x->setInput();
    x->setValueType("int", module);
    module->addInputSignal(x);
    o = make_kept<Signal>("o", module, wood);
    o->setOutput();
    o->setValueType("int", module);
    module->addOutputSignal(o);
    c = make_kept<Signal>("c", module, wood);
    c->setLocal();
    module->addLocalSignal(c);
    o->newOccurrence(wood, module);
    module->setSet(make_kept<Signal>("S", module, wood));
    module->setReset(make_kept<Signal>("R", module, wood));
    module->setRtl(make_kept<Signal>("T", module, wood));
    const int k_index = 0, z_index = 1;
    const auto x_plus_k = make_kept<DataBinaryOp>(DataExpr::Plus, make_kept<DataSignalValue>(x),
                                                  make_kept<DataConstant>(k_index));
    module->addSignalBinding(
        make_kept<DataBinaryOp>(DataExpr::Mult, x_plus_k, make_kept<DataConstant>(k_index)), o,
        static_cast<Signal*>(nullptr));
    module->addSignalBinding(
        make_kept<DataMethodCall>(
            0, std::list<DataExpr*>{make_kept<DataUnaryOp>(DataExpr::Uminus,
                                                           make_kept<DataConstant>(z_index)),
                                    make_kept<DataSignalValue>(o)}),
        c, o);
  }
  Module* module;
  Signal *x, *o, *c;
  ConstantDecl *k = nullptr, *z = nullptr;
};

const char* const valued_text =
    "input: x : int ;\n"
    "output: o : int ;\n"
    "local: c o_1 : int;\n"
    "connexion: S R T;\n"
    "\n"
    "equation_def:\n"
    "0\n"
    "expressions:\n"
    "end:\n"
    "\n"
    "binding:\n"
    "   (4, 5): value: 0 clock: (2, 3);\n"
    "   (2, 3): value: 1;\n"
    "   (6, 7): value: 2;\n"
    "end:\n"
    "\n"
    "evaltable:\n"
    "   0: %0(3, 4);\n"
    "   1: %%2(5, 6);\n"
    "   2: %%2(7, 6);\n"
    "   3: %%4(8);\n"
    "   4: %%14(2, 3);\n"
    "   5: %%0(9, 6);\n"
    "   6: $0;\n"
    "   7: %%0(10, 6);\n"
    "   8: $1;\n"
    "   9: %%14(0, 1);\n"
    "   10: %%14(0, 1);\n"
    "end:\n"
    "\n"
    "data:\n"
    "type:\n"
    "int;\n"
    "method:\n"
    "int f(int, int);\n"
    "constant:\n"
    "int k_   \"3\";\n"
    "int k__bis;\n"
    "end:\n"
    "\n";

TEST_F(ZucWriting, GivesEachExpressionALineAndAConstantOne) {
  const Valued first("m");
  EXPECT_EQ(text(first.module), std::string("module: m  0 0\n") + valued_text);
  // A second module of the process, with the same constants, has lines of its own.
  const Valued second("n");
  EXPECT_EQ(text(second.module), std::string("module: n  0 0\n") + valued_text);
}

TEST_F(ZucWriting, BindingsOfInputsThatShareALineGetOneEach) {
  const std::string shared =
      "module: m  0 1\ninput: x : int ;\ndata_signal: a b ;\nconnexion: S R T;\nequation_def:\n0\n"
      "expressions:\nend:\nbinding:\n(2, 3): value: 0;\n(4, 5): value: 0 clock: (0, 1);\nend:\n"
      "evaltable:\n0: %%14(0, 1);\nend:\ndata:\ntype:\nint;\nmethod:\nend:\n";
  const std::string once = text(module(shared));
  EXPECT_THAT(once, HasSubstr("(2, 3): value: 0;\n   (4, 5): value: 1 clock: (0, 1);\n"));
  EXPECT_THAT(once, HasSubstr("   0: %%14(0, 1);\n   1: %%14(0, 1);\n"));
}

TEST_F(ZucWriting, EndsOrThrowsWhereSomethingIsMissing) {
  const Valued valued("m");
  Module other("other");
  Signal* const foreign = make_kept<Signal>("foreign", &other, other.getBddWood());
  foreign->setLocal();
  valued.module->addDataSignal(foreign);
  Outcome end = run_captured([&] { text(valued.module); });
  EXPECT_EQ(end.exit_status, 1);
  EXPECT_TRUE(end.ended);
  EXPECT_THAT(end.err, HasSubstr("foreign has no signal reference!"));
  valued.module->setDataSignalList({});

  valued.k->setValue(make_kept<DataConstant>(1));
  try {
    text(valued.module);
    ADD_FAILURE() << "the constant's value is no literal";
  } catch (const IllegalOperationException& e) {
    EXPECT_THAT(e.text(), HasSubstr("Print_of_constant table"));
    EXPECT_THAT(e.text(), HasSubstr("k"));
  }
  std::ostringstream os;
  std::list<DataExpr*> pending;
  int next = 0;
  DataConstant unknown(77);
  EXPECT_THROW(unknown.ZUC_put(os, nullptr, valued.module, pending, next, true),
               ModuleUndefinedConstantException);
}

TEST_F(ZucWriting, SavesUnderTheChosenName) {
  Module* const m = module(two_rails);
  Module::OutputDir() = dir.path().string();
  const auto saved = [&] { return run_captured([&] { m->save(); }).err; };
  EXPECT_EQ(saved(), "");
  EXPECT_EQ(read_text(dir.file("demo.zuc")), two_rails);
  Module::OutputFile() = "x";
  EXPECT_EQ(saved(), "");
  EXPECT_EQ(read_text(dir.file("x.zuc")), two_rails);
  Module::OutputFile() = "x.zuc";
  EXPECT_EQ(saved(), "File: " + dir.file("x.zuc") + " already exists. File rewrited.\n");
  EXPECT_FALSE(std::filesystem::exists(dir.file("x.zuc.zuc")));
  Module::OutputDir() = dir.file("nowhere");
  EXPECT_EQ(saved(), "Cannot open output file: " + dir.file("nowhere") + "/x.zuc\n");
  EquationTable* const table = m->getCompilation();
  m->setCompilation(nullptr);
  EXPECT_THROW(m->save(), IllegalOperationException);
  m->setCompilation(table);
}

// The way back.

std::string described(Module* module, const Signal* signal) {
  std::ostringstream os;
  os << signal->getOriginalName() << " " << signal->getInternalName() << " marks "
     << signal->isLocal() << signal->isInput() << signal->isOutput() << signal->isWire()
     << signal->isRegister() << signal->isClock() << signal->isValue() << " valued "
     << signal->isValued(module) << " type "
     << (signal->isValued(module) ? signal->getValueType(module) : "-") << " ids "
     << signal->getBddStatusId(module, module->getBddWood()) << " "
     << signal->getBddValueId(module, module->getBddWood()) << "\n";
  return os.str();
}

/// Everything of a module but its functions, as text.
std::string described(Module* module) {
  std::ostringstream os;
  os << module->getName() << " " << module->getReincarnate() << " " << module->getFinalised()
     << "\n";
  for (const signal_list* list : {&module->getInputSignalList(), &module->getOutputSignalList(),
                                  &module->getDataSignalList(), &module->getLocalSignalList()}) {
    os << "list\n";
    for (const Signal* signal : *list) os << described(module, signal);
  }
  for (const Signal* wire : {module->getSet(), module->getReset(), module->getRtl()})
    os << described(module, wire);
  for (const regclass* reg : module->getRegisterList()) os << *reg << "\n";
  Bddexpressionwood* wood = module->getBddWood();
  for (long index : wood->Set_of_exp()) {
    const Bddexpression* e = wood->exp_by_index(index);
    os << wood->Name_var_by_index(index) << " dates " << e->getEarlyDate() << " "
       << e->getLateDate() << " type " << e->getUserType() << " abstract " << e->getAbstraction()
       << " reads";
    for (long dep : e->set_of_var_dependances()) os << " " << wood->Name_var_by_index(dep);
    os << "\n";
  }
  if (module->getDataTable() != nullptr)
    for (const auto& [name, binding] : *module->getDataTable()) {
      os << name << " ";
      binding->print_debug(os);
      os << "\n";
    }
  return os.str();
}

void expect_same_functions(Module* a, Module* b, std::mt19937& random) {
  Bddexpressionwood *wa = a->getBddWood(), *wb = b->getBddWood();
  ASSERT_EQ(wa->Nb_bdd_vars(), wb->Nb_bdd_vars());
  std::vector<int> literals(static_cast<size_t>(wa->Nb_bdd_vars()));
  for (int row = 0; row < 24; ++row) {
    for (int& literal : literals) literal = static_cast<int>(random() % 2);
    for (long index : wa->Set_of_exp()) {
      const Bddexpression *ea = wa->exp_by_index(index), *eb = wb->exp_by_index(index);
      if (ea->getAbstraction() != 0) continue;
      ASSERT_EQ(wa->my_bdd_manager()->Bdd_eval_for_literal(ea->my_bdd_exp(), literals.data()),
                wb->my_bdd_manager()->Bdd_eval_for_literal(eb->my_bdd_exp(), literals.data()))
          << wa->Name_var_by_index(index);
    }
  }
}

class ZucRoundTrip : public ZucWriting {
 protected:
  void expect_round_trip(const std::string& source) {
    forget();
    Module* const first = module(source);
    ASSERT_NE(first, nullptr);
    const std::string before = described(first), once = text(first);
    forget();
    Module* const second = module(once);
    ASSERT_NE(second, nullptr) << once;
    EXPECT_EQ(described(second), before);
    expect_same_functions(first, second, random);
    EXPECT_EQ(text(second), once);
  }
  std::mt19937 random{7};
};

TEST_F(ZucRoundTrip, OfEveryShippedFile) {
  int files = 0;
  for (const char* folder : {"/examples", "/tests/system/circuits"})
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(std::string(KIVA_SOURCE) + folder)) {
      if (entry.path().extension() != ".zuc") continue;
      SCOPED_TRACE(entry.path());
      expect_round_trip(read_text(entry.path().string()));
      ++files;
    }
  EXPECT_GE(files, 10);
}

TEST_F(ZucRoundTrip, OfRandomModules) {
  std::mt19937 choice(20);
  for (int i = 0; i < 300 && !HasFailure(); ++i) {
    const std::string source = random_module(choice, i % 2 != 0);
    SCOPED_TRACE(source);
    expect_round_trip(source);
  }
}

TEST_F(ZucRoundTrip, OfBindings) {
  // With an equation of functions, so that the file has dates.
  std::string source = std::string("module: m  0 0\n") + valued_text;
  source.replace(source.find("0\nexpressions:\n"), 15,
                 "2\n0: 8:1:1,-1\n1: -1:-3:-3,1\nexpressions:\n2 1 4:0,1,(8 )\n");
  expect_round_trip(source);
}

}  // namespace
}  // namespace kiva::test
