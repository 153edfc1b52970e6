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
  watch();
}

std::string Coverage::map(const std::string& map_text) {
  CoverageGoals found(map_text, *simulation_);
  if (!found.problem.empty()) return found.problem;
  goals_ = std::move(found.goals);
  has_map_ = true;
  watch();
  for (const std::string& name : simulation_->register_names())
    compilers_.insert("register " + name);
  for (const std::string& name : simulation_->local_names()) compilers_.insert("local " + name);
  for (size_t row : found.declared) compilers_.erase("local " + simulation_->local_names()[row]);
  return "";
}

void print_reached(std::ostream& out, const ReachedGoals& reached, bool has_map) {
  if (!has_map) {
    out << "  statements, states, transitions: no map of the source beside the module (tarn "
           "--map)\n";
    return;
  }
  for (const char* kind :
       {CoverageGoal::statements, CoverageGoal::states, CoverageGoal::transitions}) {
    const auto all = reached.find(kind);
    if (all == reached.end()) continue;
    const auto met = std::ranges::count_if(all->second, [](const auto& r) { return r.second > 0; });
    out << "  " << kind << " reached: " << met << " of " << all->second.size() << '\n';
    for (const auto& [name, count] : all->second)
      if (count == 0) out << "    never: " << name << '\n';
  }
}

/// Where each instant counts: what has a name is looked for once.
void Coverage::watch() {
  watched_.clear();
  for (const auto& [list, title] : lists)
    for (size_t row = 0; row < names_.names(list).size(); ++row)
      watched_.push_back(
          {{list, row}, &seen_[std::string(title) + ' ' + names_.name({list, row})]});
  times_reached_.clear();
  for (const CoverageGoal& goal : goals_) times_reached_.push_back(&reached_[goal.kind][goal.name]);
}

void Coverage::note(const SimulationState& before, const SimulationState& after) {
  ++instants_;
  for (const auto& [place, seen] : watched_) {
    const SignalState state = shown_state(after, place);
    seen->present += state == SignalState::one;
    seen->not_present += state == SignalState::zero || state == SignalState::bottom;
  }
  for (size_t k = 0; k < goals_.size(); ++k)
    *times_reached_[k] += holds(goals_[k].reached, after, &before);
  const std::string from = letters(before.shown_registers), to = letters(after.shown_registers);
  states_.insert({from, to});
  steps_.insert({from, to});
}

void print_seen(std::ostream& out, const SeenSignals& seen) {
  const auto both = std::ranges::count_if(
      seen, [](const auto& s) { return s.second.present > 0 && s.second.not_present > 0; });
  out << "  signals seen present and not: " << both << " of " << seen.size() << '\n';
  for (const auto& [wanted, title] :
       {std::pair{false, "never present:"}, std::pair{true, "always present:"}}) {
    for (const auto& [name, times] : seen)
      if ((wanted ? times.not_present : times.present) == 0)
        out << "  " << title << ' ' << name << '\n';
  }
}

void Coverage::print(std::ostream& out) const {
  SeenSignals told = seen_;
  for (const std::string& name : compilers_) told.erase(name);
  out << "coverage of " << simulation_->module()->getName() << " in " << instants_ << " instants\n";
  print_seen(out, told);
  out << "  register states: " << states_.size() << ", steps between them: " << steps_.size()
      << '\n';
  print_reached(out, reached_, has_map_);
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
    SeenSignals seen = seen_;
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
        if (!has_map_ || (known != reached.end() && known->second.contains(name)))
          reached[kind][name] += count;
      }
    instants_ += json.at("instants").get<long>();
    reached_ = std::move(reached);
    seen_ = std::move(seen);
    watch();
    states_.merge(states);
    steps_.merge(steps);
    return "";
  } catch (const nlohmann::json::exception&) {
    return "is no file of coverage";
  }
}

}  // namespace kiva
