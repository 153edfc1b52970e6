// Runs: what connects to what, what is refused, and traces derived by hand.

#include <gmock/gmock.h>

#include <list>

#include "tarn/model/compilation.h"
#include "tarn/model/signal.h"
#include "tarn/session/session.h"
#include "tarn/zu/statements/run.h"
#include "tests/support/process_end.h"
#include "tests/support/temp_dir.h"
#include "tests/zu_compile/apart.h"
#include "tests/zu_compile/compiled.h"

namespace kiva::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

std::string report(const std::string& text) {
  return Compiled(text).report();
}

const char* const edge =
    "module edge: Input: i; Output: e;\n"
    "loop { wait i >> emit e >> wait not i }\nend\n";

TEST(RunConnects, ByNameOrByRenaming) {
  const std::string main =
      edge + std::string("module main: Input: x, i; Output: o, e; Local: L;\n");
  const struct {
    std::string text;
    const char *signal, *stimuli, *states;
  } cases[] = {
      {main + "run edge end", "e", ". i i . i", "_1__1"},
      {main + "run edge [x \\ i] end", "e", "x x i x", "_1_1"},
      {main + "run edge [x \\ i, o \\ e] end", "o", ". x x . x", "_1__1"},
      // A local on either side.
      {main + "run edge [L \\ e] || run edge [L \\ i, o \\ e] end", "o", ". i . . i", "_1__1"},
      // A formal name that is a local of the caller.
      {"module m: Input: L; Output: M; loop { present L emit M >> pause } end\n"
       "module main: Input: x; Output: o; Local: L, M;\n"
       "loop { present x emit L >> present M emit o >> pause } || run m end",
       "o", "x . x", "1_1"}};
  for (const auto& c : cases) EXPECT_EQ(trace(c.text, c.signal, c.stimuli), c.states) << c.text;
}

TEST(RunConnects, EachInstanceUnderItsOwnSuffix) {
  const Compiled c(edge + std::string("module main: Input: x, y; Output: o, p;\n"
                                      "run edge [x \\ i, o \\ e] || run edge [y \\ i, p \\ e]\n"
                                      "end"));
  ASSERT_TRUE(c.ok()) << c.report();
  for (const char* name : {"SETedge@edge_i1", "RTLedge@edge_i2", "i@edge_i1", "e_2@edge_i2"}) {
    const Signal* copy = c.module()->getLocalSignal(name);
    ASSERT_NE(copy, nullptr) << name;
    EXPECT_TRUE(copy->isLocal() && !copy->isInput() && !copy->isOutput());
  }
  EXPECT_EQ(c.module()->getLocalSignal("i@edge_i1")->getOriginalName(), "i");
  EXPECT_EQ(c.module()->getLocalSignal("SETedge@edge_i3"), nullptr);
  EXPECT_EQ(Compilation::ModTable()->get("edge")->getCurrentInstance(), 2);
  EXPECT_EQ(c.module()->getRegisterList().size(),
            2 * Compilation::ModTable()->get("edge")->getRegisterList().size() + 2);
}

TEST(RunConnects, AwaitsTheNamesOfTheCallerAndTheFormalOnes) {
  restart_reader();
  Module* caller = make_kept<Module>("caller");
  const auto signal = [&](const char* name, void (*mark)(Signal*)) {
    Signal* made = make_kept<Signal>(name, caller, caller->getBddWood());
    mark(made);
    return made;
  };
  Signal* input = signal("in", [](Signal* s) { s->setInput(); });
  Signal* output = signal("out", [](Signal* s) { s->setOutput(); });
  Signal* local = signal("loc", [](Signal* s) { s->setLocal(); });
  caller->addInputSignal(input);
  caller->addOutputSignal(output);
  caller->addLocalSignal(local);
  kiva::Run run("R", "m");
  const std::list<std::pair<std::string, Signal*>> renamings{
      {"h", local}, {"f", input}, {"g", output}};
  run.setRenamingTable(&renamings);
  std::list<std::string> inputs, outputs;
  run.computeAwaitedNameList(inputs, outputs, caller);
  EXPECT_THAT(inputs, testing::ElementsAre("in", "loc", "f", "h"));
  EXPECT_THAT(outputs, testing::ElementsAre("out", "loc", "g", "h"));
}

