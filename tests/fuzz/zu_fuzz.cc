// Source text, through to a written module that is read again and run.

#include <sstream>

#include "engine/simulation.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/zuc/zuc_reader.h"
#include "tarn/zuc/zuc_writer.h"
#include "tests/fuzz/fuzz.h"

KIVA_FUZZ(text) {
  using namespace kiva;
  std::vector<std::string> written;
  fuzz::run([&] {
    Compilation::zu_parse(fuzz::file_of(text).c_str());
    const auto modules = Compilation::ModTable()->in_order();
    for (Module* module : modules)
      if (module->getSet() == nullptr) module->compile();
    for (Module* module : modules) module->finalize(0);
    for (Module* module : modules) {
      std::ostringstream out;
      write_zuc(module, out, false);
      written.push_back(out.str());
    }
  });
  for (const std::string& compiled : written)
    fuzz::run([&] {
      const ZucRead read = read_zuc_file(fuzz::file_of(compiled), "", "");
      if (read.module == nullptr) fuzz::found("not read: " + read.problem + '\n' + compiled);
      Simulation simulation(read.module);
      for (int i = 0; i < 3; ++i) simulation.step(nullptr);
    });
}
