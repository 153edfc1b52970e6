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

void Coverage::note(const SimulationState& before, const SimulationState& after) {
  ++instants_;
  for (const auto& [list, title] : lists)
    for (size_t row = 0; row < names_.names(list).size(); ++row) {
      Seen& seen = seen_[std::string(title) + ' ' + names_.name({list, row})];
      const SignalState state = shown_state(after, {list, row});
      seen.present += state == SignalState::one;
      seen.not_present += state == SignalState::zero || state == SignalState::bottom;
    }
  const std::string from = letters(before.shown_registers), to = letters(after.shown_registers);
  states_.insert({from, to});
  steps_.insert({from, to});
}

void Coverage::print(std::ostream& out) const {
  const auto both = std::ranges::count_if(
      seen_, [](const auto& s) { return s.second.present > 0 && s.second.not_present > 0; });
  out << "coverage of " << simulation_->module()->getName() << " in " << instants_ << " instants\n"
      << "  signals seen present and not: " << both << " of " << seen_.size() << '\n';
  for (const auto& [wanted, title] :
       {std::pair{false, "never present:"}, std::pair{true, "always present:"}}) {
    for (const auto& [name, seen] : seen_)
      if ((wanted ? seen.not_present : seen.present) == 0)
        out << "  " << title << ' ' << name << '\n';
  }
  out << "  register states: " << states_.size() << ", steps between them: " << steps_.size()
      << '\n';
}

std::string Coverage::text() const {
  nlohmann::ordered_json json;
  json["module"] = simulation_->module()->getName();
  json["instants"] = instants_;
  for (const auto& [name, seen] : seen_) json["signals"][name] = {seen.present, seen.not_present};
  json["states"] = states_;
  json["steps"] = steps_;
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
    instants_ += json.at("instants").get<long>();
    seen_ = std::move(seen);
    states_.merge(states);
    steps_.merge(steps);
    return "";
  } catch (const nlohmann::json::exception&) {
    return "is no file of coverage";
  }
}

}  // namespace kiva
