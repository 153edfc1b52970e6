#include "programs/tarn/statement_difference.h"

#include <map>

#include "engine/lit_source.h"
#include "programs/report.h"
#include "programs/tarn/map_of.h"
#include "programs/tarn/translate.h"
#include "proof/question.h"

namespace kiva::tarn_program {

namespace {

using Lights = std::map<std::pair<SourcePlace, std::string>, Light>;  ///< by place and instance

/// What there is to say of the file has been said.
struct Silence : DiagnosticSink {
  void take(const Diagnostic&) override {}
};

/// What the statements do in each instant of the run.
std::vector<Lights> lights_along(const std::string& file, Options options, Messages& messages,
                                 const proof::Run& run) {
  Silence silence;
  const programs::ProgramSession session(&silence);
  std::vector<Module*> modules = load_modules(file, options, messages);
  if (modules.size() > 1) modules = outer_modules(modules);
  std::vector<Lights> lights;
  if (modules.empty()) return lights;
  Simulation simulation(modules.front());
  const LitSource source(map_of(modules.front(), file), simulation, file);
  simulation.load();
  for (const std::vector<bool>& inputs : run) {
    proof::run_instant(simulation, inputs);
    Lights& now = lights.emplace_back();
    for (size_t n = 0; n < source.instances().size(); ++n)
      for (const auto& all :
           {source.leaves(n, simulation.state()), source.states(n, simulation.state())})
        for (const LitSource::Lit& lit : all)
          now[{lit.place, source.instances()[n].path}] = lit.light;
  }
  return lights;
}

std::string place_text(const std::string& file, const SourcePlace& place) {
  return "# " + file + ':' + std::to_string(place.first_line) + ':' +
         std::to_string(place.first_column) + ": ";
}

std::string text_of(const Light& light) {
  std::string text;
  const auto add = [&](bool does, const char* word) {
    if (does) text += (text.empty() ? "" : ", ") + std::string(word);
  };
  add(light.started, "starts");
  add(light.waits, "stays");
  add(light.ended, "ends");
  add(light.killed, "is killed");
  return text.empty() ? "does nothing" : text;
}

}  // namespace

std::string first_difference(const std::string& file, const Options (&sides)[2],
                             const std::string (&names)[2], Messages& messages,
                             const proof::Run& run) {
  const std::vector<Lights> lights[2] = {lights_along(file, sides[0], messages, run),
                                         lights_along(file, sides[1], messages, run)};
  for (size_t instant = 0; instant < std::min(lights[0].size(), lights[1].size()); ++instant) {
    std::string text;
    for (const auto& [at, first] : lights[0][instant]) {
      const auto other = lights[1][instant].find(at);
      const Light second = other == lights[1][instant].end() ? Light() : other->second;
      if (first == second) continue;
      text += place_text(file, at.first) + "in instant " + std::to_string(instant + 1) +
              " this statement " + text_of(first) + " by the " + names[0] + " rules, " +
              text_of(second) + " by the " + names[1] + " rules\n";
    }
    if (!text.empty()) return text;
  }
  std::string text;
  if (!lights[0].empty())
    for (const auto& [at, light] : lights[0].back())
      if (light.any())
        text += place_text(file, at.first) + "this statement " + text_of(light) +
                " in the last instant by both rules; what is emitted differs\n";
  return text;
}

}  // namespace kiva::tarn_program
