// What programs say of a wrong source text: a line a fault, as many as there are, in the order of
// the text.

#include "tests/zu/zu_fixture.h"

namespace kiva::test {

namespace {

struct Sink : DiagnosticSink {
  void take(const Diagnostic& diagnostic) override {
    const std::string text = diagnostic.text("");
    size_t begin = 0;
    for (size_t end = text.find('\n'); end != std::string::npos;
         begin = end + 1, end = text.find('\n', begin)) {
      // The file's name is as long as its folder's.
      const size_t colon = text.find("m.zu:", begin);
      lines += text.substr(colon == std::string::npos ? begin : colon + 5, end + 1 - colon - 5);
    }
  }
  std::string lines;
};

/// All that is told of the text, without the file's name.
std::string faults(const std::string& text) {
  Session session;
  const Session::Use use(session);
  Sink sink;
  session.set_sink(&sink);
  session.options.FaultsGathered = session.options.SourceChecked = true;
  const TempDir dir;
  const std::string file = dir.write("m.zu", text);
  const Outcome outcome = run_captured([&] {
    try {
      Compilation::zu_parse(file.c_str());
    } catch (const FatalDiagnostic& fatal) {
      EXPECT_EQ(fatal.diagnostic().sentence, "") << text;
    }
  });
  EXPECT_EQ(outcome.out + outcome.err, "") << text;
  EXPECT_FALSE(outcome.ended) << text;
  return sink.lines;
}

const std::string head = "module m: Input: a, alarm; Output: o; Local: l;\n";

struct Case {
  std::string text;
  std::string lines;
};

TEST(ZuFaults, OfSyntax) {
  const Case cases[] = {
      {head + "emit o\nemit l end",
       "3:1: error: expected \">>\", \"||\" or \"end\" after \"emit o\"\n"},
      {head + "emit o; pause end",
       "2:7: error: statements are joined by \">>\" or \"||\", not by \";\"\n"},
      {head + "emti o >> pause end",
       "2:1: error: expected a statement or \"end\" after \";\"; did you mean \"emit\"?\n"},
      {head + "abort { pause } when a end",
       "2:1: error: an abort is \"weak abort\" or \"strong abort\"\n"},
      {head + "weak abort { pause } a >> emit q end",
       "2:22: error: expected \"when\" after \"}\"\n2:27: error: \"q\" is not declared\n"},
      {head + "loop emit o >> pause end", "2:6: error: expected \"{\" after \"loop\"\n"},
      {head + "present a and or l emit o >> wait (a >> wait a == l end",
       "2:15: error: expected a condition after \"and\"\n"
       "2:38: error: expected \")\" after \"a\"\n"
       "2:48: error: expected \">>\", \"||\" or \"end\" after \"wait a\"\n"},
      {head + "loop { emit o >> pause\nend\nmodule n: emit x end",
       "3:1: error: expected \"}\" before \"end\"\n2:6: note: \"{\" stands here\n"
       "4:11: error: \"x\" is not declared\n"},
      {head + "emit o\nmodule n: Output: p; emit q end",
       "3:1: error: expected \"end\" before \"module\"\n3:22: error: \"q\" is not declared\n"},
      {head + "emit o", "2:7: error: expected \"end\" before the end of the text\n"},
      {"module m: Input: wait, b; end",
       "1:18: error: \"wait\" is a word of the language and cannot be a name\n"},
      {"module m:\nOutput: o; Input: a;\npresent a emit o end",
       "2:12: error: \"Input:\" comes too late: the order is Input:, Output:, Local:, Run:, each "
       "once\n"},
      {"module m: Input: a b; Output: o,; emit >> pause end",
       "1:20: error: expected \",\" or \";\" after \"Input: a\"\n"
       "1:33: error: expected a name after \",\"\n"
       "1:40: error: expected a name after \"emit\"\n"},
      {"module m: Input: a; Output: o;\nautomaton state: s run;\nstate s;\ntransition:\n"
       "initial-> s;\ns [a s;\ns [a] -> t /o;\nend\nmodule n: emit zz end",
       "2:23: error: expected a name after \"run\"\n"
       "3:1: error: expected \"state:\" or \"transition:\" after \";\"; did you mean \"state:\"?\n"
       "6:6: error: expected \"]\" after \"a\"\n7:12: error: expected \";\" after \"t\"\n"
       "9:11: error: \"zz\" is not declared\n"},
      {"module m: Input: a; Output: o, p; Mealy Machine o = a and; p = zz or 3; a = o; end",
       "1:58: error: expected an expression after \"and\"\n1:64: error: \"zz\" is not declared\n"
       "1:70: error: the constants of an equation are 0 and 1, not 3\n"
       "1:73: error: \"a\" is an input and cannot be emitted\n"},
      {"module m: Input: a b\nOutput: o; wait b and c >> emit o end",
       "1:20: error: expected \",\" or \";\" after \"Input: a\"\n"
       "2:23: error: \"c\" is not declared\n"},
      {"module m: Inputs: a; Output: o; wait a >> emit o >> emit p end",
       "1:11: error: expected a statement or \"end\" after \":\"; did you mean \"Input:\"?\n"
       "1:53: error: \"p\" is not declared\n"},
      {"data: Type: int; Constant: int 1; real 2;\nmodule m: end",
       "1:35: error: type \"real\" is not declared\n"
       "2:1: error: expected \"end data\" before \"module\"\n"},
      {"hello\nmodule m: emit q end",
       "1:1: error: expected \"module\" or \"data:\"\n2:11: error: \"q\" is not declared\n"},
      {"module m\nend", "2:1: error: expected \":\" after \"module m\"\n"},
      {"", "1:1: error: expected \"module\" or \"data:\", and the text ends here\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(faults(c.text), c.lines) << c.text;
}

TEST(ZuFaults, OfCharacters) {
  const Case cases[] = {
      {"module m: Run: \"d: n; end",
       "1:16: error: the text in quotes that begins here does not end\n"},
      {"module m: Input: a$; end", "1:19: error: \"$\" is no character of the language\n"},
      {"module m: Input: \xC3\xA9; end",
       "1:18: error: a character other than ASCII stands in quotes or comments only\n"},
      {"module m: emit _x end", "1:16: error: a name begins with a letter, not with \"_\"\n"},
      {std::string("module m: \0 end", 15),
       "1:11: error: a NUL byte cannot stand in source text\n"},
      {"module m:\r end",
       "1:10: error: a carriage return cannot stand here; lines end with a newline alone\n"},
      {"module m: end ;; the end", "1:15: error: a comment needs a newline at its end\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(faults(c.text), c.lines) << c.text;
}

TEST(ZuFaults, OfNamesAndNumbers) {
  const Case cases[] = {
      {head + "present alram emit oo >> emit alarm >> wait foo end",
       "2:9: error: \"alram\" is not declared; did you mean \"alarm\"?\n"
       "2:15: error: \"oo\" is not declared; did you mean \"o\"?\n"
       "2:26: error: \"alarm\" is an input and cannot be emitted\n"
       "2:45: error: \"foo\" is not declared\n"},
      {head + "repeat 0 { pause } >> wait 0 a end",
       "2:1: error: repeat wants a number of 1 or more, not 0\n"
       "2:23: error: wait wants a number of 1 or more, not 0\n"},
      {head + "if a > 3 emit o end",
       "2:4: error: constant \"a\" is not declared; the value of the signal is #a\n"
       "2:8: error: the literal 3 is not declared under Constant:\n"},
      {"module m: end\nmodule m: end",
       "2:8: error: two modules have the name \"m\"\n1:8: note: the other one stands here\n"},
      {"data: Type: int, int; Method: int f(); int f(int); Constant: int 1; int 1; end data\n"
       "module m: Run: \"d\": n; \"e\": n; automaton state: s; state: s; transition: initial-> s; "
       "end",
       "1:18: error: \"int\" is declared twice\n1:13: note: first declared here\n"
       "1:40: error: \"f\" is declared twice\n1:31: note: first declared here\n"
       "1:69: error: \"1\" is declared twice\n1:62: note: first declared here\n"
       "2:24: error: the place of module \"n\" is declared twice\n2:16: note: first declared here\n"
       "2:52: error: two states have the name \"s\"\n2:42: note: the other one stands here\n"},
      {head + "repeat 100000000 { pause } end",
       "2:1: error: too many copies of one statement: 100000000\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(faults(c.text), c.lines) << c.text;
}

TEST(ZuFaults, OfTypes) {
  const std::string data =
      "data: Type: int, bool; Method: int add(int, int); bool big(int); Constant: int 1; bool on; "
      "end data\nmodule m: Input: a, v: int; Output: o: int, p, b: bool;\n";
  const Case cases[] = {
      {data +
           "emit b(#v > 1) >> wait a >> emit b(big(#v) and not on) >> emit o(add(#v, 1) * #v) >>\n"
           "if on and (#v == 1) emit p end",
       ""},
      {data + "emit o >> emit p(1) >> emit o(on) >> sustain o until a end",
       "3:1: error: \"o\" is of type int and needs a value: o(...)\n"
       "3:11: error: \"p\" carries no value: it is declared without a type\n"
       "3:31: error: \"o\" is of type int, and \"on\" is of type bool\n"
       "3:38: error: \"o\" is of type int and needs a value: o(...)\n"},
      {data + "emit o(#o + 1) >> emit b(#v) >> emit o(#v > 1) >> emit o(#a) end",
       "3:1: error: the value of \"o\" cannot be made of #o in the same instant\n"
       "3:26: error: \"b\" is of type bool, and \"#v\" is of type int\n"
       "3:40: error: \"o\" is of type int, and \"#v > 1\" is a condition\n"
       "3:58: error: \"a\" carries no value: it is declared without a type\n"},
      {data + "if #v emit p >> if (#v + on) == 1 emit p >> if on and #v emit p >> emit o(add(1)) "
              ">> emit o(add(1, "
              "on)) end",
       "3:4: error: \"if\" takes a condition, and \"#v\" is of type int\n"
       "3:21: error: \"+\" takes two values of one type: \"#v\" is of type int, \"on\" is of type "
       "bool\n"
       "3:55: error: \"and\" takes a condition, and \"#v\" is of type int\n"
       "3:75: error: \"add\" takes 2 arguments, not 1\n"
       "3:100: error: argument 2 of \"add\" is of type int, and \"on\" is of type bool\n"},
      {data + "automaton state: s /o; state: t /p(1); transition: initial-> s; s [value: #v] -> t; "
              "end",
       "3:21: error: \"o\" is of type int and needs a value: o(...)\n"
       "3:34: error: \"p\" carries no value: it is declared without a type\n"
       "3:75: error: \"value:\" takes a condition, and \"#v\" is of type int\n"},
      {data + "Mealy Machine o = a; p(1) = a; end",
       "3:15: error: \"o\" is of type int and needs a value: o(...)\n"
       "3:22: error: \"p\" carries no value: it is declared without a type\n"},
      {"data: Type: int; Method: int f(foo); end data\nmodule m: Input: v: itn; Output: o: int; "
       "emit o(f(#v)) end",
       "1:26: error: type \"foo\" is not declared\n"
       "2:18: error: type \"itn\" is not declared; did you mean \"int\"?\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(faults(c.text), c.lines) << c.text;
}

TEST(ZuFaults, OfDoubtfulPlaces) {
  const std::string locals = "module m: Input: a, b; Output: o, p; Local: l, k, j;\n";
  const std::string machines = "module m: Input: a; Output: o;\n";
  const Case cases[] = {
      {locals + "present TT emit o >> present a and not a emit l >> present k pause >> halt >> "
                "emit o end",
       "1:21: warning: \"b\" is an input that nothing reads\n"
       "1:35: warning: \"p\" is an output that nothing emits\n"
       "1:45: warning: \"l\" is a local that nothing reads\n"
       "1:48: warning: \"k\" is a local that nothing emits\n"
       "1:51: warning: \"j\" is a local that nothing emits or reads\n"
       "2:1: warning: the condition of this present is always present\n"
       "2:22: warning: the condition of this present is always absent\n"
       "2:79: warning: this is never reached: what stands before it never ends\n"},
      {machines +
           "automaton state: initial; state: t; transition: initial [a] -> t; t /o -> u; end",
       "2:1: warning: the automaton has no initial-> transition and never begins\n"
       "2:11: warning: this is a state like others; the beginning is written initial->\n"
       "2:67: warning: state \"u\" is declared nowhere\n"},
      {machines + "automaton state: t; transition: initial -> t; t [a] /o t; end",
       "2:1: warning: the automaton has no initial-> transition and never begins\n"
       "2:33: warning: state \"initial\" is declared nowhere; the beginning is written initial->, "
       "without a blank\n"},
      {machines + "automaton state: s; state: t; transition: initial-> s; s [a] /o s; end",
       "2:21: warning: no transition leads to state \"t\" from the initial one\n"},
      {machines + "Mealy Machine Register: r: 0: n; o = a and r; o = a; end",
       "2:1: error: no equation gives \"n\", the next of register \"r\"\n"
       "2:34: warning: a later equation replaces this one of \"o\"\n"},
      {"module x: Output: o; emit o end\nmodule y: Output: o; emit o end\n"
       "module z: Output: o; run y end",
       "1:8: warning: module \"x\" is not reached from \"z\", the last of the file\n"},
      {"module m: Input: a; Local: l; run elsewhere end", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(faults(c.text), c.lines) << c.text;
}

/// Emissions that meet surely and differ; `columns` of the earlier and of the later, from line 3.
TEST(ZuFaults, OfValuesThatMeet) {
  const std::string text =
      "data: Type: int; Constant: int 1; int 2; end data\n"
      "module m: Input: a, b; Output: o: int;\n";
  const struct {
    const char* body;
    int earlier, later;  ///< columns; 0 for none
    bool always = true;
  } cases[] = {
      {"emit o(1) >> emit o(2)", 1, 14},
      {"emit o(1) || emit o(2)", 1, 14},
      {"emit o(1) || emit o(1)", 0, 0},
      {"pause >> emit o(1) || pause >> emit o(2)", 10, 32},
      {"pause >> emit o(1) || pause >> pause >> emit o(2)", 0, 0},
      {"{ wait a >> emit o(1) } || { wait a >> emit o(2) }", 13, 40},
      {"{ wait a >> emit o(1) } || { wait b >> emit o(2) }", 0, 0},
      {"present a emit o(1) else emit o(2)", 0, 0},
      {"{ present a emit o(1) } >> emit o(2)", 13, 28},
      {"emit o(1) >> present a emit o(2)", 0, 0},
      {"emit o(1) || { present a emit o(2) }", 1, 26, false},
      {"{ present a emit o(1) } || { present not a emit o(2) }", 0, 0},
      {"weak abort { emit o(1) >> pause >> emit o(2) } when a || { emit o(2) >> pause }", 14, 60},
      {"weak abort { pause >> emit o(1) } when a || { pause >> emit o(2) }", 0, 0},
      {"loop { emit o(1) >> pause >> emit o(2) }", 8, 30},
      {"{ sustain o(1) until a } || pause >> emit o(2)", 0, 0},
  };
  for (const auto& c : cases) {
    const std::string told = c.always ? "it is emitted again in the same instant"
                                      : "in an instant in which it is emitted again";
    EXPECT_EQ(faults(text + "present a or b nothing >>\n{ " + c.body + " } end"),
              c.earlier == 0
                  ? ""
                  : "4:" + std::to_string(c.earlier + 2) +
                        ": warning: the value of \"o\" does not count" + (c.always ? ": " : " ") +
                        told + "\n4:" + std::to_string(c.later + 2) + ": note: here\n")
        << c.body;
  }
}

TEST(ZuFaults, AreToldUpToABound) {
  std::string text = "module m: ";
  for (int i = 0; i < 100; ++i) text += "emit q" + std::to_string(i) + " >> ";
  const std::string lines = faults(text + "pause end");
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), class_zu_parser::most_faults);
}

}  // namespace

}  // namespace kiva::test
