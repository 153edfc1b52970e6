// The compiler's command line.

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string with_type(const std::string& name, const std::string& type) {
  return "module: " + name + " 0 1\ninput: i:" + type +
         " ;\nconnexion: S R T;\nequation_def:\n0\nexpressions:\nend:\n"
         "data:\ntype:\n" +
         type + ";\nmethod:\nconstant:\n" + type + " top;\nend:\n";
}

TEST(Tarn, WritesAServerForEachFile) {
  const TempDir dir;
  const std::string a = dir.write("a.zuc", with_type("first", "int"));
  const std::string b = dir.write("b.zuc", with_type("second", "real"));
  const std::string folder = dir.path().string();
  ProgramRun run = run_program("tarn", "--kiva -d " + folder + " " + a + " " + b);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, folder + "/kiva_first.cc\n" + folder + "/kiva_second.cc\n");
  EXPECT_THAT(read_text(dir.file("kiva_first.cc")), HasSubstr("kiva_data_user_int.h"));
  const std::string second = read_text(dir.file("kiva_second.cc"));
  EXPECT_THAT(second, HasSubstr("real_to_string (::top)"));
  EXPECT_THAT(second, Not(HasSubstr("int_to_string"))) << "the first file's types are not its own";

  run = run_program("tarn", "-q --kiva -d " + folder + " " + a);
  EXPECT_EQ(run.out, "");
  run = run_program("tarn", "-d " + folder + " " + a);
  EXPECT_EQ(run.out, folder + "/first.zuc\n");
}

TEST(Tarn, WritesTargetTexts) {
  const TempDir dir;
  const std::string folder = dir.path().string();
  const std::string source =
      dir.write("copy.zu",
                "module copy: Input: int; Output: o; loop { present int { emit o } >> pause } end");
  ProgramRun run = run_program("tarn", "--c --blif --zuc -o x -d " + folder + " " + source);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out,
            folder + "/x.zuc\n" + folder + "/x.c\n" + folder + "/x.h\n" + folder + "/x.blif\n");
  EXPECT_EQ(run.err, "tarn: note: C: signal \"int\" is written as \"int_1\": a keyword there\n");
  EXPECT_THAT(read_text(dir.file("x.c")), HasSubstr("#include \"x.h\""));

  // As it is read, and to the letter.
  run = run_program("tarn", "-q --classic --c -d " + folder + " " + dir.file("x.zuc"));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out + run.err, "");
  EXPECT_THAT(read_text(dir.file("copy.c")), HasSubstr("_s_int"));

  // A file that fails is the fault of its text alone.
  std::filesystem::create_directory(dir.path() / "y.c");
  run = run_program("tarn", "--c --blif -o y -d " + folder + " " + source);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, folder + "/y.blif\n");
  EXPECT_THAT(run.err, HasSubstr(folder + "/y.c: error: cannot be written\n"));
}

// Source text.

const char* const two_modules =
    "module lamp: Input: press; Output: on, off; Local: L;\n"
    "loop { weak abort { loop { emit on >> emit L >> pause } } when press >>\n"
    "       weak abort { loop { emit off >> pause } } when press }\nend\n"
    "module echo: Input: i; Output: o;\n"
    "loop { present i { emit o } >> pause }\nend\n";

class TarnOnSource : public testing::Test {
 protected:
  TarnOnSource() { source = dir.write("two.zu", two_modules); }
  ProgramRun tarn(const std::string& arguments) const {
    return run_program("tarn", "-Wno-never-read -d " + dir.path().string() + " " + arguments);
  }
  std::string written(const std::string& name) const { return read_text(dir.file(name)); }
  std::string outputs(const std::string& module, const std::string& stimuli) const {
    const ProgramRun run =
        run_program("kiva-console", "--format json " + dir.file(module), stimuli);
    EXPECT_EQ(run.status, 0) << run.err;
    std::istringstream lines(run.out);
    std::string all;
    for (std::string line; std::getline(lines, line);) all += line.substr(0, line.find("}")) + "\n";
    return all;
  }
  TempDir dir;
  std::string source;
};