TEST(RunRefuses, WhatDoesNotConnect) {
  const std::string main = "module main: Input: x, i; Output: o, e; Local: L;\n";
  const std::string ring = "module a: run b end module b: pause >> run c end module c: run a end\n";
  const struct {
    std::string text;
    const char* report;
  } cases[] = {
      {edge + std::string("module main: Output: i, e; run edge end"),
       "RunUnknownSignalException: not input expected i"},
      {edge + std::string("module main: Input: i, e; run edge end"),
       "RunUnknownSignalException: not ouput expected e"},
      {edge + main + "run edge [o \\ i] end",
       "RunUnknownSignalException: output signal renames an input signal o"},
      {edge + main + "run edge [x \\ e] end",
       "RunUnknownSignalException: input signal renames an output signal x"},
      {edge + main + "run edge [nobody \\ i] end", "RunUnknownSignalException: undeclared nobody"},
      {edge + main + "run edge [x \\ i, i \\ i] end", "HashTableAddException: i"},
      {edge + main + "run edge [x \\ typo] end",
       "RunUnknownSignalException: not a signal of the called module typo"},
      {main + "emit o >> run m end",
       "IllegalOperationException: Run: called module  not defined in file m"},
      {"module main: Input: x; Run: \"lib/edge\" : m; run m end",
       "Run: compiled called module declared but not provided:  m"},
      {"module main: Input: x; loop { run m } end", "ex1:Run module undefined:  m"},
      {"module main: Input: x; Run: \"lib/n\" : n; loop { run m } end",
       "ex2:Run module undefined:  m"},
      {"data: Type: int; real; end data module main: end", "SYNTAX ERROR"},
      {"data: Type: int, real; end data module m: Input: f : int; end\n"
       "module main: Input: f : real; run m end",
       "Run: signals of two types:  f : int, f : real"},
      {"data: Type: int; end data module m: Output: f : int; emit f end\n"
       "module main: Output: f : int; run m end",
       "***error:run:no signal binding for:f  in called module"},
      {"module main: run main end", "runs itself:  main > main"},
      {"module main: loop { run main } end", "runs itself:  main > main"},
      {ring + "module main: run a end", "runs itself:  a > b > c > a"},
      {ring + "module main: loop { run b || pause } end", "runs itself:  b > c > a > b"},
  };
  for (const auto& c : cases) EXPECT_THAT(report(c.text), HasSubstr(c.report)) << c.text;
}

