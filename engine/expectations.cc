// What a line awaits, held against what an instant shows; and the other way round, for --update.

#include "engine/expectations.h"

#include "engine/signal_names.h"

namespace kiva {

namespace {

const char* state_words(SignalState state) {
  switch (state) {
    case SignalState::one:
      return "present";
    case SignalState::bottom:
      return "absent";
    case SignalState::zero:
      return "zero";
    case SignalState::top:
      return "top";
    case SignalState::unknown:
      break;
  }
  return "unknown";
}

bool meets(const Expectation& expectation, SignalState state, const std::string& value) {
  if (expectation.absent) return state != SignalState::one;
  return state == expectation.state && (!expectation.value || *expectation.value == value);
}

std::string outputs_present(const SimulationState& state, const Simulation& simulation) {
  std::string text;
  for (size_t row = 0; row < state.shown_outputs.size(); ++row) {
    if (state.shown_outputs[row] != SignalState::one) continue;
    text +=
        (text.empty() ? "; present: " : " ") +
        stimulus_text(simulation.output_names()[row], SignalState::one, state.output_values[row]);
  }
  return text.empty() ? "; no output is present" : text;
}

std::string seen_text(const std::string& name, SignalState state, const std::string& value) {
  if (state == SignalState::zero || state == SignalState::bottom) return '!' + name;
  return stimulus_text(name, state, value);
}

}  // namespace

std::vector<std::string> unmet(const std::vector<Expectation>& expectations,
                               const SimulationState& state, const Simulation& simulation) {
  std::vector<std::string> differences;
  for (const Expectation& expectation : expectations) {
    const SignalState shown = shown_state(state, expectation.place);
    const std::string& value = shown_value(state, expectation.place);
    if (meets(expectation, shown, value)) continue;
    std::string is = state_words(shown);
    if (shown == SignalState::one && expectation.value)
      is = value == "--" ? "present without value" : stimulus_text("", shown, value).substr(1);
    const std::string awaited =
        expectation.absent ? "not " + expectation.written.substr(1) : expectation.written;
    differences.push_back("expected " + awaited + ", is " + is +
                          outputs_present(state, simulation));
  }
  return differences;
}

std::string seen(const std::vector<Expectation>& expectations, const SimulationState& state,
                 const Simulation& simulation) {
  const SignalNames names(simulation);
  std::vector<SignalPlace> places;
  for (const Expectation& expectation : expectations) places.push_back(expectation.place);
  if (places.empty())
    for (size_t row = 0; row < state.shown_outputs.size(); ++row)
      places.push_back({SignalPlace::output, row});
  std::string text;
  for (SignalPlace place : places)
    text += (text.empty() ? "" : " ") +
            seen_text(names.name(place), shown_state(state, place), shown_value(state, place));
  return text;
}

}  // namespace kiva