TEST_F(TarnOnSource, CompilesEveryModuleOfTheFileOrThoseNamed) {
  const std::string folder = dir.path().string();
  ProgramRun run = tarn(source);
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, folder + "/lamp.zuc\n" + folder + "/echo.zuc\n");
  EXPECT_THAT(written("lamp.zuc"), testing::StartsWith("module: lamp  "));
  EXPECT_THAT(written("lamp.zuc"), HasSubstr("input: press ;\noutput: on off ;\nlocal:"));
  EXPECT_EQ(outputs("echo.zuc", "i\n\ni\n"),
            "{\"instant\":1,\"outputs\":{\"o\":[\"one\",\"--\"]\n"
            "{\"instant\":2,\"outputs\":{\"o\":[\"bottom\",\"--\"]\n"
            "{\"instant\":3,\"outputs\":{\"o\":[\"one\",\"--\"]\n");
  const std::string both = written("echo.zuc");

  // Alone or after another, a module is the same.
  run = tarn("--module echo " + source);
  EXPECT_EQ(run.out, folder + "/echo.zuc\n");
  EXPECT_EQ(run.err, "");
  run = tarn("--verbose --module echo " + source);
  EXPECT_EQ(run.err, "File: " + folder + "/echo.zuc already exists. File rewrited.\n");
  EXPECT_EQ(written("echo.zuc"), both);
  run = tarn("-q --module echo -o other " + source);
  EXPECT_EQ(run.out + run.err, "");
  EXPECT_EQ(written("other.zuc"), both);

  run = tarn("--module echo --module nobody " + source);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("tarn: error: no file holds a module \"nobody\"\n"));
  run = tarn("-o one " + source);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, source + ": error: holds several modules; -o names one file\n");
}

TEST_F(TarnOnSource, OptionsChangeWhatIsWritten) {
  const std::string module = "-q --module lamp " + source;
  ASSERT_EQ(tarn(module + " -o plain").status, 0);
  const std::string plain = written("plain.zuc");
  EXPECT_THAT(plain, HasSubstr(" boot bootplus;"));
  EXPECT_THAT(plain, Not(HasSubstr("//")));
  const std::string expected = outputs("plain.zuc", "\n\npress\n\npress\n");
  EXPECT_THAT(expected, HasSubstr("\"off\":[\"one\""));

  for (const char* option :
       {"--forget-locals", "--comments", "--keep-wires", "--keep-rtl", "--strip"}) {
    ASSERT_EQ(tarn(std::string(option) + " -o changed " + module).status, 0) << option;
    EXPECT_NE(written("changed.zuc"), plain) << option;
    EXPECT_EQ(outputs("changed.zuc", "\n\npress\n\npress\n"), expected) << option;
  }
  ASSERT_EQ(tarn("--forget-locals -o v " + module).status, 0);
  EXPECT_THAT(written("v.zuc"), HasSubstr("local:  V6"));
  EXPECT_LT(written("changed.zuc").size(), plain.size()) << "what has been stripped";
  ASSERT_EQ(tarn("--comments -o c " + module).status, 0);
  EXPECT_THAT(written("c.zuc"), HasSubstr("// expression "));
  ASSERT_EQ(tarn("--no-finalize -o n " + module).status, 0);
  EXPECT_THAT(written("n.zuc"), testing::StartsWith("module: lamp  1 0\n"));
  EXPECT_THAT(written("n.zuc"), Not(HasSubstr("boot")));
  ASSERT_EQ(tarn("--check-over-knowledge -o k " + module).status, 0);
  EXPECT_THAT(written("k.zuc"), HasSubstr("output: on off OverKnowledgeError ;\n"));
  ASSERT_EQ(tarn("--classic -o old " + module).status, 0);
  EXPECT_THAT(written("old.zuc"), testing::StartsWith("module: lamp  "));
}

