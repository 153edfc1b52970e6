#include "engine/expected_trace.h"

#include <istream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "base/lines.h"

namespace kiva {

namespace {

/// "one", or "one 5" of a signal with a value.
std::string shown_text(const std::string& word, const std::string& value) {
  return value == "--" ? word : word + ' ' + value;
}

}  // namespace

bool ExpectedTrace::read_line(std::string& text) {
  while (next_line(in_, text)) {
    ++line_;
    if (text.find_first_not_of(" \t\r") != std::string::npos) return true;
  }
  return false;
}

std::vector<std::string> ExpectedTrace::compare(const SimulationState& state) {
  std::string text;
  std::vector<std::string> differences;
  try {
    if (!read_line(text)) return {"the trace ends before this instant"};
    const nlohmann::json json = nlohmann::json::parse(text);
    if (json.contains("instant") && json["instant"] != state.instant)
      differences.push_back("the trace has instant " + json["instant"].dump() + " here");
    for (const auto& [key, list] :
         {std::pair{"outputs", SignalPlace::output}, std::pair{"locals", SignalPlace::local},
          std::pair{"registers", SignalPlace::register_}}) {
      if (!json.contains(key)) continue;
      for (const auto& [name, shown] : json[key].items()) {
        const std::vector<std::string>& names = names_.names(list);
        const auto at = std::find(names.begin(), names.end(), name);
        if (at == names.end()) {
          differences.push_back("the module shows no \"" + name + "\" among its " + key);
          continue;
        }
        const SignalPlace place{list, static_cast<size_t>(at - names.begin())};
        const bool pair = shown.is_array();
        const std::string is = shown_text(std::string(look_of(shown_state(state, place)).word),
                                          pair ? shown_value(state, place) : "--");
        const std::string awaited =
            pair ? shown_text(shown.at(0).get<std::string>(), shown.at(1).get<std::string>())
                 : shown.get<std::string>();
        if (is != awaited) differences.push_back("expected " + name + ' ' + awaited + ", is " + is);
      }
    }
  } catch (const nlohmann::json::exception&) {
    differences.push_back("is no object of a trace");
  } catch (const std::runtime_error& error) {
    ++line_;
    differences.emplace_back(error.what());
    in_.setstate(std::ios::eofbit | std::ios::failbit);
  }
  return differences;
}

std::string ExpectedTrace::end() {
  std::string text;
  return !in_.fail() && read_line(text) ? "the run ends before this instant of the trace" : "";
}

}  // namespace kiva