TEST(RunRefuses, ModulesNestedTooDeeply) {
  // As deep as a file can make it: a result, or a message.
  std::string chain = "module m0: Output: o; emit o end\n";
  for (int i = 1; i <= 8'000; ++i)
    chain +=
        "module m" + std::to_string(i) + ": Output: o; run m" + std::to_string(i - 1) + " end\n";
  EXPECT_THAT(report(chain + "module main: Output: o; loop { run m8000 } end"),
              HasSubstr("nested too deeply"));
}

TEST(RunRefuses, AFinalisedModule) {
  restart_reader();
  const TempDir dir;
  Compilation::zu_parse(dir.write("two.zu", "module m: pause end module main: run m end").c_str());
  const Outcome outcome = run_captured([&] {
    Compilation::ModTable()->get("m")->compile();
    Compilation::ModTable()->get("m")->finalize(0);
    try {
      Compilation::ModTable()->get("main")->compile();
      ADD_FAILURE() << "compiles";
    } catch (const LibraryException& exception) {
      EXPECT_EQ(exception.text(),
                "IllegalOperationException: Run: called module has been finalised:  m");
      EXPECT_THAT(exception.where().text(), HasSubstr("two.zu:1:34"));
    }
  });
  EXPECT_FALSE(outcome.ended);
}

/// Random programs cut into modules show the rest.
TEST(RunTraces, WhatACalledModuleNeverEmitsIsLeftAlone) {
  const std::string text =
      "module never: Output: o; pause end module mute: Output: o; halt end\n"
      "module m: Output: o; emit o end module reg: Output: o;\n"
      "Mealy Machine Register: s: 1: n; n = s; o = s; end module main: Output: o; ";
  const Rules sound = Rules::sound(), classic = Rules::classic();
  const struct {
    const char *body, *states;
    Rules rules;
  } cases[] = {{"run never >> emit o", "_1_", sound},
               {"emit o || run mute", "1__", sound},
               {"run mute", "000", sound},
               {"emit o || run m", "1__", classic},
               {"emit o >> run never", "000", classic},
               {"run reg", "111", classic},
               {"run reg", "111", sound}};
  for (const auto& c : cases)
    EXPECT_EQ(trace(text + c.body + " end", "o", ". . .", c.rules), c.states) << c.body;
}

TEST(RunTraces, InLoopsAreCopiedWhereTheyCanEndAtOnce) {
  const std::string modules =
      "module skip: Input: x; Output: o; present x emit o end\n"
      "module step: Input: x; Output: o; emit o >> pause end\n"
      "module wrap: Input: x; Output: o; run skip end\n";
  const auto copies = [&](const char* body) {
    const Compiled c(modules + "module main: Input: x, y; Output: o; " + body + " end");
    EXPECT_TRUE(c.ok()) << c.report();
    int instances = 0;
    for (const auto& [name, module] : Compilation::ModTable()->modules())
      instances += std::max(0, module->getCurrentInstance());
    return instances;
  };
  EXPECT_EQ(copies("loop { run step }"), 1);
  EXPECT_EQ(copies("loop { run skip >> pause }"), 1);
  EXPECT_EQ(copies("loop { weak abort { halt } when y >> run skip }"), 2);
  EXPECT_EQ(copies("loop { weak abort { halt } when y >> run wrap }"), 3)
      << "two of wrap, one of skip inside it";
  const auto traced = [&](const char* body, const char* stimuli) {
    return trace(modules + "module main: Input: x, y; Output: o; " + body + " end", "o", stimuli);
  };
  // Copies keep the renaming.
  EXPECT_EQ(traced("loop { weak abort { run step [y \\ x] >> halt } when x >> run skip [y \\ x] }",
                   ". x x+y ."),
            "111_");
  EXPECT_EQ(trace("module m: Input: x; Output: o; present x emit o >> pause end\n"
                  "module main: Input: x, y; Output: o; repeat 2 { run m [y \\ x] } end",
                  "o", "y x"),
            "1_");
}

TEST(RunOfFiles, GoesByTheListThenTheDeclarationThenTheSource) {
  const TempDir dir;
  const std::string main = "module main: Input: i; Output: e; ";
  compile_apart(dir, "edge", edge);
  const std::string declared = "Run: \"" + dir.path().string() + "/edge\" : edge;";
  EXPECT_EQ(trace(main + declared + "run edge end", "e", ". i i . i"), "_1__1");
  EXPECT_EQ(Compilation::ModTable()->get("edge"), nullptr) << "it came from the compiled file";
  EXPECT_NE(Compilation::ZucModTable()->get("edge"), nullptr);
  // A folder will do, and so does a file beside the source text.
  EXPECT_EQ(trace(main + "Run: \"" + dir.path().string() + "\" : edge; run edge end", "e", ". i"),
            "_1");
  // What is declared is meant, even if the file holds a module of that name.
  EXPECT_EQ(
      trace("module edge: Input: i; Output: e; emit e end " + main + declared + "run edge end", "e",
            ". i"),
      "_1");
  EXPECT_EQ(
      trace("module edge: Input: i; Output: e; emit e end " + main + "run edge end", "e", ". i"),
      "1_");
  std::list<std::string> files{dir.write("other.zuc", "module: edges  0 1\n"),
                               dir.file("edge.zuc")};
  Module::CompilationFileList() = &files;
  EXPECT_EQ(trace(main + "run edge end", "e", ". i"), "_1") << "without a declaration";
  EXPECT_EQ(trace(main + "loop { run edge } end", "e", ". i"), "_1");
  files = {dir.write("lib.zu", std::string("module first: end ;; module edge:\n") + edge),
           dir.write("later.zu", "module edge: Input: i; Output: e; emit e end")};
  EXPECT_EQ(trace(main + "loop { run edge } end", "e", ". i"), "_1") << "from source text";
  Module::CompilationFileList() = nullptr;
}

TEST(RunOfFiles, AsksTheCompiledFileWhetherItCanEndAtOnce) {
  const TempDir dir;
  compile_apart(dir, "skip", "module skip: Input: x; Output: o; present x emit o end");
  compile_apart(dir, "step", "module step: Input: x; Output: o; emit o >> pause end");
  const std::string main = "module main: Input: x; Output: o; Run: \"" + dir.path().string() +
                           "\" : skip; \"" + dir.path().string() + "\" : step; ";
  for (const auto& [module, instances] : {std::pair("skip", 2), {"step", 1}}) {
    const Compiled c(main + "loop { weak abort { halt } when x >> run " + module + " } end");
    EXPECT_TRUE(c.ok()) << c.report();
    EXPECT_EQ(Compilation::ZucModTable()->get(module)->getCurrentInstance(), instances) << module;
  }
}

TEST(RunOfFiles, ReadsTheSourceInTheMiddleOfACompilation) {
  const TempDir dir;
  const std::string data = "data: Type: int; Method: int f(int); Constant: int 7; end data\n";
  dir.write("lib.zu", data + "module lib: Input: x; Output: v : int; present x emit v(f(7)) end");
  const std::string main = "module main: Input: x; Output: v : int; Run: \"" + dir.path().string() +
                           "/lib\" : lib; loop { weak abort { halt } when x >> run lib } end";
  // The file's data part may stand in both files, in the same words.
  EXPECT_EQ(report(data + main), "");
  EXPECT_THAT(report("data: Type: int; Method: int f(int, int); end data " + main),
              HasSubstr("AlreadyDefinedException: f"));
  EXPECT_THAT(report("data: Type: int; Constant: int 7; int 7; end data " + main),
              HasSubstr("AlreadyDefinedException: C__7"));
}

TEST(RunOfFiles, TellsWhatIsWrongWithThem) {
  const TempDir dir;
  const std::string folder = dir.path().string();
  const auto outcome = [&](const std::string& main) {
    std::string told;
    restart_reader();
    const Outcome run = run_captured([&] {
      try {
        Compilation::zu_parse(dir.write("main.zu", main).c_str());
        Compilation::ModTable()->get("main")->compile();
      } catch (const LibraryException& exception) {
        told = exception.text();
      }
    });
    return told + run.err;
  };
  const auto main = [&](const std::string& file) {
    return "module main: Input: x; Output: o; Run: \"" + folder + "/" + file + "\" : m; run m end";
  };
  compile_apart(dir, "n", "module n: end");
  dir.write("broken.zuc", "module: m  0 1\nconnexion: S R\n");
  EXPECT_THAT(outcome(main("n.zuc")),
              AllOf(HasSubstr("not provided:  m"), HasSubstr("n.zuc holds module n\n"),
                    HasSubstr("no module m in ")));
  EXPECT_THAT(outcome(main("broken.zuc")), HasSubstr("not provided:  m"));
  compile_apart(dir, "m", "module m: Input: y; end");
  EXPECT_THAT(outcome(main("m")), HasSubstr("input signal \"y\" is unknown in main module"));
}

TEST(RunOfValues, TakesBindingsAlong) {
  const std::string data = "data: Type: int; Constant: int 1; int 2; end data\n";
  const std::string modules =
      "module src: Output: v : int; emit v(1) >> pause >> emit v(2) end\n"
      "module twice: Input: i : int; Output: v : int; present i emit v(#i + #i) end\n"
      "module hold: Input: x; Output: v : int; sustain v(1) until x end\n"
      "module test: Input: i : int; Output: o; if #i == 1 emit o end\n";
  const auto bound_to = [](const Module* module, const char* clock) {
    std::vector<std::string> names;
    const auto bindings = module->getDataBindingByClock(module->getSignal(clock));
    if (bindings != nullptr)
      for (const DataBinding* binding : *bindings)
        names.push_back(binding->getSignal()->getInternalName());
    return names;
  };
  const Compiled c(
      data + modules +
      "module main: Input: i : int, x; Output: v : int, w : int, o, p; Local: l : int;\n"
      "run src [l \\ v] || run twice [l \\ i] || run twice [w \\ v] ||\n"
      "run hold || run test || run test [p \\ o]\nend");
  ASSERT_TRUE(c.ok()) << c.report();
  EXPECT_EQ(bound_to(c.module(), "l").size(), 2u) << "one for each emission";
  EXPECT_EQ(bound_to(c.module(), "v").size(), 2u) << "of twice, of hold";
  EXPECT_EQ(bound_to(c.module(), "w").size(), 1u);
  EXPECT_EQ(bound_to(c.module(), "i@twice_i2").size(), 1u);
  EXPECT_TRUE(Compiled(data + "module beat: Input: x; Output: b; present x emit b end\n"
                              "module main: Input: i : int; Output: b; run beat [i \\ x] end")
                  .ok());
  // Both tests are data signals of their own.
  EXPECT_EQ(c.module()->getDataSignalList().size(), 2u);
}

}  // namespace
}  // namespace kiva::test
