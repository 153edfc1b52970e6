// A statement's circuit tells what it does: its wire `set` is One when it starts, `rtl` when it
// ends, `reset` when it is killed, and a register of it moves to One while it stays. A kill comes
// before the other two: what a dying statement would have done does not count. One place of the
// text may have several circuits (bodies of loops are copied); it does what any of them does.

#include "engine/lit_source.h"

#include <map>
#include <nlohmann/json.hpp>

#include "engine/map_rows.h"
#include "tarn/zu/source_map.h"

namespace kiva {

LitSource::LitSource(const std::string& map_text, const Simulation& simulation) {
  const MapRows rows(simulation);
  try {
    const nlohmann::json json = nlohmann::json::parse(map_text);
    if (json.at("module") != simulation.module()->getName()) {
      problem_ = "the map is of another module, " + json.at("module").dump();
      return;
    }
    for (const auto& [file, hash] : json.at("sources").items()) hashes_.emplace_back(file, hash);
    for (size_t row : rows.of_all(json.at("locals")))
      if (row != MapRows::none) declared_.push_back(row);
    for (const nlohmann::json& of : json.at("instances")) read_instance(of, rows);
  } catch (const nlohmann::json::exception&) {
    problem_ = "is no map of a source text";
    instances_.clear();
  }
}

void LitSource::read_instance(const nlohmann::json& of, const MapRows& rows) {
  Instance instance{of.at("module"), of.at("path"), ""};
  std::vector<Part> parts;
  for (const nlohmann::json& part : of.at("statements")) {
    if (part.at("span").is_null()) continue;
    if (instance.file.empty()) instance.file = part["span"].at(0);
    if (!part.at("leaf").get<bool>()) continue;
    parts.push_back({map_place(part["span"]), rows.of(part.at("set")), rows.of(part.at("reset")),
                     rows.of(part.at("end")), rows.of_all(part.at("active")),
                     rows.of_all(part.at("next"))});
  }
  std::vector<State> states;
  for (const nlohmann::json& state : of.value("states", nlohmann::json::array())) {
    State lit{map_place(state.at("span")), {}};
    const std::vector<size_t> bits = rows.of_all(of.at("code"));
    for (size_t bit = 0; bit < bits.size(); ++bit)
      lit.code.emplace_back(bits[bit], (state.at("code").get<unsigned>() >> bit & 1u) != 0);
    states.push_back(std::move(lit));
  }
  instances_.push_back(std::move(instance));
  parts_.push_back(std::move(parts));
  states_.push_back(std::move(states));
}

std::string LitSource::stale(size_t instance) const {
  for (const auto& [file, hash] : hashes_) {
    if (file != instances_[instance].file) continue;
    const std::string now = file_hash(file);
    if (now.empty()) return file + " cannot be read";
    if (now != hash) return file + " has changed since the module was compiled";
  }
  return "";
}

std::vector<LitSource::Lit> LitSource::leaves(size_t instance, const SimulationState& state) const {
  const auto is_one = [&](size_t row) {
    return row != MapRows::none && state.shown_locals[row] == SignalState::one;
  };
  std::map<SourcePlace, Light> lights;
  for (const Part& part : parts_[instance]) {
    Light& light = lights[part.place];
    const bool kill = is_one(part.reset);
    bool was = false;
    for (size_t row : part.active) was = was || is_one(row);
    for (size_t row : part.next) light.waits = light.waits || is_one(row);
    light.killed = light.killed || (kill && (was || is_one(part.set)));
    light.started = light.started || (!kill && is_one(part.set));
    light.ended = light.ended || (!kill && is_one(part.rtl));
  }
  std::vector<Lit> all;
  for (const auto& [place, light] : lights) all.push_back({place, light});
  return all;
}

std::vector<LitSource::Lit> LitSource::lit(size_t instance, const SimulationState& state) const {
  std::vector<Lit> all = leaves(instance, state);
  std::erase_if(all, [](const Lit& lit) { return !lit.light.any(); });
  for (const State& automaton_state : states_[instance]) {
    bool here = !automaton_state.code.empty();
    for (const auto& [row, wanted] : automaton_state.code)
      here =
          here && row != MapRows::none && (state.shown_locals[row] == SignalState::one) == wanted;
    if (here) all.push_back({automaton_state.place, {.waits = true}});
  }
  return all;
}

}  // namespace kiva
