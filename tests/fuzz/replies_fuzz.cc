// Replies of an evaluation server, one a line, each instant written in all formats. An empty line
// is a server that has left: the instant has not taken place.

#include <sstream>

#include "engine/server_steps.h"
#include "engine/stimuli.h"
#include "engine/trace.h"
#include "tarn/model/evaluation_service.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/fuzz/fuzz.h"

KIVA_FUZZ(text) {
  using namespace kiva;
  fuzz::run([&] {
    Simulation simulation(
        read_zuc_file(KIVA_SOURCE "/examples/thermostat/thermostat.zuc", "", "").module);
    std::istringstream replies(text), in("measured=17 wanted=20");
    std::ostringstream out;
    const auto stimulus = StimuliReader(in, simulation).next();
    std::vector<std::unique_ptr<TraceWriter>> traces;
    for (const TraceFormat& format : trace_formats())
      if (std::string(format.name) != "fst") traces.push_back(format.make(simulation));
    for (const auto& trace : traces) trace->begin(out);
    ServerSteps steps(nullptr);
    Session::current().part<EvaluationService>().ask = [&](const std::string&) {
      std::string reply;
      if (!std::getline(replies, reply) || reply.empty()) throw ConnectionFault("no reply");
      return reply;
    };
    while (replies) {
      apply(*stimulus, simulation);
      const auto instant = simulation.state().instant;
      try {
        steps.step(simulation);
        for (const auto& trace : traces) trace->write(out, simulation.state());
      } catch (const ConnectionFault&) {
        if (simulation.state().instant != instant) fuzz::found("an instant without its values");
      }
    }
  });
}
