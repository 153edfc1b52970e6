#include "engine/signal_names.h"

#include <algorithm>
#include <array>

#include "base/nearest_name.h"

namespace kiva {

const std::vector<std::string>& SignalNames::names(SignalPlace::List list) const {
  switch (list) {
    case SignalPlace::input:
      return simulation_->input_names();
    case SignalPlace::output:
      return simulation_->output_names();
    case SignalPlace::local:
      return simulation_->local_names();
    case SignalPlace::register_:
      break;
  }
  return simulation_->register_names();
}

namespace {
constexpr std::array all_lists{SignalPlace::input, SignalPlace::output, SignalPlace::local,
                               SignalPlace::register_};
}  // namespace

bool SignalNames::find(const std::string& name, SignalPlace& place) const {
  return find_in(all_lists, name, place);
}

bool SignalNames::find_traced(const std::string& name, SignalPlace& place) const {
  return find_in(std::span(all_lists).subspan(1), name, place);
}

bool SignalNames::find_in(std::span<const SignalPlace::List> lists, const std::string& name,
                          SignalPlace& place) const {
  for (SignalPlace::List list : lists) {
    const std::vector<std::string>& in = names(list);
    const auto at = std::find(in.begin(), in.end(), name);
    if (at == in.end()) continue;
    place = {list, static_cast<size_t>(at - in.begin())};
    return true;
  }
  return false;
}

const std::string& SignalNames::name(SignalPlace place) const {
  return names(place.list)[place.row];
}

std::string SignalNames::hint(const std::string& name) const {
  std::vector<std::string> all;
  for (SignalPlace::List list : all_lists)
    all.insert(all.end(), names(list).begin(), names(list).end());
  const std::string near = nearest_name(name, all);
  return near.empty() ? "" : "; did you mean \"" + near + "\"?";
}

SignalState shown_state(const SimulationState& state, SignalPlace place) {
  const std::vector<SignalState>& row = place.list == SignalPlace::input    ? state.inputs
                                        : place.list == SignalPlace::output ? state.shown_outputs
                                        : place.list == SignalPlace::local  ? state.shown_locals
                                                                            : state.shown_registers;
  return row[place.row];
}

const std::string& shown_value(const SimulationState& state, SignalPlace place) {
  static const std::string none = "--";
  if (place.list == SignalPlace::input) return state.input_texts[place.row];
  return place.list == SignalPlace::output ? state.output_values[place.row] : none;
}

}  // namespace kiva
