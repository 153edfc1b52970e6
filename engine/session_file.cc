#include "engine/session_file.h"

#include <nlohmann/json.hpp>
#include <sstream>

#include "engine/expectations.h"

namespace kiva {

std::string session_text(Recording& recording, const Marks& marks) {
  const Simulation& simulation = recording.simulation();
  nlohmann::ordered_json json;
  json["module"] = simulation.module()->getName();
  json["position"] = {recording.position().branch, recording.position().instant};
  json["branches"] = nlohmann::ordered_json::array();
  for (size_t branch = 0; branch < recording.branches(); ++branch) {
    const Recording::BranchInfo info = recording.branch(branch);
    nlohmann::ordered_json of;
    if (info.parent == Recording::no_parent)
      of["begins"] = info.initialised ? "init" : "load";
    else
      of["departs"] = {info.parent, info.from};
    of["instants"] = nlohmann::ordered_json::array();
    for (long instant = info.from + 1; instant <= info.last; ++instant)
      of["instants"].push_back(stimulus_line(recording.choices_at({branch, instant}), simulation));
    json["branches"].push_back(of);
  }
  for (const auto& [at, text] : marks) json["marks"].push_back({at.branch, at.instant, text});
  return json.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

namespace {

/// Goes along the lines of one branch; the branch in which they end.
size_t run_branch(const nlohmann::json& of, Recording& recording, Sock socket) {
  Simulation& simulation = recording.simulation();
  for (const nlohmann::json& line : of.at("instants")) {
    std::istringstream in(line.get<std::string>() + '\n');
    StimuliReader reader(in, simulation);
    // A line that names no wire puts it down, the load's set among them.
    simulation.raise_set(false);
    simulation.raise_reset(false);
    if (const auto stimulus = reader.next()) apply(*stimulus, simulation);
    recording.go(socket);
  }
  return recording.position().branch;
}

}  // namespace

std::string open_session(const std::string& text, Recording& recording, Sock socket, Marks& marks) {
  try {
    const nlohmann::json json = nlohmann::json::parse(text);
    const std::string& module = recording.simulation().module()->getName();
    if (json.at("module") != module)
      return "is a session of another module, " + json.at("module").dump();
    std::vector<size_t> branch_of;  // by number in the text
    const auto position = [&](const nlohmann::json& at) {
      return Recording::Position{branch_of.at(at.at(0).get<size_t>()), at.at(1).get<long>()};
    };
    for (const nlohmann::json& of : json.at("branches")) {
      if (of.contains("departs")) {
        if (!recording.to(position(of["departs"]))) return "has a branch that departs from nowhere";
      } else if (of.at("begins") == "init") {
        recording.init();
      }
      branch_of.push_back(run_branch(of, recording, socket));
    }
    if (!recording.to(position(json.at("position")))) return "shows an instant that it has not";
    if (json.contains("marks"))
      for (const nlohmann::json& mark : json["marks"])
        marks.emplace_back(position(mark), mark.at(2).get<std::string>());
    return "";
  } catch (const StimuliError& error) {
    return "does not fit the module: " + error.reason;
  } catch (const nlohmann::json::exception&) {
    return "is no session";
  } catch (const std::out_of_range&) {
    return "names a branch that it has not";
  }
}

std::string stimuli_text(Recording& recording) {
  const size_t branch = recording.position().branch;
  const Simulation& simulation = recording.simulation();
  std::string text;
  const long start = recording.first_instant();
  for (long instant = start + 1; instant <= recording.branch(branch).last; ++instant) {
    Choices choices = recording.choices_at({branch, instant});
    // The load raises it in any case.
    if (instant == start + 1) choices.set = false;
    const std::string line = stimulus_line(choices, simulation);
    text += line + (line.empty() ? "-> " : " -> ") +
            seen({}, recording.state_at({branch, instant}), simulation) + '\n';
  }
  return text;
}

}  // namespace kiva
