// Sessions side by side, one after another, and at their end.

#include "tarn/session/session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <thread>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/process_end.h"
#include "tests/support/setting.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

/// A source file on its way to the texts of its modules, in a session of its own. Other sessions
/// may work between any two steps.
class Work {
 public:
  explicit Work(std::string file, bool sound = true) : file_(std::move(file)) {
    const Session::Use use(session_);
    Compilation::rules() = sound ? Rules::sound() : Rules::classic();
  }
  static constexpr int steps = 4;
  void step(int number) {
    const Session::Use use(session_);
    if (number == 0) Compilation::zu_parse(file_.c_str());
    for (Module* module : Compilation::ModTable()->in_order()) {
      if (number == 1 && module->getSet() == nullptr) module->compile();
      if (number == 2) module->finalize(0);
      if (number == 3) module->ZUC_put(text_, 2, 1, 0);
    }
  }
  std::string run() {
    for (int number = 0; number < steps; ++number) step(number);
    return text();
  }
  std::string text() const { return text_.str(); }

 private:
  Session session_;
  std::string file_;
  std::ostringstream text_;
};

/// Sources of examples, with data and without, and what a session that does nothing else makes of
/// each.
const std::map<std::string, std::string>& texts_alone() {
  static const std::map<std::string, std::string> texts = [] {
    std::map<std::string, std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(KIVA_SOURCE "/examples"))
      if (entry.path().extension() == ".zu")
        found[entry.path().string()] = Work(entry.path().string()).run();
    return found;
  }();
  return texts;
}

TEST(Sessions, WorkByTurns) {
  ASSERT_GT(texts_alone().size(), 10u);
  std::vector<std::unique_ptr<Work>> works;
  for (const auto& [file, text] : texts_alone()) works.push_back(std::make_unique<Work>(file));
  for (int number = 0; number < Work::steps; ++number)
    for (const auto& work : works) work->step(number);
  auto work = works.begin();
  for (const auto& [file, text] : texts_alone()) EXPECT_EQ((*work++)->text(), text) << file;
}

TEST(Sessions, WorkAtOnceInThreads) {
  const auto& alone = texts_alone();
  std::array<std::string, 2> wrong;
  const auto all = [&](std::string& apart, auto from, auto to) {
    for (int round = 0; round < 3; ++round)
      for (auto at = from; at != to; ++at)
        if (Work(at->first).run() != at->second) apart += at->first + "\n";
    // A thread that chooses no session has one of its own.
    Module::OutputDir() = "of this thread";
    const Module module("m");
    if (Module::PauseNumber()++ != 0) apart += "a counter\n";
  };
  std::thread forwards([&] { all(wrong[0], alone.begin(), alone.end()); });
  std::thread backwards([&] { all(wrong[1], alone.rbegin(), alone.rend()); });
  forwards.join();
  backwards.join();
  EXPECT_EQ(wrong[0] + wrong[1], "");
  EXPECT_EQ(Module::OutputDir(), ".");
}

TEST(Sessions, UseComesBack) {
  Session& outside = Session::current();
  Session first, second;
  {
    const Session::Use use_first(first);
    Module::OutputFile() = "first";
    {
      const Session::Use use_second(second);
      EXPECT_EQ(Module::OutputFile(), "");
    }
    EXPECT_EQ(&Session::current(), &first);
  }
  EXPECT_EQ(&Session::current(), &outside);
}

/// Bytes that the program holds; 0 where the allocator does not tell.
size_t held() {
  return mallinfo2().uordblks;
}

/// A program that no other is like, of some size.
std::string program(int number) {
  std::string text = "module m" + std::to_string(number) + ": Input: i; Output: o; loop {";
  for (int part = 0; part < 30; ++part)
    text += "weak abort { wait " + std::to_string(2 + (number + part) % 4) +
            " i >> emit o } when o >> ";
  return text + "pause } end";
}

TEST(Sessions, TheEndGivesAllBack) {
  const TempDir dir;
  const auto work = [&dir](int from, int to) {
    for (int number = from; number < to; ++number) {
      Compilation::zu_parse(dir.write("m.zu", program(number)).c_str());
      Compilation::ModTable()->in_order().back()->compile();
    }
  };
  const auto at_end = [&](int from, int to) {
    Session session;
    const Session::Use use(session);
    work(from, to);
    return held();
  };
  at_end(0, 1);  // what the first one makes for good
  const size_t before = held();
  const size_t ten = at_end(0, 10);
  size_t most = 0;
  for (int number = 0; number < setting("KIVA_SESSIONS", 200); ++number)
    most = std::max(most, at_end(number, number + 1));
  if (before == 0) GTEST_SKIP() << "the allocator does not tell";
  EXPECT_LT(most, ten);
  constexpr size_t slack = 64 << 10;
  EXPECT_LT(held(), before + slack);
}

