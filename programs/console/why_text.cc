#include "programs/console/why_text.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "base/number_text.h"

namespace kiva::console {

namespace {

std::string text_of(const std::string& name, SignalState state) {
  return name + " = " + std::string(look_of(state).label);
}

}  // namespace

WhyText::WhyText(const std::string& text, bool way_down, const Simulation& simulation,
                 const std::string& map_text)
    : reasons_(simulation), names_(simulation), way_down_(way_down) {
  if (!map_text.empty()) source_.emplace(map_text, simulation);
  if (source_ && !source_->problem().empty()) source_.reset();
  const size_t at = text.rfind('@');
  const std::string number = at == std::string::npos ? "" : text.substr(at + 1);
  if (!checkuint(number) || number.size() > 18 || (instant = std::stol(number)) < 1)
    throw Refused{"--why: \"" + text + "\" is not NAME@INSTANT, with an instant from 1 on"};
  name_ = text.substr(0, at);
  if (!names_.find(name_, place_))
    throw Refused{"--why: \"" + name_ + "\" is no signal of the module" + names_.hint(name_)};
}

int WhyText::print(std::ostream& out, const Reasons::Instant& instant) {
  const SignalState state = shown_state(instant.after, place_);
  if (state == SignalState::unknown) {
    out << "# " << name_ << " is unknown: nothing that is known decides it\n";
    return 0;
  }
  if (way_down_) {
    out << "# " << text_of(name_, state) << '\n';
    way_down(out, name_, instant, 1);
  }
  const std::vector<Cause> causes = reasons_.causes(place_, instant);
  for (const Cause& cause : causes)
    out << text_of(cause.name, cause.state) << words_of(cause, causes) << '\n';
  return 0;
}

std::optional<size_t> WhyText::local_of(const Cause& cause) const {
  const bool told = cause.state == SignalState::one || cause.state == SignalState::zero;
  if (cause.kind != Cause::register_ || !told) return {};
  const std::vector<std::string>& locals = names_.names(SignalPlace::local);
  const auto at = std::ranges::find(locals, cause.name);
  if (at == locals.end()) return {};
  return static_cast<size_t>(at - locals.begin());
}

std::string WhyText::states_of(const std::vector<LitSource::CodeBit>& bits) const {
  std::string words;
  for (size_t instance = 0; instance < source_->instances().size(); ++instance) {
    const auto states = source_->states_with(instance, bits);
    if (!states) continue;
    for (const std::string& name : *states)
      words += (words.empty() ? "  # the state is " : " or ") + (name.empty() ? "none" : name);
    return words;
  }
  return "";
}

/// Bits of a state's code tell more together, unless they are those of several automata.
std::string WhyText::words_of(const Cause& cause, const std::vector<Cause>& causes) const {
  const std::optional<size_t> local = source_ ? local_of(cause) : std::nullopt;
  if (!local) return "";
  const bool one = cause.state == SignalState::one;
  for (size_t instance = 0; instance < source_->instances().size(); ++instance) {
    const std::optional<SourcePlace> place = source_->going_on(instance, *local);
    if (!place || !source_->stale(instance).empty()) continue;
    return "  # " + std::filesystem::path(place->file).filename().string() + ':' +
           std::to_string(place->first_line) + (one ? " goes on" : " does not go on");
  }
  const std::string alone = states_of({{*local, one}});
  if (alone.empty()) return "";
  std::vector<LitSource::CodeBit> bits;
  for (const Cause& other : causes)
    if (const std::optional<size_t> row = local_of(other);
        row && !states_of({{*row, other.state == SignalState::one}}).empty())
      bits.emplace_back(*row, other.state == SignalState::one);
  const std::string together = states_of(bits);
  return together.empty() ? alone : together;
}

/// Each signal's own equation once, as deep as they go.
void WhyText::way_down(std::ostream& out, const std::string& name, const Reasons::Instant& instant,
                       int depth) {
  for (const Cause& cause : reasons_.step_down(name, instant)) {
    const bool is_new = told_.insert(cause.name).second;
    out << '#' << std::string(static_cast<size_t>(2 * depth), ' ')
        << text_of(cause.name, cause.state) << (is_new ? "" : " (above)") << '\n';
    if (is_new && cause.kind == Cause::computed) way_down(out, cause.name, instant, depth + 1);
  }
}

}  // namespace kiva::console
