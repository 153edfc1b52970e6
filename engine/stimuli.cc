// Each line of stimuli stands alone: what it does not name is Zero, and no text stays from line to
// line.

#include "engine/stimuli.h"

#include <istream>
#include <set>
#include <sstream>

namespace kiva {

StimuliReader::StimuliReader(std::istream& in, const Simulation& simulation) : in_(in) {
  for (size_t row = 0; row < simulation.input_names().size(); ++row)
    rows_.emplace(simulation.input_names()[row], row);
}

std::optional<Stimulus> StimuliReader::next() {
  std::string text;
  while (std::getline(in_, text)) {
    ++line_;
    if (!text.empty() && text.back() == '\r') text.pop_back();
    if (!text.empty() && text.front() == '#') continue;
    return parse(text);
  }
  return std::nullopt;
}

Stimulus StimuliReader::parse(const std::string& text) const {
  Stimulus stimulus;
  std::set<size_t> named;
  std::istringstream tokens(text);
  for (std::string token; tokens >> token;) {
    if (token == "!set") {
      stimulus.set = true;
    } else if (token == "!reset") {
      stimulus.reset = true;
    } else {
      const Stimulus::Choice choice = parse_choice(token);
      if (!named.insert(choice.row).second)
        throw StimuliError{line_, "an input stands twice on the line: \"" + token + "\""};
      stimulus.choices.push_back(choice);
    }
  }
  return stimulus;
}

Stimulus::Choice StimuliReader::parse_choice(const std::string& token) const {
  Stimulus::Choice choice{0, SignalState::one, "--"};
  std::string name = token;
  const size_t equals = name.find('=');
  const bool has_text = equals != std::string::npos;
  if (has_text) {
    choice.text = name.substr(equals + 1);
    name.resize(equals);
  }
  const size_t colon = name.find(':');
  if (colon != std::string::npos) {
    const std::string word = name.substr(colon + 1);
    name.resize(colon);
    bool known = false;
    for (SignalState state :
         {SignalState::one, SignalState::zero, SignalState::top, SignalState::bottom}) {
      if (look_of(state).word != word) continue;
      choice.state = state;
      known = true;
    }
    if (!known)
      throw StimuliError{line_, "unknown state \"" + word + "\" in \"" + token +
                                    "\": one, zero, top or bottom is expected"};
  }
  auto at = rows_.find(name);
  if (at == rows_.end()) throw StimuliError{line_, "the module has no input \"" + name + "\""};
  if (has_text && choice.state != SignalState::one)
    throw StimuliError{line_, "only an input in state one carries a value: \"" + token + "\""};
  choice.row = at->second;
  return choice;
}

void apply(const Stimulus& stimulus, Simulation& simulation) {
  for (size_t row = 0; row < simulation.input_rows().size(); ++row) {
    simulation.choose_input(row, SignalState::zero);
    simulation.type_input(row, "--");
  }
  for (const Stimulus::Choice& choice : stimulus.choices) {
    simulation.choose_input(choice.row, choice.state);
    simulation.type_input(choice.row, choice.text);
  }
  if (stimulus.set) simulation.raise_set(true);
  if (stimulus.reset) simulation.raise_reset(true);
}

}  // namespace kiva
