#include "programs/console/why_text.h"

#include <ostream>

#include "base/number_text.h"

namespace kiva::console {

namespace {

std::string text_of(const std::string& name, SignalState state) {
  return name + " = " + std::string(look_of(state).label);
}

}  // namespace

WhyText::WhyText(const std::string& text, bool way_down, const Simulation& simulation)
    : reasons_(simulation), way_down_(way_down) {
  const size_t at = text.rfind('@');
  const std::string number = at == std::string::npos ? "" : text.substr(at + 1);
  if (!checkuint(number) || number.size() > 18 || (instant = std::stol(number)) < 1)
    throw Refused{"--why: \"" + text + "\" is not NAME@INSTANT, with an instant from 1 on"};
  name_ = text.substr(0, at);
  const SignalNames names(simulation);
  if (!names.find(name_, place_))
    throw Refused{"--why: \"" + name_ + "\" is no signal of the module" + names.hint(name_)};
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
  for (const Cause& cause : reasons_.causes(place_, instant))
    out << text_of(cause.name, cause.state) << '\n';
  return 0;
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
