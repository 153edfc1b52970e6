// What runs have shown of a module, as a table for people and as JSON that runs add to.

#include "engine/coverage.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

namespace kiva {

namespace {

struct ListName {
  SignalPlace::List list;
  const char* name;
};
constexpr ListName lists[] = {{SignalPlace::input, "input"},
                              {SignalPlace::output, "output"},
                              {SignalPlace::local, "local"},
                              {SignalPlace::register_, "register"}};

std::string letters(const std::vector<SignalState>& registers) {
  std::string text;
  for (SignalState state : registers) text += "10TB?"[static_cast<int>(state)];
  return text;
}

}  // namespace

Coverage::Coverage(const Simulation& simulation) : simulation_(&simulation), names_(simulation) {
  for (const auto& [list, title] : lists)
    for (const std::string& name : names_.names(list)) seen_[std::string(title) + ' ' + name];
}

namespace {

constexpr const char* statements = "statements";
constexpr const char* automaton_states = "states of automata";
constexpr const char* transitions = "transitions";

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

std::string Coverage::map(const std::string& map_text) {
  source_.emplace(map_text, *simulation_);
  if (!source_->problem().empty()) {
    const std::string problem = source_->problem();
    source_.reset();
    return problem;
  }
  for (size_t n = 0; n < source_->instances().size(); ++n)
    for (const LitSource::Lit& leaf : source_->leaves(n, simulation_->state()))
      reached_[statements][source_->instances()[n].path + ' ' + place_text(leaf.place)];
  for (const std::string& name : simulation_->register_names())
    compilers_.insert("register " + name);
  for (const std::string& name : simulation_->local_names()) compilers_.insert("local " + name);
  for (size_t row : source_->declared())
    compilers_.erase("local " + simulation_->local_names()[row]);
  automata_ = automata_of_map(map_text);
  for (const Diagram& automaton : automata_) {
    lights_.emplace_back(automaton, *simulation_);
    for (size_t node = 0; node < automaton.nodes.size(); ++node)
      reached_[automaton_states][node_text(automaton, node)];
    for (const Diagram::Arc& arc : automaton.arcs) reached_[transitions][arc_text(automaton, arc)];
  }
  return "";
}

void Coverage::note_source(const SimulationState& before, const SimulationState& after) {
  if (!source_) return;
  for (size_t n = 0; n < source_->instances().size(); ++n)
    for (const LitSource::Lit& leaf : source_->leaves(n, after))
      reached_[statements][source_->instances()[n].path + ' ' + place_text(leaf.place)] +=
          leaf.light.any();
  for (size_t n = 0; n < automata_.size(); ++n) {
    const Diagram& automaton = automata_[n];
    const DiagramLight light = lights_[n].at(after, &before);
    for (size_t node = 0; node < automaton.nodes.size(); ++node) {
      bool entered = light.is[node];
      for (size_t arc = 0; arc < automaton.arcs.size(); ++arc)
        entered = entered || (light.fired[arc] && automaton.arcs[arc].to == node);
      reached_[automaton_states][node_text(automaton, node)] += entered;
    }
    for (size_t arc = 0; arc < automaton.arcs.size(); ++arc)
      reached_[transitions][arc_text(automaton, automaton.arcs[arc])] += light.fired[arc];
  }
}

void Coverage::print_source(std::ostream& out) const {
  if (!source_) {
    out << "  statements, states, transitions: no map of the source beside the module (tarn "
           "--map)\n";
    return;
  }
  for (const char* kind : {statements, automaton_states, transitions}) {
    const auto all = reached_.find(kind);
    if (all == reached_.end()) continue;
    const auto met = std::ranges::count_if(all->second, [](const auto& r) { return r.second > 0; });
    out << "  " << kind << " reached: " << met << " of " << all->second.size() << '\n';
    for (const auto& [name, count] : all->second)
      if (count == 0) out << "    never: " << name << '\n';
  }
}

void Coverage::note(const SimulationState& before, const SimulationState& after) {
  ++instants_;
  for (const auto& [list, title] : lists)
    for (size_t row = 0; row < names_.names(list).size(); ++row) {
      Seen& seen = seen_[std::string(title) + ' ' + names_.name({list, row})];
      const SignalState state = shown_state(after, {list, row});
      seen.present += state == SignalState::one;
      seen.not_present += state == SignalState::zero || state == SignalState::bottom;
    }
  note_source(before, after);
  const std::string from = letters(before.shown_registers), to = letters(after.shown_registers);
  states_.insert({from, to});
  steps_.insert({from, to});
}

void Coverage::print(std::ostream& out) const {
  std::map<std::string, Seen> told = seen_;
  for (const std::string& name : compilers_) told.erase(name);
  const auto both = std::ranges::count_if(
      told, [](const auto& s) { return s.second.present > 0 && s.second.not_present > 0; });
  out << "coverage of " << simulation_->module()->getName() << " in " << instants_ << " instants\n"
      << "  signals seen present and not: " << both << " of " << told.size() << '\n';
  for (const auto& [wanted, title] :
       {std::pair{false, "never present:"}, std::pair{true, "always present:"}}) {
    for (const auto& [name, seen] : told)
      if ((wanted ? seen.not_present : seen.present) == 0)
        out << "  " << title << ' ' << name << '\n';
  }
  out << "  register states: " << states_.size() << ", steps between them: " << steps_.size()
      << '\n';
  print_source(out);
}

std::string Coverage::text() const {
  nlohmann::ordered_json json;
  json["module"] = simulation_->module()->getName();
  json["instants"] = instants_;
  for (const auto& [name, seen] : seen_) json["signals"][name] = {seen.present, seen.not_present};
  json["states"] = states_;
  json["steps"] = steps_;
  if (!reached_.empty()) json["reached"] = reached_;
  return json.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

std::string Coverage::merge(const std::string& text) {
  try {
    const nlohmann::json json = nlohmann::json::parse(text);
    if (json.at("module") != simulation_->module()->getName())
      return "is of another module, " + json.at("module").dump();
    std::map<std::string, Seen> seen = seen_;
    for (const auto& [name, counts] : json.at("signals").items()) {
      const auto at = seen.find(name);
      if (at == seen.end()) return "names a signal that the module has not, " + name;
      at->second.present += counts.at(0).get<long>();
      at->second.not_present += counts.at(1).get<long>();
    }
    auto states = json.at("states").get<std::set<std::string>>();
    auto steps = json.at("steps").get<std::set<std::pair<std::string, std::string>>>();
    auto reached = reached_;
    const auto counted = json.value("reached", decltype(reached)());
    for (const auto& [kind, names] : counted)
      for (const auto& [name, count] : names) {
        // What the map has not is of an older source; without a map all is kept.
        const auto known = reached.find(kind);
        if (!source_ || (known != reached.end() && known->second.contains(name)))
          reached[kind][name] += count;
      }
    instants_ += json.at("instants").get<long>();
    reached_ = std::move(reached);
    seen_ = std::move(seen);
    states_.merge(states);
    steps_.merge(steps);
    return "";
  } catch (const nlohmann::json::exception&) {
    return "is no file of coverage";
  }
}

}  // namespace kiva