TEST_F(TarnOnSource, FollowsTheRulesAskedFor) {
  const std::string probe = source_folder("tests/zu/rules").string() + "/values";
  ASSERT_EQ(tarn("-q -o sound " + probe + ".zu").status, 0);
  ASSERT_EQ(tarn("-q --classic -o classic " + probe + ".zu").status, 0);
  for (const std::string rules : {"sound", "classic"}) {
    std::string expected = read_text(probe + "." + rules + ".json");
    std::erase(expected, ' ');
    std::istringstream lines(expected);
    std::string all;
    for (std::string line; std::getline(lines, line);) all += line.substr(0, line.find("}")) + "\n";
    EXPECT_EQ(outputs(rules + ".zuc", read_text(probe + ".stim")), all) << rules;
  }
}

TEST_F(TarnOnSource, RewritesACompiledModuleAsItIs) {
  ASSERT_EQ(tarn("-q --module lamp " + source).status, 0);
  ASSERT_EQ(tarn("-q -o second " + dir.file("lamp.zuc")).status, 0);
  ASSERT_EQ(tarn("-q -o third " + dir.file("second.zuc")).status, 0);
  EXPECT_EQ(written("third.zuc"), written("second.zuc"));
  const std::string second = written("second.zuc");
  EXPECT_EQ(second.substr(0, second.find("equation_def")),
            written("lamp.zuc").substr(0, written("lamp.zuc").find("equation_def")));
  const std::string stimuli = "\npress\n\npress\npress\n";
  EXPECT_EQ(outputs("second.zuc", stimuli), outputs("lamp.zuc", stimuli));
}

TEST_F(TarnOnSource, ReadsBackWhatItHasWritten) {
  std::filesystem::create_symlink("/dev/null", dir.file("lost.zuc"));
  const ProgramRun run = tarn("-q --module echo -o lost " + source);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("lost.zuc:1: error: syntax error, unexpected $end"));
}

TEST_F(TarnOnSource, TellsTheFaultOfEachModule) {
  const std::string cycles =
      dir.write("cycles.zu",
                "module a: Output: o;\npresent o emit o end\nmodule b: Output: o;\nrun a end\n"
                "module c: Output: o;\npresent o emit o end\nmodule d: Output: o; emit o end\n");
  const ProgramRun run = tarn(cycles);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.err, HasSubstr("cycles.zu:2:11: error: "));
  EXPECT_THAT(run.err, HasSubstr("cycles.zu:6:11: error: "));
  EXPECT_THAT(run.err, Not(HasSubstr("cycles.zu:4:")));
}

TEST_F(TarnOnSource, TellsWhereASourceIsWrong) {
  const std::string broken = dir.write("broken.zu", "module m: Input: i;\nemit >> end\n");
  ProgramRun run = tarn(broken + " " + source);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, broken + ":2:6: error: expected a name after \"emit\"\n");
  EXPECT_THAT(run.out, HasSubstr("lamp.zuc\n")) << "the other files are still written";
  const std::string ring =
      dir.write("ring.zu", "module r: Input: i; Output: o;\npresent o emit o\nend\n");
  run = tarn(ring);
  EXPECT_EQ(run.status, 1);
  const std::string at = ring + ":2:11: ";
  EXPECT_EQ(run.err, at + "error: \"o\" depends on itself in one instant: o -> o\n" + at +
                         "note: \"o\" follows from \"o\" here: emit o\n" + at +
                         "note: put a pause between cause and effect\n" + at +
                         "note: it does not settle in instant 1 of this run: no input\n");
  run = tarn(dir.file("missing.zu"));
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr(dir.file("missing.zu")));
  std::filesystem::remove(dir.file("lamp.zuc"));
  std::filesystem::create_directory(dir.file("lamp.zuc"));
  run = tarn("--module lamp " + source);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr(dir.file("lamp.zuc") + ": error: cannot be written\n"));
  EXPECT_EQ(run.out, "");
}

