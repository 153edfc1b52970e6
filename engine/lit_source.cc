// A statement's circuit tells what it does: its wire `set` is One when it starts, `rtl` when it
// ends, and a register of it moves to One while it stays. What was there or has started, and has
// neither ended nor stays, was killed. What a strong abort stops does nothing more, whatever its
// wires say. One place of the text may have several circuits (bodies of loops are
// copied); it does what any of them does.

#include "engine/lit_source.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>

#include "engine/map_rows.h"
#include "tarn/zu/source_map.h"

namespace kiva {

LitSource::LitSource(const std::string& map_text, const Simulation& simulation,
                     const std::string& module_file)
    : folder_(module_file.empty() ? ""
                                  : std::filesystem::weakly_canonical(module_file).parent_path()) {
  const MapRows rows(simulation);
  try {
    const nlohmann::json json = nlohmann::json::parse(map_text);
    if (json.at("module") != simulation.module()->getName()) {
      problem_ = "the map is of another module, " + json.at("module").dump();
      return;
    }
    for (const auto& [file, hash] : json.at("sources").items())
      hashes_.emplace_back(file_at(file), hash);
    for (size_t row : rows.of_all(json.at("locals")))
      if (row != MapRows::none) declared_.push_back(row);
    for (const nlohmann::json& of : json.at("instances")) read_instance(of, rows);
  } catch (const nlohmann::json::exception&) {
    problem_ = "is no map of a source text";
    instances_.clear();
  }
}

std::string LitSource::file_at(const std::string& file) const {
  return folder_.empty() || file.empty() ? file : (folder_ / file).lexically_normal().string();
}

SourcePlace LitSource::place(const nlohmann::json& span) const {
  SourcePlace place = map_place(span);
  place.file = file_at(place.file);
  return place;
}

void LitSource::read_instance(const nlohmann::json& of, const MapRows& rows) {
  // Twins stand behind the one that is shown.
  const size_t number = shown_.size();
  const size_t twin = of.value("twin_of", number);
  const bool own = twin >= number;
  shown_.push_back(own ? instances_.size() : shown_[twin]);
  if (own) {
    instances_.push_back({of.at("module"), of.at("path"), "", of.value("suffix", "")});
    circuits_.emplace_back();
  }
  Instance& instance = instances_[shown_.back()];
  Circuits& circuits = circuits_[shown_.back()];
  read_states(of, circuits);
  for (const nlohmann::json& part : of.at("statements")) {
    if (part.at("span").is_null()) continue;
    if (instance.file.empty()) instance.file = file_at(part["span"].at(0));
    circuits.parts.push_back({place(part["span"]), part.at("leaf"), rows.of(part.at("set")),
                              rows.of(part.at("reset")), rows.of(part.at("end")),
                              rows.of_all(part.at("active")), rows.of_all(part.at("next")),
                              rows.of_all(part.value("stops", nlohmann::json::array()))});
  }
  for (const nlohmann::json& condition : of.value("conditions", nlohmann::json::array()))
    if (!condition.at("span").is_null())
      circuits.conditions.push_back({place(condition["span"]), rows.of(condition.at("value")),
                                     rows.of_all(condition.at("looked")),
                                     rows.of_all(condition.at("stops"))});
}

/// Before the parts are: an automaton is the first of its module.
void LitSource::read_states(const nlohmann::json& of, Circuits& into) {
  for (const nlohmann::json& state : of.value("states", nlohmann::json::array()))
    into.states.push_back({place(state.at("span")), state.at("name"), state.at("code"),
                           state.at("final"), into.parts.size()});
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

namespace {

/// What the rows of locals show in an instant.
struct Shown {
  const SimulationState& state;

  bool one(size_t row) const {
    return row < state.shown_locals.size() && state.shown_locals[row] == SignalState::one;
  }
  bool any(const std::vector<size_t>& rows) const {
    return std::ranges::any_of(rows, [&](size_t row) { return one(row); });
  }
  unsigned number(const std::vector<size_t>& bits) const {
    unsigned number = 0;
    for (size_t bit = 0; bit < bits.size(); ++bit) number |= unsigned{one(bits[bit])} << bit;
    return number;
  }
};

std::vector<LitSource::Lit> in_order(const std::map<SourcePlace, Light>& lights) {
  std::vector<LitSource::Lit> all;
  for (const auto& [place, light] : lights) all.push_back({place, light});
  return all;
}

}  // namespace

std::vector<LitSource::Lit> LitSource::leaves(size_t instance, const SimulationState& state) const {
  const Shown shown{state};
  std::map<SourcePlace, Light> lights;
  for (const Part& part : circuits_[instance].parts) {
    if (!part.leaf) continue;
    Light& light = lights[part.place];
    const bool was = shown.any(part.active), stays = shown.any(part.next);
    light.waits = light.waits || stays;
    if (shown.any(part.stops)) {
      light.killed = light.killed || was;
      continue;
    }
    const bool starts = shown.one(part.set), ends = shown.one(part.rtl);
    light.started = light.started || starts;
    light.ended = light.ended || ends;
    // It may end and be killed, having started again.
    light.killed = light.killed || int{was} + int{starts} > int{ends} + int{stays};
  }
  return in_order(lights);
}

/// It was there, or stays, or starts or ends where nothing stops it: what is killed was there or
/// has started.
std::vector<std::pair<SourcePlace, ShownCover>> LitSource::active(size_t instance) const {
  const auto bit = [](size_t row, bool wanted) {
    return ShownBit{row == MapRows::none ? ShownBit::missing : ShownBit::local, row, wanted};
  };
  std::map<SourcePlace, ShownCover> covers;
  for (const Part& part : circuits_[instance].parts) {
    if (!part.leaf) continue;
    ShownCover& cover = covers[part.place];
    for (const std::vector<size_t>* rows : {&part.active, &part.next})
      for (size_t row : *rows) cover.push_back({bit(row, true)});
    for (size_t row : {part.set, part.rtl}) {
      cover.push_back({bit(row, true)});
      for (size_t stop : part.stops) cover.back().push_back(bit(stop, false));
    }
  }
  return {covers.begin(), covers.end()};
}

std::vector<LitSource::Lit> LitSource::states(size_t instance, const SimulationState& state) const {
  const Shown shown{state};
  const Circuits& circuits = circuits_[instance];
  // A state that can follow itself may have two codes.
  struct Seen {
    bool was = false, stays = false, killed = false, final_state = false;
  };
  std::map<SourcePlace, Seen> places;
  for (const State& of : circuits.states) {
    if (of.automaton >= circuits.parts.size()) continue;
    const Part& automaton = circuits.parts[of.automaton];
    Seen& seen = places[of.place];
    const bool was = shown.number(automaton.active) == of.code;
    seen.was = seen.was || was;
    seen.stays = seen.stays || shown.number(automaton.next) == of.code;
    seen.killed =
        seen.killed || (was && (shown.one(automaton.reset) || shown.any(automaton.stops)));
    seen.final_state = of.final_state;
  }
  std::map<SourcePlace, Light> lights;
  for (const auto& [place, seen] : places) {
    const auto [was, stays, killed, final_state] = seen;
    // In a final one there is nothing to stay for.
    lights[place] = final_state
                        ? Light{.started = stays, .ended = stays}
                        : Light{stays && !was, stays, was && !stays && !killed, killed && !stays};
  }
  return in_order(lights);
}

std::vector<LitSource::Lit> LitSource::lit(size_t instance, const SimulationState& state) const {
  std::vector<Lit> all = leaves(instance, state);
  const std::vector<Lit> of_automaton = states(instance, state);
  all.insert(all.end(), of_automaton.begin(), of_automaton.end());
  std::erase_if(all, [](const Lit& lit) { return !lit.light.any(); });
  return all;
}

std::vector<LitSource::Looked> LitSource::looked_at(size_t instance,
                                                    const SimulationState& state) const {
  const Shown shown{state};
  std::map<SourcePlace, bool> values;
  for (const Condition& condition : circuits_[instance].conditions)
    if (shown.any(condition.looked) && !shown.any(condition.stops))
      values[condition.place] = values[condition.place] || shown.one(condition.value);
  std::vector<Looked> all;
  for (const auto& [place, holds] : values) all.push_back({place, holds});
  return all;
}

std::vector<SourcePlace> LitSource::places_of(size_t instance, size_t local) const {
  const auto has = [&](const std::vector<size_t>& rows) {
    return std::ranges::find(rows, local) != rows.end();
  };
  std::vector<SourcePlace> places;
  for (const Part& part : circuits_[instance].parts)
    if (part.set == local || part.reset == local || part.rtl == local || has(part.active) ||
        has(part.next))
      places.push_back(part.place);
  for (const Condition& condition : circuits_[instance].conditions)
    if (condition.value == local) places.push_back(condition.place);
  return places;
}

std::optional<SourcePlace> LitSource::going_on(size_t instance, size_t local) const {
  for (const Part& part : circuits_[instance].parts)
    if (part.leaf && std::ranges::find(part.active, local) != part.active.end()) return part.place;
  return {};
}

std::optional<std::vector<std::string>> LitSource::states_with(
    size_t instance, const std::vector<CodeBit>& bits) const {
  const Circuits& circuits = circuits_[instance];
  for (size_t number = 0; number < circuits.parts.size(); ++number) {
    const std::vector<size_t>& code = circuits.parts[number].active;
    const auto is_state = [&](const State& state) { return state.automaton == number; };
    if (std::ranges::none_of(circuits.states, is_state)) continue;
    unsigned known = 0, value = 0;
    const bool all = std::ranges::all_of(bits, [&](const CodeBit& bit) {
      const auto at = std::ranges::find(code, bit.first);
      if (at == code.end()) return false;
      known |= 1U << (at - code.begin());
      value |= unsigned{bit.second} << (at - code.begin());
      return true;
    });
    if (!all) continue;
    std::vector<std::string> names;
    for (const State& state : circuits.states)
      if (is_state(state) && (state.code & known) == value &&
          std::ranges::find(names, state.name) == names.end())
        names.push_back(state.name);
    if (value == 0) names.emplace_back();  // the code of an automaton that does not run
    return names;
  }
  return {};
}

}  // namespace kiva
