#include "engine/coverage_goals.h"

#include <nlohmann/json.hpp>

#include "engine/diagram.h"

namespace kiva {

namespace {

/// "watchdog.zu:17:3", without the folder: a file of coverage goes from machine to machine.
std::string place_text(const SourcePlace& place) {
  return place.file.substr(place.file.rfind('/') + 1) + ':' + std::to_string(place.first_line) +
         ':' + std::to_string(place.first_column);
}

std::string node_text(const Diagram& diagram, size_t node) {
  return diagram.title + ' ' + diagram.nodes[node].name;
}

std::string arc_text(const Diagram& diagram, const Diagram::Arc& arc) {
  const std::string from = arc.from == Diagram::nowhere ? "initial" : diagram.nodes[arc.from].name;
  return diagram.title + ' ' + from + " -> " + diagram.nodes[arc.to].name + ", " +
         place_text(arc.place);
}

}  // namespace

CoverageGoals::CoverageGoals(const std::string& map_text, const Simulation& simulation) {
  try {
    read(map_text, simulation);
  } catch (const nlohmann::json::exception&) {
    problem = "is no map of a source text";
  }
}

void CoverageGoals::read(const std::string& map_text, const Simulation& simulation) {
  const LitSource source(map_text, simulation);
  problem = source.problem();
  if (!problem.empty()) return;
  declared = source.declared();
  for (size_t n = 0; n < source.instances().size(); ++n)
    for (auto& [place, cover] : source.active(n))
      goals.push_back({CoverageGoal::statements,
                       source.instances()[n].path + ' ' + place_text(place), std::move(cover),
                       place});
  for (const Diagram& automaton : automata_of_map(map_text)) {
    const DiagramLights lights(automaton, simulation);
    for (size_t node = 0; node < automaton.nodes.size(); ++node)
      goals.push_back({CoverageGoal::states, node_text(automaton, node), lights.entered(node),
                       automaton.nodes[node].place});
    for (size_t arc = 0; arc < automaton.arcs.size(); ++arc)
      goals.push_back({CoverageGoal::transitions, arc_text(automaton, automaton.arcs[arc]),
                       lights.fired(arc), automaton.arcs[arc].place});
  }
}

}  // namespace kiva