TEST(Tarn, WarningsAreNamed) {
  const TempDir dir;
  const std::string source = dir.write("m.zu", "module m: Input: a; Output: o; emit o end");
  const std::string told =
      source + ":1:18: warning: \"a\" is an input that nothing reads [-Wnever-read]\n";
  const std::string into = "-q -d " + dir.path().string() + " ";
  ProgramRun run = run_program("tarn", into + source);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, told);
  EXPECT_EQ(run_program("tarn", into + "-Wno-never-read -Werror " + source).err, "");
  EXPECT_EQ(run_program("tarn", into + "--classic " + source).err, "");
  EXPECT_EQ(run_program("tarn", into + "-Wno-such " + source).status, 2);
  std::filesystem::remove(dir.file("m.zuc"));
  run = run_program("tarn", into + "-Werror " + source);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr(":1:18: error: "));
  EXPECT_FALSE(std::filesystem::exists(dir.file("m.zuc")));
  EXPECT_EQ(run_program("tarn", into + "--sarif /nowhere/x " + source).status, 1);
  ASSERT_EQ(run_program("tarn", into + "--sarif " + dir.file("s") + " " + source).err, told);
  const auto log = nlohmann::json::parse(read_text(dir.file("s")))["runs"][0];
  const auto& result = log["results"].at(0);
  EXPECT_EQ(result["ruleId"], "never-read");
  EXPECT_EQ(result["locations"][0]["physicalLocation"]["region"].dump(),
            R"({"startColumn":18,"startLine":1})");
  // A fault of compiling stands among the warnings of reading.
  const std::string mixed = dir.write(
      "mixed.zu", "module a: Input: i; Output: o;\npresent o emit o\nend\nmodule b: Input: j; end");
  run = run_program("tarn", into + mixed);
  const size_t first = run.err.find(mixed + ":1:18: warning"),
               second = run.err.find(mixed + ":2:11: error"),
               third = run.err.find(mixed + ":4:18: warning");
  EXPECT_TRUE(first < second && second < third && third != std::string::npos) << run.err;
}

TEST(Tarn, RefusesWithOneLineAndAStatus) {
  const TempDir dir;
  const std::string good = dir.write("good.zuc", with_type("good", "int"));
  const std::string broken = dir.write("broken.zuc", "module: m 0 1\nend:\n");
  const std::string nameless = dir.write("nameless.zuc", with_type("nameless", "a.b"));
  const std::string into = "--kiva -d " + dir.path().string() + " ";

  ProgramRun run = run_program("tarn", into + dir.file("missing.zuc") + " " + good);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, testing::StartsWith(dir.file("missing.zuc") + ": error: "));
  EXPECT_THAT(run.out, HasSubstr("kiva_good.cc")) << "the other files are still written";
  run = run_program("tarn", into + broken);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr(broken + ":2: error: syntax error"));
  run = run_program("tarn", into + nameless);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            nameless + ": error: module \"nameless\": the name \"a.b\" cannot stand in C++\n");
  std::filesystem::remove(dir.file("kiva_good.cc"));
  std::filesystem::create_directory(dir.file("kiva_good.cc"));
  run = run_program("tarn", into + good);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, dir.file("kiva_good.cc") + ": error: cannot be written\n");

  setenv("DISPLAY", "nowhere", 1);
  for (const std::string& wrong :
       {std::string(), "--nonsense " + good, "--windows " + good, dir.file("m.txt"),
        "--kiva -d " + dir.file("nowhere") + " " + good}) {
    run = run_program("tarn", wrong);
    EXPECT_EQ(run.status, 2) << wrong;
    EXPECT_EQ(run.out, "");
  }
  for (const char* asked : {"--help", "--version"}) {
    run = run_program("tarn", asked);
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("tarn"));
  }
}

// Files whose modules run each other.

class TarnOnSeveralFiles : public TarnOnSource {
 protected:
  TarnOnSeveralFiles() {
    edge = dir.write(
        "edge.zu", "module edge: Input: i; Output: e; loop { wait i >> emit e >> wait not i } end");
    main =
        dir.write("main.zu", "module main: Input: x; Output: o;\nrun edge [x \\ i, o \\ e]\nend\n");
  }
  std::string edge, main;
};

