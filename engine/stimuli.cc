// Each line of stimuli stands alone: what it does not name is Zero, and no text stays from line to
// line.

#include "engine/stimuli.h"

#include <algorithm>
#include <cctype>
#include <istream>
#include <set>
#include <stdexcept>

#include "base/lines.h"

namespace kiva {

StimuliReader::StimuliReader(std::istream& in, const Simulation& simulation)
    : in_(in), names_(simulation) {
  for (size_t row = 0; row < simulation.input_names().size(); ++row)
    rows_.emplace(simulation.input_names()[row], row);
  named_on_.resize(simulation.input_names().size());
}

/// NAME, NAME:word, NAME=text, NAME:word=text.
struct StimuliReader::Token {
  std::string written;
  std::string name;
  std::optional<std::string> word;
  std::optional<std::string> text;
};

bool StimuliReader::read_line(std::string& text) {
  try {
    if (!next_line(in_, text)) return false;
    ++line_;
    return true;
  } catch (const std::runtime_error& error) {
    throw StimuliError{line_ + 1, error.what()};
  }
}

std::optional<Stimulus> StimuliReader::next() {
  while (read_line(text_)) {
    if (!text_.empty() && text_.back() == '\r') text_.pop_back();
    if (!text_.empty() && text_.front() == '#') continue;
    return parse(text_);
  }
  return std::nullopt;
}

namespace {

bool is_blank(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

/// The text in double quotes that begins there; `at` then stands behind it. Nothing where it has no
/// end, or goes on behind it.
std::optional<std::string> quoted_text(const std::string& line, size_t& at) {
  std::string text;
  for (size_t i = at + 1; i < line.size(); ++i) {
    if (line[i] == '"') {
      if (i + 1 < line.size() && !is_blank(line[i + 1])) return std::nullopt;
      at = i + 1;
      return text;
    }
    if (line[i] == '\\' && i + 1 < line.size()) ++i;
    text += line[i];
  }
  return std::nullopt;
}

std::string written_text(const std::string& text) {
  const bool plain = !text.empty() && text[0] != '"' && std::ranges::none_of(text, is_blank);
  if (plain) return text;
  std::string quoted = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

}  // namespace

StimuliReader::Token StimuliReader::next_token(const std::string& text, size_t& at) {
  const size_t begin = at;
  Token token;
  while (at < text.size() && !is_blank(text[at]) && text[at] != '=') ++at;
  token.name = text.substr(begin, at - begin);
  const size_t colon = token.name.find(':');
  if (colon != std::string::npos) {
    token.word = token.name.substr(colon + 1);
    token.name.resize(colon);
  }
  if (at < text.size() && text[at] == '=') {
    ++at;
    const size_t value = at;
    if (at < text.size() && text[at] == '"') token.text = quoted_text(text, at);
    if (!token.text) {
      while (at < text.size() && !is_blank(text[at])) ++at;
      token.text = text.substr(value, at - value);
    }
  }
  token.written = text.substr(begin, at - begin);
  return token;
}

Stimulus StimuliReader::parse(const std::string& text) {
  Stimulus stimulus;
  std::set<std::string> awaited;
  bool expects = false;
  for (size_t at = 0;;) {
    while (at < text.size() && is_blank(text[at])) ++at;
    if (at == text.size()) break;
    const Token token = next_token(text, at);
    if (expects) {
      stimulus.expectations.push_back(parse_expectation(token));
      const SignalPlace place = stimulus.expectations.back().place;
      if (!awaited.insert(std::to_string(place.list) + names_.name(place)).second)
        throw StimuliError{line_,
                           "a signal is awaited twice on the line: \"" + token.written + '"'};
    } else if (token.written == "->") {
      expects = true;
    } else if (token.written == "!set") {
      stimulus.set = true;
    } else if (token.written == "!reset") {
      stimulus.reset = true;
    } else {
      stimulus.choices.push_back(parse_choice(token));
      long& named_on = named_on_[stimulus.choices.back().row];
      if (named_on == line_)
        throw StimuliError{line_, "an input stands twice on the line: \"" + token.written + '"'};
      named_on = line_;
    }
  }
  return stimulus;
}

size_t end_of_choices(const std::string& line) {
  size_t end = 0;
  for (size_t at = 0; at < line.size();) {
    if (is_blank(line[at])) {
      ++at;
      continue;
    }
    if (StimuliReader::next_token(line, at).written == "->") break;
    end = at;
  }
  return end;
}

SignalState StimuliReader::state_of_word(const Token& token, bool awaited) const {
  using enum SignalState;
  if (!token.word) return one;
  for (SignalState state : {one, zero, top, bottom, unknown})
    if (look_of(state).word == *token.word && (awaited || state != unknown)) return state;
  throw StimuliError{line_, "unknown state \"" + *token.word + "\" in \"" + token.written +
                                (awaited ? "\": one, zero, top, bottom or unknown is expected"
                                         : "\": one, zero, top or bottom is expected")};
}

Stimulus::Choice StimuliReader::parse_choice(const Token& token) const {
  Stimulus::Choice choice{0, state_of_word(token, false), token.text.value_or("--")};
  auto at = rows_.find(token.name);
  if (at == rows_.end())
    throw StimuliError{line_, "the module has no input \"" + token.name + "\""};
  if (token.text && choice.state != SignalState::one)
    throw StimuliError{line_,
                       "only an input in state one carries a value: \"" + token.written + "\""};
  choice.row = at->second;
  return choice;
}

Expectation StimuliReader::parse_expectation(Token token) const {
  Expectation expectation;
  expectation.written = token.written;
  if (!token.name.empty() && token.name[0] == '!') {
    expectation.absent = true;
    token.name.erase(0, 1);
  }
  if (!names_.find_traced(token.name, expectation.place))
    throw StimuliError{
        line_, "the module shows no signal \"" + token.name + '"' + names_.hint(token.name)};
  expectation.state = state_of_word(token, true);
  expectation.value = token.text;
  if (expectation.absent && (token.word || token.text))
    throw StimuliError{
        line_, "a signal that is not awaited has no state and no value: \"" + token.written + '"'};
  if (token.text && expectation.state != SignalState::one)
    throw StimuliError{line_,
                       "only a signal in state one carries a value: \"" + token.written + '"'};
  return expectation;
}

std::string stimulus_text(const std::string& name, SignalState state, const std::string& text) {
  if (state != SignalState::one) return name + ':' + std::string(look_of(state).word);
  return text == "--" ? name : name + '=' + written_text(text);
}

std::string stimulus_line(const Choices& choices, const Simulation& simulation) {
  std::string line;
  const auto add = [&](const std::string& word) { line += (line.empty() ? "" : " ") + word; };
  if (choices.set) add("!set");
  if (choices.reset) add("!reset");
  for (size_t row = 0; row < choices.inputs.size(); ++row)
    if (choices.inputs[row] != SignalState::zero)
      add(stimulus_text(simulation.input_names()[row], choices.inputs[row], choices.texts[row]));
  return line;
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
