#include "engine/random_choices.h"

#include <algorithm>

namespace kiva {

RandomChoices::RandomChoices(const Simulation& simulation, std::uint64_t seed) : random_(seed) {
  for (size_t row = 0; row < simulation.input_rows().size(); ++row)
    inputs_.push_back({simulation.input_names()[row],
                       simulation.input_rows()[row]->isValued(simulation.module()),
                       0.5,
                       {}});
}

RandomChoices::Input* RandomChoices::find(const std::string& name) {
  const auto at = std::ranges::find(inputs_, name, &Input::name);
  return at == inputs_.end() ? nullptr : &*at;
}

bool RandomChoices::bias(const std::string& name, double probability) {
  Input* input = find(name);
  if (input != nullptr) input->probability = probability;
  return input != nullptr;
}

bool RandomChoices::values(const std::string& name, std::vector<std::string> texts) {
  Input* input = find(name);
  if (input != nullptr) input->texts = std::move(texts);
  return input != nullptr;
}

std::string RandomChoices::input_without_values() const {
  for (const Input& input : inputs_)
    if (input.valued && input.texts.empty()) return input.name;
  return "";
}

/// In [0, 1), from the upper bits: the library's distributions differ between machines.
double RandomChoices::fraction() {
  return static_cast<double>(random_() >> 11) / 9007199254740992.0;
}

void RandomChoices::choose(Simulation& simulation) {
  for (size_t row = 0; row < inputs_.size(); ++row) {
    const Input& input = inputs_[row];
    const bool present = fraction() < input.probability;
    simulation.choose_input(row, present ? SignalState::one : SignalState::zero);
    simulation.type_input(
        row, present && !input.texts.empty() ? input.texts[random_() % input.texts.size()] : "--");
  }
}

}  // namespace kiva
