#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tarn/model/module.h"
#include "tarn/session/session.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/process_end.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {

/// Reads texts as compiled modules, each test in a session of its own.
class ZucReading : public testing::Test {
  Session session_;
  Session::Use use_{session_};

 protected:
  /// What reading the text leaves; streams and end of the process in `outcome`.
  ZucRead read(const std::string& text, const std::string& instance = "") {
    file = dir.write("m.zuc", text);
    ZucRead result;
    outcome = run_captured([&] { result = read_zuc_file(file, instance, ""); });
    return result;
  }
  /// The module of a text that must load.
  Module* module(const std::string& text) {
    const ZucRead result = read(text);
    EXPECT_NE(result.module, nullptr) << result.problem;
    return result.module;
  }
  /// The reason without the file's name, for a text that must not load.
  std::string refused(const std::string& text) {
    const ZucRead result = read(text);
    EXPECT_EQ(result.module, nullptr);
    EXPECT_TRUE(result.problem.starts_with(file + ":")) << result.problem;
    return result.problem.substr(std::min(result.problem.size(), file.size() + 1));
  }
  std::string log() const { return read_text(file + ".log"); }

  TempDir dir;
  std::string file;
  Outcome outcome;
};

/// A module of inputs I J, output O, locals A B, with the given node and equation lines. Numbers:
/// I 0 1, J 2 3, O 4 5, A 6 7, B 8 9, wires from 10 to 15.
inline std::string with_equations(const std::string& node_lines, const std::string& equations,
                                  const std::string& rest = "") {
  return "module: m 0 1\ninput: I J ;\noutput: O ;\nlocal: A B ;\nconnexion: S R T;\n"
         "equation_def:\n" +
         node_lines + "expressions:\n" + equations + "end:\n" + rest;
}

}  // namespace kiva::test
