// Compiled text: read, run, written, and what has been written read again.

#include <sstream>

#include "engine/simulation.h"
#include "tarn/zuc/zuc_reader.h"
#include "tarn/zuc/zuc_writer.h"
#include "tests/fuzz/fuzz.h"

KIVA_FUZZ(text) {
  using namespace kiva;
  fuzz::run([&] {
    Module* module = read_zuc_file(fuzz::file_of(text), "", "").module;
    if (module == nullptr) return;
    Simulation simulation(module);
    for (int i = 0; i < 3; ++i) simulation.step(nullptr);
    std::ostringstream written;
    write_zuc(module, written, false);
    const ZucRead again = read_zuc_file(fuzz::file_of(written.str()), "", "");
    if (again.module == nullptr) fuzz::found("not read again: " + again.problem + written.str());
  });
}
