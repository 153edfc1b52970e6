// Tokens, sections and what they make of a module.

#include "tarn/model/compilation.h"
#include "tests/zuc/zuc_fixture.h"

namespace kiva::test {
namespace {

const char* const empty_wood = "equation_def: 0 expressions: end:\n";

TEST_F(ZucReading, GivesListsMarksTypesAndNumbers) {
  Module* m = module(
      "module: m 5 1\ninput: I V:integer ;\noutput: O:real ;\ndata_signal: D ;\n"
      "local: A AN ;\nregister: AN A 1;\nconnexion: S R T;\n" +
      std::string(empty_wood));
  EXPECT_EQ(m->getName(), "m");
  EXPECT_TRUE(m->getReincarnate());
  EXPECT_EQ(m->getFinalised(), 1);
  // Two numbers a name, in the order of the file.
  long number = 0;
  for (const char* name : {"I", "V", "O", "D", "A", "AN", "S", "R", "T"}) {
    const SignalRef* ref = m->getSignalManager()->getSignalRefByName(name);
    ASSERT_NE(ref, nullptr) << name;
    EXPECT_EQ(ref->getBddStatusId(m->getBddWood()), number++);
    EXPECT_EQ(ref->getBddValueId(m->getBddWood()), number++);
  }
  EXPECT_EQ(m->getBddWood()->Name_var_by_index(3), "_v_V");
  EXPECT_TRUE(m->getInputSignal("I")->isInput());
  EXPECT_FALSE(m->getInputSignal("I")->isValued(m));
  EXPECT_EQ(m->getInputSignal("V")->getValueType(m), "integer");
  EXPECT_TRUE(m->getOutputSignal("O")->isOutput());
  EXPECT_TRUE(m->getDataSignal("D")->isInput() && m->getDataSignal("D")->isValue());
  EXPECT_TRUE(m->getLocalSignal("A")->isLocal() && m->getLocalSignal("A")->isRegister() &&
              m->getLocalSignal("A")->isWire());
  ASSERT_EQ(m->getRegisterList().size(), 1u);
  EXPECT_EQ(m->getRegisterList()[0]->actual_var(), m->getLocalSignal("A"));
  EXPECT_EQ(m->getRegisterList()[0]->next_var(), m->getLocalSignal("AN"));
  EXPECT_EQ(m->getRegisterList()[0]->is_initialy_true(), 1);
  EXPECT_EQ(m->getSet()->getInternalName(), "S");
  EXPECT_TRUE(m->getRtl()->isWire());
}

TEST_F(ZucReading, NeedsOnlyTheCompulsorySections) {
  Module* m = module("module: m 0 0 connexion: S R T; " + std::string(empty_wood));
  EXPECT_TRUE(m->getInputSignalList().empty() && m->getOutputSignalList().empty() &&
              m->getLocalSignalList().empty() && m->getDataSignalList().empty());
  EXPECT_EQ(m->getBddWood()->exp_number(), 0);
}

TEST_F(ZucReading, AppendsTheInstanceToInternalNamesButNotToWires) {
  const ZucRead result = read(
      "module: m 0 0 input: I ; local: A B ; register: B A 0; "
      "connexion: S R T; " +
          std::string(empty_wood),
      "@1");
  ASSERT_NE(result.module, nullptr);
  EXPECT_EQ(result.module->getInputSignal("I")->getInternalName(), "I@1");
  EXPECT_NE(result.module->getLocalSignal("A@1"), nullptr);
  EXPECT_EQ(result.module->getRegisterList().size(), 1u);
  EXPECT_EQ(result.module->getSet()->getInternalName(), "S");
}

TEST_F(ZucReading, ScansNamesNumbersCommentsAndUnknownCharacters) {
  // A comment ends at a newline; carriage returns, NUL and others are skipped and copied to the
  // log.
  std::string text = "module: a@b.c 0 0 // module: x\r\ninput: 12x .5 1.2.3 end ;\r\nconnexion: ";
  text += '\0';
  text += "S# R T;" + std::string(empty_wood);
  Module* m = module(text);
  EXPECT_EQ(m->getName(), "a@b.c");
  std::vector<std::string> names;
  for (const Signal* s : m->getInputSignalList()) names.push_back(s->getOriginalName());
  EXPECT_EQ(names, (std::vector<std::string>{"12x", ".5", "1.2.3", "end"}));
  EXPECT_NE(log().find('#'), std::string::npos);
  EXPECT_NE(log().find('\r'), std::string::npos);
  // "//" at the end of a file without newline is two unknown characters, then tokens.
  EXPECT_NE(refused("module: m 0 0 connexion: S R T; " + std::string(empty_wood) + "// tail")
                .find("unexpected TOKEN_IDENT"),
            std::string::npos);
}

TEST_F(ZucReading, TellsSyntaxErrorsWithLineTokenAndWhatWasExpected) {
  EXPECT_EQ(refused("module: m 0 0\nconnexion: S R T;\nequation_def: 1.5"),
            "3: syntax error, unexpected TOKEN_REAL, expecting TOKEN_NUMBER");
  EXPECT_EQ(outcome.err, "line 3: syntax error, unexpected TOKEN_REAL, expecting TOKEN_NUMBER\n");
  EXPECT_EQ(refused("module: m 0 0\ninput: 1. ;"),
            "2: syntax error, unexpected TOKEN_REAL, expecting TOKEN_IDENT");
  EXPECT_EQ(refused(""), "1: syntax error, unexpected $end, expecting TOKEN_MODULE");
  EXPECT_EQ(refused("module: m - 3"), "1: syntax error, unexpected $end, expecting TOKEN_NUMBER");
}

TEST_F(ZucReading, WarnsOfRegistersThatCannotBe) {
  Module* m = module(
      "module: m 0 0 local: A B C D ; register: B A 2; D C -7; X A 0; "
      "connexion: S R T; " +
      std::string(empty_wood));
  EXPECT_NE(outcome.err.find("Warning: Boolean value expected to initialize register value\n"),
            std::string::npos);
  EXPECT_NE(outcome.err.find("register A not defined as local ...\n"), std::string::npos);
  ASSERT_EQ(m->getRegisterList().size(), 2u);
  EXPECT_EQ(m->getRegisterList()[0]->is_initialy_true(), 0);
  EXPECT_EQ(m->getRegisterList()[1]->is_initialy_true(), -7);
}

TEST_F(ZucReading, RefusesNamesThatAreNotAwaited) {
  const std::list<std::string> inputs{"I"}, outputs{"O"};
  const auto text = [](const char* in, const char* out) {
    return "module: m 0 0 input: " + std::string(in) + " V:t ; output: " + out +
           " ; connexion: S R T; equation_def: 0 expressions: end:\n";
  };
  const std::string good = dir.write("good.zuc", text("I", "O"));
  const std::string bad_in = dir.write("in.zuc", text("J", "O"));
  const std::string bad_out = dir.write("out.zuc", text("I", "P"));
  EXPECT_NE(read_zuc_file(good, "", "", &inputs, &outputs).module, nullptr);
  EXPECT_NE(read_zuc_file(bad_in, "", "").module, nullptr);
  const std::list<std::string> any;
  EXPECT_NE(read_zuc_file(bad_in, "", "", &any, &any).module, nullptr);
  const Outcome in = run_captured([&] { (void)read_zuc_file(bad_in, "", "", &inputs, &outputs); });
  EXPECT_EQ(in.exit_status, 1);
  EXPECT_EQ(in.err,
            "m:PARSING ERROR: input signal \"J\" is unknown in main module!\n"
            "  --> authorised signals:\nI\n\n");
  const Outcome out =
      run_captured([&] { (void)read_zuc_file(bad_out, "", "", &inputs, &outputs); });
  EXPECT_TRUE(out.ended);
  EXPECT_NE(out.err.find("output signal \"P\" is unknown"), std::string::npos);
}

TEST_F(ZucReading, RefusesANameThatStandsTwice) {
  for (const char* lists :
       {"input: A\nA ;", "input: A ; output: O\nA ;", "local: L\nA A ;", "output: A ;\nlocal: A ;"})
    EXPECT_EQ(refused("module: m 0 1 " + std::string(lists) + " connexion: S R T;"),
              "2: signal \"A\" stands twice")
        << lists;
}

TEST_F(ZucReading, WritesATraceBesideTheFileWhereItCan) {
  module("module: m 0 0 connexion: S R T; " + std::string(empty_wood));
  const std::string first = log();
  EXPECT_NE(first.find("2 --> definition nom declaration\n"), std::string::npos);
  EXPECT_NE(first.find("1 --> definition finale\n"), std::string::npos);
  EXPECT_NE(first.find("20 --> 0\n"), std::string::npos);
  (void)read("module: m");
  EXPECT_LT(log().size(), first.size());  // truncated at each load
  // A folder in the trace's place cannot be written to, and does not matter.
  std::filesystem::remove(file + ".log");
  std::filesystem::create_directory(file + ".log");
  module("module: m 0 0 connexion: S R T; " + std::string(empty_wood));
}

TEST_F(ZucReading, TellsWhatIsNoFile) {
  EXPECT_EQ(read_zuc_file(dir.path().string(), "", "").problem,
            dir.path().string() + ": is a directory");
  const ZucRead missing = read_zuc_file(dir.file("none.zuc"), "", "");
  EXPECT_FALSE(missing.opened);
  EXPECT_EQ(missing.problem, dir.file("none.zuc") + ": No such file or directory");
  EXPECT_FALSE(std::filesystem::exists(dir.file("none.zuc.log")));
}

TEST_F(ZucReading, FindsModulesInTheListedFiles) {
  std::list<std::string> files{
      dir.file("none.zuc"),
      dir.write("a.zuc", "module: alpha  1 0\nconnexion: S R T;\n" + std::string(empty_wood)),
      dir.write("b.zuc", "module: beta  0 0\n")};
  Module::CompilationFileList() = &files;
  EXPECT_EQ(Compilation::getZucFileName("beta"), dir.file("b.zuc"));
  EXPECT_EQ(Compilation::getReincarnateFromZucFile("alpha"), 1);
  EXPECT_EQ(Compilation::getReincarnateFromZucFile("beta"), 0);
  EXPECT_EQ(Compilation::getReincarnateFromZucFile("gamma"), -1);
  EXPECT_NE(Compilation::createModuleFromZucCode("alpha", nullptr, nullptr), nullptr);
  EXPECT_EQ(Compilation::createModuleFromZucCode("gamma", nullptr, nullptr), nullptr);
  const Outcome broken = run_captured(
      [&] { EXPECT_EQ(Compilation::createModuleFromZucCode("beta", nullptr, nullptr), nullptr); });
  EXPECT_NE(broken.err.find("ERROR during loading file : " + dir.file("b.zuc") + "\n"),
            std::string::npos);
  Module::CompilationFileList() = nullptr;
}

}  // namespace
}  // namespace kiva::test
