// Stimuli of a module with values, run with no server, each instant written in all formats.

#include <sstream>

#include "engine/stimuli.h"
#include "engine/trace.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/fuzz/fuzz.h"

KIVA_FUZZ(text) {
  using namespace kiva;
  fuzz::run([&] {
    Simulation simulation(
        read_zuc_file(KIVA_SOURCE "/examples/thermostat/thermostat.zuc", "", "").module);
    std::istringstream in(text);
    std::ostringstream out;
    StimuliReader stimuli(in, simulation);
    std::vector<std::unique_ptr<TraceWriter>> traces;
    for (const TraceFormat& format : trace_formats())
      if (std::string(format.name) != "fst") traces.push_back(format.make(simulation));
    for (const auto& trace : traces) trace->begin(out);
    try {
      while (const auto stimulus = stimuli.next()) {
        apply(*stimulus, simulation);
        simulation.step(nullptr);
        for (const auto& trace : traces) trace->write(out, simulation.state());
      }
    } catch (const StimuliError&) {
    }
  });
}
