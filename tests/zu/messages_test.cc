// What is said of a text that is not accepted, and where.

#include <filesystem>

#include "forms/forms.h"
#include "tests/zu/zu_fixture.h"

namespace kiva::test {

namespace {

using ZuMessages = ZuReading;

const std::string head = "module m: Input: a; Output: x; Local: l;\n";

TEST_F(ZuMessages, Exceptions) {
  struct Case {
    const char* text;  ///< after the head, from line 2 on
    const char* exception;
    const char* at;
  };
  const Case cases[] = {
      {"wait 0 a end", "BadValueNumberWaitException: is a bad number for wait 0", "2:1"},
      {"pause >>\n repeat 0 {\n pause } end",
       "IllegalOperationException: is a bad number for repeat 0", "3:2"},
      {"emit a end", "StatementSignalException: a", "2:1"},
      {"pause >> emit q end", "StatementSignalException: q", "2:10"},
      {"noemit a end", "StatementSignalException: a", "2:1"},
      {"sustain a until x end", "StatementSignalException: a", "2:1"},
      {"wait a or q end", "ModuleUnknownSignalException: q", "2:11"},
      {"present #a pause end", "", ""},
      {"if #q pause end", "ModuleUnknownSignalException: q", "2:4"},
      {"if #a pause end", "UndefinedTypeException: a", "2:1"},
      {"if c pause end", "ModuleUndefinedConstantException: c m", "2:4"},
      {"if f(x) pause end", "ModuleUndefinedConstantException: x m", "2:6"},
      {"if f() pause end", "UndefinedMethodException: f", "2:4"},
      {"run s[q \\ f] end", "RunUnknownSignalException: undeclared q", "2:7"},
      {"run s[a \\ f, x \\ f] end", "HashTableAddException: f", "2:1"},
      {"Run: \"d\": n; \"e\": n; end", "IllegalOperationException: Run module already exists:  n",
       "2:14"},
      {"automaton state: s /a; transition: initial-> s; end", "ModuleUnknownSignalException: a",
       "2:21"},
      {"automaton state: s; transition: initial-> /x, q s; end", "ModuleUnknownSignalException: q",
       "2:47"},
      {"automaton state: s; transition: s [q] s; end", "ModuleUnknownSignalException: q", "2:36"},
      {"Mealy Machine x = q; end", "StatementSignalException: q", "2:19"},
      {"Mealy Machine a = x; end", "StatementSignalException: a", "2:15"},
      {"Mealy Machine x = a and 2; end",
       "StatementSignalException:  constant right part is not a Boolean value", "2:25"},
      {"end module m: end", "HashTableAddException: m", "2:13"},
  };
  for (const Case& c : cases) {
    read(head + c.text);
    EXPECT_EQ(thrown, c.exception) << c.text;
    EXPECT_EQ(thrown_at, *c.at == '\0' ? "" : file + ":" + c.at) << c.text;
  }
}

TEST_F(ZuMessages, ExceptionsOfTheDataPart) {
  const std::pair<const char*, const char*> cases[] = {
      {"Method: int f();", "UndefinedTypeException: int"},
      {"Type: int; Method: bool f();", "UndefinedTypeException: bool"},
      {"Type: int; Constant: bool c;", "UndefinedTypeException: bool"},
      {"Type: int; Constant: bool 1;", "UndefinedTypeException: bool"},
      {"Type: int; Constant: int c; int c;", "AlreadyDefinedException: c constant"},
      {"Type: int; Method: int f(); int f(int);",
       "AlreadyDefinedException: f overloading_of_method_not_yet_implemented"},
      {"Type: int; Constant: int c := d;", "ModuleUndefinedConstantException: d"},
      {"Type: int; Constant: int c := 1 + 2;", "ModuleUndefinedConstantException: C__1"},
      // No module has begun, so there are no signals.
      {"Type: int; Constant: int c := #s;", "ModuleUnknownSignalException: s"},
  };
  for (const auto& [text, exception] : cases) {
    Session session;
    const Session::Use use(session);
    read(std::string("data: ") + text + " end data module m: end");
    EXPECT_EQ(thrown, exception) << text;
    EXPECT_TRUE(thrown_at.starts_with(file + ":1:")) << text;
  }
}

// Each ends the process with the told text, and behind it where.
TEST_F(ZuMessages, FatalMessages) {
  struct Case {
    std::string text;
    std::string message;
    std::string where;
  };
  const std::string aborted = "\n\nAbortion ...";
  const Case cases[] = {
      {head + "emit x emit l end", "SYNTAX ERROR at line 2: last token read: \"emit\"\n\n",
       ":2:8: not expected here\nemit x emit l end\n       ^~~~\n"},
      {head + "emit x", "SYNTAX ERROR at line 2: last token read: \"\"\n\n",
       ":2:7: the text ends here\nemit x\n      ^\n"},
      {head + "automaton\nstate: s;\n state: s; transition: initial-> s; end",
       "ERROR: two states or more have the same name: s" + aborted,
       ":4:2: in this text\n state: s; transition: initial-> s; end\n ^~~~~~~~~\n"},
      {head + "if 1.5 pause end", "PARSE ERROR: empty constant table detected: C__1.5" + aborted,
       ":2:4: in this text\nif 1.5 pause end\n   ^~~\n"},
  };
  for (const Case& c : cases) {
    read(c.text);
    EXPECT_TRUE(outcome.ended) << c.text;
    EXPECT_EQ(outcome.exit_status, 1) << c.text;
    EXPECT_EQ(outcome.err, c.message + "\n" + file + c.where) << c.text;
    EXPECT_EQ(thrown, "");
  }
}

TEST_F(ZuMessages, ASyntaxErrorAtEachKindOfToken) {
  const std::string two_words = "module m: end  data";
  const struct {
    std::string text;
    const char* token;
    const char* mark;  ///< under the shown line
  } cases[] = {
      {"", "", "^"},
      {"modul m: end", "modul", "^~~~~"},
      {two_words, "data", "               ^~~~"},
      {"module m: strong -> s end", "->", "                 ^~"},
      {"module m: wait a", "a", "               ^"},
      {"module m: Output: _x; end", "_", "                  ^"},
      {"module m: end ;; no comment", ";", "              ^"},
      {"module m: Run: \"d: n; end", "\"", "               ^"},
      {"module m:\tpause pause end", "pause", "         \t      ^~~~~"},
      {"module m: Output: \xC3\xA9; end", "\xC3", "                  ^"},
  };
  for (const auto& c : cases) {
    read(c.text);
    if (std::string(c.token) == "a") {  // unknown, not a fault of syntax
      EXPECT_EQ(thrown, "ModuleUnknownSignalException: a");
      continue;
    }
    EXPECT_TRUE(outcome.ended) << c.text;
    EXPECT_TRUE(outcome.err.starts_with("SYNTAX ERROR at line 1: last token read: \"" +
                                        std::string(c.token) + "\"\n\n"))
        << c.text << '\n'
        << outcome.err;
    const size_t last_line = outcome.err.rfind('\n', outcome.err.size() - 2);
    EXPECT_EQ(outcome.err.substr(last_line + 1), std::string(c.mark) + "\n") << c.text;
  }
}

TEST_F(ZuMessages, OperandsOfTwoTypes) {
  read(
      "data: Type: int, bool; Constant: int i; bool b; end data\n"
      "module m:\n  if i == i + b pause end");
  EXPECT_TRUE(outcome.ended);
  EXPECT_TRUE(outcome.err.starts_with(file + ":3:3: a data expression of two types\n"))
      << outcome.err;
  EXPECT_NE(outcome.err.find("*** Type check error in binary operator: "), std::string::npos);
}

TEST_F(ZuMessages, FilesThatCannotBeRead) {
  for (const std::string& path : {dir.file("none.zu"), dir.path().string()}) {
    const Outcome failed = run_captured([&] { Compilation::zu_parse(path.c_str()); });
    EXPECT_TRUE(failed.ended);
    EXPECT_EQ(failed.exit_status, 1);
    EXPECT_TRUE(failed.err.starts_with("Can not open input file:\n" + path)) << failed.err;
  }
}

TEST_F(ZuMessages, TheWindowShowsTheToldTextAlone) {
  struct Recorder : message_presenter {
    std::string shown;
    void alert(const std::string& text) override { shown += text; }
    void message(const std::string&) override {}
    void big_message(const std::string&, int) override {}
    void display(const std::string&, const std::string&, int) override {}
  } recorder;
  message_presenter* before = set_message_presenter(&recorder);
  read("module m end");
  set_message_presenter(before);
  EXPECT_EQ(recorder.shown, "SYNTAX ERROR at line 1: last token read: \"end\"\n\n");
}

// A read that failed leaves nothing behind that a next one could meet.
TEST_F(ZuMessages, ReadingGoesOnAfterAFailure) {
  for (const char* text : {"module q: emit x end", "module q: { {", "module q: Input: a,; end"}) {
    read(text);
    EXPECT_TRUE(outcome.ended || !thrown.empty()) << text;
  }
  EXPECT_EQ(Compilation::ModTable()->get("q"), nullptr);
  EXPECT_EQ(tree("emit x >> wait a"), "Sn(emit x, wait a)");
}

}  // namespace

}  // namespace kiva::test