/// What interrupts a compilation leaves branches and functions behind.
TEST(Sessions, AnInterruptedCompilationGoesToo) {
  const TempDir dir;
  const std::string file = dir.write(
      "m.zu",
      "module m: Input: i, j; Output: o; present i { strong abort { emit o >> present j emit o "
      "else run nobody } when j } else { emit o || { pause >> loop { run nobody } } } end");
  for (const bool deleted : {false, true}) {
    Session session;
    const Session::Use use(session);
    Compilation::rules() = Rules::sound();
    const Outcome outcome = run_captured([&] {
      Compilation::zu_parse(file.c_str());
      Module* module = Compilation::ModTable()->get("m");
      EXPECT_THROW(module->compile(), IllegalOperationException);
      if (deleted) delete module;
    });
    EXPECT_FALSE(outcome.ended) << outcome.err;
  }
}

// Diagnostics.

class Recorder : public DiagnosticSink {
 public:
  void take(const Diagnostic& diagnostic) override { taken.push_back(diagnostic); }
  std::vector<Diagnostic> taken;
};

TEST(Diagnostics, EndTheWorkByOneExceptionWhereThereIsASink) {
  const TempDir dir;
  struct Case {
    const char* source;
    const char* place;
    const char* sentence;
  };
  for (const Case& c :
       {Case{"module m: Output: o; emit\n end", ":2:2",
             "syntax error at \"end\": not expected here"},
        Case{"module m: Output: o; emit", ":1:26", "syntax error at \"\": the text ends here"},
        Case{"module m: Output: o, p;\n present o emit p || present p emit o end", ":2:12",
             "\"o\" depends on itself in one instant: o -> p -> o"},
        Case{"module m: Output: o;\nautomaton state: s; state: e final; transition: initial-> s; s "
             "[o] e; e [o] s; end",
             ":2:", "no transition can leave the final state \"e\""},
        Case{"module: m 0 1 connexion: S R T; equation_def: 0 expressions: end:\n"
             "binding: (7, 8): value: 0; end:\nevaltable: 0: $0; end:",
             ":3", "unknown data signal:7"}}) {
    const std::string file = dir.write("m.zu", c.source);
    const auto work = [&] {
      if (std::string(c.source).starts_with("module:")) (void)read_zuc_file(file, "", "");
      Compilation::zu_parse(file.c_str());
      Compilation::ModTable()->get("m")->compile();
    };
    Session told;
    const Session::Use use_told(told);
    const Outcome ended = run_captured(work);
    EXPECT_TRUE(ended.ended);

    Session session;
    const Session::Use use(session);
    Recorder sink;
    session.set_sink(&sink);
    const Outcome outcome = run_captured([&] {
      try {
        work();
        ADD_FAILURE() << c.source;
      } catch (const FatalDiagnostic& fatal) {
        EXPECT_THAT(fatal.diagnostic().where.text(), testing::StartsWith(file + c.place));
        EXPECT_THAT(fatal.diagnostic().sentence, testing::StartsWith(c.sentence));
        EXPECT_EQ(fatal.diagnostic().severity, Severity::error);
      }
    });
    EXPECT_FALSE(outcome.ended);
    EXPECT_EQ(outcome.err, ended.err);  // the told text is the same
    EXPECT_TRUE(sink.taken.empty());
  }
}

TEST(Diagnostics, AreLinesForPrograms) {
  Diagnostic diagnostic = Diagnostic::of_told("\nno good: \nmore", Manner::untold);
  EXPECT_EQ(diagnostic.text("tarn"), "tarn: error: no good\n");
  diagnostic.severity = Severity::warning;
  diagnostic.where = {"a.zu", 3, 5, 3, 9};
  Diagnostic::Note& note = diagnostic.notes.emplace_back();
  note.where = {"b.zu", 1, 0, 1, 0};
  note.sentence = "from here";
  EXPECT_EQ(diagnostic.text("tarn"), "a.zu:3:5: warning: no good\nb.zu:1: note: from here\n");

  Session session;
  const Session::Use use(session);
  Recorder sink;
  session.set_sink(&sink);
  const Outcome outcome = run_captured([] {
    report("careful", Manner::message, Severity::warning);
    told_text() << "said";
  });
  EXPECT_EQ(outcome.err, "careful\n");
  EXPECT_EQ(outcome.out, "said");
  ASSERT_EQ(sink.taken.size(), 1u);
  EXPECT_EQ(sink.taken[0].sentence, "careful");
}

}  // namespace
}  // namespace kiva::test
