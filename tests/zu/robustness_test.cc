// Texts that are strange, large or deep.

#include <algorithm>
#include <random>
#include <sstream>
#include <vector>

#include "tarn/model/expression.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statements/wait.h"
#include "tests/zu/zu_fixture.h"

namespace kiva::test {

namespace {

using namespace std::string_literals;
using ZuRobustness = ZuReading;

std::string repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

TEST_F(ZuRobustness, LexicalEdges) {
  EXPECT_EQ(tree("emit x ;; comment; emit y\n"), "emit x");
  EXPECT_EQ(tree("emit x;;comment\n>>;;\n\nemit y"), "Sn(emit x, emit y)");
  EXPECT_EQ(tree("emit\nx>>emit\ty"), "Sn(emit x, emit y)");
  EXPECT_EQ(tree("wait a|b&c"), "wait (a+(b*c))");
  // Longer words are names.
  module("module m: Input: FFa, module1, end_, nothing2; wait FFa >> wait end_ end");
  // A newline in a string and in a comment counts.
  read("module m: Run: \"a\nb\": n; ;; c\n pause\npause end");
  EXPECT_TRUE(outcome.err.starts_with("SYNTAX ERROR at line 4: last token read: \"pause\""));
}

TEST_F(ZuRobustness, Numbers) {
  read("data: Type: int; Constant: int 1; int 1.; int -1.5; int 007; end data module none: end");
  ASSERT_EQ(thrown + outcome.err, "");
  EXPECT_EQ(tree("if 1 - 1. == -1.5 - 007 halt"), "present IData_mIF_00(halt)");
  read("module m: Output: x; emit x(1e5) end");  // 1 and a name
  EXPECT_TRUE(outcome.err.starts_with("SYNTAX ERROR at line 1: last token read: \"e5\""));
  read("module m: Output: x; emit x(.5) end");
  EXPECT_TRUE(outcome.err.starts_with("SYNTAX ERROR at line 1: last token read: \".\""));
}

TEST_F(ZuRobustness, NoFinalNewline) {
  EXPECT_EQ(tree_text(module("module m: end")->getStatement()), "nothing");
}

TEST_F(ZuRobustness, StrangeBytes) {
  const std::pair<std::string, const char*> cases[] = {
      {"module m:\n pause\0 end"s, ":2:7: a NUL byte\n pause? end\n      ^\n"},
      {"module m:\r\nend\r\n", ":1:10: a carriage return; lines end with a newline alone\n"},
      {"module m:\n \xFF end", ":2:2: not expected here\n"},
  };
  for (const auto& [text, where] : cases) {
    read(text);
    EXPECT_TRUE(outcome.ended) << where;
    EXPECT_NE(outcome.err.find(file + where), std::string::npos) << outcome.err;
  }
  EXPECT_EQ(tree(";; any \r\0 byte \xFF\n halt"s), "halt");
}

TEST_F(ZuRobustness, ALongLineIsShownAroundItsMark) {
  read("module m: " + repeated("pause >> ", 100000) + "pause pause" + repeated(" ", 1000) + "end");
  EXPECT_TRUE(outcome.ended);
  EXPECT_LT(outcome.err.size(), 600u);
  EXPECT_NE(outcome.err.find("pause >> pause pause"), std::string::npos);
}

TEST_F(ZuRobustness, NestedTooDeep) {
  const int deep = 10000;
  const struct {
    std::string text;
    const char* error;  ///< on the error stream, or of the exception
  } cases[] = {
      {repeated("{", deep) + "pause" + repeated("}", deep), "nested too deeply"},
      {repeated("loop {", deep) + "pause" + repeated("}", deep), "nested too deeply"},
      {repeated("weak abort { ", 3000) + "pause" + repeated("} when a", 3000),
       "statements nested deeper"},
      {repeated("present a ", deep) + "pause", "nested too deeply"},
      {repeated("present a ", 3000) + "pause", "statements nested deeper"},
      {repeated("present a pause else ", 2200) + "pause", "statements nested deeper"},
      {repeated("{", 3000) + "pause" + repeated("|| pause } >> pause", 3000),
       "statements nested deeper"},
      // Each level copies what stands below it.
      {repeated("repeat 1 {", 3000) + "pause" + repeated("}", 3000), "too many copies"},
      {"wait " + repeated("(", deep) + "a" + repeated(")", deep), "nested too deeply"},
      {"wait " + repeated("not ", 3000) + "a", "expressions nested deeper"},
      {"wait a" + repeated(" or a", deep), "expressions nested deeper"},
      {"if " + repeated("- ", 3000) + "p pause", "expressions nested deeper"},
      {"if p" + repeated(" + p", deep) + " pause", "expressions nested deeper"},
      {"if " + repeated("f(", 3000) + "p" + repeated(")", 3000) + " pause",
       "expressions nested deeper"},
      {"Mealy Machine x = a" + repeated(" xor a", deep) + ";", "expressions nested deeper"},
  };
  read("data: Type: int; Method: int f(int); Constant: int p; end data module none: end");
  for (const auto& c : cases) {
    read("module m: Input: a; Output: x; " + c.text + " end");
    EXPECT_TRUE(outcome.ended || !thrown_at.empty()) << c.text.substr(0, 50);
    EXPECT_NE((outcome.err + thrown).find(c.error), std::string::npos)
        << c.text.substr(0, 50) << '\n'
        << outcome.err << thrown;
  }
}

TEST_F(ZuRobustness, AsDeepAsAllowed) {
  const int deep = class_zu_parser::most_nested - 1;
  EXPECT_NE(body(repeated("loop {", deep) + "pause" + repeated("}", deep)), nullptr);
  EXPECT_EQ(tree("wait a" + repeated(" or a", deep)).size(), 6u + 4u * static_cast<size_t>(deep));
  // What follows on one level does not nest.
  EXPECT_NE(body(repeated("present a pause >> ", 20000) + "pause"), nullptr);
}

// Every "not" asks for both rails of its operand, every "xor" twice.
TEST_F(ZuRobustness, DeepExpressionsHaveFunctions) {
  const int nots = class_zu_parser::most_nested - 1;  // an odd number
  const auto* wait = dynamic_cast<Wait*>(body("wait " + repeated("not ", nots) + "a"));
  ASSERT_NE(wait, nullptr);
  Module* m = TheModule();
  Expression* a = m->getSignal("a");
  Bddexpressionwood* wood = m->getBddWood();
  const bdd s = a->getBddStatus(m, wood);
  const bdd v = a->getBddValue(m, wood);
  // Present turns absent and back; a contradiction stays one.
  EXPECT_EQ(wait->getExpression()->getBddStatus(m, wood), wood->Bdd_or(wood->Bdd_not(s), v));
  EXPECT_EQ(wait->getExpression()->getBddValue(m, wood), s);

  const auto* machine =
      dynamic_cast<MealyMachine*>(body("Mealy Machine x = a" + repeated(" xor a", 600) + ";"));
  ASSERT_NE(machine, nullptr);
  Expression* right = machine->getMachineTable().at("x")->expression;
  m = TheModule();
  wood = m->getBddWood();
  const bdd present = m->getSignal("a")->getBddStatus(m, wood);
  const bdd absent = m->getSignal("a")->getBddValue(m, wood);
  // An even number of changes: on a signal that is present or absent, the signal itself.
  const bdd defined = wood->Bdd_xor(present, absent);
  EXPECT_EQ(wood->Bdd_and(right->getBddStatus(m, wood), defined), wood->Bdd_and(present, defined));
  EXPECT_EQ(wood->Bdd_and(right->getBddValue(m, wood), defined), wood->Bdd_and(absent, defined));
}

TEST_F(ZuRobustness, TooManyCopies) {
  for (const char* text :
       {"wait 2000000000 a", "wait 99999999999999999999 a", "repeat 2000000000 { pause }",
        "repeat 1000 { repeat 1000 { repeat 1000 { pause } } }",
        "wait 150000 a >> wait 150000 a"}) {
    read(std::string("module m: Input: a;") + text + " end");
    EXPECT_TRUE(thrown.starts_with("IllegalOperationException: too many copies")) << text;
    EXPECT_EQ(thrown_at.substr(0, file.size() + 3), file + ":1:") << text;
  }
}

// Whatever stands in a text, reading it ends in modules, an exception or a told end.
TEST_F(ZuRobustness, DamagedTexts) {
  // A blank of a word stands as "_".
  std::istringstream all(R"(
data: Type: int , bool ; Method: int f ( int ) ; Constant: int p := 1 ; int 2.5 ; end_data
module m : Input: a , v : int ; Output: x , o : int ; Run: "d/e" : n ; present a emit x
else { emit o ( f ( # v ) ) || wait 2 not a } >> if 2.5 == p halt >> repeat 2 { run n [ a
\ g ] } >> weak abort { sustain x until a } when ( a or FF ) end module q : Input: a ;
Output: x ; automaton geometry: < 1 , 2.5 > state: s run n / x ; state: t final ;
transition: initial-> s ; s 3 [ a ] / x weak-> t ; end module r : { Input: a ; Output: x ;
Mealy_Machine Register: g : 0 : h ; h = a xor g ; x = abs ( g nand 1 ) ; }
)");
  std::vector<std::string> words;
  for (std::string word; all >> word;) {
    std::replace(word.begin(), word.end(), '_', ' ');
    words.push_back(word);
  }
  const unsigned seed = 20240607;
  std::mt19937 random(seed);
  const auto any = [&random](size_t count) { return random() % count; };
  int accepted = 0;
  for (int round = 0; round < 500; ++round) {
    std::vector<std::string> text = words;
    for (size_t changes = any(4); changes > 0; --changes) {
      const auto at = text.begin() + static_cast<long>(any(text.size()));
      switch (any(3)) {
        case 0:
          text.erase(at);
          break;
        case 1:
          text.insert(at, words[any(words.size())]);
          break;
        default:
          *at = words[any(words.size())];
      }
    }
    std::string joined;
    for (const std::string& word : text) joined += word + (any(20) == 0 ? "\n" : " ");
    Session session;
    const Session::Use use(session);
    read(joined);
    const bool told = outcome.ended && !outcome.err.empty();
    const bool located = thrown_at.starts_with(file + ":");
    if (!told && !located) {
      EXPECT_EQ(thrown + outcome.err, "") << "seed " << seed << ", round " << round << '\n'
                                          << joined;
      EXPECT_FALSE(Compilation::ModTable()->modules().empty()) << joined;
      ++accepted;
    }
  }
  EXPECT_GT(accepted, 100);
}

TEST_F(ZuRobustness, ALargeText) {
  std::string text = "module m: Input: a; Output: x;\n";
  const int lines = 12500;
  text += repeated(
      "  present a and not x emit x else wait 3 a || ;; a remark on this line to fill\n"
      "  strong abort { sustain x until a } when x >>\n",
      lines);
  text += "pause end\n";
  ASSERT_GT(text.size(), 1u << 20);
  const Statement* root = module(text)->getStatement();
  EXPECT_EQ(root->children().size(), static_cast<size_t>(lines) + 1);
  EXPECT_EQ(root->getSpan().last_line, 2 * lines + 2);
}

// Nothing is asked more than once of a text that grows at one place.
TEST_F(ZuRobustness, LongLists) {
  const int many = 100000;
  EXPECT_EQ(body(repeated("pause >> ", many) + "pause")->children().size(), many + 1u);
  EXPECT_EQ(body(repeated("pause || ", many) + "pause")->children().size(), many + 1u);
  read("data: Type: int; Method: int f(int); int a" + repeated(".b", many) +
       "(); Constant: int p; end data module none: end");
  ASSERT_EQ(thrown + outcome.err, "");
  EXPECT_NE(body("if f(p" + repeated(", p", many) + ") halt"), nullptr);
  std::string inputs = "module n: Input: s";
  for (int i = 0; i < 20000; ++i) inputs += ", s" + std::to_string(i);
  EXPECT_EQ(module(inputs + "; end", "n")->getInputSignalList().size(), 20001u);
}

}  // namespace

}  // namespace kiva::test
