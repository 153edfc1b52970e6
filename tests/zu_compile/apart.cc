#include "tests/zu_compile/apart.h"

#include <gtest/gtest.h>

#include <utility>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tests/support/process_end.h"
#include "tests/zu_compile/compiled.h"

namespace kiva::test {

bool compile_apart(const TempDir& dir, const std::string& name, const std::string& text,
                   bool finalised, const Rules& rules) {
  restart_reader();
  const std::string file = dir.write("apart.zu", text);
  const std::string folder = std::exchange(Module::OutputDir(), dir.path().string());
  const Rules before = std::exchange(Compilation::rules(), rules);
  const Outcome outcome = run_captured([&] {
    try {
      Compilation::zu_parse(file.c_str());
      Module* module = Compilation::ModTable()->get(name);
      module->compile();
      if (finalised) module->finalize(0);
      module->save();
    } catch (const LibraryException& exception) {
      ADD_FAILURE() << exception.text() << " in\n" << text;
    }
  });
  const bool cycle = outcome.err.find("dependance cycle") != std::string::npos;
  EXPECT_TRUE(!outcome.ended || cycle) << outcome.err << " in\n" << text;
  Compilation::rules() = before;
  Module::OutputDir() = folder;
  return !outcome.ended;
}

}  // namespace kiva::test
