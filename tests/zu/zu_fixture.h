#pragma once

#include <gtest/gtest.h>

#include <iostream>
#include <string>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/parse_supl.h"
#include "tests/support/process_end.h"
#include "tests/support/temp_dir.h"
#include "tests/zu/tree_text.h"

namespace kiva::test {

/// Reads source texts, each test in a session of its own.
class ZuReading : public testing::Test {
 private:
  Session session_;
  Session::Use use_{session_};

 protected:
  /// Reads a text into an empty table of modules; streams and end of the process in `outcome`, an
  /// exception in `thrown`.
  void read(const std::string& text) {
    Compilation::ModTable() = make_kept<ModuleTable>(&std::cout);
    file = dir.write("m.zu", text);
    thrown.clear();
    thrown_at.clear();
    outcome = run_captured([&] {
      try {
        Compilation::zu_parse(file.c_str());
      } catch (const LibraryException& exception) {
        thrown = exception.text();
        thrown_at = exception.where().text();
      }
    });
  }
  /// The module `name` of a text that must load in silence.
  Module* module(const std::string& text, const std::string& name = "m") {
    read(text);
    EXPECT_EQ(thrown, "") << text;
    EXPECT_EQ(outcome.err, "") << text;
    Module* found = Compilation::ModTable()->get(name);
    EXPECT_NE(found, nullptr) << text;
    return found;
  }
  /// The body of a module with inputs a b c, valued input v, outputs x y z and local l.
  Statement* body(const std::string& text) {
    return module("module m: Input: a, b, c, v: int; Output: x, y, z; Local: l; " + text + " end\n")
        ->getStatement();
  }
  std::string tree(const std::string& text) { return tree_text(body(text)); }

  TempDir dir;
  std::string file;
  Outcome outcome;
  std::string thrown;
  std::string thrown_at;
};

}  // namespace kiva::test