TEST_F(TarnOnSeveralFiles, TakesWhatRunsCallFromTheOthers) {
  const std::string folder = dir.path().string();
  EXPECT_EQ(tarn(main).status, 1);
  // Both are source text, in either order: each is compiled and written once.
  EXPECT_EQ(tarn(main + " " + edge).out, folder + "/main.zuc\n" + folder + "/edge.zuc\n");
  EXPECT_EQ(tarn(edge + " " + main).out, folder + "/edge.zuc\n" + folder + "/main.zuc\n");
  const std::string traced = outputs("main.zuc", "\nx\nx\n\nx\n");
  EXPECT_THAT(traced, HasSubstr("\"instant\":2,\"outputs\":{\"o\":[\"one\""));
  // A compiled module serves the runs and is not written again.
  const std::string compiled = written("edge.zuc");
  const ProgramRun run = tarn(main + " " + dir.file("edge.zuc"));
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, folder + "/main.zuc\n");
  EXPECT_EQ(written("edge.zuc"), compiled);
  EXPECT_EQ(outputs("main.zuc", "\nx\nx\n\nx\n"), traced);
  EXPECT_EQ(tarn("--module edge " + main + " " + edge).out, folder + "/edge.zuc\n");
}

TEST_F(TarnOnSeveralFiles, TellsWhereAModuleHasBeenLookedFor) {
  ProgramRun run = tarn(main + " " + source);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            main + ":2:1: error: there is no module \"edge\" in " + main + ", " + source + "\n");
  run = tarn(dir.write("far.zu", "module far: Run: \"lib/x\" : x;\nrun x end"));
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr(dir.file("lib/x.zuc") + ", " + dir.file("lib/x.zu")));
  run = tarn(dir.write("ring.zu", "module a: run b end\nmodule b:\npause >> run a end"));
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("ring.zu:3:10: error: module \"a\" runs itself: a > b > a\n"));
}

TEST_F(TarnOnSeveralFiles, SharesADataPartThatStandsInEach) {
  const std::string data = "data: Type: int; Constant: int 1; end data\n";
  const std::string part =
      dir.write("part.zu", data + "module part: Output: v : int; loop { emit v(1) >> pause } end");
  const std::string whole =
      dir.write("whole.zu", data + "module whole: Output: v : int; run part end");
  ProgramRun run = tarn("--no-finalize " + whole + " " + part);
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(written("whole.zuc"), HasSubstr("int C__1   \"1\";"));
  dir.write("part.zu", "data: Type: int; Constant: int 1; real; end data module part: end");
  run = tarn(whole + " " + part);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr(part + ":1:"));
}

}  // namespace
TEST(Tarn, LaysSourceTextOut) {
  const TempDir dir;
  const std::string wild = dir.write("a b.zu", "module m:Output:o;emit o end");
  const std::string both =
      "'" + wild + "' " + dir.write("tidy.zu", "module m:\nOutput: o;\nemit o\nend\n");
  ProgramRun run = run_program("tarn", "--fmt --check " + both);
  EXPECT_EQ(std::to_string(run.status) + run.out, "1" + wild + "\n");
  run = run_program("tarn", "--fmt " + both);
  EXPECT_EQ(std::to_string(run.status) + run.out, "0" + wild + "\n");
  EXPECT_EQ(run_program("tarn", "--fmt --check " + both).status, 0);
  const std::string torn = dir.write("torn.zu", "a\n  {");
  run = run_program("tarn", "--fmt " + torn + " " + dir.file("none.zu"));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, torn + ":2:3: error: this bracket is not closed\n" + dir.file("none.zu") +
                         ": error: cannot be opened\n");
  EXPECT_EQ(run_program("tarn", "--fmt x.zuc").status, 2);
}

}  // namespace kiva::test
