#include "programs/tarn/draw.h"

#include <iostream>
#include <nlohmann/json.hpp>

#include "base/translation.h"
#include "base/whole_file.h"
#include "engine/drawing/svg.h"
#include "engine/map_notes.h"
#include "programs/tarn/map_of.h"
#include "programs/tarn/messages.h"
#include "programs/told_text.h"
#include "tarn/session/session_files.h"

namespace kiva::tarn_program {

namespace {

constexpr size_t most_states = 200;

std::vector<Diagram> diagrams_of(Module* module, const std::string& file, bool& good) {
  const std::string map = map_of(module, file);
  std::vector<Diagram> all;
  try {
    if (!map.empty()) all = automata_of_map(map);
  } catch (const nlohmann::json::exception&) {
    good = fail({file + ".map", 0, 0, 0, 0}, "is no map of a source text");
    return {};
  }
  if (!all.empty()) return all;
  programs::errors() << file << ": note: "
                     << translated("module \"" + module->getName() +
                                   (map.empty() ? "\" has no map of its source (tarn --map)"
                                                : "\" holds no automaton") +
                                   "; its registers are drawn")
                     << '\n';
  return {registers_diagram(module, register_names(module, map))};
}

bool write(const std::string& path, const std::string& text, const Options& options) {
  SessionOutput file(path);
  if (file.opened()) file.out() << text;
  if (!file.opened() || !file.finish()) return fail({path, 0, 0, 0, 0}, "cannot be written");
  if (!options.quiet) std::cout << path << '\n';
  return true;
}

bool write_all(const std::vector<Diagram>& diagrams, const std::string& name,
               const Options& options) {
  bool good = true;
  for (size_t n = 0; n < diagrams.size(); ++n) {
    const std::string stem = options.folder + '/' + name + (n == 0 ? "" : std::to_string(n + 1));
    if (options.dot) good = write(stem + ".dot", dot_text(diagrams[n]), options) && good;
    if (options.svg)
      good = write(stem + ".svg", svg_text(diagrams[n], layout_of(diagrams[n])), options) && good;
  }
  return good;
}

}  // namespace

bool draw(Module* module, const std::string& file, const Options& options) {
  const std::string name = options.output.empty() ? module->getName() : options.output;
  if (!options.states) {
    bool good = true;
    const std::vector<Diagram> diagrams = diagrams_of(module, file, good);
    return good && write_all(diagrams, name, options);
  }
  std::string problem;
  const Diagram diagram =
      reachable_diagram(module, most_states, problem, register_names(module, map_of(module, file)));
  if (!problem.empty())
    return fail({file, 0, 0, 0, 0},
                "module \"" + module->getName() + "\" " + problem + ", too many to draw");
  return write_all({diagram}, name + "_states", options);
}

}  // namespace kiva::tarn_program
