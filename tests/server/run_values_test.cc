// Values through runs: a program in one piece, cut into modules, and over modules that have been
// compiled before shows the same values.

#include <gmock/gmock.h>

#include <utility>

#include "engine/simulation.h"
#include "tarn/model/compilation.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/server/fake_server.h"
#include "tests/support/process_end.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

/// Adds and compares ints; nothing comes of no value.
std::optional<std::string> reckon(const std::string& request) {
  const size_t op = request.find(",int, "), right = request.find(" ,"), end = request.rfind(",int");
  const std::string a = request.substr(4, op - 4);
  const std::string b = request.substr(right + 2, end - right - 2);
  if (a == "--" || b == "--") return "--";
  if (request.find(" == ") != std::string::npos) return a == b ? "true" : "false";
  return std::to_string(std::stoi(a) + std::stoi(b));
}

const char* const data = "data: Type: int; Constant: int 1; int 2; end data\n";
const char* const parts[] = {
    "module src: Output: v : int; emit v(1) >> pause >> emit v(2) end\n",
    "module twice: Input: i : int; Output: v : int;\n"
    "loop { present i emit v(#i + #i) >> pause } end\n",
    "module test: Input: i : int; Output: o;\n"
    "loop { present i { if #i == 2 emit o } >> pause } end\n",
    "module hold: Input: t; Output: v : int; sustain v(1) until t end\n",
};
const char* const interface =
    "module main: Input: x : int, t; Output: v : int, w : int, h : int, o, p; Local: l : int;\n";
const char* const runs =
    "run src [l \\ v] || run twice [l \\ i] || run twice [x \\ i, w \\ v] || run test [l \\ i] ||\n"
    "run test [x \\ i, p \\ o] || run hold [h \\ v] || pause >> pause >> emit l(1)\nend\n";
const char* const in_one_piece =
    "{ emit l(1) >> pause >> emit l(2) } || loop { present l emit v(#l + #l) >> pause } ||\n"
    "loop { present x emit w(#x + #x) >> pause } ||\n"
    "loop { present l { if #l == 2 emit o } >> pause } ||\n"
    "loop { present x { if #x == 2 emit p } >> pause } ||\n"
    "sustain h(1) until t || pause >> pause >> emit l(1)\nend\n";

class RunsWithValues : public testing::Test {
 protected:
  /// Compiles a text and writes the module of that name.
  void compile(const std::string& name, const std::string& text) {
    const Session::Use use(session_.emplace());
    Compilation::rules() = Rules::sound();
    Module::OutputDir() = dir.path().string();
    const Outcome outcome = run_captured([&] {
      try {
        Compilation::zu_parse(dir.write("text.zu", text).c_str());
        Module* module = Compilation::ModTable()->get(name);
        module->compile();
        module->finalize(0);
        module->save();
      } catch (const LibraryException& exception) {
        ADD_FAILURE() << exception.text();
      }
    });
    ASSERT_FALSE(outcome.ended) << outcome.err;
  }

  /// The outputs of the module main over five instants.
  std::string values() {
    FakeServer server(reckon);
    const Session::Use use(*session_);
    const ZucRead read = read_zuc_file(dir.file("main.zuc"), "", "");
    Simulation simulation(read.module);
    std::string all;
    for (int instant = 1; instant <= 5; ++instant) {
      simulation.choose_input(0, instant == 4 ? SignalState::zero : SignalState::one);
      simulation.type_input(0, instant == 2 ? "2" : "5");
      simulation.choose_input(1, instant == 5 ? SignalState::one : SignalState::zero);
      run_captured([&] { simulation.step(server.client()); });
      all += std::to_string(instant) + ":";
      for (size_t row = 0; row < simulation.output_names().size(); ++row)
        if (simulation.state().shown_outputs[row] == SignalState::one)
          all += " " + simulation.output_names()[row] + simulation.state().output_values[row];
      all += "\n";
    }
    return all;
  }

  TempDir dir;

 private:
  std::optional<Session> session_;
};

TEST_F(RunsWithValues, ShowWhatOnePieceShows) {
  const std::string expected =
      "1: v2 w10 h1\n"
      "2: v4 w4 h1 o-- p--\n"
      "3: v2 w10 h1\n"
      "4: h1\n"
      "5: w10\n";
  compile("main", data + std::string(interface) + in_one_piece);
  EXPECT_EQ(values(), expected);

  std::string all;
  for (const char* part : parts) all += part;
  compile("main", data + all + interface + runs);
  EXPECT_EQ(values(), expected);

  std::string declared;
  for (const char* name : {"src", "twice", "test", "hold"}) {
    compile(name, data + all);
    declared += (declared.empty() ? "Run: \"" : "; \"") + dir.path().string() + "\" : " + name;
  }
  compile("main", data + std::string(interface) + declared + ";\n" + runs);
  EXPECT_EQ(values(), expected);
}

}  // namespace
}  // namespace kiva::test
