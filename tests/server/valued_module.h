#pragma once

#include <gmock/gmock.h>

#include <list>
#include <memory>

#include "engine/simulation.h"
#include "tarn/model/compilation.h"
#include "tarn/session/session.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/server/fake_server.h"
#include "tests/support/process_end.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {

/// Runs a small module with values. Inputs a b, valued output x, which is present where one of them
/// is; locals: valued l, present with a; t1, present with a; t2, present with b; test, present
/// where its expression is true; r, a register that holds a of the last instant. Evaluation lines 0
/// to 2 are the values of a, b and l, lines 3 and 4 the constants limit (external) and half (a
/// literal). Methods: 0 now(), 1 neg(int), 2 add(int, int).
class ValuedModule : public testing::Test {
  Session session_;
  Session::Use use_{session_};

 public:
  // Lines of "binding:".
  static std::string x_by_t1(int line) { return bound(8, line, 4); }
  static std::string x_by_t2(int line) { return bound(10, line, 4); }
  static std::string l_by_t1(int line) { return bound(8, line, 6); }
  static std::string test_is(int line) { return bound(12, line, -1); }

  /// The module. `lines` are evaluation lines from number 5 on; `more_equations` may read node 1,
  /// the status of t1.
  static std::string text(const std::string& bindings, const std::string& lines,
                          const std::string& more_equations = "") {
    return "module: m 0 1\ninput: a:int b:int ;\noutput: x:int ;\n"
           "local: l:int t1 t2 test r r.next free ;\nregister:\nr.next r 0;\nconnexion: S R T;\n"
           "equation_def:\n5\n0: -1:-3:-3,1\n1: 8:0:0,-1\n2: 0:0:0,-1\n3: 2:0:0,-1\n4: 0:0:3,1\n"
           "expressions:\n1 0 4:4,1,( )\n1 0 5:4,-1,( )\n1 0 6:2,1,( )\n1 0 7:2,-1,( )\n"
           "1 0 8:2,1,( )\n1 0 9:2,-1,( )\n1 0 10:3,1,( )\n1 0 11:3,-1,( )\n"
           "1 0 16:2,1,( )\n1 0 17:2,-1,( )\n" +
           more_equations + "end:\nbinding:\n" + bindings +
           "end:\nevaltable:\n0: %%14(0, 1);\n1: %%14(2, 3);\n2: %%14(6, 7);\n3: $0;\n4: $1;\n" +
           lines +
           "end:\ndata:\ntype:\nint;\nmethod:\nint now();\nint neg(int);\nint add(int, int);\n"
           "constant:\nint limit;\nint half \"0.5\";\nend:\n";
  }

 protected:
  void load(const std::string& bindings, const std::string& lines,
            const std::string& more_equations = "") {
    const ZucRead read =
        read_zuc_file(dir.write("m.zuc", text(bindings, lines, more_equations)), "", "");
    ASSERT_NE(read.module, nullptr) << read.problem;
    module = read.module;
    simulation = std::make_unique<Simulation>(module);
  }

  /// One instant over the texts of the inputs present; what it wrote is in `outcome`.
  void instant(Sock socket, const std::optional<std::string>& a,
               const std::optional<std::string>& b = std::nullopt) {
    size_t row = 0;
    for (const auto& text : {a, b}) {
      simulation->choose_input(row, text ? SignalState::one : SignalState::zero);
      simulation->type_input(row, text.value_or("--"));
      ++row;
    }
    outcome = run_captured([&] { simulation->step(socket); });
  }

  const std::string& x_text() const { return simulation->state().output_values[0]; }
  SignalState test_state() const { return simulation->state().shown_locals[3]; }
  SignalState register_state() const { return simulation->state().shown_registers[0]; }

  TempDir dir;
  Module* module = nullptr;
  std::unique_ptr<Simulation> simulation;
  Outcome outcome;

 private:
  static std::string pair(int status_index) {
    return "(" + std::to_string(status_index) + ", " + std::to_string(status_index + 1) + ")";
  }
  static std::string bound(int status_index, int line, int clock_id) {
    return pair(status_index) + ": value: " + std::to_string(line) +
           (clock_id < 0 ? "" : " clock: " + pair(clock_id)) + ";\n";
  }
};

}  // namespace kiva::test
